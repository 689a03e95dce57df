#include "BRIX/assertion.h"

#include <cstdio>

namespace BRIX::debug::_private {
namespace {

void report(char const* check, char const* file, int line, char const* function) {
    std::fprintf(stderr, "%s:%d: check failed: %s in %s\n", file, line, check, function);
}

}  // namespace

assertion_t assertion = report;

}  // namespace BRIX::debug::_private
