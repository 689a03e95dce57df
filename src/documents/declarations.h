#pragma once

#include "parser/basic_parser.h"
#include "varo/documents.h"

namespace varo_3_3 {

/// As nextDeclaration, but throws std::bad_alloc, so that no generator takes a lack of memory for
/// the end.
Declaration const* firstDeclaration(BasicParser& parser);
Declaration const* declarationAfter(BasicParser const& parser,
                                    Declaration const& previous) noexcept;
ActionGroup const* firstActionGroup(BasicParser& parser);
ActionGroup const* actionGroupAfter(BasicParser const& parser,
                                    ActionGroup const& previous) noexcept;

/// Calls `visit(declaration)` for each. Throws std::bad_alloc before the first one.
template <class Visit>
void forEachDeclaration(BasicParser& parser, Visit visit) {
    for (Declaration const* declaration = firstDeclaration(parser); declaration != nullptr;
         declaration = declarationAfter(parser, *declaration)) {
        visit(*declaration);
    }
}

/// The same for the groups of actions.
template <class Visit>
void forEachActionGroup(BasicParser& parser, Visit visit) {
    for (ActionGroup const* group = firstActionGroup(parser); group != nullptr;
         group = actionGroupAfter(parser, *group)) {
        visit(*group);
    }
}

}  // namespace varo_3_3
