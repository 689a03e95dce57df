#include "help/option_help.h"

#include <algorithm>
#include <optional>

#include "help/paragraph.h"
#include "help/shown_options.h"
#include "options/value_text.h"
#include "platform/join.h"
#include "platform/text_sort.h"
#include "varo/parser.h"

namespace varo_3_3 {
namespace {

using namespace std::string_view_literals;  // lengths that are known where one of two is chosen
using internal::append;
using internal::SortItem;

constexpr unsigned long kDescriptionColumn = 30;
constexpr unsigned long kDescriptionWidth = 50;
constexpr unsigned long kSectionColumn = 1;
constexpr unsigned long kSectionWidth = 80;

OptionDescription const& optionOf(SortItem const& entry) {
    return *static_cast<OptionDescription const*>(entry.item);
}

/// How a boolean's default, of whatever kind, reads: numbers by their value, nothing as off, other
/// kinds not at all.
std::optional<bool> defaultState(OptionDescription const& option) {
    mosaic2::variant_t const& value = option.m_defaultValue;
    if (option.m_hasDefault && value.m_type == mosaic2::vtNull) {
        return false;
    }
    return option.m_hasDefault && value.can_get<double>() ? std::optional(value.get<double>() != 0)
                                                          : std::nullopt;
}

void appendValue(std::string& caption, OptionDescription const& option) {
    if (option.m_allowedValues.empty()) {
        append(caption, {"=<", option.getTypeName(), ">"});
    }
    for (mosaic2::variant_t const& value : option.m_allowedValues) {
        append(caption, {&value == &option.m_allowedValues.front() ? "="sv : " | "sv});
        appendText(caption, value);
    }
    if (option.m_hasDefault) {
        std::size_t const end = caption.size();
        append(caption, {" ("});
        appendText(caption, option.m_defaultValue);
        bool const hasText = caption.size() != end + 2;
        hasText ? append(caption, {")"}) : caption.resize(end);
    }
}

/// Writes a help text: entries are collected, then written. A text for all declarations takes most
/// of its time in here.
class HelpWriter {
public:
    HelpWriter(RegisteredOptionStorage const& registry, HelpStyle style)
        : m_registry(registry), m_style(style) {}

    /// Positional declarations have no entry.
    void collect(OptionDescription const& option) {
        constexpr std::size_t kUsualCaption = 80;  // with what fills up its first line
        // Each further line of at most 50 characters has 30 blanks before it, and ends early.
        m_expectedSize += option.m_description.size() * 7 / 4 + kUsualCaption;
        if (!option.m_isPositional) {
            internal::addItem(m_entries, m_registry.sectionNumber(option.m_section),
                              option.firstName(), &option);
        }
    }

    /// The entries under the headings of their sections. Every section that the style shows has its
    /// heading.
    void writeSections() {
        internal::sortItems(m_entries);
        m_help.reserve(m_help.size() + m_expectedSize);
        auto entry = m_entries.begin();
        for (std::size_t number = 0; number < m_registry.sections().size(); ++number) {
            bool const isShown = beginSection(number);
            for (; entry != m_entries.end() && entry->group == number; ++entry) {
                if (isShown) {
                    writeEntry(optionOf(*entry));
                }
            }
            append(m_help, {isShown ? "\n"sv : ""sv});
        }
    }

    /// The list of the actions or, when the style shows none, all options.
    void writeAll() {
        std::size_t longest = 0;
        for (auto const& record : m_registry.records()) {
            if (record->isAction() && m_style.shows(record->m_section)) {
                internal::addItem(m_entries, 0, record->firstName(), record);
                longest = std::max(longest, record->firstName().size());
            }
        }
        if (!m_entries.empty()) {
            writeTopics(longest);
            return;
        }
        for (auto const& record : m_registry.records()) {
            collect(*record);
        }
        writeSections();
    }

    /// The general help after a sentence that says that `topic` has no help of its own. The two
    /// sentences follow each other without a blank; tools compare this text.
    void writeUnknown(std::string_view topic) {
        append(m_help, {"Help for ", topic, " not available.",
                        "Please use one of the following topics:\n"});
        writeAll();
    }

