#include <algorithm>
#include <initializer_list>
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
constexpr std::size_t kMostRepeated = 100;  // bytes of a value

std::string_view dashesOf(std::string_view name) {
    return name.size() > 1 ? "--" : "-";
}

/// A few spellings of names. Views into declarations.
class Spellings {
public:
    bool isFull() const { return m_size == kMostListed; }
    bool isEmpty() const { return m_size == 0; }
    void clear() { m_size = 0; }

    /// Does nothing when it is full or has this one already.
    void add(std::string_view name) {
        for (std::size_t at = 0; at < m_size; ++at) {
            if (m_names[at] == name) {
                return;
            }
        }
        if (!isFull()) {
            m_names[m_size++] = name;
        }
    }

    /// Appends: before 'a', 'b' or 'c' after. Each name is between `lead`, or its own dashes when
    /// that is null, and `tail`. Nothing when there is no name.
    void appendTo(std::string& text, std::string_view before, std::string_view after,
                  std::string_view lead = {}, std::string_view tail = {}) const {
        for (std::size_t at = 0; at < m_size; ++at) {
            bool const isLast = at + 1 == m_size;
            internal::append(text, {at == 0  ? before
                                    : isLast ? "' or '"
                                             : "', '",
                                    lead.data() != nullptr ? lead : dashesOf(m_names[at]),
                                    m_names[at], tail, isLast ? after : std::string_view()});
        }
    }

private:
    std::string_view m_names[kMostListed];
    std::size_t m_size = 0;
};

/// The nearest of the names that it is offered, the first few of them in their order.
struct Nearest {
    /// Whether a name of this rank would be among them.
    bool wants(unsigned offered) const {
        return offered < rank || (offered == rank && rank != Typo::kFar && !spellings.isFull());
    }

    /// Requires: it is wanted. `declared` is the name that `spelling` means.
    void offer(unsigned offered, std::string_view spelling, std::string_view declared,
               OptionDescription const* record) {
        if (offered < rank) {
            rank = offered;
            spellings.clear();
            name = declared;
            option = record;
        }
        spellings.add(spelling);
    }

    unsigned rank = Typo::kFar;
    OptionDescription const* option = nullptr;  // of the first spelling
    std::string_view name;                      // ... and what it means
    Spellings spellings;
};

constexpr std::string_view kDidYouMean = "Did you mean '";

/// What a failed parse may have meant.
class Suggestion {
public:
    Suggestion(BasicParser& parser, Failure& failure, std::string& text)
        : m_parser(parser),
          m_failure(failure),
          m_text(text),
          m_records(parser.registry().records()),
          m_walk(parser) {
        m_walk.takeAgain(failure);
    }

    void write() {
        if (m_failure.stage == Failure::kActions) {
            return aboutActions();
        }
        auto const& words = m_walk.words();
        bool const isValueNext = words.size() > 1 && words[1].kind == WalkedWord::kValue;
        // When the word is right, a handler refused it. What is ambiguous has the candidates in its
        // error.
        WalkedWord const& wrong = words[isValueNext ? 1 : 0];
        if (!wrong.isWrong) {
            return;
        }
        if (wrong.kind == WalkedWord::kUnknown) {
            aboutName(wrong.text);
        } else if (wrong.option != nullptr && wrong.kind != WalkedWord::kOption) {
            aboutValue(*wrong.option, wrong.text);
        } else if (wrong.option != nullptr) {
            wrong.lacksValue ? aboutNext() : aboutOwnValue(wrong);
        }
    }

private:
    void say(std::initializer_list<std::string_view> parts) { internal::append(m_text, parts); }

    /// What phase two says of what was stored, of `more`, and of the words walked over, if asked.
    ActionVerdict judge(OptionDescription const* more, bool withWords) const {
        std::vector<GivenOption> given;
        std::string_view name;
        m_failure.given.rewind();
        while (m_failure.given.next(name)) {
            given.push_back({name, true});
        }
        for (WalkedWord const& word : m_walk.words()) {
            if (withWords && !word.isWrong && word.option != nullptr) {
                given.push_back({word.option->firstName(), true});
            }
        }
        if (more != nullptr) {
            given.push_back({more->firstName(), true});
        }
        return judgeActions(given, m_parser.registry(), m_parser.simultaneousActions());
    }

    bool fits(OptionDescription const& option, OptionDescription const* action) const {
        return option.isAction() ? judge(&option, true).kind != ActionVerdict::kActionsCollide
                                 : action == nullptr || accepts(*action, option);
    }

    void belongs(OptionDescription const& option, std::string_view name,
                 OptionDescription const& action) {
        Spellings owners;
        for (auto const& record : m_records) {
            if (record->isAction() && !record->isHidden() &&
                isIntersected(record->m_tags, option.m_tags)) {
                owners.add(record->firstName());
            }
        }
        if (!owners.isEmpty() && !option.isHidden() && !action.isHidden()) {
            say({"'", dashesOf(name), name});
            owners.appendTo(m_text, "' belongs to '", "', not to '");
            say({dashesOf(action.firstName()), action.firstName(), "'."});
        }
    }

