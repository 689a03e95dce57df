#include "help/option_help.h"

#include <algorithm>
#include <map>
#include <optional>

#include "help/paragraph.h"
#include "options/value_text.h"
#include "platform/join.h"
#include "platform/text_lead.h"
#include "varo/parser.h"

namespace varo_3_3 {
namespace {

constexpr unsigned long kDescriptionColumn = 30;
constexpr unsigned long kDescriptionWidth = 50;
constexpr unsigned long kSectionColumn = 1;
constexpr unsigned long kSectionWidth = 80;

/// An entry in its section: by name, then in the order of the declarations.
struct Entry {
    std::uint64_t lead;  // of the name, see internal::leadOf
    OptionDescription const* option;

    bool operator<(Entry const& other) const {
        if (lead != other.lead) {
            return lead < other.lead;
        }
        int const order = option->firstName().compare(other.option->firstName());
        return order < 0 || (order == 0 && option->m_index < other.option->m_index);
    }
};

void appendDashed(std::string& entry, std::string_view name, HelpStyle style) {
    bool const isDouble = (style.flags & kDoubleDashHelp) != 0 && name.size() >= 2;
    entry += isDouble ? "--" : "-";
    entry += name;
}

/// The names, the last one first, so that the primary name is next to the value.
void appendNames(std::string& entry, OptionDescription const& option, HelpStyle style) {
    for (std::size_t number = option.m_names.size(); number > 0; --number) {
        appendDashed(entry, option.m_names[number - 1], style);
        entry += number > 1 ? ", " : "";
    }
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

void appendSwitch(std::string& entry, OptionDescription const& option, HelpStyle style) {
    std::optional<bool> const state = defaultState(option);
    entry += state == true ? " (default)" : "";
    entry += (style.flags & kDoubleDashHelp) != 0 ? " | --no-" : " | -no-";
    entry += option.firstName();
    entry += state == false ? " (default)" : "";
}

void appendValue(std::string& entry, OptionDescription const& option) {
    if (option.m_allowedValues.empty()) {
        entry += "=<";
        entry += option.getTypeName();
        entry += '>';
    }
    for (mosaic2::variant_t const& value : option.m_allowedValues) {
        entry += &value == &option.m_allowedValues.front() ? "=" : " | ";
        appendText(entry, value);
    }
    std::string const text = option.getDefaultValueAsText();
    if (!text.empty()) {
        entry += " (";
        entry += text;
        entry += ')';
    }
}

void appendEntry(std::string& help, OptionDescription const& option, HelpStyle style) {
    std::string caption;
    appendNames(caption, option, style);
    if (option.m_type == mosaic2::vtBool) {
        appendSwitch(caption, option, style);
    } else if (option.m_type != mosaic2::vtNull) {
        appendValue(caption, option);
    }
    if (caption.size() >= kDescriptionColumn) {
        help += caption;
        help += '\n';
        caption.clear();
    }
    appendParagraph(help, option.m_description, caption, kDescriptionColumn, kDescriptionWidth);
}

std::string topicList(ShownOptions const& actions) {
    std::map<std::string_view, std::string_view> topics;
    std::size_t longest = 0;
    for (OptionDescription const* const action : actions) {
        topics.insert_or_assign(action->firstName(), action->m_description);
        longest = std::max(longest, action->firstName().size());
    }
    std::string help;
    for (auto const& [name, description] : topics) {
        help += "    ";
        help += name;
        if (!description.empty()) {
            help.append(longest + 3 - name.size(), ' ');
            help += description;
        }
        help += '\n';
    }
    return help;
}

}  // namespace

std::string formatOptions(RegisteredOptionStorage const& registry, ShownOptions const& options,
                          HelpStyle style) {
    constexpr std::size_t kUsualCaption = 80;  // with what fills up its first line
    std::vector<std::vector<Entry>> bySection(registry.sections().size());
    std::size_t expectedSize = 0;
    for (OptionDescription const* const option : options) {
        // Each further line of at most 50 characters has 30 blanks before it, and ends early.
        expectedSize += option->m_description.size() * 7 / 4 + kUsualCaption;
        if (!option->m_isPositional) {
            bySection[registry.sectionNumber(option->m_section)].push_back(
                {internal::leadOf(option->firstName()), option});
        }
    }
    std::string help;
    help.reserve(expectedSize);
    for (std::size_t number = 0; number < bySection.size(); ++number) {
        auto const& [name, text] = registry.sections()[number];
        if (!style.shows(name)) {
            continue;
        }
        help += name;
        help += name.empty() ? "" : "\n";
        if (!text.empty()) {
            appendParagraph(help, text, "", kSectionColumn, kSectionWidth);
            help += '\n';
        }
        std::sort(bySection[number].begin(), bySection[number].end());
        for (Entry const& entry : bySection[number]) {
            appendEntry(help, *entry.option, style);
        }
        help += '\n';
    }
    return help;
}

std::string generalHelp(RegisteredOptionStorage const& registry, HelpStyle style) {
    ShownOptions actions = getGlobalActions(registry);
    std::erase_if(actions, [&](auto const* action) { return !style.shows(action->m_section); });
    if (!actions.empty()) {
        return topicList(actions);
    }
    ShownOptions all;
    all.reserve(registry.records().size());
    for (auto const& record : registry.records()) {
        all.push_back(record.get());
    }
    return formatOptions(registry, all, style);
}

std::string topicHelp(RegisteredOptionStorage const& registry, std::string_view topic,
                      HelpStyle style) {
    OptionDescription const* const option = registry.find(topic, {});
    return option != nullptr ? formatOptions(registry, {option}, style)
                             : unknownTopicHelp(registry, topic, style);
}

std::string actionHelp(RegisteredOptionStorage const& registry, std::string_view action,
                       HelpStyle style) {
    OptionDescription const* const found = registry.find(action, {});
    return found != nullptr ? formatOptions(registry, findActionModifiers(registry, *found), style)
                            : unknownTopicHelp(registry, action, style);
}

std::string globalModifiersHelp(RegisteredOptionStorage const& registry, HelpStyle style) {
    ShownOptions const modifiers = getGlobalModifiers(registry);
    return modifiers.empty() ? std::string() : formatOptions(registry, modifiers, style);
}

std::string unknownTopicHelp(RegisteredOptionStorage const& registry, std::string_view topic,
                             HelpStyle style) {
    // The two sentences follow each other without a blank; tools compare this text.
    return internal::join({"Help for ", topic, " not available.",
                           "Please use one of the following topics:\n",
                           generalHelp(registry, style)});
}

}  // namespace varo_3_3
