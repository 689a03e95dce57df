// Handlers that, at the first event, overwrite the arguments or the text being parsed, have the
// same memory parsed again with other contents, and release it. The parse must go on as if they had
// not.

#include <algorithm>
#include <utility>

#include "input.h"

namespace {

/// Arguments of a program, or a text with one a line, in memory that the host may reuse.
class Original {
public:
    Original(std::vector<std::string> arguments, bool isText)
        : m_isText(isText), m_arguments(std::move(arguments)) {
        for (std::string const& argument : m_arguments) {
            m_text += m_argv.empty() ? "" : argument + "\n";  // without the program's name
            m_argv.push_back(argument.c_str());
        }
        m_argv.push_back(nullptr);
    }
    Original(Original const&) = delete;

    int parse(varo::Parser const& parser, varo::Result& result) {
        return m_isText ? parser->parseStream(m_text.c_str(), result.interface())
                        : parser.parse(static_cast<int>(m_argv.size()) - 1, m_argv.data(), result);
    }

    /// Parses other arguments from the same memory, which is released then.
    void reuse(varo::Parser const& parser, varo::Result& result) {
        for (std::string& argument : m_arguments) {
            std::fill(argument.begin(), argument.end(), '-');
        }
        std::fill(m_argv.begin(), m_argv.end() - 1, "--level=9");
        std::string const other = "--level=9\n--list=x,y\n-u\n--\nz\n";
        m_text.replace(0, std::min(m_text.size(), other.size()), other);
        parse(parser, result);
        std::fill(m_argv.begin(), m_argv.end(), nullptr);
        std::vector<char const*>().swap(m_argv);
        std::vector<std::string>().swap(m_arguments);
        std::string().swap(m_text);
    }

private:
    bool m_isText;
    std::vector<std::string> m_arguments;
    std::vector<char const*> m_argv;
    std::string m_text;
};

/// Writes down what it is told, and may reuse the original in the middle of its parse.
class Handler final : public varo::EventHandler {
public:
    Handler(varo::Parser const& parser, unsigned refusedValue)
        : m_parser(parser), m_refusedValue(refusedValue) {}

    bool onOptionParse(char const* name) override {
        note("option", name);
        return true;
    }
    bool onValueParse(char const* name, varo::Value const& value) override {
        note("value", name);
        note("is", value.text());
        return m_isParsingAgain || ++m_values != m_refusedValue;
    }
    bool onUknownArgument(char const* argument) override {
        note("unknown", argument);
        return false;
    }

    void reuseAtNextEvent(Original& original) { m_original = &original; }

    /// The events, and the texts that came with them as they read now.
    std::string shown() const {
        std::string shown = m_events;
        for (char const* const text : m_texts) {
            shown += std::string(text) + "; ";
        }
        return shown;
    }

private:
    void note(std::string const& event, char const* text) {
        if (m_isParsingAgain) {
            return;
        }
        m_events += event + " " + text + "; ";
        m_texts.push_back(text);
        if (m_original != nullptr) {
            m_isParsingAgain = true;
            varo::Result other = m_parser.createResult();
            std::exchange(m_original, nullptr)->reuse(m_parser, other);
            REQUIRE(m_parser->removeHandler(this) && m_parser->addHandler(this));
            m_isParsingAgain = false;
        }
    }

    varo::Parser const& m_parser;
    unsigned const m_refusedValue;
    unsigned m_values = 0;
    Original* m_original = nullptr;
    bool m_isParsingAgain = false;
    std::string m_events;
    std::vector<char const*> m_texts;
};

void declare(varo::Parser const& parser, bool hasAction) {
    using namespace mosaic2;
    parser->option("level,l", "", vtS32, "");
    parser->option("list", "", vtString, "");
    parser->option("mode", "", vtString, "")
        ->allowValue("alpha")
        ->allowValue("beta")
        ->allowDeprecatedValue("old", "beta");
    parser->option("flag", "", vtBool, "");
    hasAction ? parser->action("run", "", vtNull, "") : parser->option("run", "", vtNull, "");
    parser->option("word", "", vtString, "")->positional();
}

/// What comes of the input.
std::string outcome(fuzz::Input input, bool isReused) {
    varo::Parser const parser(input.flags());
    unsigned const what = input.number();
    declare(parser, (what & 64) != 0);
    Handler handler(parser, what % 8);
    parser->addHandler(&handler);
    Original original(input.arguments('\n'), (what & 128) != 0);
    if (isReused) {
        handler.reuseAtNextEvent(original);
    }
    varo::Result result = parser.createResult();
    int const code = fuzz::checkedParse(parser, [&] { return original.parse(parser, result); });
    std::string shown = std::to_string(code) + " ";
    shown += std::string(parser.error()) + "; " + handler.shown();
    for (char const* const name : {"level", "list", "mode", "flag", "run", "word"}) {
        shown += result.has(name) ? std::string("; ") + name : "";
        for (varo::Value const& value : result.values(name)) {
            shown += std::string("|") + value.text();
        }
    }
    for (char const* const argument : result.arguments()) {
        shown += std::string("; ") + argument;
    }
    return shown;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::dropTrace();
    std::string const expected = outcome(fuzz::Input(data, size), false);
    std::string const found = outcome(fuzz::Input(data, size), true);
    if (found != expected) {
        std::fprintf(stderr, "expected %s\nfound %s\n", expected.c_str(), found.c_str());
    }
    REQUIRE(found == expected);
    return 0;
}
