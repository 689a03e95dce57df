#include "documents/declarations.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "options/value_text.h"
#include "parser/option_files.h"

namespace varo_3_3 {
namespace {

/// A structure for the host with the arrays that it points to. Refreshed in place: as long as the
/// numbers of elements stay, so do the arrays.
struct DeclarationView {
    Declaration shown{};
    std::vector<char const*> names;
    std::vector<char const*> actions;
    std::vector<DeclaredValue> allowed;
    std::vector<ReplacedValue> deprecated;
};

struct ActionGroupView {
    ActionGroup shown{};
    std::vector<char const*> actions;
};

}  // namespace

struct DeclarationViews {
    std::vector<std::unique_ptr<DeclarationView>> declarations;
    std::vector<std::unique_ptr<ActionGroupView>> groups;
};

namespace {

DeclarationViews& viewsOf(BasicParser& parser) {
    BasicParser::HeldViews& held = parser.views();
    if (held == nullptr) {
        held = BasicParser::HeldViews(new DeclarationViews,
                                      [](DeclarationViews* views) noexcept { delete views; });
    }
    return *held;
}

/// The structure after `previous`, if `views` holds it.
template <class View, class Shown>
Shown const* after(std::vector<std::unique_ptr<View>> const& views,
                   Shown const& previous) noexcept {
    auto const next = static_cast<std::size_t>(previous.index) + 1;
    bool const isOurs = next - 1 < views.size() && &views[next - 1]->shown == &previous;
    return isOurs && next < views.size() ? &views[next]->shown : nullptr;
}

DeclaredValue show(Garbage& texts, mosaic2::variant_t const& value) {
    std::string text;
    appendText(text, value);
    return {texts.init(text), &value};
}

template <class Texts>
void point(std::vector<char const*>& pointers, Texts const& texts) {
    pointers.resize(texts.size());
    auto pointer = pointers.begin();
    for (std::string_view const text : texts) {
        *pointer++ = text.data();
    }
}

void refreshValues(DeclarationView& view, OptionDescription const& record, Garbage& texts) {
    view.allowed.resize(record.m_allowedValues.size());
    for (std::size_t number = 0; number < view.allowed.size(); ++number) {
        view.allowed[number] = show(texts, record.m_allowedValues[number]);
    }
    view.deprecated.resize(record.m_deprecatedValues.size());
    auto replaced = view.deprecated.begin();
    for (auto const& [deprecated, replacement] : record.m_deprecatedValues) {
        *replaced++ = {show(texts, deprecated), show(texts, replacement)};
    }
    view.shown.defaultValue = record.m_hasDefault ? show(texts, record.m_defaultValue)
                                                  : DeclaredValue{texts.init(""), nullptr};
}

int kindOf(OptionDescription const& record) {
    if (record.isAction()) {
        return kDeclaredAction;
    }
    return record.m_tags.empty() ? kDeclaredOption : kDeclaredModifier;
}

bool readsFiles(OptionDescription const& record, BasicParser const& parser) {
    auto const& names = record.m_names;
    return parser.readsOptionFiles() &&
           std::find(names.begin(), names.end(), kOptionFileName) != names.end();
}

void refresh(DeclarationView& view, OptionDescription const& record, BasicParser& parser) {
    point(view.names, record.m_names);
    point(view.actions, record.m_tags);
    refreshValues(view, record, parser.texts());

    RegisteredOptionStorage const& registry = parser.registry();
    std::uint32_t const section = registry.sectionNumber(record.m_section);
    Declaration& shown = view.shown;
    shown.size = sizeof(Declaration);
    shown.index = static_cast<int>(record.m_index);
    shown.kind = kindOf(record);
    shown.type = record.m_type;
    shown.nameCount = static_cast<int>(view.names.size());
    shown.actionCount = static_cast<int>(view.actions.size());
    shown.allowedCount = static_cast<int>(view.allowed.size());
    shown.deprecatedCount = static_cast<int>(view.deprecated.size());
    shown.sectionNumber = static_cast<int>(section);
    shown.separator = static_cast<unsigned char>(record.m_tokenizer);
    shown.isPositional = record.m_isPositional ? 1 : 0;
    shown.isHidden = record.isHidden() ? 1 : 0;
    shown.readsFiles = readsFiles(record, parser) ? 1 : 0;
    shown.names = view.names.data();
    shown.actions = view.actions.data();
    shown.description = record.m_description.data();
    shown.typeName = record.m_type != mosaic2::vtBool ? typeName(record.m_type) : "";
    shown.section = record.m_section.data();
    shown.sectionText = registry.sections()[section].second.data();
    shown.allowed = view.allowed.data();
    shown.deprecated = view.deprecated.data();
}

}  // namespace

Declaration const* firstDeclaration(BasicParser& parser) {
    auto& views = viewsOf(parser).declarations;
    for (auto const& record : parser.registry().records()) {
        if (views.size() == record->m_index) {
            views.push_back(std::make_unique<DeclarationView>());
        }
        refresh(*views[record->m_index], *record, parser);
    }
    return !views.empty() ? &views.front()->shown : nullptr;
}

Declaration const* declarationAfter(BasicParser const& parser,
                                    Declaration const& previous) noexcept {
    return parser.views() != nullptr ? after(parser.views()->declarations, previous) : nullptr;
}

// A group's names stay where they are when the list of groups grows.
static_assert(std::is_nothrow_move_constructible_v<std::set<std::string>>);

ActionGroup const* firstActionGroup(BasicParser& parser) {
    auto& views = viewsOf(parser).groups;
    auto const& groups = parser.simultaneousActions();
    while (views.size() < groups.size()) {
        auto view = std::make_unique<ActionGroupView>();
        point(view->actions, groups[views.size()]);
        view->shown = {sizeof(ActionGroup), static_cast<int>(views.size()),
                       static_cast<int>(view->actions.size()), 0, view->actions.data()};
        views.push_back(std::move(view));
    }
    return !views.empty() ? &views.front()->shown : nullptr;
}

ActionGroup const* actionGroupAfter(BasicParser const& parser,
                                    ActionGroup const& previous) noexcept {
    return parser.views() != nullptr ? after(parser.views()->groups, previous) : nullptr;
}

Declaration const* nextDeclaration(IParser* parser, Declaration const* previous) {
    BasicParser* const ours = basicParserOf(parser);
    if (ours == nullptr) {
        return nullptr;
    }
    try {
        return previous == nullptr ? firstDeclaration(*ours) : declarationAfter(*ours, *previous);
    } catch (std::exception const&) {
        return nullptr;
    }
}

ActionGroup const* nextActionGroup(IParser* parser, ActionGroup const* previous) {
    BasicParser* const ours = basicParserOf(parser);
    if (ours == nullptr) {
        return nullptr;
    }
    try {
        return previous == nullptr ? firstActionGroup(*ours) : actionGroupAfter(*ours, *previous);
    } catch (std::exception const&) {
        return nullptr;
    }
}

int creationFlags(IParser* parser) {
    BasicParser const* const ours = basicParserOf(parser);
    return ours != nullptr ? ours->flags() : -1;
}

}  // namespace varo_3_3
