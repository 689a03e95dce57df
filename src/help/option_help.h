#pragma once

#include <string>
#include <string_view>

#include "options/option_registry.h"

namespace varo_3_3 {

/// What a help text shows and how.
struct HelpStyle {
    int flags;    ///< the parser's creation flags
    bool hidden;  ///< only the hidden section instead of all others

    /// Whether declarations of this section are shown.
    bool shows(std::string_view section) const { return (section == "varo_hidden") == hidden; }
};

// The texts below that have entries have the heading of every section that the style shows, and no
// entry of a positional declaration.

/// The list of the actions or, when the style shows none, all options.
std::string generalHelp(RegisteredOptionStorage const& registry, HelpStyle style);

// Those for one topic or action are built for size.

/// The entry of the declaration called `topic`; if there is none, the general help after a
/// sentence that says so.
[[gnu::cold]] std::string topicHelp(RegisteredOptionStorage const& registry, std::string_view topic,
                                    HelpStyle style);

/// The entries of an action's modifiers, or the general help after that sentence.
[[gnu::cold]] std::string actionHelp(RegisteredOptionStorage const& registry,
                                     std::string_view action, HelpStyle style);

/// The entries of the global modifiers; "", without headings, if there are none.
[[gnu::cold]] std::string globalModifiersHelp(RegisteredOptionStorage const& registry,
                                              HelpStyle style);

}  // namespace varo_3_3
