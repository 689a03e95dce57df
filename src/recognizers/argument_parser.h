#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "options/garbage.h"
#include "options/option_registry.h"
#include "recognizers/argument_list.h"
#include "results/result_collector.h"
#include "varo/event_handler.h"

namespace varo_3_3 {

/// What a recognizer answers; the driver passes failures of parse on to the host as they are.
enum result_t : int {
    kTaken = 0,         ///< recognize: this recognizer takes the argument; parse: it has taken it
    kNotTaken = 1,      ///< recognize: not mine; parse: an event handler refused a value
    kArgumentError = 2  ///< the message says what is wrong
};

/// A recognizer: looks at the front of the arguments, decides whether it can take it, and takes it:
/// finds the option, its value, converts and checks that, tells the event handler, and stores the
/// occurrence. Made by the driver for one list of arguments and gone after it.
class IArgumentParser {
public:
    /// The event handler is told about options and values; null if nobody listens. `flags` are the
    /// parser's creation flags. None of the pointers is owned.
    IArgumentParser(EventHandler* handler, Garbage* garbage, int flags)
        : m_handler(handler), m_garbage(garbage), m_flags(flags) {}
    virtual ~IArgumentParser() = default;
    IArgumentParser(IArgumentParser const&) = delete;
    IArgumentParser& operator=(IArgumentParser const&) = delete;

    /// Whether args[0] is this recognizer's; kTaken or kNotTaken. Only decides, and may remember
    /// what it found for the parse that follows. May set `message` to why it does not take the
    /// argument.
    virtual result_t recognize(ArgumentList& args, RegisteredOptionStorage& options,
                               std::string& message) = 0;

    /// Takes args[0], and what belongs to it, out of `args` and stores it. Sets `optionIndex` to
    /// the number of the option. On success `message` is empty or holds warnings, one a line;
    /// otherwise it is the text for the user, args[0] is still there, and nothing of it is stored
    /// (of arguments that were taken before it in the same call, as kTakeTheRest has it, everything
    /// is).
    virtual result_t parse(ArgumentList& args, IResultCollector* collector,
                           RegisteredOptionStorage& options, unsigned long& optionIndex,
                           std::string& message) = 0;

    /// The end of a message that refers to an argument.
    virtual std::string formatTokenMessage(std::string_view token);

    /// Of several recognizers that take an argument the one with the highest priority gets it.
    virtual int getPriority() = 0;

    /// Takes the next number of the process-wide sequence of positions. At its end, 2147483646, the
    /// sequence stops.
    static int takePosition() {
        constexpr int kLastPosition = kNoPosition - 1;
        return m_idx < kLastPosition ? m_idx++ : kLastPosition;
    }

    static int m_idx;  ///< the next position

protected:
    /// Splits `value` at the option's tokenizer character, converts, checks and announces each
    /// piece, and stores the occurrence with all of them; without a value it is stored alone.
    /// Results and `message` as for parse, to which warnings are appended.
    result_t parseValueAndAddOption(std::string_view value, std::string& message,
                                    OptionDescription const& option, ArgumentList& args,
                                    IResultCollector* collector);

    /// Sets `message`, traces it, and returns kArgumentError.
    result_t fail(std::string& message, std::string text);

    /// Erases args[0], with a line in the trace.
    void removeFront(ArgumentList& args);

    EventHandler* m_handler;
    std::string_view m_name = "UndefinedParser";  ///< begins each of its lines in the trace
    Garbage* m_garbage;
    int m_flags;

private:
    static bool isTakenWhole(std::string_view value, OptionDescription const& option);
    result_t takeWhole(std::string_view value, int position, std::string& message,
                       OptionDescription const& option, ArgumentList const& args,
                       IResultCollector* collector);
    result_t takePieces(std::string_view value, std::string& message,
                        OptionDescription const& option, ArgumentList const& args);
    result_t takePiece(std::string_view piece, std::string_view value, std::string& message,
                       OptionDescription const& option, ArgumentList const& args);
    result_t announce(Value const& announced, std::string_view value, std::string& message,
                      OptionDescription const& option, ArgumentList const& args);
    void addValue(std::string_view piece, std::string_view value, mosaic2::variant_t converted,
                  OptionDescription const& option);

    // The values of the occurrence being taken, their texts, and what validation says of one of
    // them; members for the sake of their memory.
    std::vector<Value> m_values;
    std::string m_texts;
    std::string m_reason;
};

}  // namespace varo_3_3
