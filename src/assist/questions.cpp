#include "assist/walk.h"
#include "varo/assist.h"

namespace varo_3_3 {
namespace {

using internal::WalkedWord;

using IsWanted = bool (*)(WalkedWord const& word, char const* name);

/// The first word of a command line of which `isWanted(word, name)` is true: its option; null if
/// there is none, or no memory.
OptionDescription const* findOptionOf(IParser* parser, int argc, char const* const* argv,
                                      IsWanted isWanted, char const* name) noexcept {
    BasicParser* const ours = basicParserOf(parser);
    if (ours == nullptr) {
        return nullptr;
    }
    try {
        internal::Walk walk(*ours);
        walk.takeCommandLine(argc, argv);
        for (WalkedWord const& word : walk.words()) {
            if (word.option != nullptr && !word.isWrong && isWanted(word, name)) {
                return word.option;
            }
        }
    } catch (...) {  // no memory
    }
    return nullptr;
}

bool isSwitchedOn(WalkedWord const& word, char const* name) {
    return word.kind == WalkedWord::kOption && !word.isNegated && isNamed(*word.option, name);
}

bool isEmpty(WalkedWord const& word, char const* /*name*/) {
    return word.text.empty();
}

}  // namespace

bool isAskedFor(IParser* parser, int argc, char const* const* argv, char const* name) {
    return name != nullptr && findOptionOf(parser, argc, argv, isSwitchedOn, name) != nullptr;
}

char const* firstEmptyOption(IParser* parser, int argc, char const* const* argv) {
    OptionDescription const* const option = findOptionOf(parser, argc, argv, isEmpty, nullptr);
    return option != nullptr ? option->firstName().data() : nullptr;
}

}  // namespace varo_3_3
