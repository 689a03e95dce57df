#include <algorithm>
#include <exception>

#include "assist/walk.h"
#include "varo/assist.h"

namespace varo_3_3 {
namespace {

using internal::WalkedWord;

/// The first word of a command line of which `isWanted(word)` is true: its option; null if there is
/// none, or no memory.
template <class IsWanted>
OptionDescription const* findOptionOf(IParser* parser, int argc, char const* const* argv,
                                      IsWanted isWanted) noexcept {
    BasicParser* const ours = basicParserOf(parser);
    if (ours == nullptr || argc < 2 || argv == nullptr ||
        std::find(argv + 1, argv + argc, nullptr) != argv + argc) {
        return nullptr;
    }
    try {
        ArgumentVector source(argv + 1, static_cast<std::size_t>(argc) - 1);
        internal::Walk walk(*ours);
        walk.take(source);
        auto const word =
            std::find_if(walk.words().begin(), walk.words().end(), [&](WalkedWord const& each) {
                return each.option != nullptr && !each.isWrong && isWanted(each);
            });
        return word != walk.words().end() ? word->option : nullptr;
    } catch (std::exception const&) {
        return nullptr;
    }
}

}  // namespace

bool isAskedFor(IParser* parser, int argc, char const* const* argv, char const* name) {
    return name != nullptr && findOptionOf(parser, argc, argv, [name](WalkedWord const& word) {
                                  auto const& names = word.option->m_names;
                                  return word.kind == WalkedWord::kOption && !word.isNegated &&
                                         std::find(names.begin(), names.end(), name) != names.end();
                              }) != nullptr;
}

char const* firstEmptyOption(IParser* parser, int argc, char const* const* argv) {
    OptionDescription const* const option =
        findOptionOf(parser, argc, argv, [](WalkedWord const& word) { return word.text.empty(); });
    return option != nullptr ? option->firstName().data() : nullptr;
}

}  // namespace varo_3_3
