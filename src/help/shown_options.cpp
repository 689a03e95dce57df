#include "help/shown_options.h"

#include "options/tag_sets.h"

namespace varo_3_3 {

bool isGlobalModifier(OptionDescription const& record) {
    return !record.isAction() && record.m_tags.empty();
}

bool isModifierOf(OptionDescription const& record, OptionDescription const& action) {
    return &record != &action && !record.isAction() && isIntersected(record.m_tags, action.m_tags);
}

}  // namespace varo_3_3
