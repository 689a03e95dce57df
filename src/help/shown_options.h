#pragma once

#include "options/option_description.h"

namespace varo_3_3 {

/// Whether a declaration is an option, or a modifier without tags, which goes with every action.
bool isGlobalModifier(OptionDescription const& record);

/// Whether a declaration is a modifier that shares a tag with `action`.
bool isModifierOf(OptionDescription const& record, OptionDescription const& action);

}  // namespace varo_3_3
