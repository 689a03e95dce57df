#include <algorithm>
#include <exception>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

#include "documents/declarations.h"
#include "platform/utf8_length.h"

namespace varo_3_3 {
namespace {

// The tables below hold characters, not pointers, each of which would cost every start of a program
// a relocation.

/// How the types of declarations and values are called here, by their tags.
char const* nameOf(int type) {
    constexpr int kTypes = 18;
    static constexpr char kNames[kTypes][7] = {"bool",   "",    "",       "",    "", "",
                                               "s32",    "u32", "s64",    "u64", "", "double",
                                               "string", "",    "string", "",    "", "none"};
    bool const isKnown = type >= 0 && type < kTypes && kNames[type][0] != '\0';
    return isKnown ? kNames[type] : "other";
}

/// Finds the shortest beginning of a name that begins no other one.
class Abbreviations {
public:
    explicit Abbreviations(BasicParser& parser) {
        forEachDeclaration(parser, [this](Declaration const& declaration) {
            for (int number = 0; number < declaration.nameCount; ++number) {
                m_names.insert(declaration.names[number]);
                if (declaration.type == mosaic2::vtBool) {
                    m_names.insert(negationOf(declaration.names[number]));
                }
            }
        });
    }

    static std::string negationOf(char const* name) { return std::string("no-") + name; }

    /// The whole name where it begins another one, or ends in the middle of a character. Requires:
    /// `name` is one of the names.
    std::string shortest(std::string const& name) const {
        auto const place = m_names.find(name);
        auto const next = std::next(place);
        std::size_t length = place != m_names.begin() ? sharedLength(name, *std::prev(place)) : 0;
        if (next != m_names.end()) {
            length = std::max(length, sharedLength(name, *next));
        }
        ++length;
        while (length < name.size() && (name[length] & 0xC0) == 0x80) {
            ++length;
        }
        return name.substr(0, length);
    }

private:
    static std::size_t sharedLength(std::string_view left, std::string_view right) {
        std::size_t length = 0;
        while (length < left.size() && length < right.size() && left[length] == right[length]) {
            ++length;
        }
        return length;
    }

    std::set<std::string> m_names;
};

/// Writes JSON that reads well line by line: members of one declaration on lines of their own, what
/// they hold on one line. docs/json.md says what the members mean.
class Writer {
public:
    explicit Writer(BasicParser& parser) : m_parser(parser), m_abbreviations(parser) {}

    std::string write() {
        m_json = "{\n  \"schema\": \"varo-command-line\",\n  \"version\": 1,\n  \"flags\": [";
        writeFlags();
        m_json += "],\n  \"together\": [";
        char const* separator = "";
        forEachActionGroup(m_parser, [&](ActionGroup const& group) {
            m_json += separator;
            separator = ", ";
            writeTexts(group.actions, group.actionCount);
        });
        m_json += "],\n  \"declarations\": [";
        separator = "\n    {";
        forEachDeclaration(m_parser, [&](Declaration const& declaration) {
            m_json += separator;
            separator = ",\n    {";
            writeDeclaration(declaration);
            m_json += "\n    }";
        });
        m_json += "\n  ]\n}\n";
        return std::move(m_json);
    }

private:
    void writeFlags() {
        static constexpr char kNames[][22] = {"unknownIsError", "positionalAfterMarker",
                                              "dashGuard",      "takeTheRest",
                                              "keepCommas",     "doubleDashHelp"};
        char const* separator = "";
        int flag = kUnknownIsError;
        for (char const(&name)[22] : kNames) {
            if ((m_parser.flags() & flag) != 0) {
                m_json += separator;
                writeQuoted(name);
                separator = ", ";
            }
            flag *= 2;
        }
    }

