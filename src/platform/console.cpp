#include "platform/console.h"

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

void writeLine(std::initializer_list<std::string_view> parts) noexcept {
    try {
        std::ios_base::Init const standardStreams;
        for (std::string_view const part : parts) {
            ucout.write(part.data(), static_cast<std::streamsize>(part.size()));
        }
        ucout.write("\n", 1);
        ucout.flush();
    } catch (...) {
    }
}

}  // namespace BRIX
