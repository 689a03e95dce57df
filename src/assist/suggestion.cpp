#include <algorithm>
#include <vector>

#include "assist/answer.h"
#include "assist/typo.h"
#include "assist/walk.h"
#include "options/tag_sets.h"
#include "options/value_text.h"
#include "platform/join.h"
#include "recognizers/dashes.h"
#include "varo/assist.h"
#include "varo/printable.h"

namespace varo_3_3 {
namespace {

using internal::Typo;
using internal::Walk;
using internal::WalkedWord;

constexpr std::size_t kMostListed = 3;

/// A name as it is typed, with the dashes that its length asks for.
std::string dashed(std::string_view name) {
    return internal::join({name.size() > 1 ? "--" : "-", name});
}

/// 'a', 'b' or 'c'
std::string anyOf(std::vector<std::string> const& words) {
    std::string list;
    for (std::size_t at = 0; at < words.size(); ++at) {
        list += at == 0 ? "'" : at + 1 == words.size() ? " or '" : ", '";
        list += words[at];
        list += '\'';
    }
    return list;
}

std::string didYouMean(std::vector<std::string> const& words) {
    return words.empty() ? "" : internal::join({"Did you mean ", anyOf(words), "?"});
}

/// The nearest of the names that it is shown, the first few of them in their order.
class Nearest {
public:
    /// Whether a name of this rank would be among them.
    bool wants(unsigned rank) const {
        return rank < m_rank || (rank == m_rank && m_names.size() < kMostListed);
    }

    void offer(unsigned rank, std::string_view prefix, std::string_view name,
               OptionDescription const& option) {
        if (rank == Typo::kFar || !wants(rank)) {
            return;
        }
        if (rank < m_rank) {
            m_rank = rank;
            m_names.clear();
            m_option = &option;
        }
        std::string text = internal::join({prefix, name});
        if (std::find(m_names.begin(), m_names.end(), text) == m_names.end()) {
            m_names.push_back(std::move(text));
        }
    }

    std::vector<std::string> const& names() const { return m_names; }

    unsigned edits() const { return Typo::editsOf(m_rank); }

    /// That of the first name; null without one.
    OptionDescription const* option() const { return m_option; }

private:
    unsigned m_rank = Typo::kFar;
    std::vector<std::string> m_names;
    OptionDescription const* m_option = nullptr;
};

/// What a failed parse may have meant.
class Suggestion {
public:
    Suggestion(BasicParser& parser, Failure const& failure)
        : m_parser(parser), m_failure(failure), m_walk(parser) {
        for (Failure::Word const& word : failure.words) {
            m_words.push_back(word.text.c_str());
        }
        ArgumentVector source(m_words.data(), m_words.size());
        if (failure.stage != Failure::kActions) {
            m_walk.goOn(failure.stage == Failure::kPlain        ? Walk::Mode::kPlain
                        : failure.stage == Failure::kPositional ? Walk::Mode::kPositional
                                                                : Walk::Mode::kAnything);
        }
        m_walk.take(source);
    }

    std::string write() {
        if (m_failure.stage == Failure::kActions) {
            return aboutActions();
        }
        std::vector<WalkedWord> const& words = m_walk.words();
        if (words.empty()) {
            return {};
        }
        WalkedWord const& first = words.front();
        bool const isValueNext = words.size() > 1 && words[1].kind == WalkedWord::kValue;
        WalkedWord const& wrong = isValueNext ? words[1] : first;
        if (!wrong.isWrong) {  // a handler's doing
            return {};
        }
        if (wrong.kind == WalkedWord::kUnknown) {
            return aboutName(wrong.text);
        }
        if (wrong.option == nullptr) {  // ambiguous: the error has the candidates
            return {};
        }
        if (wrong.kind != WalkedWord::kOption) {
            return aboutValue(*wrong.option, wrong.text);
        }
        return wrong.lacksValue ? aboutNext(wrong.text) : aboutOwnValue(wrong);
    }

private:
    /// The options given, those after the failed argument included.
    std::vector<GivenOption> given() const {
        std::vector<GivenOption> given;
        for (std::string const& name : m_failure.given) {
            given.push_back({name, true});
        }
        for (WalkedWord const& word : m_walk.words()) {
            if (!word.isWrong && word.option != nullptr) {
                given.push_back({word.option->firstName(), true});
            }
        }
        return given;
    }

