#pragma once

#include <exception>
#include <string>

#include "parser/basic_parser.h"

namespace varo_3_3::internal {

/// The text that `write(parser)` makes, held by the parser; "" when it is not ours or throws.
template <class Write>
char const* answer(IParser* parser, Write write) noexcept {
    BasicParser* const ours = basicParserOf(parser);
    try {
        return ours != nullptr ? ours->texts().init(std::string_view(write(*ours))) : "";
    } catch (std::exception const&) {
        return "";
    }
}

}  // namespace varo_3_3::internal
