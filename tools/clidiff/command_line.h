#pragma once

#include <compare>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace clidiff {

/// A value of a declaration: the name of its type and its text.
struct TypedValue {
    std::string type;
    std::string text;

    friend auto operator<=>(TypedValue const&, TypedValue const&) = default;
};

/// One declaration of a command line, as far as it decides what a line means.
struct Declaration {
    bool isAction = false;
    std::vector<std::string> names;  ///< at least one, the primary name first
    std::string type;
    std::set<std::string> tags;  ///< the actions of a modifier, an action's own names
    std::string separator;       ///< "" for none
    bool isPositional = false;
    bool isHidden = false;
    bool readsFiles = false;  ///< its values name option files
    std::vector<TypedValue> allowed;
    std::vector<std::pair<TypedValue, TypedValue>> deprecated;  ///< each with its replacement
    std::optional<TypedValue> defaultValue;
};

/// What describeJson tells of a parser, without the texts that are only shown.
struct CommandLine {
    static constexpr std::size_t kNone = ~std::size_t{0};

    bool unknownIsError = false;
    bool positionalAfterMarker = false;
    bool dashGuard = false;
    bool takeTheRest = false;
    std::vector<std::set<std::string>> together;  ///< actions that may be combined
    std::vector<Declaration> declarations;

    bool hasActions() const {
        for (Declaration const& declaration : declarations) {
            if (declaration.isAction) {
                return true;
            }
        }
        return false;
    }

    /// The number of the declaration that takes words without dashes, kNone if there is none.
    std::size_t positional() const {
        for (std::size_t number = 0; number < declarations.size(); ++number) {
            if (declarations[number].isPositional) {
                return number;
            }
        }
        return kNone;
    }
};

}  // namespace clidiff
