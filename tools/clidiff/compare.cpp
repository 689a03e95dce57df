#include "compare.h"

#include <algorithm>
#include <deque>
#include <map>
#include <string_view>

#include "names.h"
#include "values.h"

namespace clidiff {
namespace {

constexpr std::size_t kNone = CommandLine::kNone;

/// What is in `these` and not in `those`, in its order.
template <class Type>
std::vector<Type> without(std::vector<Type> const& these, std::vector<Type> const& those) {
    std::set<Type> const left(those.begin(), those.end());
    std::vector<Type> rest;
    std::ranges::copy_if(these, std::back_inserter(rest),
                         [&](Type const& one) { return !left.contains(one); });
    return rest;
}

/// Walks over the left set alone.
bool intersect(std::set<std::string> const& left, std::set<std::string> const& right) {
    return std::ranges::any_of(left, [&](std::string const& tag) { return right.contains(tag); });
}

std::string inQuotes(std::string_view text) {
    return "'" + std::string(text) + "'";
}

std::string quoteValue(std::optional<TypedValue> const& value) {
    return value ? inQuotes(value->text) : "none";
}

/// Whether a value may be split in another way than before. The only values of a boolean that is
/// not positional are "0" and "1".
bool splitsOtherwise(Declaration const& older, Declaration const& newer) {
    if (older.separator == newer.separator) {
        return false;
    }
    auto const splitsBooleans = [](std::string const& separator) {
        return separator == "0" || separator == "1";
    };
    if (older.isPositional || (older.type != "bool" && older.type != "none")) {
        return true;
    }
    return older.type == "bool" &&
           (splitsBooleans(older.separator) || splitsBooleans(newer.separator));
}

/// The work of compare().
class Comparison {
public:
    Comparison(CommandLine const& older, CommandLine const& newer)
        : m_older(older), m_newer(newer), m_oldNames(older), m_newNames(newer) {}

    Changes run() {
        pairUp();
        for (std::size_t number = 0; number < m_pairs.size(); ++number) {
            if (m_pairs[number] != kNone) {
                compareDeclaration(number);
            }
        }
        compareWords();
        compareShared();
        comparePositional();
        compareActions();
        compareGroups();
        listNew();
        return std::move(m_changes);
    }

private:
    /// A name or abbreviation, or several that begin each other, with another meaning than before.
    struct BrokenWord {
        std::size_t declaration = 0;
        std::string_view shortest;
        std::string_view longest;
        std::string outcome;  ///< "" for none
    };

    /// What phase two of the parser finds under a first name.
    struct Found {
        Declaration const* first = nullptr;
        std::set<std::string> actions;  ///< of all declarations of this name
    };
    struct Role {
        std::size_t number;  ///< of an old declaration of this first name
        bool hasSameKey;
        Found before;
        Found after;
    };

    /// The old actions, by number, and which of them have a tag.
    struct Actions {
        std::vector<Role> all;
        std::map<std::string_view, std::vector<std::size_t>> ofTag;
    };

    void pairUp();
    void compareDeclaration(std::size_t number);
    void compareWords();
    BrokenWord compareWord(std::string_view typed) const;
    std::string describe(Names::Meaning const& meaning) const;
    void compareShared();
    bool isShared(std::size_t number, std::string const& name) const;
    void comparePositional();
    void compareActions();
    void compareModifier(Role const& option, Actions const& actions);
    static std::set<std::size_t> acceptedBefore(Role const& option, Actions const& actions);
    void compareGroups();
    void listNew();

    static Found lookUp(CommandLine const& line, Names const& names, std::string_view key);

    void addBreak(std::size_t number, std::string const& text) {
        m_changes.breaks.push_back("--" + m_older.declarations[number].names.front() + ": " + text);
    }
    void addBreak(BrokenWord const& word);
    void addBreak(std::string const& text) { m_changes.breaks.push_back(text); }
    void addAddition(std::string const& text) { m_changes.additions.push_back(text); }

