#include "help/shown_options.h"

#include "options/tag_sets.h"

namespace varo_3_3 {
namespace {

template <class Predicate>
ShownOptions selectOptions(RegisteredOptionStorage const& registry, Predicate isSelected) {
    ShownOptions selected;
    for (auto const& record : registry.records()) {
        if (isSelected(*record)) {
            selected.push_back(record.get());
        }
    }
    return selected;
}

}  // namespace

ShownOptions getGlobalActions(RegisteredOptionStorage const& registry) {
    return selectOptions(registry,
                         [](OptionDescription const& record) { return record.isAction(); });
}

ShownOptions getGlobalModifiers(RegisteredOptionStorage const& registry) {
    return selectOptions(registry, [](OptionDescription const& record) {
        return !record.isAction() && record.m_tags.empty();
    });
}

ShownOptions findActionModifiers(RegisteredOptionStorage const& registry,
                                 OptionDescription const& action) {
    return selectOptions(registry, [&](OptionDescription const& record) {
        return &record != &action && !record.isAction() &&
               isIntersected(record.m_tags, action.m_tags);
    });
}

}  // namespace varo_3_3
