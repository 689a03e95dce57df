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
constexpr std::size_t kMostRepeated = 100;  // bytes of what was typed

std::string_view dashesOf(std::string_view name) {
    return name.size() > 1 ? "--" : "-";
}

/// A name, between what stands before it and after it. Views into declarations and into what was
/// typed.
struct Spelling {
    std::string_view lead;
    std::string_view name;
    std::string_view tail;

    // What a name that may have been meant belongs to.
    OptionDescription const* option = nullptr;
    std::size_t at = 0;  // of the option's names
    bool isNegated = false;
};

/// The first few spellings that are added.
class Spellings {
public:
    bool isFull() const { return m_size == kMostListed; }
    bool isEmpty() const { return m_size == 0; }
    void clear() { m_size = 0; }
    Spelling* begin() { return m_spellings; }
    Spelling* end() { return m_spellings + m_size; }

    /// Does nothing when it is full or has this name already.
    void add(Spelling const& spelling) {
        for (std::size_t at = 0; at < m_size; ++at) {
            if (m_spellings[at].name == spelling.name) {
                return;
            }
        }
        if (!isFull()) {
            m_spellings[m_size++] = spelling;
        }
    }

    /// The same of the primary name of `option`, with its own dashes.
    [[gnu::noinline]] void addName(OptionDescription const& option, std::string_view tail) {
        add({dashesOf(option.firstName()), option.firstName(), tail});
    }

    /// Appends: before 'a', 'b' or 'c' after. Nothing when there is no name.
    void appendTo(std::string& text, std::string_view before, std::string_view after) const {
        for (std::size_t at = 0; at < m_size; ++at) {
            auto const& [lead, name, tail, option, number, isNegated] = m_spellings[at];
            bool const isLast = at + 1 == m_size;
            internal::append(text, {at == 0  ? before
                                    : isLast ? "' or '"
                                             : "', '",
                                    lead, name, tail, isLast ? after : std::string_view()});
        }
    }

private:
    Spelling m_spellings[kMostListed];
    std::size_t m_size = 0;
};

/// The nearest of the names that it is offered, the first few of them in their order.
struct Nearest {
    /// Whether a name of this rank would be among them.
    bool wants(unsigned offered) const {
        return offered < rank || (offered == rank && rank != Typo::kFar && !spellings.isFull());
    }

    /// Requires: it is wanted.
    void offer(unsigned offered, Spelling const& spelling) {
        if (offered < rank) {
            rank = offered;
            spellings.clear();
        }
        spellings.add(spelling);
    }

    unsigned rank = Typo::kFar;
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
          m_walk(parser),
          m_given(retrace()),
          m_judge(m_given, parser.registry(), parser.simultaneousActions()) {}

    void write() {
        if (m_failure.stage == Failure::kActions) {
            return aboutActions();
        }
        auto const& words = m_walk.words();
        bool const isValueNext = words.size() > 1 && words[1].kind == WalkedWord::kValue;
        // When the word is right, a handler refused it. What is ambiguous has the candidates in its
        // error.
        WalkedWord const& wrong = words[isValueNext ? 1 : 0];
        bool const isCut = wrong.text.size() >= Failure::kMostBytes;
        if (!wrong.isWrong) {
            return;
        }
        if (wrong.kind == WalkedWord::kUnknown) {
            aboutName(wrong.text);
        } else if (isCut) {
            return;
        } else if (wrong.option != nullptr && wrong.kind != WalkedWord::kOption) {
            aboutValue(*wrong.option, wrong.text);
        } else if (wrong.option != nullptr) {
            wrong.lacksValue ? aboutNext() : aboutOwnValue(wrong);
        }
    }

private:
    void say(std::initializer_list<std::string_view> parts) { internal::append(m_text, parts); }

    /// Walks over the failed words again. Returns what phase two would find: what was stored before
    /// them, the defaults, and those words.
    std::vector<GivenOption> retrace() {
        m_walk.takeAgain(m_failure);
        std::vector<GivenOption> given;
        auto const add = [&](std::string_view name, bool isStored) {
            given.push_back({name, isStored});
        };
        std::string_view name;
        m_failure.given.rewind();
        while (m_failure.given.next(name)) {
            add(name, true);
        }
        for (std::uint32_t const number : m_parser.registry().withDefault()) {
            add(m_records[number]->firstName(), false);
        }
        for (WalkedWord const& word : m_walk.words()) {
            if (m_failure.stage != Failure::kActions && !word.isWrong && word.option != nullptr) {
                add(word.option->firstName(), true);
            }
        }
        return given;
    }

    bool fits(OptionDescription const& option) const {
        auto const& [kind, action, other] = m_judge.verdict();
        if (!option.isAction()) {
            return action == nullptr || accepts(*action, option);
        }
        return kind != ActionVerdict::kActionsCollide &&
               m_judge.with(option).kind != ActionVerdict::kActionsCollide;
    }

    /// Whether a parse takes `word` as the name of `option`, with a value perhaps.
    bool means(std::string const& word, OptionDescription const& option, bool isNegated) const {
        char const* const argument = word.c_str();
        ArgumentVector source(&argument, 1);
        Walk walk(m_parser);
        walk.goOn(Walk::Mode::kAnything);
        walk.take(source);
        WalkedWord const& read = walk.words()[0];
        return !read.isWrong && read.kind == WalkedWord::kOption && read.option == &option &&
               read.isNegated == isNegated;
    }

