#include <utility>

#include "varo/result.h"

namespace varo_3_3 {

Value getLastValue(IParseResult* result, char const* name, int from, int to) {
    if (result == nullptr || name == nullptr) {
        return {};
    }
    // No occurrence lies in an empty range, so only a default can be present there.
    Value last;
    if (result->present(name, kFirstPosition, kFirstPosition)) {
        last = result->get(name, from, to);
    }
    // A value may lie in the range although its occurrence, which is what present() looks at, lies
    // before it. A nested parse stores out of order, so no value may end the walk.
    result->present(name, from, kNoPosition);
    int lastPosition = kFirstPosition;
    for (int position = result->nextPosition(); position != kNoPosition;
         position = result->nextPosition()) {
        Value value = result->next(name);
        if (lastPosition <= position && position < to) {
            last = std::move(value);
            lastPosition = position;
        }
    }
    result->present(name, from, to);
    return last;
}

}  // namespace varo_3_3
