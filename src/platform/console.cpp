// trace.h is not included, since it would make the console ready whenever the library is loaded;
// writeLine() does so when there is something to write. Neither is <iostream>, which does the same.
#include "platform/console.h"

#include <ios>
#include <ostream>

#include "varo/export.h"

namespace std {
extern ostream cout;
}

namespace BRIX {

extern VARO_EXPORT std::ostream& ucout;
std::ostream& ucout = std::cout;

namespace internal {

VARO_EXPORT bool prepare_console();
bool prepare_console() {
    std::ios_base::Init const standardStreams;
    return true;
}

}  // namespace internal

void writeLine(std::initializer_list<std::string_view> parts) noexcept {
    try {
        internal::prepare_console();
        for (std::string_view const part : parts) {
            ucout.write(part.data(), static_cast<std::streamsize>(part.size()));
        }
        ucout.write("\n", 1);
        ucout.flush();
    } catch (...) {  // a host may make the stream throw
    }
}

}  // namespace BRIX
