#pragma once

#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "varo/parser.h"
#include "varo/version.h"

namespace varo_3_3 {

/// A set of creation flags that takes nothing but flags: `kUnknownIsError | kDashGuard`.
class Flags {
public:
    constexpr Flags() noexcept = default;
    constexpr Flags(CreationFlag flag) noexcept : m_bits(flag) {}

    constexpr bool has(CreationFlag flag) const noexcept { return (m_bits & flag) != 0; }

    /// The number that createParser takes, which the set also becomes by itself.
    constexpr int bits() const noexcept { return m_bits; }
    constexpr operator int() const noexcept { return m_bits; }

    friend constexpr Flags operator|(Flags left, Flags right) noexcept {
        Flags both;
        both.m_bits = left.m_bits | right.m_bits;
        return both;
    }
    friend constexpr Flags operator|(Flags left, CreationFlag right) noexcept {
        return left | Flags(right);
    }
    friend constexpr Flags operator|(CreationFlag left, Flags right) noexcept {
        return Flags(left) | right;
    }

private:
    int m_bits = 0;
};

constexpr Flags operator|(CreationFlag left, CreationFlag right) noexcept {
    return Flags(left) | Flags(right);
}

/// A result that its owner's end destroys. Created by Parser::createResult; empty, and then testing
/// false, when default constructed, moved from, or created without memory. The queries of an empty
/// result answer "nothing". One thread at a time; every query moves the one iteration that the
/// result has, so a range is walked to its end before another query.
class Result {
public:
    class Values;
    class Arguments;

    Result() noexcept = default;
    explicit Result(IParseResult* owned) noexcept : m_result(owned) {}
    Result(Result&& other) noexcept : m_result(std::exchange(other.m_result, nullptr)) {}
    Result& operator=(Result&& other) noexcept {
        std::swap(m_result, other.m_result);
        return *this;
    }
    ~Result() {
        if (m_result != nullptr) {
            m_result->destroy();
        }
    }

    explicit operator bool() const noexcept { return m_result != nullptr; }
    IParseResult* interface() const noexcept { return m_result; }

    /// Whether the option was given, or has a default.
    bool has(char const* name) const {
        return m_result != nullptr && m_result->present(name, kFirstPosition, kNoPosition);
    }

    /// The option's first value (or its default) as Type: a number type, bool, char const*,
    /// std::string_view or std::string. Nothing when it was not given, has no value, or has one
    /// that cannot be read as Type. A view or pointer lives as long as the result.
    template <class Type>
    std::optional<Type> get(char const* name) const {
        return m_result != nullptr ? convert<Type>(m_result->get(name, kFirstPosition, kNoPosition))
                                   : std::nullopt;
    }

    /// As get(), for the last value: what users expect of an option that they repeat.
    template <class Type>
    std::optional<Type> last(char const* name) const {
        return convert<Type>(getLastValue(m_result, name, kFirstPosition, kNoPosition));
    }

    /// The option's values in the range of positions (both ends as in IParseResult::next), for a
    /// range-based for. `name` must live as long as the walk. Defaults are not among them.
    Values values(char const* name, int from = kFirstPosition, int to = kNoPosition) const;

    /// The plain arguments, as char const*, for a range-based for.
    Arguments arguments() const;

private:
    template <class Type>
    static std::optional<Type> convert(Value const& value) {
        if constexpr (std::is_same_v<Type, std::string_view> || std::is_same_v<Type, std::string>) {
            char const* const text = value.as<char const*>();
            return text != nullptr ? std::optional<Type>(text) : std::nullopt;
        } else {
            return value.value().can_get<Type>() ? std::optional<Type>(value.as<Type>())
                                                 : std::nullopt;
        }
    }

    IParseResult* m_result = nullptr;
};

/// What Result::values returns: a single pass, since the iteration is the result's own.
class Result::Values {
public:
    class iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Value;
        using difference_type = std::ptrdiff_t;
        using pointer = Value const*;
        using reference = Value const&;

        iterator() noexcept = default;
        iterator(IParseResult* result, char const* name) : m_result(result), m_name(name) {
            ++*this;
        }

        Value const& operator*() const noexcept { return m_value; }
        Value const* operator->() const noexcept { return &m_value; }
        iterator& operator++() {
            if (m_result->nextPosition() == kNoPosition) {
                m_result = nullptr;
            } else {
                m_value = m_result->next(m_name);
            }
            return *this;
        }
        iterator operator++(int) {
            iterator before = *this;
            ++*this;
            return before;
        }
        /// Only for comparing with the end.
        friend bool operator==(iterator const& left, iterator const& right) noexcept {
            return left.m_result == right.m_result;
        }
        friend bool operator!=(iterator const& left, iterator const& right) noexcept {
            return !(left == right);
        }

