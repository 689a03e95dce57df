#include "help/action_help.h"

#include "options/tag_sets.h"
#include "platform/throw.h"

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
                                 unsigned long actionIndex) {
    OptionRecords const& records = registry.records();
    if (actionIndex >= records.size()) {
        internal::throwOutOfRange(
            "vector::_M_range_check: __n (which is %zu) >= this->size() (which is %zu)",
            actionIndex, records.size());
    }
    OptionDescription const& action = *records[actionIndex];
    return selectOptions(registry, [&](OptionDescription const& record) {
        return &record != &action && !record.isAction() &&
               isIntersected(record.m_tags, action.m_tags);
    });
}

std::string actionHelp(RegisteredOptionStorage const& registry, std::string_view action,
                       HelpStyle style) {
    unsigned long index = 0;
    if (findOption(action, index, registry.names(), {})) {
        return unknownTopicHelp(registry, action, style);
    }
    return formatOptions(registry, findActionModifiers(registry, index), style);
}

std::string globalModifiersHelp(RegisteredOptionStorage const& registry, HelpStyle style) {
    ShownOptions const modifiers = getGlobalModifiers(registry);
    return modifiers.empty() ? std::string() : formatOptions(registry, modifiers, style);
}

}  // namespace varo_3_3
