#pragma once

#include "varo/export.h"

namespace varo_3_3 {

class Value;

/// A host's handler of parse events, registered with IParser::addHandler. Not owned: it must live
/// until it is removed or the parser is destroyed. Called during a parse, on its thread.
///
/// A handler may use everything the parser and the result offer while it is called: add and remove
/// handlers, itself included, declare options, query the result being filled, parse again. A
/// std::exception that it throws ends the parse with kUnidentifiedProblem; any other exception
/// passes through the parse to the host. The names and texts that it is given live as long as the
/// parser, the string inside a value as long as a copy of that value.
///
/// The order of the operations is the binary contract; there is no virtual destructor.
class VARO_EXPORT EventHandler {
public:
    /// The dashed option with the primary name `name` was recognized; its value comes next, if any.
    /// The answer is ignored.
    virtual bool onOptionParse(char const* name);

    /// `value` was converted for the option `name`. False refuses it: nothing of the occurrence is
    /// stored, the handlers after this one are not asked, and the parse ends with kRefused.
    virtual bool onValueParse(char const* name, Value const& value);

    /// Nothing claimed `argument`. False keeps kUnknownIsError from making that an error; every
    /// handler is asked.
    virtual bool onUknownArgument(char const* argument);

protected:
    ~EventHandler() = default;
};

inline bool EventHandler::onOptionParse(char const* /*name*/) {
    return true;
}

inline bool EventHandler::onValueParse(char const* /*name*/, Value const& /*value*/) {
    return true;
}

inline bool EventHandler::onUknownArgument(char const* /*argument*/) {
    return true;
}

}  // namespace varo_3_3
