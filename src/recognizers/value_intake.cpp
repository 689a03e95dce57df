#include "recognizers/value_intake.h"

#include <algorithm>
#include <utility>

#include "platform/join.h"
#include "recognizers/positions.h"

namespace varo_3_3 {

using internal::join;
using internal::takePosition;

result_t ValueIntake::take(std::string_view value, std::string& message,
                           OptionDescription const& option, ArgumentList const& args,
                           IResultCollector* collector) {
    int const position = takePosition(m_shared.nextPosition);
    if (value.empty()) {
        return store({position, {}}, option, collector);
    }
    bool const isOnePiece =
        option.m_tokenizer == 0 || value.find(option.m_tokenizer) == std::string_view::npos;
    if (internal::isTraced(m_shared.traceSwitch)) [[unlikely]] {
        traceStart(option.m_tokenizer, isOnePiece ? value : std::string_view());
    }
    if (!isOnePiece) {
        return takePieces({value, option, args, message}, position, collector);
    }
    // Most values are one piece, which needs no memory of its own.
    m_texts.clear();
    result_t result = kTaken;
    Value only = takePiece(value, {value, option, args, message}, result);
    return result == kTaken ? store({position, {&only, 1}}, option, collector) : result;
}

/// Writes the lines before the first piece is taken. `only` is the value if that is the only piece.
void ValueIntake::traceStart(char separator, std::string_view only) const {
    trace(": adding values to result container:");
    if (separator == 0) {
        trace(": not using tokenizer");
        return;
    }
    trace(": using tokenizer on char: '", std::string_view(&separator, 1), "'");
    if (!only.empty()) {
        trace(": value is: '", only, "'");
    }
}

result_t ValueIntake::takePieces(Occurrence const& occurrence, int position,
                                 IResultCollector* collector) {
    auto const& [value, option, args, message] = occurrence;
    m_values.clear();
    m_texts.clear();
    for (std::string_view rest = value; !rest.empty();) {
        std::size_t const end = std::min(rest.find(option.m_tokenizer), rest.size());
        std::string_view const piece = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (piece.empty()) {
            continue;
        }
        trace(": value is: '", piece, "'");
        result_t result = kTaken;
        m_values.push_back(takePiece(piece, occurrence, result));
        if (result != kTaken) {
            return result;
        }
    }
    if (m_values.empty()) {
        message = join(
            {"No value parsed in argument '", value, "' for option '", option.firstName(), "'"});
        return kArgumentError;
    }
    return store({position, m_values}, option, collector);
}

/// Converts, checks and announces one piece of the value. After a failure, which `result` tells,
/// what is returned is unspecified. Always inline: a call would add 3 % to a plain string.
[[gnu::always_inline]] inline Value ValueIntake::takePiece(std::string_view piece,
                                                           Occurrence const& occurrence,
                                                           result_t& result) {
    OptionDescription const& option = occurrence.option;
    Value taken = option.acceptsAnyText() ? textValue(piece) : convert(piece, occurrence, result);
    if (result == kTaken && m_handler != nullptr) {
        result = announce(taken, occurrence);
    }
    if (result == kTaken) {
        trace(": sent event on value parsed, option: '", option.firstName(), "', value: '", piece,
              "'");
    }
    return taken;
}

/// A string that is stored as it was typed, and serves as its own text.
[[gnu::always_inline]] inline Value ValueIntake::textValue(std::string_view piece) {
    mosaic2::variant_t string = mosaic2::variant_t::copy_of(piece.data(), piece.size());
    char const* const text = string.m_value.m_text;
    return Value(text, std::move(string), takePosition(m_shared.nextPosition));
}

/// The converted piece. Its text is kept in a buffer with room for all pieces.
Value ValueIntake::convert(std::string_view piece, Occurrence const& occurrence, result_t& result) {
    auto const& [value, option, args, message] = occurrence;
    mosaic2::variant_t converted;
    if (!option.validate(piece, converted, m_reason)) {
        message = join({"Value validation problem in argument '", args[0], "': ", m_reason});
        trace(": ", message);
        result = kArgumentError;
        return {};
    }
    if (!m_reason.empty()) {
        message += message.empty() ? "" : "\n";
        message += m_reason;
    }
    m_texts.reserve(value.size() + 1);
    char const* const text = m_texts.data() + m_texts.size();
    m_texts.append(piece).push_back('\0');
    return Value(text, std::move(converted), takePosition(m_shared.nextPosition));
}

/// Asks the event handler whether it accepts one of the values.
result_t ValueIntake::announce(Value const& announced, Occurrence const& occurrence) {
    auto const& [value, option, args, message] = occurrence;
    if (m_handler->onValueParse(option.firstName().data(), announced)) {
        return kTaken;
    }
    message = join({"Value '", value, "' is not valid for option '", option.firstName(),
                    "' in argument '", args[0], "'"});
    trace(message, " One of the handler signaled the value is not valid.");
    return kValueRefused;
}

result_t ValueIntake::store(OptionData const& data, OptionDescription const& option,
                            IResultCollector* collector) const {
    collector->store(option, data);
    trace(": stored option to result container.");
    return kTaken;
}

}  // namespace varo_3_3
