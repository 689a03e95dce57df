#pragma once

#include "mosaic2/variant.h"
#include "varo/export.h"

namespace varo_3_3 {

/// One declaration, to be refined as soon as it is made:
///
///     parser->option("level,l", "Verbosity", mosaic2::vtS32, "general")
///         ->defaultValue(3)
///         ->allowValue(1)
///         ->allowValue(3);
///
/// Owned by the parser; the pointer is valid at least until the next declaration. Every operation
/// returns the same declaration. Texts are copied. Variants are shared: those that borrow their
/// text must outlive every result that a default or replacement goes into. When memory runs out,
/// std::bad_alloc leaves the declaration unchanged.
///
/// The order of the operations is the binary contract.
class VARO_EXPORT IOption {
public:
    /// Adds another name after the existing ones, exactly as given, commas included. It is not
    /// checked: when another declaration has the same name, both are candidates for it. Null is
    /// ignored.
    virtual IOption* synonym(char const* name) = 0;

    /// Adds a value to the list of accepted ones; an empty list accepts every value of the type.
    /// Values are compared as variants: numbers match across the number types, and a text never
    /// matches a number. A string option also accepts the beginning of exactly one allowed value,
    /// and stores that whole value.
    virtual IOption* allowValue(mosaic2::variant_t const& value) = 0;

    /// Accepts `deprecated` and stores `replacement` instead, with a warning that getErrorDesc()
    /// returns after the parse. A second replacement for an equal value is ignored.
    virtual IOption* allowDeprecatedValue(mosaic2::variant_t const& deprecated,
                                          mosaic2::variant_t const& replacement) = 0;

    /// Sets what a result returns when the option was not given. The value is neither converted to
    /// the declaration's type nor checked.
    virtual IOption* defaultValue(mosaic2::variant_t const& value) = 0;

    /// Sets the character at which the text of an argument is split into several values; 0 keeps it
    /// whole.
    virtual IOption* tokenize(char separator) = 0;

    /// Makes the option take the arguments that belong to no dashed option as its values. The first
    /// positional declaration takes all of them. getDescription() shows no positional declaration.
    virtual IOption* positional() = 0;

    /// Adds tags from a list separated by commas: names of actions that the modifier belongs to.
    /// Null adds nothing.
    virtual IOption* tag(char const* tags) = 0;

    virtual ~IOption() = default;
};

}  // namespace varo_3_3
