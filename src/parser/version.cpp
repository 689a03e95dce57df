#include "varo/version.h"

namespace varo_3_3 {

int libraryVersion() noexcept {
    return VARO_VERSION;
}

}  // namespace varo_3_3
