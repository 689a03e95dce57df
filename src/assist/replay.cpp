#include <functional>
#include <string>
#include <typeinfo>
#include <vector>

#include "assist/answer.h"
#include "assist/walk.h"
#include "platform/join.h"
#include "platform/lead_sort.h"
#include "platform/reserve_more.h"
#include "varo/documents.h"
#include "varo/printable.h"

namespace varo_3_3 {
namespace {

using Entry = ParseResult::Entry;
using internal::append;

/// One occurrence of an option in a result: a part of the items of an entry, at least one.
struct Occurrence {
    Entry const* entry;
    Item const* begin;
    Item const* end;

    int position() const { return begin->occurrence; }
};

bool isSame(Item const& left, Item const& right) {
    return std::string_view(left.text) == right.text && left.type == right.type &&
           ItemList::valueOf(left, 0).value() == ItemList::valueOf(right, 0).value();
}

bool isSame(Occurrence const& left, Occurrence const& right) {
    bool isEqual =
        left.entry->key == right.entry->key && left.end - left.begin == right.end - right.begin;
    for (Item const *one = left.begin, *other = right.begin; isEqual && one != left.end; ++one) {
        isEqual = isSame(*one, *other++);
    }
    return isEqual;
}

/// Writes a result as words and tries them: whatever is not read as it was stored is refused, so
/// no rule of parsing is told here a second time.
class Replay {
public:
    Replay(BasicParser& parser, ParseResult const& result)
        : m_parser(parser), m_result(result), m_occurrences(occurrencesOf(result)) {}

    /// Writes nothing when the format cannot hold the result.
    void write(bool isForShell, std::string& text) {
        if (!addWords()) {
            return;
        }
        if (!isForShell) {
            text = "# What was given, with full names; the comments are defaults.\n";
            appendDefaults(text);
        }
        std::string_view word;
        while (m_words.next(word)) {
            isForShell ? appendQuoted(text, word) : append(text, {word, "\n"});
        }
        m_words.rewind();
        OptionLines lines(text, m_whiteSpace);
        ArgumentSource& source = isForShell ? static_cast<ArgumentSource&>(m_words) : lines;
        if (!isReadBack(source)) {
            text.clear();
        } else if (text.empty()) {
            text = "--";  // nothing was given, which is no refusal
        }
    }

private:
    OptionDescription const* recordOf(Entry const& entry) const {
        std::uint32_t const number = m_parser.registry().names().findRecord(entry.key, {});
        return number != NameIndex::kNone ? m_parser.registry().records()[number] : nullptr;
    }

    bool isOptionFile(OptionDescription const& record) const {
        return m_parser.readsOptionFiles() && OptionFiles::namesFiles(record);
    }

    /// What was given in a result, in its order. Option files are left out: their contents are
    /// there.
    std::vector<Occurrence> occurrencesOf(ParseResult const& result) const {
        std::vector<Occurrence> found;
        std::vector<internal::Lead> order;
        for (Entry const& entry : result.entries()) {
            OptionDescription const* const record = recordOf(entry);
            if (record != nullptr && isOptionFile(*record)) {
                continue;
            }
            Item const* const end = entry.items.end();
            for (Item const* item = entry.items.begin(); item != end;) {
                Occurrence occurrence{&entry, item, item};
                while (item != end && item->occurrence == occurrence.position()) {
                    occurrence.end = ++item;
                }
                // Positions are signed; this keeps their order.
                auto const lead =
                    static_cast<std::uint64_t>(occurrence.position()) ^ std::uint64_t{1} << 63;
                order.push_back({lead, static_cast<std::uint32_t>(found.size())});
                found.push_back(occurrence);
            }
        }
        internal::sortByLead(order, std::less<std::uint32_t>());
        std::vector<Occurrence> occurrences;
        occurrences.reserve(order.size());
        for (internal::Lead const& lead : order) {
            internal::emplaceReserved(occurrences, found[lead.item]);
        }
        return occurrences;
    }

    /// False when an occurrence cannot be written as words.
    bool addWords() {
        auto const& arguments = m_result.plainArguments();
        auto argument = arguments.begin();
        for (Occurrence const& occurrence : m_occurrences) {
            int const before = occurrence.position() - 1;
            while (argument != arguments.end() && argument->position < before) {
                ++argument;
            }
            OptionDescription const* const record = recordOf(*occurrence.entry);
            if (record == nullptr) {
                return false;
            }
            // A plain argument that the positional option took as well is written once.
            bool const isPlainToo = argument != arguments.end() && argument->position == before &&
                                    record->m_isPositional &&
                                    (m_parser.flags() & kPositionalAfterMarker) != 0;
            if (!isPlainToo && !addOccurrence(occurrence, *record)) {
                return false;
            }
        }
        if (!arguments.empty()) {
            m_words.add(kEndMarker);
        }
        for (ParseResult::Argument const& plain : arguments) {
            m_words.add(plain.text);
        }
        return true;
    }

    bool addOccurrence(Occurrence const& occurrence, OptionDescription const& record) {
        std::string value;
        for (Item const* item = occurrence.begin; item != occurrence.end; ++item) {
            if (item != occurrence.begin) {
                if (record.m_tokenizer == 0) {
                    return false;
                }
                value += record.m_tokenizer;
            }
            value += item->text;
        }
        spellOut(record, value);
        m_words.add(m_word);
        if (takesValue(record) && value.empty() && !m_word.empty()) {
            m_words.add({});
        }
        return true;
    }

