#include <algorithm>

#include "parser/basic_parser.h"

namespace varo_3_3 {

int BasicParser::allowSimultaneousActions(std::set<std::string> const& actions) {
    m_simultaneousActions.push_back(actions);
    return 1;
}

bool BasicParser::assertActionsCanBeUsedSimultaneously(std::set<std::string> const& actions) const {
    return std::any_of(m_simultaneousActions.begin(), m_simultaneousActions.end(),
                       [&](std::set<std::string> const& group) {
                           return std::includes(group.begin(), group.end(), actions.begin(),
                                                actions.end());
                       });
}

}  // namespace varo_3_3