    /// An unknown argument: with dashes any name may be meant, without them an action.
    void aboutName(std::string_view word) {
        std::string_view name = word;
        std::string_view value;
        bool const hasDashes = getDashLength(word, 0) != 0;
        if (hasDashes) {
            m_walk.split(word, name, value);
        }
        OptionDescription const* const action = judge(nullptr, true).action;
        Typo const typo(name);
        Nearest fitting;
        Nearest others;
        auto const offer = [&](std::string_view spelling, std::string_view declared,
                               OptionDescription const& record) {
            unsigned const rank = typo.rank(spelling);
            if (fitting.wants(rank)) {
                Nearest& nearest = fits(record, action) ? fitting : others;
                if (nearest.wants(rank)) {
                    nearest.offer(rank, spelling, declared, &record);
                }
            }
        };
        for (auto const& record : m_records) {
            if (record->isHidden() || (!hasDashes && !record->isAction())) {
                continue;
            }
            NameList const& names = record->m_names;
            for (std::size_t at = 0; at < names.size(); ++at) {
                offer(names[at], names[at], *record);
                if (record->m_type == mosaic2::vtBool) {
                    offer(names.negation(at), names[at], *record);
                }
            }
        }
        bool const isElsewhere = Typo::editsOf(others.rank) < Typo::editsOf(fitting.rank);
        Nearest const& nearest = isElsewhere ? others : fitting;
        if (isElsewhere && !others.option->isAction()) {
            return belongs(*others.option, others.name, *action);
        }
        auto const before = static_cast<std::size_t>(name.data() - word.data());
        std::string_view const tail = word.substr(before + name.size());
        nearest.spellings.appendTo(m_text, kDidYouMean, "'?",
                                   hasDashes ? word.substr(0, before) : "--",
                                   tail.size() <= kMostRepeated ? tail : std::string_view());
    }

    /// The first piece of a value that is none of those allowed.
    void aboutValue(OptionDescription const& option, std::string_view value) {
        if (option.m_type != mosaic2::vtString) {
            return;
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
            char const* const text =
                allowed.can_get<char const*>() ? allowed.get<char const*>() : nullptr;
            if (text == nullptr) {
                continue;
            }
            unsigned const rank = typo.rank(text);
            if (nearest.wants(rank)) {
                nearest.offer(rank, text, text, &option);
            }
        }
        nearest.spellings.appendTo(m_text, kDidYouMean, "'?", "");
    }

    /// The first word lacks its value: that may be the next one, which begins with a dash.
    void aboutNext() {
        auto const& words = m_walk.words();
        if (words.size() < 2 || words[1].kind == WalkedWord::kOption ||
            words[1].kind == WalkedWord::kEndMarker) {
            return;
        }
        std::string_view name = words[0].text;
        name.remove_suffix(name.ends_with('=') ? 1 : 0);
        std::string_view const value = words[1].text;
        if (value.size() > kMostRepeated) {
            return;  // it may have been cut as well
        }
        std::string const joined = internal::join({name, "=", value});
        char const* const argument = joined.c_str();
        ArgumentVector source(&argument, 1);
        Walk walk(m_parser);
        walk.goOn(Walk::Mode::kAnything);
        walk.take(source);
        if (!walk.words()[0].isWrong) {
            say({"Write '", joined, "'."});
        }
    }

    /// An option with a wrong value after "=": one that is not allowed, or any of a boolean.
    void aboutOwnValue(WalkedWord const& word) {
        std::string_view name;
        std::string_view value;
        m_walk.split(word.text, name, value);
        OptionDescription const& option = *word.option;
        if (option.m_type != mosaic2::vtBool) {
            return aboutValue(option, value);
        }
        mosaic2::variant_t meant;
        fromString(value, mosaic2::vtBool, meant);
        if (meant.m_type != mosaic2::vtBool || option.isHidden()) {
            return;
        }
        bool const isOn = meant.get<bool>() != word.isNegated;
        auto const before = static_cast<std::size_t>(name.data() - word.text.data());
        say({"Write '", word.text.substr(0, before), isOn ? "" : "no-", option.firstName(), "'."});
    }

    void aboutActions() {
        ActionVerdict const verdict = judge(nullptr, false);
        if (verdict.kind == ActionVerdict::kNotAccepted) {
            return belongs(*verdict.other, verdict.other->firstName(), *verdict.action);
        }
        if (verdict.kind != ActionVerdict::kNoAction) {
            return;
        }
        for (WalkedWord const& word : m_walk.words()) {
            if (word.kind == WalkedWord::kPositional && m_text.empty()) {
                aboutName(word.text);
            }
        }
        if (m_text.empty()) {
            aboutMissingAction();
        }
    }

    /// The actions with which all that was given fits, less those that only inform.
    void aboutMissingAction() {
        std::size_t tried = 0;
        Spellings fitting;
        bool isMore = false;
        for (auto const& record : m_records) {
            constexpr std::size_t kMostTried = 1000;
            std::string_view const name = record->firstName();
            bool const isInformation = name == "help" || name == "version";
            if (!isMore && record->isAction() && !record->isHidden() && !isInformation &&
                ++tried <= kMostTried && judge(record.get(), false).kind == ActionVerdict::kFits) {
                isMore = fitting.isFull();
                fitting.add(name);
            }
        }
        fitting.appendTo(m_text, isMore ? "Add an action, such as '" : "Add '", "'.");
    }

    BasicParser& m_parser;
    Failure& m_failure;
    std::string& m_text;
    OptionRecords const& m_records;
    Walk m_walk;
};

void writeSuggestion(BasicParser& parser, std::string& text) {
    Failure* const failure = parser.failure();
    if (failure != nullptr && !failure->words.empty()) {
        Suggestion(parser, *failure, text).write();
        text = printable(text);
    }
}

}  // namespace

char const* suggestion(IParser* parser) {
    return internal::answer(parser, writeSuggestion);
}

}  // namespace varo_3_3
