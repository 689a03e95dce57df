#include "assist/answer.h"
#include "assist/walk.h"
#include "varo/assist.h"

namespace varo_3_3 {
namespace {

using internal::Walk;
using internal::WalkedWord;

/// The number of the first word kept that stored the misplaced option; 0 if none did.
std::size_t findMisplaced(BasicParser& parser, Failure& failure) {
    Walk walk(parser);
    walk.takeAgain(failure);
    for (WalkedWord const& word : walk.words()) {
        if (!word.isWrong && word.option != nullptr && isNamed(*word.option, failure.misplaced)) {
            return failure.numbers[word.number - 1];
        }
    }
    return 0;
}

void writeOrigin(BasicParser& parser, std::string& text) {
    Failure* const failure = parser.failure();
    if (failure == nullptr) {
        return;
    }
    if (!failure->misplaced.empty()) {
        failure->origin.number = findMisplaced(parser, *failure);
    }
    failure->origin.appendTo(text);
}

}  // namespace

char const* errorOrigin(IParser* parser) {
    return internal::answer(parser, writeOrigin);
}

}  // namespace varo_3_3
