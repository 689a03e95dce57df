#pragma once

#include <vector>

#include "options/option_registry.h"

namespace varo_3_3 {

/// Declarations to be shown, in declaration order.
using ShownOptions = std::vector<OptionDescription const*>;

/// All actions.
ShownOptions getGlobalActions(RegisteredOptionStorage const& registry);

/// All options and modifiers without tags, which go with every action.
ShownOptions getGlobalModifiers(RegisteredOptionStorage const& registry);

/// All modifiers that share a tag with `action`.
ShownOptions findActionModifiers(RegisteredOptionStorage const& registry,
                                 OptionDescription const& action);

}  // namespace varo_3_3
