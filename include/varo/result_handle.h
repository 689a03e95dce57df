#pragma once

#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "varo/handle.h"
#include "varo/result.h"

namespace varo_3_3 {

/// A result that is released when it goes out of scope. Created by Parser::createResult. One that
/// was default constructed, moved from, or created when memory ran out is empty and tests false;
/// its queries answer "nothing". One thread at a time.
///
/// A query takes the handle of a declaration, or a name and a type. One with several answers
/// returns all of them at once, so other queries may come in between. Those that copy throw
/// std::bad_alloc when memory runs out.
class Result {
public:
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
    bool has(Declared const& declared) const { return has(declared.name()); }

    /// The option's last value: a Type if it has a default, which is the answer when the result
    /// holds no value; else a std::optional<Type>. For a bool, false when it was not given. For an
    /// option that takes no value, whether it was given. A view or pointer lives as long as the
    /// result; one into a default also needs a copy of the handle.
    template <class Type, Role role, bool hasDefault>
    auto operator[](Handle<Type, role, hasDefault> const& handle) const {
        if constexpr (std::is_void_v<Type>) {
            return has(handle);
        } else {
            std::optional<Type> value = last<Type>(handle.name());
            if constexpr (hasDefault) {
                return value ? *std::move(value) : handle.fallback();
            } else if constexpr (std::is_same_v<Type, bool>) {
                return value.value_or(false);
            } else {
                return value;
            }
        }
    }

    /// All values of the option, in order, without defaults.
    template <class Type, Role role, bool hasDefault>
    std::vector<Type> all(Handle<Type, role, hasDefault> const& handle) const {
        static_assert(!std::is_void_v<Type>, "The option takes no value: count its values().");
        std::vector<Type> found;
        for (Value const& value : values(handle)) {
            if (std::optional<Type> read = internal::read<Type>(value.value())) {
                found.push_back(*std::move(read));
            }
        }
        return found;
    }

    /// The option's first value (or its default) as Type: any type of an option. Nothing when it
    /// was not given, has no value, or has one that Type cannot hold, such as a number that does
    /// not fit. A view or pointer lives as long as the result.
    template <class Type>
    std::optional<Type> get(char const* name) const {
        return m_result != nullptr
                   ? internal::read<Type>(m_result->get(name, kFirstPosition, kNoPosition).value())
                   : std::nullopt;
    }

    /// Like get(), for the last value: what users expect of an option that they repeat.
    template <class Type>
    std::optional<Type> last(char const* name) const {
        return internal::read<Type>(
            getLastValue(m_result, name, kFirstPosition, kNoPosition).value());
    }

    /// The values of an option, given by name or handle, in a range of positions (both ends as in
    /// IParseResult::next), each with what was typed and where. Defaults are left out; with the
    /// handle of an option that takes a value, so are occurrences with an empty text.
    template <class Option>
    std::vector<Value> values(Option const& option, int from = kFirstPosition,
                              int to = kNoPosition) const {
        std::vector<Value> found;
        if (m_result != nullptr) {
            char const* const name = nameOf(option);
            m_result->present(name, from, to);  // only to begin the iteration
            for (Value value = m_result->next(name); value.position() != kNoPosition;
                 value = m_result->next(name)) {
                if (!takesValue(option) || value.value().m_type != mosaic2::vtNull) {
                    found.push_back(std::move(value));
                }
            }
        }
        return found;
    }

    /// The plain arguments, those after "--": as char const*, std::string or std::string_view.
    template <class Text = char const*>
    std::vector<Text> arguments() const {
        std::vector<Text> found;
        if (m_result != nullptr) {
            char const* text = nullptr;
            for (int end = m_result->getFirstArgument(&text); end == 0;
                 end = m_result->getNextArgument(&text)) {
                found.emplace_back(text);
            }
        }
        return found;
    }

private:
    static constexpr bool takesValue(char const* /*name*/) { return false; }  // not known
    template <class Type, Role role, bool hasDefault>
    static constexpr bool takesValue(Handle<Type, role, hasDefault> const& /*handle*/) {
        return !std::is_void_v<Type>;
    }

    static char const* nameOf(char const* name) { return name; }
    static char const* nameOf(Declared const& declared) { return declared.name(); }

    IParseResult* m_result = nullptr;
};

}  // namespace varo_3_3
