#include "parser/action_rules.h"

#include <algorithm>
#include <exception>
#include <optional>

#include "options/tag_sets.h"
#include "parser/basic_parser.h"
#include "platform/join.h"
#include "platform/lead_sort.h"
#include "platform/reserve_more.h"
#include "platform/text_lead.h"

namespace varo_3_3 {
namespace {

/// Finds the action: of several that are allowed together, the last by name.
ActionVerdict findAction(std::vector<GivenOption> const& given,
                         RegisteredOptionStorage const& registry, ActionGroups const& groups) {
    std::optional<MetActions> met;  // from the second action on
    OptionDescription const* action = nullptr;
    bool hasOption = false;
    for (GivenOption const& entry : given) {
        OptionDescription const* const record = registry.find(entry.name, {});
        if (record == nullptr) {
            return {ActionVerdict::kUndeclared};
        }
        if (!record->isAction()) {
            hasOption = true;
        } else if (action == nullptr) {
            action = record;
        } else if (action != record) {
            if (!met) {
                met.emplace(groups).add(action->firstName());
            }
            met->add(record->firstName());
            if (!met->areAllowed()) {
                return {ActionVerdict::kActionsCollide, record, action};
            }
            action = record;
        }
    }
    bool const lacksAction = action == nullptr && hasOption && registry.actionCount() != 0;
    return {lacksAction ? ActionVerdict::kNoAction : ActionVerdict::kFits, action};
}

void sortByName(std::vector<GivenOption>& given) {
    std::vector<GivenOption> const unsorted = given;
    std::vector<internal::Lead> order(given.size());
    for (std::size_t number = 0; number < order.size(); ++number) {
        order[number] = {internal::leadOf(given[number].name), static_cast<std::uint32_t>(number)};
    }
    internal::sortByLead(order, [&](std::uint32_t left, std::uint32_t right) {
        return unsorted[left].name < unsorted[right].name;
    });
    for (std::size_t number = 0; number < order.size(); ++number) {
        given[number] = unsorted[order[number].item];
    }
}

/// Refuses the first option given that belongs neither to the action nor to every action, if all
/// fitted so far.
[[gnu::noinline]] void judgeOptions(std::vector<GivenOption> const& given,
                                    RegisteredOptionStorage const& registry,
                                    ActionVerdict& verdict) {
    OptionDescription const* const action = verdict.action;
    if (verdict.kind != ActionVerdict::kFits || action == nullptr) {
        return;
    }
    for (GivenOption const& entry : given) {
        OptionDescription const* record = registry.find(entry.name, action->m_tags);
        if (record == nullptr) {
            record = registry.find(entry.name, {});
        }
        if (entry.isStored && !record->isAction() && !accepts(*action, *record)) {
            verdict.kind = ActionVerdict::kNotAccepted;
            verdict.other = record;
            return;
        }
    }
}

}  // namespace

MetActions::MetActions(ActionGroups const& groups) {
    m_allowing.reserve(groups.size());
    for (std::set<std::string> const& group : groups) {
        internal::emplaceReserved(m_allowing, &group);
    }
}

void MetActions::add(std::string_view name) {
    std::string const text(name);
    std::erase_if(m_allowing, [&](auto const* group) { return !group->contains(text); });
}

bool accepts(OptionDescription const& action, OptionDescription const& option) {
    return option.m_tags.empty() || isIntersected(option.m_tags, action.m_tags);
}

ActionVerdict judgeActions(std::vector<GivenOption>& given, RegisteredOptionStorage const& registry,
                           ActionGroups const& groups) {
    if (registry.actionCount() != 0) {  // otherwise the order has no effect
        sortByName(given);
    }
    ActionVerdict verdict = findAction(given, registry, groups);
    judgeOptions(given, registry, verdict);
    return verdict;
}

Judge::Judge(std::vector<GivenOption>& given, RegisteredOptionStorage const& registry,
             ActionGroups const& groups)
    : m_registry(registry), m_groups(groups), m_verdict(judgeActions(given, registry, groups)) {
    for (GivenOption const& entry : given) {
        OptionDescription const* const record = registry.find(entry.name, {});
        if (record != nullptr && (record->isAction() || !record->m_tags.empty())) {
            (record->isAction() ? m_actions : m_modifiers).push_back({entry.name, entry.isStored});
        }
    }
}

ActionVerdict Judge::with(OptionDescription const& more) const {
    std::vector<GivenOption> given = m_actions;
    given.push_back({more.firstName(), true});
    ActionVerdict verdict = judgeActions(given, m_registry, m_groups);
    // An option changes nothing for those that were given.
    OptionDescription const* const first = m_registry.find(more.firstName(), {});
    if (first != nullptr && first->isAction()) {
        judgeOptions(m_modifiers, m_registry, verdict);
    }
    return verdict;
}

int BasicParser::allowSimultaneousActions(std::set<std::string> const& actions) {
    try {
        m_simultaneousActions.push_back(actions);
    } catch (std::exception const&) {  // no memory
        return 0;
    }
    return 1;
}

bool BasicParser::assertActionsCanBeUsedSimultaneously(std::set<std::string> const& actions) const {
    MetActions met(m_simultaneousActions);
    for (std::string const& action : actions) {
        met.add(action);
    }
    return met.areAllowed();
}

std::string textOf(ActionVerdict const& verdict) {
    auto const [kind, action, other] = verdict;
    switch (kind) {
        case ActionVerdict::kActionsCollide:
            return internal::join({"Action '-", action->firstName(), "' and action '-",
                                   other->firstName(),
                                   "' were defined, but only one action possible."});
        case ActionVerdict::kNoAction:
            return "No action defined.";
        case ActionVerdict::kNotAccepted:
            return internal::join({"Action '-", action->firstName(), "' doesn't accept option '-",
                                   other->firstName(), "'"});
        default:
            return {};
    }
}

int BasicParser::parse_phase_two(ParseSession& session) {
    // If every entry was met in this parse, each is an option of this parser, which is all there is
    // to check without actions.
    if (m_registry.actionCount() == 0 && session.result.allMet() && !m_registry.hasRetired()) {
        return kSuccess;
    }
    std::vector<GivenOption> given = session.result.givenOptions();
    ActionVerdict const verdict = judgeActions(given, m_registry, m_simultaneousActions);
    if (verdict.kind == ActionVerdict::kFits) {
        return kSuccess;
    }
    if (verdict.kind == ActionVerdict::kUndeclared) {
        return kRefused;
    }
    session.error = textOf(verdict);
    bool const isCollision = verdict.kind == ActionVerdict::kActionsCollide;
    keepFailedActions(session, isCollision ? verdict.action : nullptr, verdict.other);
    return kParseError;
}

}  // namespace varo_3_3
