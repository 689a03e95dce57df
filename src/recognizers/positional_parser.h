#pragma once

#include "recognizers/argument_parser.h"

namespace varo_3_3 {

/// The recognizer of positional arguments: each is a value of the first option declared positional.
class PositionalOptionsParser final : public IArgumentParser {
public:
    PositionalOptionsParser(EventHandler* handler, Garbage* garbage, int flags,
                            SharedState shared = process());

    result_t recognize(ArgumentList& args, RegisteredOptionStorage& options,
                       std::string& message) override;
    result_t parse(ArgumentList& args, IResultCollector* collector,
                   RegisteredOptionStorage& options, unsigned long& optionIndex,
                   std::string& message) override;
    int getPriority() override { return -100; }  // below that of dashed options
};

}  // namespace varo_3_3
