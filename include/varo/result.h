#pragma once

#include "mosaic2/variant.h"
#include "varo/export.h"

namespace varo_3_3 {

/// Every occurrence, value and plain argument that is stored takes a position: the next number of
/// one sequence for the whole process. Only the order of positions means anything. These two bound
/// the range of all positions.

/// No position is lower.
inline constexpr int kFirstPosition = 0;

/// Every position is lower. Also the position of "nothing".
inline constexpr int kNoPosition = 2147483647;

/// One value of an option: the text as it was typed, the value that it was converted to, and its
/// position. Copies share the string of the value. The text lives as long as what handed the value
/// out: the result, or the parser for values given to an EventHandler.
class Value {
public:
    /// "Nothing": the text "", a value of tag vtNull, kNoPosition.
    Value() noexcept : m_text(""), m_position(kNoPosition) {}

    /// Keeps the pointer `text`, which must outlive this object and its copies.
    Value(char const* text, mosaic2::variant_t const& value, int position) noexcept
        : m_text(text), m_value(value), m_position(position) {}
    Value(char const* text, mosaic2::variant_t&& value, int position) noexcept
        : m_text(text), m_value(static_cast<mosaic2::variant_t&&>(value)), m_position(position) {}

    char const* text() const noexcept { return m_text; }
    mosaic2::variant_t const& value() const noexcept { return m_value; }
    int position() const noexcept { return m_position; }

    /// The value as bool, int, unsigned, long, unsigned long, long long, unsigned long long, double
    /// or char const*. Asking for a number that the value cannot be read as is reported to the
    /// assertion hook and returns the stored bits. A text is null unless the value is a narrow
    /// string; it lives as long as this value, a copy of it, or the result.
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

/// What parses stored: values by option name and position, and the plain arguments. Created by
/// IParser::createResult, owned by the host, filled by any number of parses, released with
/// destroy(). It does not refer to the parser and may outlive it. One thread at a time.
///
/// A name is an option's primary name or a synonym, without dashes. Texts that a result returns
/// live as long as the result. Queries do not throw.
///
/// The order of the operations is the binary contract.
class VARO_EXPORT IParseResult {
public:
    /// Deletes this result and every text that it handed out.
    virtual void destroy() = 0;

    /// Whether the option was given at a position p with from <= p < to. Also true, whatever the
    /// range, when it was never given and has a default. Moves the iteration of next() to before
    /// the first value of that range (a default is not iterated). False for a null name.
    virtual bool present(char const* name, int from, int to) = 0;

    /// The first occurrence of the option with from <= position < to: its position with its first
    /// value, or with the text "" and a value of tag vtNull when it has none. If the option was
    /// never given: its default, whatever the range. Otherwise Value(). Moves the iteration of
    /// next() to after the value returned.
    virtual Value get(char const* name, int from, int to) = 0;

    /// The option's next value in the range of the last present() or get() (here including the end
    /// `to`), at its own position; for an option without values its next occurrence. Value() at the
    /// end and, without moving, when `name` is not a name of the option that was last looked up.
    virtual Value next(char const* name) = 0;

    /// The position of what next() would return; kNoPosition when that is nothing.
    virtual int nextPosition() = 0;

    /// Sets `*text` to the first plain argument (one after the end marker "--"). Returns 0, or 1
    /// with `*text` untouched when there is none.
    virtual int getFirstArgument(char const** text) = 0;

    /// Sets `*text` to the plain argument after the one last returned, or to the first. Returns 0,
    /// or 1 with `*text` untouched when there is none.
    virtual int getNextArgument(char const** text) = 0;

    virtual ~IParseResult() = default;
};

/// The last value of the option with from <= position < to; for an option without values its last
/// occurrence there; its default if it was never given. Value() when there is none, and for a null
/// result or name. Takes time linear in the number of values, and leaves the iteration of next() as
/// present(name, from, to) does.
VARO_EXPORT Value getLastValue(IParseResult* result, char const* name, int from, int to);

}  // namespace varo_3_3
