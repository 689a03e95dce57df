#pragma once

#include <string>

#include "parser/basic_parser.h"

namespace varo_3_3::internal {

/// The text that `call(write, parser, text)` writes, held by the parser; "" when the parser is not
/// ours, and when the call throws anything.
char const* answer(IParser* parser, void const* write,
                   void (*call)(void const* write, BasicParser& parser,
                                std::string& text)) noexcept;

/// The same of write(parser, text).
template <class Write>
char const* answer(IParser* parser, Write write) noexcept {
    return answer(parser, &write, [](void const* own, BasicParser& ours, std::string& text) {
        (*static_cast<Write const*>(own))(ours, text);
    });
}

}  // namespace varo_3_3::internal
