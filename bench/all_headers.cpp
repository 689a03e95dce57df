#include <set>
#include <string>
#include <vector>

#include "varo/text.h"
#include "varo/trace.h"
#include "varo/varo.h"

// A minimal host that includes everything; how long it takes to compile is compared with
// standard_headers.cpp.

int main(int argc, char** argv) {
    varo::Parser parser(varo::kUnknownIsError);
    varo::Result result = parser.createResult();
    return parser.parse(argc, argv, result);
}
