#pragma once

#include "varo/export.h"

namespace varo_3_3 {

class Value;

/// A host's handler of parse events, registered with IParser::addHandler. Not owned: it must live
/// until it is removed or the parser is destroyed. Called during a parse, on the parsing thread.
/// Write `override` after each operation: without it, a function whose name or parameters differ
/// compiles and is never called, and the correct spelling of onUknownArgument is such a name.
///
/// While it is called, a handler may use everything that the parser and the result offer: add and
/// remove handlers, itself included, declare options, query the result being filled, parse again. A
/// std::exception that it throws ends the parse with kUnidentifiedProblem; any other exception
/// passes through the parse to the host. The names and texts that it is given live as long as the
/// parser, the string inside a value as long as a copy of that value.
///
/// The order of the operations is the binary contract; there is no virtual destructor.
class VARO_EXPORT EventHandler {
public:
    /// A dashed option was recognized; `name` is its primary name. Its values follow, if it has
    /// any. The return value has no effect.
    virtual bool onOptionParse(char const* name);

    /// `value` was converted for the option `name`. False refuses it: nothing of the occurrence is
    /// stored, the remaining handlers are not asked, and the parse ends with kRefused.
    virtual bool onValueParse(char const* name, Value const& value);

    /// Nothing claimed `argument`. False keeps kUnknownIsError from making that an error. Every
    /// handler is told, whatever the others answer. (The spelling of the name is fixed.)
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
