#include "trace/diagnostic_log.h"

namespace varo_3_3::internal {

bool varoLogEnabled = false;

}  // namespace varo_3_3::internal
