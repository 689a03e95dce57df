#include <algorithm>

#include "assist/answer.h"
#include "assist/walk.h"
#include "varo/assist.h"

namespace varo_3_3 {
namespace {

using internal::Walk;
using internal::WalkedWord;

bool isNamed(OptionDescription const& option, std::string const& name) {
    return std::find(option.m_names.begin(), option.m_names.end(), name) != option.m_names.end();
}

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

std::string writeOrigin(BasicParser& parser) {
    Failure* const failure = parser.failure();
    if (failure != nullptr && !failure->misplaced.empty()) {
        failure->origin.number = findMisplaced(parser, *failure);
    }
    return failure != nullptr ? failure->origin.text() : std::string();
}

}  // namespace

char const* errorOrigin(IParser* parser) {
    return internal::answer(parser, writeOrigin);
}

}  // namespace varo_3_3
