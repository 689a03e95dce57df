#include "documents/declarations.h"

#include <cstddef>
#include <exception>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "options/value_text.h"
#include "parser/option_files.h"

namespace varo_3_3 {
namespace {

/// The arrays that a structure for the host points to, in one piece of memory. It is refreshed in
/// place: as long as its size stays, so do the arrays.
class Arrays {
public:
    void resize(std::size_t size) {
        if (size != m_size) {
            m_bytes.reset(new std::byte[size]);
            m_size = size;
        }
        m_next = m_bytes.get();
    }

    /// The next array. Requires: resize() made room for it.
    template <class Element>
    Element* take(std::size_t count) {
        static_assert(std::is_trivial_v<Element> && alignof(Element) == alignof(void*));
        auto* const array = reinterpret_cast<Element*>(m_next);
        m_next += count * sizeof(Element);
        return array;
    }

    /// The next array, of these texts, which end by a zero.
    template <class Texts>
    char const* const* takeTexts(Texts const& texts) {
        char const** const pointers = take<char const*>(texts.size());
        char const** pointer = pointers;
        for (std::string_view const text : texts) {
            *pointer++ = text.data();
        }
        return pointers;
    }

private:
    std::unique_ptr<std::byte[]> m_bytes;
    std::size_t m_size = 0;
    std::byte* m_next = nullptr;
};

struct DeclarationView {
    Declaration shown{};
    Arrays arrays;
};

struct ActionGroupView {
    ActionGroup shown{};
    Arrays arrays;
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

/// Whether the arrays of `shown` are as long as those of `record`.
bool isAsLong(Declaration const& shown, OptionDescription const& record) {
    return static_cast<std::size_t>(shown.nameCount) == record.m_names.size() &&
           static_cast<std::size_t>(shown.actionCount) == record.m_tags.size() &&
           static_cast<std::size_t>(shown.allowedCount) == record.m_allowedValues.size() &&
           static_cast<std::size_t>(shown.deprecatedCount) == record.m_deprecatedValues.size();
}

void fill(Declaration& shown, Arrays& arrays, OptionDescription const& record, Garbage& texts) {
    arrays.resize((record.m_names.size() + record.m_tags.size()) * sizeof(char const*) +
                  record.m_allowedValues.size() * sizeof(DeclaredValue) +
                  record.m_deprecatedValues.size() * sizeof(ReplacedValue));
    shown.names = arrays.takeTexts(record.m_names);
    shown.actions = arrays.takeTexts(record.m_tags);
    auto* allowed = arrays.take<DeclaredValue>(record.m_allowedValues.size());
    shown.allowed = allowed;
    for (mosaic2::variant_t const& value : record.m_allowedValues) {
        *allowed++ = show(texts, value);
    }
    auto* replaced = arrays.take<ReplacedValue>(record.m_deprecatedValues.size());
    shown.deprecated = replaced;
    for (auto const& [deprecated, replacement] : record.m_deprecatedValues) {
        *replaced++ = {show(texts, deprecated), show(texts, replacement)};
    }
    shown.nameCount = static_cast<int>(record.m_names.size());
    shown.actionCount = static_cast<int>(record.m_tags.size());
    shown.allowedCount = static_cast<int>(record.m_allowedValues.size());
    shown.deprecatedCount = static_cast<int>(record.m_deprecatedValues.size());
    shown.defaultValue = record.m_hasDefault ? show(texts, record.m_defaultValue)
                                             : DeclaredValue{texts.init(""), nullptr};
}

/// Arrays of other lengths are made anew and shown when they are whole: another walk may be using
/// the old ones when memory runs out.
void refreshArrays(DeclarationView& view, OptionDescription const& record, Garbage& texts) {
    bool const isUnseen = view.shown.size == 0;
    if (isUnseen || isAsLong(view.shown, record)) {
        fill(view.shown, view.arrays, record, texts);
        return;
    }
    Declaration shown = view.shown;
    Arrays arrays;
    fill(shown, arrays, record, texts);
    view.arrays = std::move(arrays);
    view.shown = shown;
}

int kindOf(OptionDescription const& record) {
    if (record.isAction()) {
        return kDeclaredAction;
    }
    return record.m_tags.empty() ? kDeclaredOption : kDeclaredModifier;
}

bool readsFiles(OptionDescription const& record, BasicParser const& parser) {
    bool isNamed = false;
    for (std::string_view const name : record.m_names) {
        isNamed = isNamed || name == kOptionFileName;
    }
    return isNamed && parser.readsOptionFiles();
}

void refresh(DeclarationView& view, OptionDescription const& record, BasicParser& parser) {
    refreshArrays(view, record, parser.texts());

    RegisteredOptionStorage const& registry = parser.registry();
    std::uint32_t const section = registry.sectionNumber(record.m_section);
    Declaration& shown = view.shown;
    shown.size = sizeof(Declaration);
    shown.index = static_cast<int>(record.m_index);
    shown.kind = kindOf(record);
    shown.type = record.m_type;
    shown.sectionNumber = static_cast<int>(section);
    shown.separator = static_cast<unsigned char>(record.m_tokenizer);
    shown.isPositional = record.m_isPositional ? 1 : 0;
    shown.isHidden = record.isHidden() ? 1 : 0;
    shown.readsFiles = readsFiles(record, parser) ? 1 : 0;
    shown.description = record.m_description.data();
    shown.typeName = record.m_type != mosaic2::vtBool ? typeName(record.m_type) : "";
    shown.section = record.m_section.data();
    shown.sectionText = registry.sections()[section].second.data();
}

}  // namespace

Declaration const* firstDeclaration(BasicParser& parser) {
    auto& views = viewsOf(parser).declarations;
    for (auto const& record : parser.registry().records()) {
        if (record->m_index < views.size()) {
            refresh(*views[record->m_index], *record, parser);
        } else {
            auto view = std::make_unique<DeclarationView>();
            refresh(*view, *record, parser);
            views.push_back(std::move(view));
        }
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
        std::set<std::string> const& group = groups[views.size()];
        view->arrays.resize(group.size() * sizeof(char const*));
        view->shown = {sizeof(ActionGroup), static_cast<int>(views.size()),
                       static_cast<int>(group.size()), 0, view->arrays.takeTexts(group)};
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
