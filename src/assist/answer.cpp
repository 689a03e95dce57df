#include "assist/answer.h"

#include <utility>

namespace varo_3_3::internal {

char const* answer(IParser* parser, void const* write,
                   void (*call)(void const* write, BasicParser& parser,
                                std::string& text)) noexcept {
    BasicParser* const ours = basicParserOf(parser);
    if (ours == nullptr) {
        return "";
    }
    try {
        std::string text;
        call(write, *ours, text);
        return ours->texts().init(std::move(text));
    } catch (...) {
        return "";
    }
}

}  // namespace varo_3_3::internal
