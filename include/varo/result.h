#pragma once

#include "mosaic2/variant.h"
#include "varo/export.h"

namespace varo_3_3 {

/// Every argument and value that is stored takes a position: the next number of one sequence for
/// the whole process. Only the order of positions means anything. Ranges are written with these.
inline constexpr int kFirstPosition = 0;        ///< No position is lower.
inline constexpr int kNoPosition = 2147483647;  ///< None is as high; the position of "nothing".

/// One value of an option: the text as it was typed, the value it was converted to, its position.
/// Copies share the string of the value. The text lives as long as what handed the value out: a
/// result for its values, the parser for those that it gives to an EventHandler.
class Value {
public:
    /// Nothing: the text "", a value of tag vtNull, kNoPosition.
    Value() noexcept : m_text(""), m_position(kNoPosition) {}

    /// Keeps the pointer `text` as it is, so it must outlive this object.
    Value(char const* text, mosaic2::variant_t const& value, int position) noexcept
        : m_text(text), m_value(value), m_position(position) {}
    Value(char const* text, mosaic2::variant_t&& value, int position) noexcept
        : m_text(text), m_value(static_cast<mosaic2::variant_t&&>(value)), m_position(position) {}

    char const* text() const noexcept { return m_text; }
    mosaic2::variant_t const& value() const noexcept { return m_value; }
    int position() const noexcept { return m_position; }

    /// The value as bool, int, unsigned, long, unsigned long, long long, unsigned long long, double
    /// or char const*. A number that the value cannot be read as is reported to the assertion hook
    /// and taken from the stored bits; a text is null unless the value is a narrow string, and
    /// lives as long as a copy of this value or the result does.
    template <class Type>
    Type as() const {
        return m_value.get<Type>();
    }

private:
    char const* m_text;
    mosaic2::variant_t m_value;
    int m_position;
};

template <>
inline char const* Value::as<char const*>() const {
    return m_value.can_get<char const*>() ? m_value.get<char const*>() : nullptr;
}

static_assert(sizeof(Value) == 32, "the layout of Value is fixed");

/// What parses stored: values by option name and position, and the plain arguments. Made by
/// IParser::createResult, owned by the host, filled by any number of parses, released with
/// destroy(). It does not refer to the parser and may outlive it. One thread at a time.
///
/// A name is an option's primary name or a synonym, without dashes. Texts that a result returns
/// live as long as the result. Queries throw nothing.
///
/// The order of the operations is the binary contract.
class VARO_EXPORT IParseResult {
public:
    /// Deletes this result and every text that it handed out.
    virtual void destroy() = 0;

    /// Whether the option was given at a position p with from <= p < to; true also, whatever the
    /// range, when it was never given and has a default. Puts the iteration of next() before the
    /// first value of that range (a default is not iterated). False for a null name.
    virtual bool present(char const* name, int from, int to) = 0;

    /// The first occurrence of the option with from <= position < to: its position with its first
    /// value, or with the text "" and a value of tag vtNull when it has none. While the option was
    /// never given: its default, whatever the range. Else Value(). Puts the iteration of next()
    /// behind the value returned.
    virtual Value get(char const* name, int from, int to) = 0;

    /// The option's next value of the range that the last present() or get() named (here the end of
    /// the range belongs to it), at its own position; for an option without values its next
    /// occurrence. Value() at the end, and, without moving, when `name` leads to another option
    /// than the last lookup's.
    virtual Value next(char const* name) = 0;

    /// The position of what the following next() would return; kNoPosition when that is nothing.
    virtual int nextPosition() = 0;

    /// Sets `*text` to the first plain argument, those behind the end marker "--". Returns 0, or 1
    /// with `*text` untouched when there is none.
    virtual int getFirstArgument(char const** text) = 0;

    /// Sets `*text` to the plain argument after the one last returned, or to the first. Returns 0,
    /// or 1 with `*text` untouched when there is none.
    virtual int getNextArgument(char const** text) = 0;

    virtual ~IParseResult() = default;
};

/// The last value of the option with from <= position < to; for an option without values its last
/// occurrence there; its default if it was never given. Value() when there is none, and for a null
/// result or name. Takes time in the number of values, and leaves the iteration of next() as
/// present(name, from, to) does.
VARO_EXPORT Value getLastValue(IParseResult* result, char const* name, int from, int to);

}  // namespace varo_3_3