    ActionVerdict judge(std::vector<GivenOption> given) const {
        return judgeActions(given, m_parser.registry(), m_parser.simultaneousActions());
    }

    bool fits(OptionDescription const& option, OptionDescription const* action) const {
        if (!option.isAction()) {
            return action == nullptr || accepts(*action, option);
        }
        std::vector<GivenOption> both = given();
        both.push_back({option.firstName(), true});
        return judge(std::move(both)).kind != ActionVerdict::kActionsCollide;
    }

    /// The names of the actions that a modifier belongs to.
    std::vector<std::string> ownersOf(OptionDescription const& option) const {
        std::vector<std::string> owners;
        for (auto const& record : m_parser.registry().records()) {
            if (record->isAction() && !record->isHidden() &&
                isIntersected(record->m_tags, option.m_tags) && owners.size() < kMostListed) {
                owners.push_back(dashed(record->firstName()));
            }
        }
        return owners;
    }

    std::string belongs(std::string_view name, OptionDescription const& option,
                        OptionDescription const& action) const {
        std::vector<std::string> const owners = ownersOf(option);
        if (owners.empty() || option.isHidden() || action.isHidden()) {
            return {};
        }
        return internal::join({"'", dashed(name), "' belongs to ", anyOf(owners), ", not to '",
                               dashed(action.firstName()), "'."});
    }

    /// An unknown argument: with dashes any name may be meant, without them an action.
    std::string aboutName(std::string_view word) const {
        std::string_view name = word;
        std::string_view value;
        internal::WhiteSpace whiteSpace;
        bool const hasDashes = getDashLength(word, 0) != 0;
        if (hasDashes) {
            splitOptionValue(word, whiteSpace, &name, &value);
        }
        OptionDescription const* const action = judge(given()).action;
        Typo const typo(name);
        Nearest fitting;
        Nearest others;
        for (auto const& record : m_parser.registry().records()) {
            if (record->isHidden() || (!hasDashes && !record->isAction())) {
                continue;
            }
            for (std::string const& declared : record->m_names) {
                for (std::string_view const prefix : {"", "no-"}) {
                    if (!prefix.empty() && record->m_type != mosaic2::vtBool) {
                        continue;
                    }
                    unsigned const rank = typo.rank(prefix, declared);
                    if (rank != Typo::kFar && fitting.wants(rank)) {
                        Nearest& nearest = fits(*record, action) ? fitting : others;
                        nearest.offer(rank, prefix, declared, *record);
                    }
                }
            }
        }
        bool const isElsewhere = others.edits() < fitting.edits();
        if (isElsewhere && !others.option()->isAction()) {
            return belongs(others.names().front(), *others.option(), *action);
        }
        return didYouMean(asTyped(isElsewhere ? others.names() : fitting.names(), word, name));
    }

    /// Names with the dashes and the value of the word that they stand for.
    static std::vector<std::string> asTyped(std::vector<std::string> names, std::string_view word,
                                            std::string_view name) {
        constexpr std::size_t kMostBytes = 100;  // of a value that is repeated
        auto const before = static_cast<std::size_t>(name.data() - word.data());
        std::string_view const dashes = before != 0 ? word.substr(0, before) : "--";
        std::string_view after = word.substr(before + name.size());
        after = after.size() <= kMostBytes ? after : std::string_view();
        for (std::string& text : names) {
            text = internal::join({dashes, text, after});
        }
        return names;
    }

    /// The first piece of a value that is none of those allowed.
    std::string aboutValue(OptionDescription const& option, std::string_view value) const {
        if (option.m_type != mosaic2::vtString || option.m_allowedValues.empty()) {
            return {};
        }
        std::string_view piece;
        mosaic2::variant_t converted;
        std::string reason;
        do {
            std::size_t const end = option.m_tokenizer != 0
                                        ? std::min(value.find(option.m_tokenizer), value.size())
                                        : value.size();
            piece = value.substr(0, end);
            value.remove_prefix(std::min(end + 1, value.size()));
        } while (!value.empty() && (piece.empty() || option.validate(piece, converted, reason)));
        Typo const typo(piece);
        Nearest nearest;
        for (mosaic2::variant_t const& allowed : option.m_allowedValues) {
            std::string text;
            appendText(text, allowed);
            nearest.offer(typo.rank({}, text), {}, text, option);
        }
        return didYouMean(nearest.names());
    }

