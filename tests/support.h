#pragma once

#include <gtest/gtest.h>

#include <charconv>
#include <filesystem>
#include <fstream>
#include <functional>
#include <locale>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "varo/trace.h"
#include "varo/varo.h"

namespace varo_test {

using varo::kOptionFileUnreadable;
using varo::kParseError;
using varo::kRefused;
using varo::kSuccess;
using varo::kUnidentifiedProblem;
using varo::kUnusableArguments;

using Arguments = std::vector<std::string>;

/// Parses `arguments`, after a program name.
inline int parse(varo::Parser const& parser, varo::Result& result, Arguments const& arguments) {
    std::vector<char const*> argv{"tool"};
    for (std::string const& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    return parser.parse(static_cast<int>(argv.size()), argv.data(), result);
}

/// How a value reads in the tables: "s32 -5", "'text'", "null".
inline std::string show(mosaic2::variant_t const& value) {
    using namespace mosaic2;
    char const* const integers[] = {"s32 ", "u32 ", "s64 ", "u64 "};
    int const type = value.m_type;
    char digits[32];
    if (type >= vtS32 && type <= vtU64) {
        return integers[type - vtS32] + (type % 2 == 0 ? std::to_string(value.m_value.m_signed)
                                                       : std::to_string(value.m_value.m_unsigned));
    }
    if (type == vtDouble) {
        char* const end = std::to_chars(digits, digits + sizeof(digits), value.get<double>()).ptr;
        return "double " + std::string(digits, end);
    }
    if (type == vtString || type == vtStringRef) {
        char const* const text = value.get<char const*>();
        return text != nullptr ? "'" + std::string(text) + "'" : "null text";
    }
    return type != vtBool ? "null" : value.get<bool>() ? "true" : "false";
}

/// The plain arguments, each followed by "|".
inline std::string plainArguments(varo::Result const& result) {
    std::string shown;
    for (char const* argument : result.arguments()) {
        shown += std::string(argument) + "|";
    }
    return shown;
}

/// What an option holds: its values in order, or "absent", or "default" and the value. Of
/// "--" the plain arguments.
inline std::string contents(varo::Result const& result, char const* name,
                            int from = varo::kFirstPosition, int to = varo::kNoPosition) {
    if (name == std::string_view("--")) {
        return plainArguments(result);
    }
    if (!result.interface()->present(name, from, to)) {
        return "absent";
    }
    std::string shown;
    while (result.interface()->nextPosition() != varo::kNoPosition) {
        shown += (shown.empty() ? "" : " ") + show(result.interface()->next(name).value());
    }
    return shown.empty() ? "default " + show(result.interface()->get(name, from, to).value())
                         : shown;
}

/// One command line: what it returns and says, and what `name` holds then.
struct Case {
    Arguments arguments;
    varo::ReturnCode code;
    std::string error;
    char const* name = nullptr;
    std::string contents{};
};

/// The message about a text that is not a value of the option's type.
inline std::string cannotParse(std::string const& argument, std::string const& option,
                               std::string const& text, std::string const& type) {
    return "Value validation problem in argument '" + argument + "': Option '" + option +
           "' can not parse '" + text + "' value, requires a type '" + type + "' here.";
}

/// Parses every row into a result of its own, and without a result, which must make no difference.
inline void check(varo::Parser const& parser, std::vector<Case> const& cases) {
    for (Case const& row : cases) {
        std::string line;
        for (std::string const& argument : row.arguments) {
            line += " [" + argument.substr(0, 80) + "]";
        }
        SCOPED_TRACE(line);
        varo::Result result = parser.createResult();
        EXPECT_EQ(parse(parser, result, row.arguments), row.code);
        EXPECT_EQ(parser.error(), row.error);
        if (row.name != nullptr) {
            EXPECT_EQ(contents(result, row.name), row.contents);
        }
        varo::Result none;
        EXPECT_EQ(parse(parser, none, row.arguments), row.code);
        EXPECT_EQ(parser.error(), row.error);
    }
}

/// Records what it is told, then does what the test wants done at that moment.
class RecordingHandler final : public varo::EventHandler {
public:
    bool onOptionParse(char const* name) override {
        m_texts.push_back(name);
        return note(std::string("option ") + name);
    }
    bool onValueParse(char const* name, varo::Value const& value) override {
        m_texts.push_back(value.text());
        return note(std::string("value ") + name + "=" + value.text());
    }
    bool onUknownArgument(char const* argument) override {
        m_texts.push_back(argument);
        return note(std::string("unknown ") + argument);
    }

    std::string m_events;              // each followed by "; "
    std::vector<char const*> m_texts;  // names, values and arguments as they were given
    std::function<bool(std::string const& event)> m_reaction;

private:
    bool note(std::string const& event) {
        m_events += event + "; ";
        return !m_reaction || m_reaction(event);
    }
};

/// Collects what is written to the console stream while it lives.
class Console {
public:
    Console() : m_old(BRIX::ucout.rdbuf(m_text.rdbuf())) {}
    ~Console() { BRIX::ucout.rdbuf(m_old); }
    std::string text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
    std::streambuf* m_old;
};

/// What a text should be, from a file beside the tests.
inline std::string expected(char const* file) {
    std::ifstream stream(std::string(VARO_TEST_EXPECTED "/") + file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Adds a facet to the global C++ locale while it lives.
class GlobalFacet {
public:
    template <class Facet>
    explicit GlobalFacet(Facet* facet)
        : m_old(std::locale::global(std::locale(std::locale(), facet))) {}
    ~GlobalFacet() { std::locale::global(m_old); }

private:
    std::locale m_old;
};

/// A directory for files that a test writes.
class Directory {
public:
    Directory() {
        std::string name = (std::filesystem::temp_directory_path() / "varo-XXXXXX").string();
        m_path = mkdtemp(name.data());
    }
    ~Directory() { std::filesystem::remove_all(m_path); }

    std::string path(std::string const& name) const { return m_path + "/" + name; }
    std::string write(std::string const& name, std::string const& text) const {
        std::ofstream(path(name), std::ios::binary) << text;
        return path(name);
    }

private:
    std::string m_path;
};

}  // namespace varo_test
