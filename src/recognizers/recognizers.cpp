#include "recognizers/recognizers.h"

namespace varo_3_3 {

// Once in a list of arguments, so here, where it is built for size.
Recognizers::Recognizers(EventHandler* handler, Garbage* garbage, int flags,
                         internal::WhiteSpace& whiteSpace, SharedState shared)
    : positional(handler, garbage, flags, shared),
      abbreviation(handler, garbage, flags, whiteSpace, shared) {}

Recognizers::~Recognizers() = default;

}  // namespace varo_3_3