    /// Whether a name is read whole after its dashes.
    bool canBeTyped(std::string_view name) {
        std::string_view begin;
        std::string_view value;
        return getDashLength(name, 0) == 0 && !m_walk.split(name, begin, value);
    }

    void belongs(OptionDescription const& option, std::string_view name,
                 OptionDescription const& action) {
        Spellings owners;
        for (auto const& record : m_records) {
            if (record->isAction() && !record->isHidden() &&
                isIntersected(record->m_tags, option.m_tags)) {
                owners.addName(*record, {});
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
            if (m_parser.registry().find(name, {}) != nullptr) {
                return;  // it stands where no name can be
            }
        }
        auto const before = static_cast<std::size_t>(name.data() - word.data());
        std::string_view const lead = hasDashes ? word.substr(0, before) : "--";
        Typo const typo(name);
        Nearest fitting;
        Nearest others;
        auto const offer = [&](OptionDescription const& option, std::size_t at, bool isNegated) {
            NameList const& names = option.m_names;
            Spelling const spelling = {
                lead, isNegated ? names.negation(at) : names[at], {}, &option, at, isNegated};
            unsigned const rank = typo.rank(spelling.name);
            if (fitting.wants(rank) && canBeTyped(spelling.name)) {
                Nearest& nearest = fits(option) ? fitting : others;
                if (nearest.wants(rank)) {
                    nearest.offer(rank, spelling);
                }
            }
        };
        for (auto const& record : m_records) {
            if (record->isHidden() || (!hasDashes && !record->isAction())) {
                continue;
            }
            for (std::size_t at = 0; at < record->m_names.size(); ++at) {
                offer(*record, at, false);
                if (record->m_type == mosaic2::vtBool) {
                    offer(*record, at, true);
                }
            }
        }
        if (Typo::editsOf(others.rank) < Typo::editsOf(fitting.rank)) {
            auto const& other = *others.spellings.begin();
            if (!other.option->isAction()) {
                belongs(*other.option, other.option->m_names[other.at], *m_judge.verdict().action);
            }
            return;
        }
        std::string_view const tail = word.substr(before + name.size());
        for (Spelling& spelling : fitting.spellings) {
            if (!tail.empty()) {
                repeat(tail, value, spelling);
            }
        }
        fitting.spellings.appendTo(m_text, kDidYouMean, "'?");
    }

    /// Lets `spelling` say what was typed after the wrong name. False if that cannot be said.
    bool repeat(std::string_view tail, std::string_view value, Spelling& spelling) const {
        OptionDescription const& option = *spelling.option;
        Spelling said = spelling;
        said.tail = tail;
        said.isNegated = false;
        if (option.m_type == mosaic2::vtBool) {
            mosaic2::variant_t meant;
            fromString(value, mosaic2::vtBool, meant);
            if (meant.m_type != mosaic2::vtBool) {
                return false;
            }
            said.isNegated = meant.get<bool>() == spelling.isNegated;
            said.tail = {};
            said.name = said.isNegated ? option.m_names.negation(said.at) : option.m_names[said.at];
        }
        if (tail.size() > kMostRepeated ||
            !means(internal::join({said.lead, said.name, said.tail}), option, said.isNegated)) {
            return false;
        }
        spelling = said;
        return true;
    }

    [[gnu::noinline]] void write(std::string_view tail, std::string_view value, Spelling spelling) {
        if (repeat(tail, value, spelling)) {
            say({"Write '", spelling.lead, spelling.name, spelling.tail, "'."});
        }
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
                nearest.offer(rank, {{}, text, {}});
            }
        }
        nearest.spellings.appendTo(m_text, kDidYouMean, "'?");
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
        write(words[1].text, {}, {name, "=", {}, words[0].option});
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
        // A name that begins with "no-" switches off, whatever is before it.
        if (option.isHidden() || option.firstName().starts_with(NameList::kNegation)) {
            return;
        }
        auto const before = static_cast<std::size_t>(name.data() - word.text.data());
        write({}, value, {word.text.substr(0, before), {}, {}, &option, 0, word.isNegated});
    }

    void aboutActions() {
        ActionVerdict const& verdict = m_judge.verdict();
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
        Spellings fitting;
        bool isMore = false;
        for (auto const& record : m_records) {
            if (isMore) {
                break;
            }
            std::string_view const name = record->firstName();
            bool const isInformation = name == "help" || name == "version";
            if (record->isAction() && !record->isHidden() && !isInformation &&
                m_judge.with(*record).kind == ActionVerdict::kFits) {
                isMore = fitting.isFull();
                fitting.addName(*record, record->hasValues() ? "=" : "");
            }
        }
        fitting.appendTo(m_text, isMore ? "Add an action, such as '" : "Add '", "'.");
    }

    BasicParser& m_parser;
    Failure& m_failure;
    std::string& m_text;
    OptionRecords const& m_records;
    Walk m_walk;
    std::vector<GivenOption> m_given;
    Judge m_judge;
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
