#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "options/garbage.h"

namespace varo_3_3 {

class BasicParser;
class ValueSource;

namespace internal {

struct ShellLine;

/// One word that may stand at the cursor.
struct Offer {
    std::string_view word;         ///< the whole word, as a program would see it
    std::string_view description;  ///< as it was declared, or as the source of values gave it
    bool isFinished;               ///< false when a value is still to be typed after it
    char const* group;             ///< "values", "actions" or "options"
};

enum class Paths { kNone, kDirectories, kFiles };

/// Views into declarations and into the texts that were given to listOffers().
struct Offers {
    std::vector<Offer> words;
    Paths paths = Paths::kNone;  ///< what the shell itself shall offer besides
    std::size_t pathStart = 0;   ///< the byte of the typed word at which the path begins
};

/// What may stand at the cursor of `line`, which begins after the program's name. `source` may be
/// null. Words are held by `texts`. Throws std::bad_alloc and what the source throws.
Offers listOffers(BasicParser& parser, ShellLine const& line, ValueSource* source, Garbage& texts);

}  // namespace internal
}  // namespace varo_3_3
