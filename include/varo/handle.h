#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "varo/option.h"
#include "varo/value_type.h"

namespace varo_3_3 {

class Parser;
class Result;

/// What every handle of a declaration has: the primary name, which it shares with its copies, and
/// the declaration itself.
class Declared {
public:
    /// The primary name, without dashes, for the bare interface. Lives as long as any copy of this
    /// handle.
    char const* name() const noexcept { return m_name.m_value.m_text; }

    /// The declaration, to be refined before the next one is made; null if there was no parser.
    IOption* interface() const noexcept { return m_option; }

protected:
    explicit Declared(char const* names) : m_name(primaryName(names)) {}

    friend class Parser;
    mosaic2::variant_t m_name;
    IOption* m_option = nullptr;

private:
    static mosaic2::variant_t primaryName(char const* names) {
        std::string_view const list = names != nullptr ? names : "";
        return internal::textVariant(list.substr(0, list.find(',')));
    }
};

enum class Role { kOption, kAction };

/// A declaration and the type of its values: what Parser::option, action and modifier return, and
/// what a Result is queried with. Refined in one chain, like bare declarations:
///
///     auto const level = parser.option<int>("level,l", "How warmly").defaultValue(1).allow(1, 2);
///
/// It is cheap to copy, may outlive its parser, and may be used on any result, but may be refined
/// only until the next declaration. A refused declaration has a handle too, which refers to
/// whatever has its name; describeMistakes() reports it. Throws std::bad_alloc.
template <class Type, Role role, bool hasDefault>
class Handle : public Declared {
public:
    using value_type = Type;

    /// Sets what a result returns when the option was not given. With the handle that this returns,
    /// `result[handle]` is a Type, not an optional one.
    template <class Given>
    [[nodiscard]] Handle<Type, role, true> defaultValue(Given const& value) const {
        mosaic2::variant_t const written = internal::write<Type>(value);
        refine([&] { m_option->defaultValue(written); });
        Handle<Type, role, true> handle(*this);
        if constexpr (internal::isText<Type>) {
            handle.m_default = written;
        } else {
            handle.m_default = internal::readWritten<Type>(written, value);
        }
        return handle;
    }

    /// Adds accepted values; if none are added, every value of the type is accepted. Not for
    /// enumerations and types with a Conversion, which know their values.
    template <class... Given>
    Handle allow(Given const&... values) const {
        static_assert(!internal::hasWords<Type> && !internal::hasConversion<Type>,
                      "The type already says what the option accepts.");
        refine([&] { (m_option->allowValue(internal::write<Type>(values)), ...); });
        return *this;
    }

    /// Accepts `deprecated` and stores `replacement` instead, with a warning that Parser::error()
    /// returns after the parse. For an enumeration the first is a text, for a type with a
    /// Conversion both are.
    template <class Deprecated, class Given>
    Handle deprecated(Deprecated const& deprecated, Given const& replacement) const {
        using Old = std::conditional_t<internal::hasWords<Type> || internal::hasConversion<Type>,
                                       std::string_view, Type>;
        refine([&] {
            m_option->allowDeprecatedValue(internal::write<Old>(deprecated),
                                           internal::write<Type>(replacement));
        });
        return *this;
    }

    /// Takes the arguments that belong to no dashed option.
    Handle positional() const {
        refine([&] { m_option->positional(); });
        return *this;
    }

    /// Splits a value text at `character`.
    Handle separator(char character) const {
        refine([&] { m_option->tokenize(character); });
        return *this;
    }

    /// Leaves a value text whole, with its commas.
    Handle whole() const { return separator('\0'); }

    /// Adds another name. It is not checked; describeMistakes() reports it when it hides another.
    Handle synonym(char const* name) const {
        if (m_option != nullptr) {
            m_option->synonym(name);
        }
        return *this;
    }

private:
    friend class Parser;
    friend class Result;
    template <class, Role, bool>
    friend class Handle;

    struct NoDefault {};
    // A text is shared by all copies of the handle, so that a pointer to it lives as long as one.
    using Kept =
        std::conditional_t<internal::isText<Type>, mosaic2::variant_t, std::optional<Type>>;

    explicit Handle(char const* names) : Declared(names) {}

    template <bool other>
    explicit Handle(Handle<Type, role, other> const& handle) : Declared(handle) {}

    template <class Refine>
    void refine(Refine refine) const {
        static_assert(!std::is_void_v<Type>, "The option takes no value.");
        if (m_option != nullptr) {
            refine();
        }
    }

    Type fallback() const {
        if constexpr (internal::isText<Type>) {
            return Type(internal::textOf(m_default));
        } else {
            return *m_default;
        }
    }

    std::conditional_t<hasDefault, Kept, NoDefault> m_default{};
};

/// The types of handles, for hosts that keep them in structures of their own.
template <class Type>
using Option = Handle<Type, Role::kOption, false>;
template <class Type>
using DefaultedOption = Handle<Type, Role::kOption, true>;
template <class Type>
using Action = Handle<Type, Role::kAction, false>;
template <class Type>
using DefaultedAction = Handle<Type, Role::kAction, true>;

/// Some actions: one, or several joined by "|". Made from handles, so it names only declared ones.
class Actions {
public:
    template <class Type, bool hasDefault>
    Actions(Handle<Type, Role::kAction, hasDefault> const& action) : m_list(action.name()) {}

    /// The primary names, separated by commas, as the bare interface takes them.
    char const* list() const noexcept { return m_list.c_str(); }

    friend Actions operator|(Actions left, Actions const& right) {
        left.m_list += ',';
        left.m_list += right.m_list;
        return left;
    }

private:
    std::string m_list;
};

/// Actions of two handles.
template <class Left, bool hasDefault, class Right, bool hasDefaultToo>
Actions operator|(Handle<Left, Role::kAction, hasDefault> const& left,
                  Handle<Right, Role::kAction, hasDefaultToo> const& right) {
    return Actions(left) | Actions(right);
}

}  // namespace varo_3_3
