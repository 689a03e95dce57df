#include "recognizers/argument_parser.h"

#include <algorithm>
#include <utility>

#include "platform/join.h"
#include "trace/diagnostic_log.h"

namespace varo_3_3 {

using internal::varoLog;

int IArgumentParser::m_idx = 0;

std::string IArgumentParser::formatTokenMessage(std::string_view token) {
    return internal::join({" in argument: '", token, "'"});
}

result_t IArgumentParser::parseValueAndAddOption(std::string_view value, std::string& message,
                                                 OptionDescription const& option,
                                                 ArgumentList& args, IResultCollector* collector) {
    int const position = takePosition();
    if (isTakenWhole(value, option)) {
        return takeWhole(value, position, message, option, args, collector);
    }
    m_values.clear();
    m_texts.clear();
    if (!value.empty()) {
        varoLog(m_name, ": adding values to result container:");
        result_t const result = takePieces(value, message, option, args);
        if (result != kTaken) {
            return result;
        }
    }
    collector->store(option, {position, m_values});
    varoLog(m_name, ": stored option to result container.");
    return kTaken;
}

/// Whether a value goes the short way of most: one string, stored as it was typed. A trace shows
/// the long way.
bool IArgumentParser::isTakenWhole(std::string_view value, OptionDescription const& option) {
    return option.acceptsAnyText() && !value.empty() && !internal::varoLogEnabled &&
           (option.m_tokenizer == 0 || value.find(option.m_tokenizer) == std::string_view::npos);
}

result_t IArgumentParser::takeWhole(std::string_view value, int position, std::string& message,
                                    OptionDescription const& option, ArgumentList const& args,
                                    IResultCollector* collector) {
    mosaic2::variant_t converted = mosaic2::variant_t::copy_of(value.data(), value.size());
    char const* const text = converted.m_value.m_text;
    Value whole(text, std::move(converted), takePosition());
    result_t const result =
        m_handler == nullptr ? kTaken : announce(whole, value, message, option, args);
    if (result == kTaken) {
        collector->store(option, {position, {&whole, 1}});
    }
    return result;
}

result_t IArgumentParser::takePieces(std::string_view value, std::string& message,
                                     OptionDescription const& option, ArgumentList const& args) {
    char const separator = option.m_tokenizer;
    if (separator == 0) {
        varoLog(m_name, ": not using tokenizer");
        return takePiece(value, value, message, option, args);
    }
    varoLog(m_name, ": using tokenizer on char: '", std::string_view(&separator, 1), "'");
    bool isEmpty = true;
    for (std::string_view rest = value; !rest.empty();) {
        std::size_t const end = std::min(rest.find(separator), rest.size());
        std::string_view const piece = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (piece.empty()) {
            continue;
        }
        isEmpty = false;
        varoLog(m_name, ": value is: '", piece, "'");
        result_t const result = takePiece(piece, value, message, option, args);
        if (result != kTaken) {
            return result;
        }
    }
    if (isEmpty) {
        message = internal::join(
            {"No value parsed in argument '", value, "' for option '", option.firstName(), "'"});
        return kArgumentError;
    }
    return kTaken;
}

/// Converts, checks and announces one piece of `value` and adds it to the occurrence.
result_t IArgumentParser::takePiece(std::string_view piece, std::string_view value,
                                    std::string& message, OptionDescription const& option,
                                    ArgumentList const& args) {
    mosaic2::variant_t converted;
    if (!option.validate(piece, converted, m_reason)) {
        message =
            internal::join({"Value validation problem in argument '", args[0], "': ", m_reason});
        varoLog(m_name, ": ", message);
        return kArgumentError;
    }
    if (!m_reason.empty()) {
        message += message.empty() ? "" : "\n";
        message += m_reason;
    }
    addValue(piece, value, std::move(converted), option);
    result_t const result =
        m_handler == nullptr ? kTaken : announce(m_values.back(), value, message, option, args);
    if (result == kTaken) {
        varoLog(m_name, ": sent event on value parsed, option: '", option.firstName(),
                "', value: '", piece, "'");
    }
    return result;
}

/// Asks the event handler whether it accepts one of the values of the text `value`.
result_t IArgumentParser::announce(Value const& announced, std::string_view value,
                                   std::string& message, OptionDescription const& option,
                                   ArgumentList const& args) {
    if (!m_handler->onValueParse(option.firstName().data(), announced)) {
        message = internal::join({"Value '", value, "' is not valid for option '",
                                  option.firstName(), "' in argument '", args[0], "'"});
        varoLog(m_name, message, " One of the handler signaled the value is not valid.");
        return kNotTaken;
    }
    return kTaken;
}

/// Adds a value to the occurrence, at the next position. A string that is stored as it was typed
/// serves as its own text; other texts are kept in a buffer with room for all pieces of `value`.
void IArgumentParser::addValue(std::string_view piece, std::string_view value,
                               mosaic2::variant_t converted, OptionDescription const& option) {
    char const* text = nullptr;
    if (option.acceptsAnyText()) {
        text = converted.get<char const*>();
    } else {
        m_texts.reserve(value.size() + 1);
        text = m_texts.data() + m_texts.size();
        m_texts.append(piece).push_back('\0');
    }
    m_values.emplace_back(text, std::move(converted), takePosition());
}

result_t IArgumentParser::fail(std::string& message, std::string text) {
    message = std::move(text);
    varoLog(m_name, ": ", message);
    return kArgumentError;
}

void IArgumentParser::removeFront(ArgumentList& args) {
    varoLog(m_name, ": removing argument: '", args[0], "'");
    args.eraseFront();
}

}  // namespace varo_3_3
