#pragma once

#include <string>

#include "recognizers/abbreviation_parser.h"
#include "recognizers/positional_parser.h"

namespace varo_3_3 {

/// The recognizers of one list of arguments, and the choice between them.
struct Recognizers {
    /// As their constructors.
    Recognizers(EventHandler* handler, Garbage* garbage, int flags,
                internal::WhiteSpace& whiteSpace, SharedState shared = IArgumentParser::process());
    ~Recognizers();
    Recognizers(Recognizers const&) = delete;
    Recognizers& operator=(Recognizers const&) = delete;

    /// The recognizer with the highest priority among those that take args[0]; null if none does.
    /// All are asked, the positional one first. `reason` may be set to why one does not.
    IArgumentParser* choose(ArgumentList& args, RegisteredOptionStorage& options,
                            std::string& reason) {
        bool const isPositional = positional.recognize(args, options, reason) == kTaken;
        bool const isDashed = abbreviation.recognize(args, options, reason) == kTaken;
        if (isDashed && (!isPositional || abbreviation.getPriority() > positional.getPriority())) {
            return &abbreviation;
        }
        return isPositional ? &positional : nullptr;
    }

    PositionalOptionsParser positional;
    AbbreviationParser abbreviation;
};

}  // namespace varo_3_3
