#include "recognizers/argument_parser.h"

#include <utility>

#include "platform/join.h"

namespace varo_3_3 {

int IArgumentParser::m_idx = 0;

std::string IArgumentParser::formatTokenMessage(std::string_view token) {
    return internal::join({" in argument: '", token, "'"});
}

result_t IArgumentParser::fail(std::string& message, std::string text) {
    message = std::move(text);
    trace(": ", message);
    return kArgumentError;
}

void IArgumentParser::removeFront(ArgumentList& args) {
    trace(": removing argument: '", args[0], "'");
    args.eraseFront();
}

}  // namespace varo_3_3
