#include "trace/console.h"

#include <ios>
#include <ostream>

#include "varo/trace.h"

// <iostream> is not included, since it would set up the standard streams whenever the library is
// loaded; writeLine() sees to them when there is something to write.
namespace std {
extern ostream cout;
}

namespace BRIX {

std::ostream& ucout = std::cout;

namespace internal {

bool prepareConsole() {
    std::ios_base::Init const standardStreams;
    return true;
}

}  // namespace internal

}  // namespace BRIX

namespace varo_3_3::internal {

void writeLine(std::initializer_list<std::string_view> parts) noexcept {
    try {
        BRIX::internal::prepareConsole();
        for (std::string_view const part : parts) {
            BRIX::ucout.write(part.data(), static_cast<std::streamsize>(part.size()));
        }
        BRIX::ucout.write("\n", 1);
        BRIX::ucout.flush();
    } catch (...) {  // a host may make the stream throw
    }
}

}  // namespace varo_3_3::internal
