#pragma once

#include <string>

#include "parser/failure.h"
#include "parser/option_files.h"
#include "platform/white_space.h"
#include "results/parse_result.h"
#include "varo/event_handler.h"

namespace varo_3_3 {

/// What one parse call carries through its phases; a nested parse has its own.
struct ParseSession {
    ParseSession(ParseResult& target, internal::WhiteSpace& space, EventHandler* events,
                 int position)
        : result(target),
          whiteSpace(space),
          handler(events),
          files(target),
          firstPosition(position) {}

    void addWarning(std::string const& warning) {
        if (!warning.empty()) {
            warnings += warnings.empty() ? "" : "\n";
            warnings += warning;
        }
    }

    ParseResult& result;
    internal::WhiteSpace& whiteSpace;
    /// The handler that the recognizers call; null if there is none. Only a handler can add others
    /// during a parse, so a parse that begins without handlers never gets any.
    EventHandler* handler;
    OptionFiles files;                 ///< the collector before the result, if files may be read
    std::string error;                 ///< of the argument that ended the parse
    std::string warnings;              ///< one per line
    ArgumentSource* source = nullptr;  ///< its arguments, once they are read
    int firstPosition;                 ///< of what this parse stores
    std::unique_ptr<Failure> failure;
};

}  // namespace varo_3_3
