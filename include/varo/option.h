#pragma once

#include "mosaic2/variant.h"
#include "varo/export.h"

namespace varo_3_3 {

/// One declaration, to be refined right after it was made:
///
///     parser->option("level,l", "Verbosity", mosaic2::vtS32, "general")
///         ->defaultValue(3)
///         ->allowValue(1)
///         ->allowValue(3);
///
/// Owned by the parser; the pointer is good until the next declaration at least. Every operation
/// returns the same declaration. Texts and values are copied (strings of variants are shared).
/// When memory runs out, std::bad_alloc leaves the declaration as it was.
///
/// The order of the operations is the binary contract.
class VARO_EXPORT IOption {
public:
    /// Adds a further name, as it stands, behind those that the declaration has. No check is made:
    /// a name that another declaration has too makes both candidates. Null is ignored.
    virtual IOption* synonym(char const* name) = 0;

    /// Adds a value to the list of those that are accepted; with none in it, every value of the
    /// type is. Values are compared as variants, so that numbers match across the number
    /// types, and a text never matches a number. A string option also accepts what is the beginning
    /// of exactly one allowed value and stores that value.
    virtual IOption* allowValue(mosaic2::variant_t const& value) = 0;

    /// Accepts `deprecated` and stores `replacement` in its place, with a warning that
    /// getErrorDesc() gives after the parse. A second entry for an equal value is ignored.
    virtual IOption* allowDeprecatedValue(mosaic2::variant_t const& deprecated,
                                          mosaic2::variant_t const& replacement) = 0;

    /// Sets what a result answers while the option is not given. The value is neither converted to
    /// the declaration's type nor checked.
    virtual IOption* defaultValue(mosaic2::variant_t const& value) = 0;

    /// Sets the character at which one value text is split into several values; 0 for none.
    virtual IOption* tokenize(char separator) = 0;

    /// Makes the option take, as values, the arguments that belong to no dashed option. The first
    /// positional declaration takes them all; positional declarations are left out of the help.
    virtual IOption* positional() = 0;

    /// Adds tags from a list separated by commas: the names of the actions that a modifier belongs
    /// to. Null adds nothing.
    virtual IOption* tag(char const* tags) = 0;

    virtual ~IOption() = default;
};

}  // namespace varo_3_3
