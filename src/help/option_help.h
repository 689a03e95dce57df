#pragma once

#include <string>
#include <string_view>

#include "help/shown_options.h"
#include "options/option_registry.h"

namespace varo_3_3 {

/// What a help text shows and how.
struct HelpStyle {
    int flags;    ///< the parser's creation flags
    bool hidden;  ///< only the hidden section instead of all others

    /// Whether declarations of this section are shown.
    bool shows(std::string_view section) const { return (section == "varo_hidden") == hidden; }
};

/// The entries of `options` under the headings of their sections. Every section that the style
/// shows has its heading; positional declarations have no entry.
std::string formatOptions(RegisteredOptionStorage const& registry, ShownOptions const& options,
                          HelpStyle style);

/// The list of the actions or, when the style shows none, all options.
std::string generalHelp(RegisteredOptionStorage const& registry, HelpStyle style);

/// The entry of the declaration called `topic`; if there is none, what unknownTopicHelp says.
std::string topicHelp(RegisteredOptionStorage const& registry, std::string_view topic,
                      HelpStyle style);

/// The entries of an action's modifiers, or what unknownTopicHelp says.
std::string actionHelp(RegisteredOptionStorage const& registry, std::string_view action,
                       HelpStyle style);

/// The entries of the global modifiers; "", without headings, if there are none.
std::string globalModifiersHelp(RegisteredOptionStorage const& registry, HelpStyle style);

/// The general help after a sentence that says that `topic` has no help of its own.
std::string unknownTopicHelp(RegisteredOptionStorage const& registry, std::string_view topic,
                             HelpStyle style);

}  // namespace varo_3_3