    static bool takesValue(OptionDescription const& record) {
        return record.m_type != mosaic2::vtBool && record.m_type != mosaic2::vtNull;
    }

    /// Makes m_word the word that gives `value` to an option; false, and the value alone, where no
    /// name does.
    bool spellOut(OptionDescription const& record, std::string_view value) {
        bool const isSwitched =
            record.m_type == mosaic2::vtBool ? value == "0" || value == "1" : value.empty();
        if ((!takesValue(record) && !isSwitched) || !spell(record, value == "0")) {
            m_word = value;
            return false;
        }
        if (takesValue(record) && !value.empty()) {
            append(m_word, {"=", value});
        }
        return true;
    }

    /// Makes m_word a name of `record`, with dashes, that means it when written in full, and
    /// switches a boolean off or on. False if there is none.
    bool spell(OptionDescription const& record, bool isOff) {
        NameIndex& names = m_parser.registry().names();
        bool const isBool = record.m_type == mosaic2::vtBool;
        for (std::string_view const name : record.m_names) {
            for (char const* const dashes : {"--", "--no-"}) {
                m_word = dashes;
                m_word += name;
                std::uint32_t const key = names.findMeant(std::string_view(m_word).substr(2));
                bool const canBeTyped = m_word.find_first_of("= \t\n\v\f\r") == std::string::npos;
                if (canBeTyped && key != NameIndex::kNone &&
                    names.recordOf(key) == record.m_index &&
                    (!isBool || names.beginsWithNo(key) == isOff)) {
                    return true;
                }
            }
        }
        return false;
    }

    /// These lines are never read back, so they need only be clear.
    void appendDefaults(std::string& text) {
        for (Entry const& entry : m_result.entries()) {
            OptionDescription const* const record = recordOf(entry);
            if (!entry.hasDefault || !entry.items.empty() || record == nullptr) {
                continue;
            }
            std::string_view const value = entry.defaultValue.text();
            if (!spellOut(*record, value)) {
                m_word = internal::join({"--", record->firstName(), "=", value});
            }
            append(text, {"# ", printable(m_word), "\n"});
        }
    }

    /// Whether the words give what the result has, and read no option file by default.
    bool isReadBack(ArgumentSource& source) const {
        internal::Walk walk(m_parser);
        walk.take(source);
        for (internal::WalkedWord const& word : walk.words()) {
            if (word.isWrong) {
                return false;
            }
        }
        ParseResult const& read = walk.result();
        if (m_parser.readsOptionFiles() &&
            read.defaultOf(kOptionFileName).as<char const*>() != nullptr) {
            return false;
        }
        // Where declarations share names, an option may come back as another one of them.
        for (auto const& record : m_parser.registry().records()) {
            for (std::string_view const name : record->m_names) {
                if (m_result.givenKey(name) != read.givenKey(name) && !isOptionFile(*record)) {
                    return false;
                }
            }
        }
        return isSameAsIn(read);
    }

    /// Whether a result has the same occurrences and plain arguments, in the same order.
    bool isSameAsIn(ParseResult const& read) const {
        std::vector<Occurrence> const occurrences = occurrencesOf(read);
        auto const& plain = m_result.plainArguments();
        auto const& readPlain = read.plainArguments();
        bool isEqual =
            occurrences.size() == m_occurrences.size() && plain.size() == readPlain.size();
        for (std::size_t at = 0; isEqual && at < occurrences.size(); ++at) {
            isEqual = isSame(m_occurrences[at], occurrences[at]);
        }
        for (std::size_t at = 0; isEqual && at < plain.size(); ++at) {
            isEqual = std::string_view(plain[at].text) == readPlain[at].text;
        }
        return isEqual;
    }

    /// Appends one word of a POSIX shell.
    static void appendQuoted(std::string& text, std::string_view word) {
        constexpr std::string_view kPlain =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_=.,:/@%+";
        text += text.empty() ? "" : " ";
        if (!word.empty() && word.front() != '=' &&
            word.find_first_not_of(kPlain) == std::string_view::npos) {
            text += word;
            return;
        }
        text += '\'';
        for (char const character : word) {
            text += character == '\'' ? std::string_view("'\\''") : std::string_view(&character, 1);
        }
        text += '\'';
    }

    BasicParser& m_parser;
    ParseResult const& m_result;
    std::vector<Occurrence> const m_occurrences;
    internal::WhiteSpace m_whiteSpace;
    CopiedArguments m_words;
    std::string m_word;  // that is being made
};

}  // namespace

char const* toOptionFile(IParser* parser, IParseResult* result, int form) {
    IParseResult const* const given = result;
    if (given == nullptr || &typeid(*given) != &typeid(ParseResult) ||
        (form != kOptionLines && form != kShellWords)) {
        return "";
    }
    return internal::answer(parser, [&](BasicParser& ours, std::string& text) {
        Replay(ours, static_cast<ParseResult const&>(*given)).write(form == kShellWords, text);
    });
}

}  // namespace varo_3_3
