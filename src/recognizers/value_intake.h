#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "options/option_description.h"
#include "recognizers/argument_list.h"
#include "recognizers/result_code.h"
#include "results/result_collector.h"
#include "trace/diagnostic_log.h"
#include "varo/event_handler.h"

namespace varo_3_3 {

/// What recognizers share with all others in the process or, in a rehearsal of a parse, with none.
struct SharedState {
    int& nextPosition;
    bool const& traceSwitch;
};

/// Takes the value text of one occurrence. Part of a recognizer, under whose name it traces.
class ValueIntake {
public:
    /// `handler` is told about values; null if there is none. None of the three is owned.
    ValueIntake(EventHandler* handler, std::string_view const& name, SharedState shared)
        : m_handler(handler), m_name(name), m_shared(shared) {}

    /// Splits `value` at the option's tokenizer character, converts, checks and announces each
    /// piece, and stores the occurrence with all of them, or by itself when `value` is empty.
    /// args[0] is the argument that messages quote. Returns kTaken with warnings, one per line,
    /// appended to `message`; or kValueRefused or kArgumentError with the text for the user in it
    /// and nothing stored.
    result_t take(std::string_view value, std::string& message, OptionDescription const& option,
                  ArgumentList const& args, IResultCollector* collector);

private:
    /// What the pieces of one occurrence have in common.
    struct Occurrence {
        std::string_view value;
        OptionDescription const& option;
        ArgumentList const& args;
        std::string& message;
    };

    [[gnu::cold]] void traceStart(char separator, std::string_view only) const;
    [[gnu::noinline]] result_t takePieces(Occurrence const& occurrence, int position,
                                          IResultCollector* collector);
    [[gnu::noinline]] result_t takePiece(std::string_view piece, Occurrence const& occurrence,
                                         NewValue& taken);
    NewValue textValue(std::string_view piece);
    result_t convert(std::string_view piece, Occurrence const& occurrence,
                     mosaic2::variant_t& converted);
    [[gnu::cold]] result_t refuse(Occurrence const& occurrence);
    [[gnu::noinline]] result_t announce(NewValue const& announced, Occurrence const& occurrence);
    result_t store(OptionData const& data, OptionDescription const& option,
                   IResultCollector* collector) const;

    template <class... Parts>
    void trace(Parts const&... parts) const {
        internal::traceWhile(m_shared.traceSwitch, m_name, parts...);
    }

    EventHandler* m_handler;
    std::string_view const& m_name;
    SharedState m_shared;

    // The values of an occurrence with several, the text that a handler is told, and what
    // validation says about one of them; members, so that their memory is reused.
    std::vector<NewValue> m_values;
    std::string m_text;
    std::string m_reason;
};

}  // namespace varo_3_3
