#include "varo/completion.h"

#include <optional>
#include <string>
#include <string_view>

#include "assist/answer.h"
#include "assist/offers.h"
#include "assist/shell_words.h"
#include "assist/stub_texts.h"
#include "parser/basic_parser.h"
#include "platform/join.h"

namespace varo_3_3 {
namespace internal {
namespace {

constexpr std::string_view kNamePlace = "@NAME@";

std::optional<Shell> shellOf(std::string_view name) {
    return name == "bash"   ? std::optional(Shell::kBash)
           : name == "zsh"  ? std::optional(Shell::kZsh)
           : name == "fish" ? std::optional(Shell::kFish)
                            : std::nullopt;
}

/// Whether a name can stand in a stub as it is: nothing in it means anything to a shell.
bool isPlainName(std::string_view name) {
    constexpr std::string_view kPlain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.+";
    return !name.empty() && name.front() != '-' &&
           name.find_first_not_of(kPlain) == std::string_view::npos;
}

/// Writes the stub of a shell with `name` in it.
void writeStub(Shell shell, std::string_view name, std::string& answer) {
    std::string_view rest = shell == Shell::kBash  ? kBashStub
                            : shell == Shell::kZsh ? kZshStub
                                                   : kFishStub;
    for (;;) {
        std::size_t const place = rest.find(kNamePlace);
        answer += rest.substr(0, place);
        if (place == std::string_view::npos) {
            return;
        }
        answer += name;
        rest.remove_prefix(place + kNamePlace.size());
    }
}

bool isControl(char c) {
    return (c >= 0 && c < ' ') || c == '\x7f';
}

bool hasControls(std::string_view text) {
    for (char const c : text) {
        if (isControl(c)) {
            return true;
        }
    }
    return false;
}

/// Whether a shell that lists files could find a command in `text`: zsh would run it.
bool hasCommands(std::string_view text) {
    return text.find("$(") != std::string_view::npos || text.find('`') != std::string_view::npos;
}

/// Writes what a stub reads: lines of fields that tabs separate, the last of them "end".
class Answer {
public:
    Answer(Shell shell, ShellLine const& line, std::string& text)
        : m_shell(shell), m_line(line), m_text(text) {}

    void write(Offers const& offers) {
        // bash shortens what was typed to what all offers have in common, so that offers which
        // lengthen it come alone.
        bool hasParts = false;
        bool lengthensTyped = false;
        for (Offer const& offer : offers.words) {
            hasParts = hasParts || !offer.isFinished;
            lengthensTyped = lengthensTyped || offer.word.starts_with(m_line.typed);
        }
        if (m_shell == Shell::kBash && hasParts) {
            m_needsBlanks = m_line.quote == 0;
            m_text = "nospace\n";
        }
        for (Offer const& offer : offers.words) {
            bool const isLeftOut =
                m_shell == Shell::kBash && lengthensTyped && !offer.word.starts_with(m_line.typed);
            if (!isLeftOut && !hasControls(offer.word)) {
                writeOffer(offer);
            }
        }
        if (offers.paths != Paths::kNone && !hasControls(m_line.raw) &&
            !hasControls(m_line.typed) && !hasCommands(m_line.typed)) {
            writePaths(offers.paths == Paths::kFiles ? "files" : "directories", offers.pathStart);
        }
        m_text += "end\n";
    }

private:
    void writeLine(std::initializer_list<std::string_view> fields) {
        for (std::string_view const field : fields) {
            m_text += field;
            m_text += '\t';
        }
        m_text.back() = '\n';
    }

    void writeOffer(Offer const& offer) {
        std::size_t const start = m_text.size();
        m_text += offer.isFinished ? std::string_view("word\t") : std::string_view("part\t");
        if (m_shell != Shell::kBash) {
            append(m_text, {offer.word, "\t"});
            appendClean(offer.description);
            append(m_text, {"\t", offer.group, "\n"});
        } else if (appendInsertion(offer.word)) {
            if (m_needsBlanks && offer.isFinished) {
                m_text += ' ';
            }
            m_text += '\n';
        } else {
            m_text.resize(start);
        }
    }

    /// Appends a description as one line: white space and control characters become single blanks.
    void appendClean(std::string_view text) {
        std::size_t const start = m_text.size();
        for (std::size_t at = 0; at < text.size();) {
            std::size_t end = at;
            while (end < text.size() && text[end] != ' ' && !isControl(text[end])) {
                ++end;
            }
            if (end != at) {
                append(m_text, {m_text.size() == start ? "" : " ", text.substr(at, end - at)});
            }
            at = end + 1;
        }
    }

