#include <algorithm>
#include <exception>
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

/// Writes JSON that reads well line by line: members of one declaration on lines of their own, what
/// they hold on one line. docs/json.md says what the members mean.
class Writer {
public:
    explicit Writer(BasicParser& parser) : m_parser(parser) {}

    std::string write() {
        m_json = "{\n  \"schema\": \"varo-command-line\",\n  \"version\": 1,\n  \"flags\": [";
        writeFlags();
        m_json += "],\n  \"together\": [";
        forEachActionGroup(m_parser, [&](ActionGroup const& group) {
            separate(group.index);
            writeTexts(group.actions, group.actionCount);
        });
        m_json += "],\n  \"declarations\": [";
        forEachDeclaration(m_parser, [&](Declaration const& declaration) {
            m_json += declaration.index == 0 ? "\n    {" : ",\n    {";
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
        int count = 0;
        int flag = kUnknownIsError;
        for (char const(&name)[22] : kNames) {
            if ((m_parser.flags() & flag) != 0) {
                separate(count++);
                writeQuoted(name);
            }
            flag *= 2;
        }
    }

    void writeDeclaration(Declaration const& declaration) {
        static constexpr char kKinds[][9] = {"option", "action", "modifier"};
        m_type = nameOf(declaration.type);
        m_isFirst = true;
        writeMember("kind", kKinds[declaration.kind]);
        writeNames(declaration);
        writeMember("type", m_type);
        beginMember("actions");
        writeTexts(declaration.actions, declaration.actionCount);
        beginMember("separator");
        char const separator[] = {static_cast<char>(declaration.separator), '\0'};
        writeText(separator);
        writeBool("positional", declaration.isPositional);
        writeBool("hidden", declaration.isHidden);
        writeBool("readsFiles", declaration.readsFiles);
        writeValues(declaration);
        writeMember("description", declaration.description);
        writeMember("section", declaration.section);
        writeMember("sectionText", declaration.sectionText);
    }

    void writeNames(Declaration const& declaration) {
        beginMember("names");
        m_json += '[';
        for (int number = 0; number < declaration.nameCount; ++number) {
            std::string_view const name = declaration.names[number];
            separate(number);
            m_json += "{\"name\": ";
            writeText(name);
            m_spelling = name;
            m_json += ", \"shortest\": ";
            writeShortest(declaration.index, false);
            if (declaration.type == mosaic2::vtBool) {
                m_spelling.insert(0, "no-");
                m_json += ", \"shortestNegation\": ";
                writeShortest(declaration.index, true);
            }
            m_json += '}';
        }
        m_json += ']';
    }

    void writeValues(Declaration const& declaration) {
        beginMember("allowed");
        m_json += '[';
        for (int number = 0; number < declaration.allowedCount; ++number) {
            separate(number);
            writeValue(declaration.allowed[number]);
        }
        m_json += ']';
        beginMember("deprecated");
        m_json += '[';
        for (int number = 0; number < declaration.deprecatedCount; ++number) {
            separate(number);
            m_json += "{\"value\": ";
            writeValue(declaration.deprecated[number].deprecated);
            m_json += ", \"replacement\": ";
            writeValue(declaration.deprecated[number].replacement);
            m_json += '}';
        }
        m_json += ']';
        beginMember("default");
        if (declaration.defaultValue.value != nullptr) {
            writeValue(declaration.defaultValue);
        } else {
            m_json += "null";
        }
    }

    /// Writes the shortest beginning of m_spelling that means the declaration of this number; all
    /// of it if there is none among those that anybody would type.
    void writeShortest(int number, bool isNegated) {
        constexpr std::size_t kLongest = 200;
        NameIndex& names = m_parser.registry().names();
        std::string_view const name = m_spelling;
        std::size_t length = 0;
        bool isMeant = false;
        while (!isMeant && length < name.size()) {
            length += std::max<std::size_t>(internal::utf8Length(name.substr(length)), 1);
            length = length <= kLongest ? length : name.size();
            std::uint32_t const key = names.findMeant(name.substr(0, length));
            isMeant = key != NameIndex::kNone &&
                      names.recordOf(key) == static_cast<std::uint32_t>(number) &&
                      names.isNegated(key) == isNegated;
        }
        writeText(name.substr(0, length));
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

    void writeMember(char const* name, char const* text) {
        beginMember(name);
        writeText(text);
    }

    void beginMember(char const* name) {
        m_json += m_isFirst ? "\n      \"" : ",\n      \"";
        m_json += name;
        m_json += "\": ";
        m_isFirst = false;
    }

    void separate(int number) { m_json += number != 0 ? ", " : ""; }

    void writeTexts(char const* const* texts, int count) {
        m_json += '[';
        for (int number = 0; number < count; ++number) {
            separate(number);
            writeText(texts[number]);
        }
        m_json += ']';
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
    char const* m_type = "";  // of the declaration that is being written
    bool m_isFirst = false;   // of its members
    std::string m_spelling;   // of the name that is being written
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