    std::string take() { return std::move(m_help); }

private:
    bool beginSection(std::size_t number) {
        auto const& [name, text] = m_registry.sections()[number];
        bool const isShown = m_style.shows(name);
        if (isShown) {
            append(m_help, {name, name.empty() ? ""sv : "\n"sv});
            appendParagraph(m_help, text, "", kSectionColumn, kSectionWidth);
            append(m_help, {text.empty() ? ""sv : "\n"sv});
        }
        return isShown;
    }

    /// Actions with one name are one topic, told by the last of them.
    [[gnu::cold]] void writeTopics(std::size_t longest) {
        internal::sortItems(m_entries);
        for (SortItem const& entry : m_entries) {
            std::string_view const name = entry.key;
            std::string_view const description = optionOf(entry).m_description;
            if (&entry != &m_entries.back() && (&entry)[1].key == name) {
                continue;
            }
            append(m_help, {"    ", name});
            if (!description.empty()) {
                m_help.append(longest + 3 - name.size(), ' ');
            }
            append(m_help, {description, "\n"});
        }
    }

    void writeEntry(OptionDescription const& option) {
        m_caption.clear();
        writeNames(option);
        if (option.m_type == mosaic2::vtBool) {
            writeSwitch(option);
        } else if (option.m_type != mosaic2::vtNull) {
            appendValue(m_caption, option);
        }
        if (m_caption.size() >= kDescriptionColumn) {
            append(m_help, {m_caption, "\n"});
            m_caption.clear();
        }
        appendParagraph(m_help, option.m_description, m_caption, kDescriptionColumn,
                        kDescriptionWidth);
    }

    /// The names, the last one first, so that the primary name is next to the value.
    void writeNames(OptionDescription const& option) {
        bool const isDouble = (m_style.flags & kDoubleDashHelp) != 0;
        for (std::size_t number = option.m_names.size(); number-- > 0;) {
            std::string_view const name = option.m_names[number];
            append(m_caption, {isDouble && name.size() >= 2 ? "--"sv : "-"sv, name,
                               number != 0 ? ", "sv : ""sv});
        }
    }

    void writeSwitch(OptionDescription const& option) {
        std::optional<bool> const state = defaultState(option);
        append(m_caption, {state == true ? " (default)"sv : ""sv,
                           (m_style.flags & kDoubleDashHelp) != 0 ? " | --no-"sv : " | -no-"sv,
                           option.firstName(), state == false ? " (default)"sv : ""sv});
    }

    RegisteredOptionStorage const& m_registry;
    HelpStyle const m_style;
    internal::SortItems m_entries;
    std::size_t m_expectedSize = 0;
    std::string m_caption;  // of one entry after the other
    std::string m_help;
};

}  // namespace

std::string generalHelp(RegisteredOptionStorage const& registry, HelpStyle style) {
    HelpWriter writer(registry, style);
    writer.writeAll();
    return writer.take();
}

std::string topicHelp(RegisteredOptionStorage const& registry, std::string_view topic,
                      HelpStyle style) {
    HelpWriter writer(registry, style);
    OptionDescription const* const option = registry.find(topic, {});
    if (option != nullptr) {
        writer.collect(*option);
        writer.writeSections();
    } else {
        writer.writeUnknown(topic);
    }
    return writer.take();
}

std::string actionHelp(RegisteredOptionStorage const& registry, std::string_view action,
                       HelpStyle style) {
    HelpWriter writer(registry, style);
    OptionDescription const* const found = registry.find(action, {});
    if (found == nullptr) {
        writer.writeUnknown(action);
        return writer.take();
    }
    for (auto const& record : registry.records()) {
        if (isModifierOf(*record, *found)) {
            writer.collect(*record);
        }
    }
    writer.writeSections();
    return writer.take();
}

std::string globalModifiersHelp(RegisteredOptionStorage const& registry, HelpStyle style) {
    HelpWriter writer(registry, style);
    bool hasAny = false;
    for (auto const& record : registry.records()) {
        if (isGlobalModifier(*record)) {
            writer.collect(*record);
            hasAny = true;
        }
    }
    if (hasAny) {
        writer.writeSections();
    }
    return writer.take();
}

}  // namespace varo_3_3