    private:
        IParseResult* m_result = nullptr;
        char const* m_name = nullptr;
        Value m_value;
    };

    Values(IParseResult* result, char const* name, int from, int to) noexcept
        : m_result(result), m_name(name), m_from(from), m_to(to) {}

    iterator begin() const {
        if (m_result == nullptr) {
            return iterator();
        }
        m_result->present(m_name, m_from, m_to);  // only to begin the iteration
        return iterator(m_result, m_name);
    }
    iterator end() const noexcept { return {}; }

private:
    IParseResult* m_result;
    char const* m_name;
    int m_from;
    int m_to;
};

/// What Result::arguments returns: a single pass.
class Result::Arguments {
public:
    class iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = char const*;
        using difference_type = std::ptrdiff_t;
        using pointer = char const* const*;
        using reference = char const* const&;

        iterator() noexcept = default;
        explicit iterator(IParseResult* result) : m_result(result) {
            if (m_result->getFirstArgument(&m_text) != 0) {
                m_result = nullptr;
            }
        }

        char const* const& operator*() const noexcept { return m_text; }
        iterator& operator++() {
            if (m_result->getNextArgument(&m_text) != 0) {
                m_result = nullptr;
            }
            return *this;
        }
        iterator operator++(int) {
            iterator before = *this;
            ++*this;
            return before;
        }
        /// Only for comparing with the end.
        friend bool operator==(iterator const& left, iterator const& right) noexcept {
            return left.m_result == right.m_result;
        }
        friend bool operator!=(iterator const& left, iterator const& right) noexcept {
            return !(left == right);
        }

    private:
        IParseResult* m_result = nullptr;
        char const* m_text = nullptr;
    };

    explicit Arguments(IParseResult* result) noexcept : m_result(result) {}

    iterator begin() const { return m_result != nullptr ? iterator(m_result) : iterator(); }
    iterator end() const noexcept { return {}; }

private:
    IParseResult* m_result;
};

inline Result::Values Result::values(char const* name, int from, int to) const {
    return Values(m_result, name, from, to);
}

inline Result::Arguments Result::arguments() const {
    return Arguments(m_result);
}

/// A parser that its owner's end destroys, used like a pointer to IParser:
///
///     varo::Parser parser(varo::kUnknownIsError);
///     parser->option("level,l", "Verbosity", mosaic2::vtS32, "general")->defaultValue(3);
///     varo::Result result = parser.createResult();
///     if (!parser || !result || parser.parse(argc, argv, result) != varo::kSuccess) { ... }
///     int level = result.get<int>("level").value_or(0);
///
/// Empty, and then testing false, when moved from or created without memory: then `->` must not be
/// used, createResult() gives an empty result, parse() kUnusableArguments, and error() says why.
class Parser {
public:
    explicit Parser(Flags flags = {}) { createParser(&m_parser, flags); }
    Parser(Parser&& other) noexcept : m_parser(std::exchange(other.m_parser, nullptr)) {}
    Parser& operator=(Parser&& other) noexcept {
        std::swap(m_parser, other.m_parser);
        return *this;
    }
    ~Parser() {
        if (m_parser != nullptr) {
            m_parser->destroy();
        }
    }

    explicit operator bool() const noexcept { return m_parser != nullptr; }
    IParser* operator->() const noexcept { return m_parser; }
    IParser* interface() const noexcept { return m_parser; }

    /// A new result, empty when memory runs out.
    Result createResult() const {
        IParseResult* result = nullptr;
        if (m_parser != nullptr) {
            m_parser->createResult(&result);
        }
        return Result(result);
    }

    /// Parses the arguments behind argv[0] into `result`. An empty result has them only checked.
    int parse(int argc, char const* const* argv, Result& result) const {
        return m_parser != nullptr ? m_parser->parseArgsVector(argc, argv, result.interface())
                                   : static_cast<int>(kUnusableArguments);
    }

    /// The error, or the warnings, of the last parse; never null.
    char const* error() const {
        return m_parser != nullptr ? m_parser->getErrorDesc() : "The parser could not be created.";
    }

private:
    IParser* m_parser = nullptr;
};

}  // namespace varo_3_3

/// Hosts that do not pin the interface's version may write varo::Parser.
namespace varo = varo_3_3;
