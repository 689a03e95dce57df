#pragma once

#include <string>
#include <string_view>

#include "options/garbage.h"
#include "options/option_registry.h"
#include "recognizers/argument_list.h"
#include "recognizers/result_code.h"
#include "recognizers/value_intake.h"
#include "results/result_collector.h"
#include "varo/event_handler.h"

namespace varo_3_3 {

/// A recognizer: decides whether it can take the first argument and, if so, takes it: finds the
/// option and its value, which it passes to the value intake. Created by the driver for one list of
/// arguments and destroyed after it.
class IArgumentParser {
public:
    /// The event handler is told about options and values; null if there is none. `flags` are the
    /// parser's creation flags. None of these is owned.
    IArgumentParser(EventHandler* handler, Garbage* garbage, int flags, SharedState shared)
        : m_handler(handler),
          m_garbage(garbage),
          m_flags(flags),
          m_shared(shared),
          m_intake(handler, m_name, shared) {}
    IArgumentParser(IArgumentParser const&) = delete;
    IArgumentParser& operator=(IArgumentParser const&) = delete;

    /// Whether this recognizer takes args[0]: kTaken or kNotTaken. Only decides, and may remember
    /// what it found for the parse() that follows. May set `message` to the reason for not taking
    /// it.
    virtual result_t recognize(ArgumentList& args, RegisteredOptionStorage& options,
                               std::string& message) = 0;

    /// Removes args[0], and what belongs to it, from `args` and stores it. Sets `optionIndex` to
    /// the number of the option, which the driver does not read. On success `message` is empty or
    /// holds warnings, one per line; otherwise it is the text for the user, args[0] is still there,
    /// and nothing of it is stored (with kTakeTheRest, arguments that the same call took before it
    /// are).
    virtual result_t parse(ArgumentList& args, IResultCollector* collector,
                           RegisteredOptionStorage& options, unsigned long& optionIndex,
                           std::string& message) = 0;

    /// The end of a message that refers to an argument.
    virtual std::string formatTokenMessage(std::string_view token);

    /// Of several recognizers that would take an argument, the one with the highest priority gets
    /// it.
    virtual int getPriority() = 0;

    /// The next position of the process; all parsers share one sequence.
    static int m_idx;

    /// What the recognizers of a parse share.
    static SharedState process() { return {m_idx, internal::varoLogEnabled}; }

protected:
    ~IArgumentParser() = default;

    /// Passes `value`, which may be empty, to the value intake as an occurrence of `option`.
    result_t parseValueAndAddOption(std::string_view value, std::string& message,
                                    OptionDescription const& option, ArgumentList& args,
                                    IResultCollector* collector) {
        return m_intake.take(value, message, option, args, collector);
    }

    /// Sets `message`, traces it, and returns kArgumentError.
    [[gnu::cold]] result_t fail(std::string& message, std::string text);

    /// Erases args[0] and traces that.
    void removeFront(ArgumentList& args);

    EventHandler* m_handler;
    std::string_view m_name = "UndefinedParser";  ///< begins each of its lines in the trace
    [[maybe_unused]] Garbage* m_garbage;          ///< nothing reads it
    int m_flags;

    /// Writes one line of the trace, which begins with the recognizer's name.
    template <class... Parts>
    void trace(Parts const&... parts) const {
        internal::traceWhile(m_shared.traceSwitch, m_name, parts...);
    }

private:
    SharedState m_shared;
    ValueIntake m_intake;
};

}  // namespace varo_3_3