    /// An option whose value is missing: the next argument may be one that begins with a dash.
    std::string aboutNext(std::string_view word) {
        bool const hasNext = m_walk.words().size() > 1;
        if (!hasNext || m_walk.words()[1].kind == WalkedWord::kOption ||
            m_walk.words()[1].kind == WalkedWord::kEndMarker) {
            return {};
        }
        std::string const joined = internal::join({word, "=", m_walk.words()[1].text});
        char const* const words[] = {joined.c_str()};
        ArgumentVector source(words, 1);
        Walk walk(m_parser);
        walk.goOn(Walk::Mode::kAnything);
        walk.take(source);
        return walk.words().front().isWrong ? std::string()
                                            : internal::join({"Write '", joined, "'."});
    }

    /// An option with a wrong value after "=": one that is not allowed, or any of a boolean.
    std::string aboutOwnValue(WalkedWord const& word) const {
        std::string_view name;
        std::string_view value;
        internal::WhiteSpace whiteSpace;
        splitOptionValue(word.text, whiteSpace, &name, &value);
        OptionDescription const& option = *word.option;
        if (option.m_type != mosaic2::vtBool || value.empty()) {
            return aboutValue(option, value);
        }
        mosaic2::variant_t const meant = fromString(value, mosaic2::vtBool);
        if (meant.m_type != mosaic2::vtBool || option.isHidden()) {
            return {};
        }
        bool const isOn = meant.get<bool>() != word.isNegated;
        auto const before = static_cast<std::size_t>(name.data() - word.text.data());
        return internal::join(
            {"Write '", word.text.substr(0, before), isOn ? "" : "no-", option.firstName(), "'."});
    }

    std::string aboutActions() const {
        ActionVerdict const verdict = judge(keptGiven());
        if (verdict.kind == ActionVerdict::kNotAccepted) {
            return belongs(verdict.other->firstName(), *verdict.other, *verdict.action);
        }
        if (verdict.kind != ActionVerdict::kNoAction) {
            return {};
        }
        for (WalkedWord const& word : m_walk.words()) {
            if (word.kind == WalkedWord::kPositional) {
                std::string meant = aboutName(word.text);
                if (!meant.empty()) {
                    return meant;
                }
            }
        }
        return aboutMissingAction();
    }

    std::vector<GivenOption> keptGiven() const {
        std::vector<GivenOption> kept;
        for (std::string const& name : m_failure.given) {
            kept.push_back({name, true});
        }
        return kept;
    }

    /// The actions with which all that was given fits.
    std::string aboutMissingAction() const {
        constexpr std::size_t kMostTried = 1000;
        std::vector<std::string> fitting;
        std::size_t tried = 0;
        for (auto const& record : m_parser.registry().records()) {
            if (!record->isAction() || record->isHidden() || ++tried > kMostTried) {
                continue;
            }
            std::vector<GivenOption> with = keptGiven();
            with.push_back({record->firstName(), true});
            if (judge(std::move(with)).kind == ActionVerdict::kFits) {
                fitting.push_back(dashed(record->firstName()));
            }
        }
        constexpr std::size_t kMostAdded = 5;
        if (fitting.size() > kMostAdded) {
            fitting.resize(kMostListed);
            return internal::join({"Add an action, such as ", anyOf(fitting), "."});
        }
        return fitting.empty() ? std::string() : internal::join({"Add ", anyOf(fitting), "."});
    }

    BasicParser& m_parser;
    Failure const& m_failure;
    std::vector<char const*> m_words;
    Walk m_walk;
};

std::string writeSuggestion(BasicParser& parser) {
    Failure const* const failure = parser.failure();
    return failure != nullptr && failure->stage != Failure::kOptionFile
               ? printable(Suggestion(parser, *failure).write())
               : std::string();
}

}  // namespace

char const* suggestion(IParser* parser) {
    return internal::answer(parser, writeSuggestion);
}

}  // namespace varo_3_3
