#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "varo/trace.h"
#include "varo/varo.h"

/// Ends the run as a finding unless the condition holds.
#define REQUIRE(condition) ((condition) ? void() : ::fuzz::report(#condition, __FILE__, __LINE__))

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace fuzz {

[[noreturn]] inline void report(char const* condition, char const* file, int line) {
    std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, condition);
    std::abort();
}

/// Takes an input apart from its front. At its end numbers are 0 and texts empty.
class Input {
public:
    Input(std::uint8_t const* data, std::size_t size)
        : m_rest(reinterpret_cast<char const*>(data), size) {}
    explicit Input(std::string_view text) : m_rest(text) {}

    bool isEmpty() const { return m_rest.empty(); }

    unsigned number(unsigned below = 256) {
        unsigned const byte = m_rest.empty() ? 0 : static_cast<unsigned char>(m_rest.front());
        m_rest.remove_prefix(m_rest.empty() ? 0 : 1);
        return byte % below;
    }

    varo::Flags flags() { return static_cast<varo::CreationFlag>(number()); }

    /// The bytes up to the next separator, which is dropped.
    std::string text(char separator = '\0') {
        std::string_view const found = m_rest.substr(0, m_rest.find(separator));
        m_rest.remove_prefix(found.size() < m_rest.size() ? found.size() + 1 : found.size());
        return std::string(found);
    }

    /// All texts that are left, after a program name.
    std::vector<std::string> arguments(char separator) {
        std::vector<std::string> arguments{"tool"};
        while (!isEmpty()) {
            arguments.push_back(text(separator));
        }
        return arguments;
    }

private:
    std::string_view m_rest;
};

/// Refines a declaration in any way: `what` says how, `text` and whether it is a number with what.
inline void refine(varo::IOption* option, unsigned what, std::string const& text, bool isNumber) {
    using mosaic2::variant_t;
    variant_t const value = isNumber ? variant_t(std::atoi(text.c_str())) : variant_t(text.c_str());
    (what & 1) != 0 ? option->positional() : option;
    (what & 2) != 0 ? option->tokenize(text.empty() ? '\0' : text.front()) : option;
    (what & 4) != 0 ? option->defaultValue(value) : option;
    (what & 8) != 0 ? option->allowValue(value)->allowValue("other") : option;
    (what & 16) != 0 ? option->allowDeprecatedValue("other", value) : option;
    (what & 32) != 0 ? option->allowDeprecatedValue(value, 1)->allowValue(1) : option;
    (what & 64) != 0 ? option->synonym(text.c_str()) : option;
    (what & 128) != 0 ? option->tag(text.c_str()) : option;
}

struct Declared {
    std::string primaryName;
    varo::IOption* option;
};

/// Makes one declaration of any kind and type, refined in any way.
inline Declared declare(varo::Parser const& parser, Input& input) {
    using namespace mosaic2;
    static constexpr das_variant_type_t kTypes[] = {vtBool, vtS32,    vtU32,    vtS64,
                                                    vtU64,  vtDouble, vtString, vtNull};
    unsigned const kind = input.number();
    unsigned const refined = input.number();
    std::string const names = input.text();
    std::string const text = refined != 0 ? input.text() : "";
    das_variant_type_t const type = kTypes[kind % 8];
    char const* const section = (kind & 64) != 0 ? "varo_hidden" : "main:Section text";
    varo::IOption* const option =
        (kind & 8) != 0    ? parser->action(names.c_str(), text.c_str(), type, section)
        : (kind & 16) != 0 ? parser->modifier(names.c_str(), text.c_str(), "", type, section)
                           : parser->option(names.c_str(), text.c_str(), type, section);
    refine(option, refined, text, (kind & 32) != 0);
    return {names.substr(0, names.find(',')), option};
}

/// Parses, and checks what must hold after every parse: the code is a documented one, and those
/// that promise a text have one.
template <class Parse>
int checkedParse(varo::Parser const& parser, Parse parse) {
    int const code = parse();
    REQUIRE((code >= 0 && code <= 4) || code == 6);
    REQUIRE(*parser.error() != '\0' || (code != 2 && code != 4 && code != 6));
    return code;
}

inline int parse(varo::Parser const& parser, std::vector<std::string> const& arguments,
                 varo::IParseResult* result) {
    std::vector<char const*> argv;
    for (std::string const& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    return checkedParse(parser, [&] {
        return parser->parseArgsVector(static_cast<int>(argv.size()), argv.data(), result);
    });
}

/// Has the trace, which an input may switch on, written and dropped.
inline void dropTrace() {
    struct Dropping : std::streambuf {
        int overflow(int character) override { return traits_type::not_eof(character); }
    };
    static std::streambuf* const dropping = new Dropping;
    BRIX::ucout.rdbuf(dropping);
}

}  // namespace fuzz
