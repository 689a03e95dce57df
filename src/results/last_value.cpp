#include <utility>

#include "varo/result.h"

namespace varo_3_3 {

Value getLastValue(IParseResult* result, char const* name, int from, int to) {
    if (result == nullptr || name == nullptr) {
        return {};
    }
    // No occurrence lies in an empty range, so what is present there is a default alone.
    Value last;
    if (result->present(name, kFirstPosition, kFirstPosition)) {
        last = result->get(name, from, to);
    }
    // A value may lie in the range although its occurrence, which is what present() looks at, lies
    // before it. The end of the range is no part of it here.
    result->present(name, from, to);
    while (result->nextPosition() < to) {
        last = result->next(name);
    }
    result->present(name, from, to);
    return last;
}

}  // namespace varo_3_3
