#pragma once

#include <string>
#include <string_view>

#include "help/option_help.h"
#include "options/option_registry.h"

namespace varo_3_3 {

/// All actions.
ShownOptions getGlobalActions(RegisteredOptionStorage const& registry);

/// All options and modifiers without tags, which go with every action.
ShownOptions getGlobalModifiers(RegisteredOptionStorage const& registry);

/// All modifiers that share a tag with the declaration at `actionIndex`. Throws std::out_of_range
/// when there is no such declaration.
ShownOptions findActionModifiers(RegisteredOptionStorage const& registry,
                                 unsigned long actionIndex);

/// The entries of an action's modifiers, or what unknownTopicHelp says.
std::string actionHelp(RegisteredOptionStorage const& registry, std::string_view action,
                       HelpStyle style);

/// The entries of the global modifiers; without any, "" and no headings.
std::string globalModifiersHelp(RegisteredOptionStorage const& registry, HelpStyle style);

}  // namespace varo_3_3
