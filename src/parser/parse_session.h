#pragma once

#include <string>

#include "parser/failure.h"
#include "parser/option_files.h"
#include "platform/white_space.h"
#include "results/parse_result.h"

namespace varo_3_3 {

/// What one parse call carries through its phases, so that a nested parse shares none of it.
struct ParseSession {
    ParseSession(ParseResult& target, internal::WhiteSpace& space, int position)
        : result(target), whiteSpace(space), files(target), firstPosition(position) {}

    void addWarning(std::string const& warning) {
        if (!warning.empty()) {
            warnings += warnings.empty() ? "" : "\n";
            warnings += warning;
        }
    }

    ParseResult& result;
    internal::WhiteSpace& whiteSpace;
    OptionFiles files;                 ///< the collector before the result, once they are enabled
    std::string error;                 ///< of the argument that ended the parse
    std::string warnings;              ///< one per line
    ArgumentSource* source = nullptr;  ///< its arguments, once they were read
    int firstPosition;                 ///< of what this parse stores
    std::unique_ptr<Failure> failure;
};

}  // namespace varo_3_3