    /// Appends what bash puts in place of the part of the word that it replaces; false when the
    /// part that it keeps does not begin `word`. What was typed stays as it was where it can.
    bool appendInsertion(std::string_view word) {
        std::string_view const typed = m_line.typed;
        std::size_t done = typed.size();
        if (word.starts_with(typed)) {
            m_text += m_line.raw.substr(m_line.keptRaw);
        } else {
            done = m_line.keptTyped;
            if (!word.starts_with(typed.substr(0, done))) {
                return false;
            }
        }
        appendQuoted(m_text, word.substr(done), m_line.quote);
        return true;
    }

    void writePaths(std::string_view kind, std::size_t start) {
        std::string_view const typed = m_line.typed;
        std::size_t const rawStart = rawLength(m_shell, m_line.raw, start);
        if (m_shell == Shell::kZsh) {
            writeLine({kind, m_line.raw.substr(0, rawStart)});
        } else if (m_shell == Shell::kFish) {
            writeLine({kind, typed.substr(0, start), typed.substr(start)});
        } else {
            // What bash lists files by, it reads as inside the open quote, which therefore is
            // closed first.
            char const quote[] = {m_line.quote, '\0'};
            std::string pattern = m_line.quote == '$' ? "'" : quote;
            pattern += m_line.raw.substr(rawStart);
            writeLine(
                {kind, m_line.raw.substr(m_line.keptRaw), typed.substr(start), quote, pattern});
        }
    }

    Shell m_shell;
    ShellLine const& m_line;
    bool m_needsBlanks = false;  // bash is told to append none, so that finished words bring theirs
    std::string& m_text;
};

/// Takes the program's name, and what precedes it, off the line. Only fish hands over words that
/// do.
bool removeCommand(Shell shell, std::string_view name, std::vector<char const*>& words) {
    std::size_t command = 0;
    if (shell == Shell::kFish) {
        for (std::size_t at = words.size(); at != 0; --at) {
            std::string_view const word = words[at - 1];
            command = word.substr(word.rfind('/') + 1) == name ? at - 1 : command;
        }
    }
    if (words.empty()) {
        return false;
    }
    words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(command) + 1);
    return true;
}

void completeLine(BasicParser& parser, Shell shell, char const* const* fields, ValueSource* source,
                  std::string& answer) {
    ShellLine line =
        readShellLine(shell, fields[1], fields[2], shell == Shell::kBash ? fields[3] : "");
    Garbage texts;
    Offers offers;
    if (line.isRedirection) {
        offers.paths = Paths::kFiles;
    } else if (removeCommand(shell, fields[0], line.before)) {
        offers = listOffers(parser, line, source, texts);
    }
    Answer(shell, line, answer).write(offers);
}

/// Writes the answer to a question, nothing for one that is not complete. `fields` are those after
/// the shell.
void writeAnswer(BasicParser& parser, bool isScript, std::optional<Shell> shell,
                 char const* const* fields, int count, ValueSource* source, std::string& answer) {
    int const needed = isScript ? 1 : shell == Shell::kBash ? 4 : 3;
    if (!shell || count < needed) {
        return;
    }
    for (int at = 0; at < needed; ++at) {
        if (fields[at] == nullptr) {
            return;
        }
    }
    if (!isScript) {
        completeLine(parser, *shell, fields, source, answer);
    } else if (isPlainName(fields[0])) {
        writeStub(*shell, fields[0], answer);
    }
}

}  // namespace
}  // namespace internal

char const* completion(IParser* parser, int argc, char const* const* argv, ValueSource* source) {
    if (argc < 2 || argv == nullptr || argv[1] == nullptr) {
        return nullptr;
    }
    std::string_view const request = argv[1];
    bool const isScript = request == "varooption=script";
    if (!isScript && request != "varooption=complete") {
        return nullptr;
    }
    return internal::answer(parser, [&](BasicParser& ours, std::string& text) {
        if (argc >= 3 && argv[2] != nullptr) {
            internal::writeAnswer(ours, isScript, internal::shellOf(argv[2]), argv + 3, argc - 3,
                                  source, text);
        }
    });
}

}  // namespace varo_3_3
