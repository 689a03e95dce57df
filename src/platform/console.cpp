#include "platform/console.h"

#include <ios>

// <iostream> is not included since it would construct the standard streams when the library is
// loaded; console() does so when the first line is traced.
namespace std {
extern ostream cout;
}

namespace BRIX {

std::ostream& ucout = std::cout;

std::ostream& console() {
    static std::ios_base::Init const standardStreams;
    return ucout;
}

}  // namespace BRIX
