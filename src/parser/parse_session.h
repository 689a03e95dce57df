#pragma once

#include <string>

#include "parser/failure.h"
#include "parser/option_files.h"
#include "platform/white_space.h"
#include "results/parse_result.h"
#include "varo/event_handler.h"

namespace varo_3_3 {

/// What one parse call carries through its phases, so that a nested parse shares none of it.
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
    /// Whom the recognizers tell about arguments; null if nobody listens. Only a handler adds
    /// others during a parse, so a parse that begins without handlers never gets any.
    EventHandler* handler;
    OptionFiles files;                 ///< the collector before the result, where there may be any
    std::string error;                 ///< of the argument that ended the parse
    std::string warnings;              ///< one per line
    ArgumentSource* source = nullptr;  ///< its arguments, once they were read
    int firstPosition;                 ///< of what this parse stores
    std::unique_ptr<Failure> failure;
};

}  // namespace varo_3_3