    CommandLine const& m_older;
    CommandLine const& m_newer;
    Names const m_oldNames;
    Names const m_newNames;
    std::vector<std::size_t> m_pairs;   ///< for each old declaration the new one, or kNone
    std::vector<std::size_t> m_origin;  ///< the other way round
    Changes m_changes;
};

/// Pairs each old declaration with a new one that has its primary name: of several first with one
/// of the same actions, then with the first that is left.
void Comparison::pairUp() {
    using NameAndTags = std::pair<std::string_view, std::set<std::string>>;
    std::map<NameAndTags, std::deque<std::size_t>> ofSameActions;
    std::map<std::string_view, std::deque<std::size_t>> ofSameName;
    for (std::size_t number = 0; number < m_newer.declarations.size(); ++number) {
        Declaration const& declaration = m_newer.declarations[number];
        for (std::string const& name : declaration.names) {
            ofSameActions[{name, declaration.tags}].push_back(number);
            ofSameName[name].push_back(number);
        }
    }
    m_pairs.assign(m_older.declarations.size(), kNone);
    m_origin.assign(m_newer.declarations.size(), kNone);
    auto const pairWithOne = [this](std::size_t number, std::deque<std::size_t>& candidates) {
        while (!candidates.empty() && m_pairs[number] == kNone) {
            if (m_origin[candidates.front()] == kNone) {
                m_pairs[number] = candidates.front();
                m_origin[candidates.front()] = number;
            }
            candidates.pop_front();
        }
    };
    for (std::size_t number = 0; number < m_pairs.size(); ++number) {
        Declaration const& declaration = m_older.declarations[number];
        pairWithOne(number, ofSameActions[{declaration.names.front(), declaration.tags}]);
    }
    for (std::size_t number = 0; number < m_pairs.size(); ++number) {
        pairWithOne(number, ofSameName[m_older.declarations[number].names.front()]);
        if (m_pairs[number] == kNone) {
            addBreak(number, "removed");
        }
    }
}

void Comparison::compareDeclaration(std::size_t number) {
    Declaration const& older = m_older.declarations[number];
    Declaration const& newer = m_newer.declarations[m_pairs[number]];
    if (older.isAction != newer.isAction) {
        addBreak(number, newer.isAction ? "became an action" : "is no longer an action");
    }
    for (std::string const& name : without(older.names, newer.names)) {
        addBreak(number, "name " + inQuotes(name) + " removed");
    }
    for (std::string const& name : without(newer.names, older.names)) {
        addAddition("--" + older.names.front() + ": name " + inQuotes(name));
    }
    if (older.type != newer.type) {
        addBreak(number, "type changed from " + older.type + " to " + newer.type);
    }
    if (older.defaultValue != newer.defaultValue) {
        addBreak(number, "default changed from " + quoteValue(older.defaultValue) + " to " +
                             quoteValue(newer.defaultValue));
    }
    if (splitsOtherwise(older, newer)) {
        addBreak(number, "values are split at " + inQuotes(newer.separator) + " instead of " +
                             inQuotes(older.separator));
    }
    if (older.readsFiles != newer.readsFiles) {
        addBreak(number, newer.readsFiles ? "its values now name option files"
                                          : "its values no longer name option files");
    }
    if (newer.isHidden && !older.isHidden) {
        addBreak(number, "hidden");
    }
    if (older.type == newer.type && (older.isPositional || older.type != "none")) {
        for (std::string const& broken : brokenValues(older, newer)) {
            addBreak(number, broken);
        }
    }
    if (older.allowed.empty()) {
        return;
    }
    for (TypedValue const& value : without(newer.allowed, older.allowed)) {
        addAddition("--" + older.names.front() + ": value " + inQuotes(value.text));
    }
}

/// Every name and abbreviation that meant a declaration must mean its pair. What is told of a word
/// and of longer ones is told once.
void Comparison::compareWords() {
    std::vector<std::string_view> texts;
    for (Names const* const names : {&m_oldNames, &m_newNames}) {
        for (Names::Key const& key : names->keys()) {
            texts.push_back(key.text);
        }
    }
    sortUnique(texts);
    BrokenWord broken;
    for (std::string_view const typed : tellingBeginnings(texts)) {
        BrokenWord next = compareWord(typed);
        bool const isLonger = !broken.outcome.empty() && typed.starts_with(broken.longest) &&
                              next.declaration == broken.declaration &&
                              next.outcome == broken.outcome;
        if (isLonger) {
            broken.longest = typed;
        } else if (!next.outcome.empty()) {
            addBreak(broken);
            broken = std::move(next);
        }
    }
    addBreak(broken);
}

void Comparison::addBreak(BrokenWord const& word) {
    if (word.outcome.empty()) {
        return;
    }
    std::string text = "'--" + std::string(word.shortest) + "' ";
    if (word.shortest != word.longest) {
        text += "to '--" + std::string(word.longest) + "' ";
    }
    addBreak(word.declaration, text + word.outcome);
}

Comparison::BrokenWord Comparison::compareWord(std::string_view typed) const {
    Names::Meaning const before = m_oldNames.find(typed);
    bool const canBeTyped = typed.front() != '-' && typed.find('=') == std::string_view::npos;
    if (before.kind != Names::Meaning::kOne || m_pairs[before.declaration] == kNone ||
        !canBeTyped) {
        return {};
    }
    Names::Meaning const after = m_newNames.find(typed);
    bool const isSame = after.kind == Names::Meaning::kOne &&
                        after.declaration == m_pairs[before.declaration] &&
                        after.isNegated == before.isNegated;
    return isSame ? BrokenWord{} : BrokenWord{before.declaration, typed, typed, describe(after)};
}

/// What became of a word, to be read after it.
std::string Comparison::describe(Names::Meaning const& meaning) const {
    if (meaning.kind == Names::Meaning::kNothing) {
        return "is unknown";
    }
    if (meaning.kind == Names::Meaning::kOne) {
        Declaration const& other = m_newer.declarations[meaning.declaration];
        std::string text = "now means --" + std::string(meaning.isNegated ? "no-" : "");
        text += other.names.front();
        if (!other.tags.empty() && !other.isAction) {
            text += " of --" + *other.tags.begin();
        }
        return text;
    }
    constexpr std::size_t kMostShown = 4;
    std::string text = "became ambiguous:";
    for (std::size_t at = 0; at < std::min(meaning.candidates.size(), kMostShown); ++at) {
        text += (at == 0 ? " --" : ", --") + meaning.candidates[at].text;
    }
    return text + (meaning.candidates.size() > kMostShown ? ", ..." : "");
}

/// Whether another declaration of the old line, or of the new one if it has an old one or a
/// default, has `name` too.
bool Comparison::isShared(std::size_t number, std::string const& name) const {
    auto const isOther = [&](Names::Key const& key) {
        return key.declaration != number && !key.isNegated;
    };
    auto const counts = [&](Names::Key const& key) {
        return key.declaration != m_pairs[number] && !key.isNegated &&
               (m_origin[key.declaration] != kNone ||
                m_newer.declarations[key.declaration].defaultValue);
    };
    return std::ranges::any_of(m_oldNames.exactly(name), isOther) ||
           std::ranges::any_of(m_newNames.exactly(name), counts);
}

/// Declarations that share a name may share the place of their values in a result, by rules that
/// follow all their names and their order. So these must stay as they are.
void Comparison::compareShared() {
    for (std::size_t number = 0; number < m_pairs.size(); ++number) {
        if (m_pairs[number] == kNone) {
            continue;
        }
        std::vector<std::string> const& before = m_older.declarations[number].names;
        std::vector<std::string> const& after = m_newer.declarations[m_pairs[number]].names;
        for (std::vector<std::string> const* const names : {&before, &after}) {
            auto const shared = std::ranges::find_if(
                *names, [&](std::string const& name) { return isShared(number, name); });
            if (before != after && shared != names->end()) {
                addBreak(number, "names changed, of which it shares " + inQuotes(*shared));
                break;
            }
        }
    }
    std::string_view lastText;
    std::size_t lastPair = kNone;
    for (Names::Key const& key : m_oldNames.keys()) {
        std::size_t const pair = m_pairs[key.declaration];
        if (key.isNegated || pair == kNone) {
            continue;
        }
        if (key.text == lastText && lastPair != kNone && pair < lastPair) {
            addBreak(key.declaration,
                     "declared before another one that shares " + inQuotes(key.text));
        }
        lastText = key.text;
        lastPair = pair;
    }
}

void Comparison::comparePositional() {
    std::size_t const before = m_older.positional();
    std::size_t const after = m_newer.positional();
    bool const hadPositional = before != kNone;
    bool const hasPositional = after != kNone;
    bool const mayHaveDropped = !m_older.unknownIsError;
    if (hadPositional && m_pairs[before] != after && m_pairs[before] != kNone) {
        addBreak(before, "no longer takes the words without dashes");
    }
    if (!hadPositional && hasPositional && (mayHaveDropped || m_newer.positionalAfterMarker)) {
        addBreak("words that were ignored are now values of --" +
                 m_newer.declarations[after].names.front());
    }
    bool const isNothingUnknown = hadPositional && !m_older.dashGuard;
    if (mayHaveDropped && m_newer.unknownIsError && !isNothingUnknown) {
        addBreak("words that were ignored are now errors");
    }
    if (hadPositional && m_older.positionalAfterMarker != m_newer.positionalAfterMarker) {
        addBreak(before, m_newer.positionalAfterMarker ? "takes the words after '--' as well"
                                                       : "no longer takes the words after '--'");
    }
    if (hadPositional && m_older.takeTheRest != m_newer.takeTheRest) {
        addBreak(before, m_newer.takeTheRest ? "takes everything after its first value"
                                             : "no longer takes everything after its first value");
    }
    if (hadPositional && m_newer.dashGuard && !m_older.dashGuard) {
        addBreak(before, "no longer takes '-'");
    }
    if (hasPositional && m_older.dashGuard && !m_newer.dashGuard && mayHaveDropped) {
        addBreak("'-', which was ignored, is now a value");
    }
}

Comparison::Found Comparison::lookUp(CommandLine const& line, Names const& names,
                                     std::string_view key) {
    Found found;
    for (Names::Key const& candidate : names.exactly(key)) {
        Declaration const& declaration = line.declarations[candidate.declaration];
        found.first = found.first == nullptr ? &declaration : found.first;
        found.actions.insert(declaration.tags.begin(), declaration.tags.end());
    }
    return found;
}

/// Which options may be given with which actions. Phase two of the parser looks all that was stored
/// up again by first names, so declarations of one first name are one here.
void Comparison::compareActions() {
    if (!m_newer.hasActions()) {
        return;
    }
    if (!m_older.hasActions()) {
        addBreak("there are actions now, and one of them must be given");
        return;
    }
    std::set<std::pair<std::string_view, std::string_view>> keys;
    Actions actions;
    std::vector<Role> options;
    for (std::size_t number = 0; number < m_pairs.size(); ++number) {
        if (m_pairs[number] == kNone) {
            continue;
        }
        std::string const& key = m_older.declarations[number].names.front();
        std::string const& newKey = m_newer.declarations[m_pairs[number]].names.front();
        if (keys.emplace(key, newKey).second) {
            Role const role{number, key == newKey, lookUp(m_older, m_oldNames, key),
                            lookUp(m_newer, m_newNames, newKey)};
            (role.before.first->isAction ? actions.all : options).push_back(role);
        }
    }
    for (std::size_t number = 0; number < actions.all.size(); ++number) {
        Role const& action = actions.all[number];
        for (std::string const& tag : action.before.first->tags) {
            actions.ofTag[tag].push_back(number);
        }
        if (!action.after.first->isAction || !action.hasSameKey ||
            action.before.first->names.front() != action.after.first->names.front()) {
            addBreak(action.number, "the action has another first name");
        }
    }
    for (Role const& option : options) {
        compareModifier(option, actions);
    }
}

void Comparison::compareModifier(Role const& option, Actions const& actions) {
    if (option.after.first->isAction) {
        addBreak(option.number, "shares its name with an action");
        return;
    }
    if (option.after.first->tags.empty()) {
        return;
    }
    for (std::size_t const number : acceptedBefore(option, actions)) {
        Role const& action = actions.all[number];
        if (!intersect(action.after.first->tags, option.after.actions)) {
            addBreak(option.number,
                     "no longer accepted by --" + action.before.first->names.front());
        }
    }
}

/// The numbers of the old actions that an option could be given with.
std::set<std::size_t> Comparison::acceptedBefore(Role const& option, Actions const& actions) {
    std::set<std::size_t> numbers;
    if (option.before.first->tags.empty()) {
        for (std::size_t number = 0; number < actions.all.size(); ++number) {
            numbers.insert(numbers.end(), number);
        }
    }
    for (std::string const& tag : option.before.actions) {
        auto const found = actions.ofTag.find(tag);
        if (found != actions.ofTag.end()) {
            numbers.insert(found->second.begin(), found->second.end());
        }
    }
    return numbers;
}

/// Which actions may be combined.
void Comparison::compareGroups() {
    std::set<std::string_view> declared;
    for (Declaration const& declaration : m_older.declarations) {
        if (declaration.isAction) {
            declared.insert(declaration.names.front());
        }
    }
    std::set const newGroups(m_newer.together.begin(), m_newer.together.end());
    std::map<std::string_view, std::vector<std::set<std::string> const*>> groupsOf;
    for (std::set<std::string> const& group : newGroups) {
        for (std::string const& action : group) {
            groupsOf[action].push_back(&group);
        }
    }
    for (std::set<std::string> const& group : m_older.together) {
        std::vector<std::string_view> combined;
        std::ranges::copy_if(group, std::back_inserter(combined),
                             [&](std::string const& action) { return declared.contains(action); });
        if (combined.size() < 2 || newGroups.contains(group)) {
            continue;
        }
        std::string_view const rarest = *std::ranges::min_element(
            combined, {}, [&](std::string_view action) { return groupsOf[action].size(); });
        bool const isAllowed = std::ranges::any_of(groupsOf[rarest], [&](auto const* candidate) {
            return std::ranges::all_of(combined, [&](std::string_view action) {
                return candidate->contains(std::string(action));
            });
        });
        if (!isAllowed) {
            std::string text = "no longer allowed together:";
            for (std::string_view const action : combined) {
                text += " --" + std::string(action);
            }
            addBreak(text);
        }
    }
}

void Comparison::listNew() {
    bool const hasActions = m_newer.hasActions();
    for (std::size_t number = 0; number < m_origin.size(); ++number) {
        Declaration const& declaration = m_newer.declarations[number];
        if (m_origin[number] != kNone) {
            continue;
        }
        std::string const name = "--" + declaration.names.front();
        addAddition(name);
        if (!declaration.defaultValue) {
            continue;
        }
        auto const isShared = [&](std::string const& shared) {
            return std::ranges::any_of(m_newNames.exactly(shared), [&](Names::Key const& key) {
                return !key.isNegated && m_origin[key.declaration] != kNone;
            });
        };
        if (declaration.readsFiles) {
            addBreak(name + ": its default is an option file");
        } else if (hasActions) {
            addBreak(name +
                     ": its default counts as given, so every line needs an action that "
                     "accepts it");
        } else if (std::ranges::any_of(declaration.names, isShared)) {
            addBreak(name + ": has a default and shares a name");
        }
    }
}

}  // namespace

Changes compare(CommandLine const& older, CommandLine const& newer) {
    return Comparison(older, newer).run();
}

}  // namespace clidiff
