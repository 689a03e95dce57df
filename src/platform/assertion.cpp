#include "BRIX/assertion.h"

#include <stdio.h>
#include <unistd.h>

namespace BRIX::debug::_private {
namespace {

void report(char const* check, char const* file, int line, char const* function) {
    dprintf(STDERR_FILENO, "%s:%d: check failed: %s in %s\n", file, line, check, function);
}

}  // namespace

assertion_t assertion = report;

}  // namespace BRIX::debug::_private