    void writeDeclaration(Declaration const& declaration) {
        static constexpr char kKinds[][9] = {"option", "action", "modifier"};
        m_type = nameOf(declaration.type);
        m_isFirst = true;
        beginMember("kind");
        writeQuoted(kKinds[declaration.kind]);
        beginMember("names");
        writeArray(declaration.nameCount, [&](int number) {
            writeName(declaration.names[number], declaration.type == mosaic2::vtBool);
        });
        beginMember("type");
        writeQuoted(m_type);
        beginMember("actions");
        writeTexts(declaration.actions, declaration.actionCount);
        beginMember("separator");
        char const separator = static_cast<char>(declaration.separator);
        writeText({&separator, declaration.separator != 0 ? 1U : 0U});
        writeBool("positional", declaration.isPositional);
        writeBool("hidden", declaration.isHidden);
        writeBool("readsFiles", declaration.readsFiles);
        beginMember("allowed");
        writeArray(declaration.allowedCount,
                   [&](int number) { writeValue(declaration.allowed[number]); });
        beginMember("deprecated");
        writeArray(declaration.deprecatedCount, [&](int number) {
            m_json += "{\"value\": ";
            writeValue(declaration.deprecated[number].deprecated);
            m_json += ", \"replacement\": ";
            writeValue(declaration.deprecated[number].replacement);
            m_json += '}';
        });
        beginMember("default");
        if (declaration.defaultValue.value != nullptr) {
            writeValue(declaration.defaultValue);
        } else {
            m_json += "null";
        }
        beginMember("description");
        writeText(declaration.description);
        beginMember("section");
        writeText(declaration.section);
        beginMember("sectionText");
        writeText(declaration.sectionText);
    }

    void writeName(char const* name, bool isBool) {
        m_json += "{\"name\": ";
        writeText(name);
        m_json += ", \"shortest\": ";
        writeText(m_abbreviations.shortest(name));
        if (isBool) {
            m_json += ", \"shortestNegation\": ";
            writeText(m_abbreviations.shortest(Abbreviations::negationOf(name)));
        }
        m_json += '}';
    }

    void writeValue(DeclaredValue const& value) {
        char const* const type = nameOf(value.value->m_type);
        if (std::string_view(type) == m_type) {
            writeText(value.text);
            return;
        }
        m_json += "{\"type\": ";
        writeQuoted(type);
        m_json += ", \"text\": ";
        writeText(value.text);
        m_json += '}';
    }

    void writeBool(char const* name, int value) {
        beginMember(name);
        m_json += value != 0 ? "true" : "false";
    }

    void beginMember(char const* name) {
        m_json += m_isFirst ? "\n      " : ",\n      ";
        m_isFirst = false;
        writeQuoted(name);
        m_json += ": ";
    }

    template <class WriteElement>
    void writeArray(int count, WriteElement writeElement) {
        m_json += '[';
        for (int number = 0; number < count; ++number) {
            m_json += number != 0 ? ", " : "";
            writeElement(number);
        }
        m_json += ']';
    }

    void writeTexts(char const* const* texts, int count) {
        writeArray(count, [&](int number) { writeText(texts[number]); });
    }

    /// A text; where it is not UTF-8, with all its bytes.
    void writeText(std::string_view text) {
        if (isUtf8(text)) {
            writeQuoted(text);
            return;
        }
        m_json += "{\"text\": ";
        writeQuoted(text);
        m_json += ", \"bytes\": \"";
        for (char const byte : text) {
            writeHexadecimal(byte);
        }
        m_json += "\"}";
    }

    static bool isUtf8(std::string_view text) {
        while (!text.empty()) {
            std::size_t const length = internal::utf8Length(text);
            if (length == 0) {
                return false;
            }
            text.remove_prefix(length);
        }
        return true;
    }

    /// Each byte that is not UTF-8 becomes the replacement character.
    void writeQuoted(std::string_view text) {
        m_json += '"';
        while (!text.empty()) {
            std::size_t const length = internal::utf8Length(text);
            char const first = text.front();
            if (length == 0) {
                m_json += "\xEF\xBF\xBD";
            } else if (static_cast<unsigned char>(first) < ' ') {
                m_json += "\\u00";
                writeHexadecimal(first);
            } else {
                m_json += first == '"' || first == '\\' ? "\\" : "";
                m_json += text.substr(0, length);
            }
            text.remove_prefix(length != 0 ? length : 1);
        }
        m_json += '"';
    }

    void writeHexadecimal(char byte) {
        static constexpr char kDigits[] = "0123456789abcdef";
        m_json += kDigits[static_cast<unsigned char>(byte) >> 4];
        m_json += kDigits[byte & 0xF];
    }

    BasicParser& m_parser;
    Abbreviations const m_abbreviations;
    char const* m_type = "";  // of the declaration that is being written
    bool m_isFirst = false;   // of its members
    std::string m_json;
};

}  // namespace

char const* describeJson(IParser* parser) {
    BasicParser* const ours = basicParserOf(parser);
    if (ours == nullptr) {
        return "";
    }
    try {
        return ours->texts().init(Writer(*ours).write());
    } catch (std::exception const&) {
        return "";
    }
}

}  // namespace varo_3_3
