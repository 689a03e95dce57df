#pragma once

#include <cstddef>
#include <forward_list>
#include <string>
#include <string_view>
#include <vector>

namespace varo_3_3 {

class BasicParser;
class ValueSource;

namespace internal {

/// One word that may stand at the cursor.
struct Offer {
    std::string word;              ///< the whole word, as a program would see it
    std::string_view description;  ///< as it was declared, or one of Offers::texts
    bool isFinished;               ///< false when a value is still to be typed after it
    std::string_view group;        ///< "values", "actions" or "options"
};

enum class Paths { kNone, kDirectories, kFiles };

struct Offers {
    std::vector<Offer> words;
    Paths paths = Paths::kNone;  ///< what the shell itself shall offer besides
    std::size_t pathStart = 0;   ///< the byte of the typed word at which the path begins
    std::forward_list<std::string> texts;
};

/// What may stand at the cursor, of whose word `typed` was typed so far, between the finished words
/// `before` and `after` (without the program's name). `source` may be null. Throws std::bad_alloc
/// and what the source throws.
Offers listOffers(BasicParser& parser, std::vector<std::string> const& before,
                  std::string_view typed, std::vector<std::string> const& after,
                  ValueSource* source);

}  // namespace internal
}  // namespace varo_3_3
