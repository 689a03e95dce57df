#include <algorithm>
#include <cstring>
#include <exception>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "assist/walk.h"
#include "varo/documents.h"

namespace varo_3_3 {
namespace {

using Entry = ParseResult::Entry;

/// One occurrence of an option in a result: a part of the items of an entry, at least one.
struct Occurrence {
    Entry const* entry;
    Item const* begin;
    Item const* end;

    int position() const { return begin->occurrence; }
    bool operator<(Occurrence const& other) const {
        return position() != other.position() ? position() < other.position() : begin < other.begin;
    }
};

bool isSame(Item const& left, Item const& right) {
    return std::string_view(left.text) == right.text && left.type == right.type &&
           ItemList::valueOf(left, 0).value() == ItemList::valueOf(right, 0).value();
}

bool isSame(Occurrence const& left, Occurrence const& right) {
    return left.entry->key == right.entry->key &&
           std::equal(left.begin, left.end, right.begin, right.end,
                      [](Item const& one, Item const& other) { return isSame(one, other); });
}

/// Writes a result as words and tries them: whatever is not read as it was stored is refused, so
/// no rule of parsing is told here a second time.
class Replay {
public:
    Replay(BasicParser& parser, ParseResult const& result)
        : m_parser(parser), m_result(result), m_occurrences(occurrencesOf(result)) {}

    /// "" when the format cannot hold the result.
    std::string write(bool isForShell) {
        std::string text;
        if (!appendWords()) {
            return text;
        }
        if (!isForShell) {
            text = "# What was given, with full names; the comments are defaults.\n";
            appendDefaults(text);
        }
        std::unique_ptr<char const*[]> const words(new char const*[m_count + 1]);
        std::size_t count = 0;
        for (std::size_t at = 0; at < m_words.size(); at += std::strlen(&m_words[at]) + 1) {
            words[count++] = &m_words[at];
            isForShell ? appendQuoted(text, &m_words[at]) : appendLine(text, &m_words[at]);
        }
        OptionLines lines(text, m_whiteSpace);
        ArgumentVector vector(words.get(), count);
        ArgumentSource& source = isForShell ? static_cast<ArgumentSource&>(vector) : lines;
        if (!isReadBack(source)) {
            text.clear();
        } else if (text.empty()) {
            text = "--";  // nothing was given, which is no refusal
        }
        return text;
    }

private:
    OptionDescription const* recordOf(Entry const& entry) const {
        std::uint32_t const number = m_parser.registry().names().findRecord(entry.key, {});
        return number != NameIndex::kNone ? m_parser.registry().records()[number].get() : nullptr;
    }

    bool isOptionFile(OptionDescription const& record) const {
        return m_parser.readsOptionFiles() && OptionFiles::namesFiles(record);
    }

    /// What was given in a result, in its order. Option files are left out: their contents are
    /// there.
    std::vector<Occurrence> occurrencesOf(ParseResult const& result) const {
        std::vector<Occurrence> occurrences;
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
                occurrences.push_back(occurrence);
            }
        }
        // A third of the code of std::sort, and no slower where it matters.
        std::make_heap(occurrences.begin(), occurrences.end());
        std::sort_heap(occurrences.begin(), occurrences.end());
        return occurrences;
    }

    /// False when an occurrence cannot be written as words.
    bool appendWords() {
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
            if (!isPlainToo && !appendOccurrence(occurrence, *record)) {
                return false;
            }
        }
        if (!arguments.empty()) {
            appendWord(kEndMarker);
        }
        for (ParseResult::Argument const& plain : arguments) {
            appendWord(plain.text);
        }
        return true;
    }

    bool appendOccurrence(Occurrence const& occurrence, OptionDescription const& record) {
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
        std::string const word = wordOf(record, value);
        appendWord(word);
        if (takesValue(record) && value.empty() && !word.empty()) {
            appendWord({});
        }
        return true;
    }

    static bool takesValue(OptionDescription const& record) {
        return record.m_type != mosaic2::vtBool && record.m_type != mosaic2::vtNull;
    }

    /// The word that gives `value` to an option; the value alone where no name does.
    std::string wordOf(OptionDescription const& record, std::string_view value) const {
        bool const isSwitched =
            record.m_type == mosaic2::vtBool ? value == "0" || value == "1" : value.empty();
        std::string word;
        if (takesValue(record) || isSwitched) {
            word = spell(record, value == "0");
        }
        if (word.empty()) {
            word = value;
        } else if (takesValue(record) && !value.empty()) {
            word += '=';
            word += value;
        }
        return word;
    }

    void appendWord(std::string_view word) {
        m_words += word;
        m_words += '\0';
        ++m_count;
    }

    /// A name of `record`, with dashes, that means it when written in full, and switches a boolean
    /// off or on; "" if there is none.
    std::string spell(OptionDescription const& record, bool isOff) const {
        NameIndex& names = m_parser.registry().names();
        bool const isBool = record.m_type == mosaic2::vtBool;
        std::string word;
        for (std::string_view const name : record.m_names) {
            for (char const* const dashes : {"--", "--no-"}) {
                word = dashes;
                word += name;
                std::uint32_t const key = names.findMeant(std::string_view(word).substr(2));
                bool const canBeTyped = word.find_first_of("= \t\n\v\f\r") == std::string::npos;
                if (canBeTyped && key != NameIndex::kNone &&
                    names.recordOf(key) == record.m_index &&
                    (!isBool || names.beginsWithNo(key) == isOff)) {
                    return word;
                }
            }
        }
        return {};
    }

    void appendDefaults(std::string& text) const {
        for (Entry const& entry : m_result.entries()) {
            OptionDescription const* const record = recordOf(entry);
            if (!entry.hasDefault || !entry.items.empty() || record == nullptr) {
                continue;
            }
            std::string_view const value = entry.defaultValue.text();
            text += "# ";
            text += wordOf(*record, value.substr(0, value.find('\n')));
            text += '\n';
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
        std::vector<Occurrence> const occurrences = occurrencesOf(read);
        auto const& plain = m_result.plainArguments();
        auto const& readPlain = read.plainArguments();
        return std::equal(m_occurrences.begin(), m_occurrences.end(), occurrences.begin(),
                          occurrences.end(),
                          [](Occurrence const& left, Occurrence const& right) {
                              return isSame(left, right);
                          }) &&
               std::equal(plain.begin(), plain.end(), readPlain.begin(), readPlain.end(),
                          [](auto const& left, auto const& right) {
                              return std::string_view(left.text) == right.text;
                          });
    }

    static void appendLine(std::string& text, char const* word) {
        text += word;
        text += '\n';
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
            character == '\'' ? text += "'\\''" : text += character;
        }
        text += '\'';
    }

    BasicParser& m_parser;
    ParseResult const& m_result;
    std::vector<Occurrence> const m_occurrences;
    internal::WhiteSpace m_whiteSpace;
    std::string m_words;  // each ended by a zero
    std::size_t m_count = 0;
};

}  // namespace

char const* toOptionFile(IParser* parser, IParseResult* result, int form) {
    BasicParser* const ours = basicParserOf(parser);
    IParseResult const* const given = result;
    if (ours == nullptr || given == nullptr || &typeid(*given) != &typeid(ParseResult) ||
        (form != kOptionLines && form != kShellWords)) {
        return "";
    }
    try {
        Replay replay(*ours, static_cast<ParseResult const&>(*given));
        return ours->texts().init(replay.write(form == kShellWords));
    } catch (std::exception const&) {
        return "";
    }
}

}  // namespace varo_3_3
