#pragma once

#include <string_view>

#include "platform/console.h"
#include "varo/export.h"

namespace varo_3_3::internal {

extern VARO_EXPORT bool varoLogEnabled;

/// Writes one line of the trace, put together from texts. While the trace is off this costs one
/// branch and nothing is put together, so there is nothing to discard either.
template <class... Parts>
void varoLog(Parts const&... parts) {
    if (varoLogEnabled) [[unlikely]] {
        BRIX::writeLine({std::string_view(parts)...});
    }
}

}  // namespace varo_3_3::internal
