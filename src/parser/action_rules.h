#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "options/option_registry.h"
#include "results/parse_result.h"

namespace varo_3_3 {

/// Groups of action names; the actions of a group may be given together.
using ActionGroups = std::vector<std::set<std::string>>;

/// Actions met one by one, and the groups that contain all of them.
class MetActions {
public:
    /// `groups` outlives this object.
    explicit MetActions(ActionGroups const& groups);

    void add(std::string_view name);

    /// Whether one group contains all that were added. Without groups nothing is allowed.
    bool areAllowed() const { return !m_allowing.empty(); }

private:
    std::vector<std::set<std::string> const*> m_allowing;
};

/// Whether the options and actions of a command line fit together and, if not, which do not.
struct ActionVerdict {
    enum Kind {
        kFits,
        /// An entry belongs to no declaration of this parser.
        kUndeclared,
        /// `action` and `other`, which was met before it, may not be given together.
        kActionsCollide,
        /// Options, but none of the actions that are declared.
        kNoAction,
        /// `action` does not accept the option `other`.
        kNotAccepted
    };

    Kind kind = kFits;
    /// The action that decides about modifiers: of several the last by name. Null without actions.
    OptionDescription const* action = nullptr;
    OptionDescription const* other = nullptr;
};

/// The text for the user; "" when all fits, and for an undeclared entry.
[[gnu::cold]] std::string textOf(ActionVerdict const& verdict);

/// Whether an option belongs to the action, or to every action.
bool accepts(OptionDescription const& action, OptionDescription const& option);

/// Judges the entries of a result, which it sorts by name: for the second phase of a parse, and for
/// those who must know what that would say.
ActionVerdict judgeActions(std::vector<GivenOption>& given, RegisteredOptionStorage const& registry,
                           ActionGroups const& groups);

/// What was given, taken apart once, so that many declarations can be held against it.
class Judge {
public:
    /// Sorts `given` by name. The others, and the names in `given`, outlive this object.
    Judge(std::vector<GivenOption>& given, RegisteredOptionStorage const& registry,
          ActionGroups const& groups);

    /// Of all that was given.
    ActionVerdict const& verdict() const { return m_verdict; }

    /// The verdict when `more` is given too. Requires that all that was given fits, or lacks an
    /// action only. Takes time in the number of the actions given; for an action also in that of
    /// the options given that it accepts and some other action does not.
    ActionVerdict with(OptionDescription const& more) const;

private:
    RegisteredOptionStorage const& m_registry;
    ActionGroups const& m_groups;
    ActionVerdict m_verdict;
    std::vector<GivenOption> m_actions;
    std::vector<GivenOption> m_modifiers;
};

}  // namespace varo_3_3
