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
std::size_t findMisplaced(BasicParser& parser, Failure const& failure) {
    std::vector<char const*> words;
    for (Failure::Word const& word : failure.words) {
        words.push_back(word.text.c_str());
    }
    ArgumentVector source(words.data(), words.size());
    Walk walk(parser);
    walk.take(source);
    for (WalkedWord const& word : walk.words()) {
        if (!word.isWrong && word.option != nullptr && isNamed(*word.option, failure.misplaced)) {
            return failure.words[word.number - 1].number;
        }
    }
    return 0;
}

std::string writeOrigin(BasicParser& parser) {
    if (parser.failure() == nullptr) {
        return {};
    }
    Failure const& failure = *parser.failure();
    Origin origin = failure.origin;
    if (!failure.misplaced.empty()) {
        origin.number = findMisplaced(parser, failure);
    }
    return origin.text();
}

}  // namespace

char const* errorOrigin(IParser* parser) {
    return internal::answer(parser, writeOrigin);
}

}  // namespace varo_3_3
