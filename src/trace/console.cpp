#include "trace/console.h"

#include <cxxabi.h>

#include <ios>
#include <ostream>

#include "varo/trace.h"

// <iostream> is not included, since it would set up the standard streams whenever the library is
// loaded; console() does so when there is something to write.
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

std::ostream& console() {
    BRIX::internal::prepareConsole();
    return BRIX::ucout;
}

void writeLine(std::ostream& stream, std::initializer_list<std::string_view> parts) {
    try {
        for (std::string_view const part : parts) {
            stream.write(part.data(), static_cast<std::streamsize>(part.size()));
        }
        stream.write("\n", 1);
        stream.flush();
    } catch (abi::__forced_unwind&) {
        throw;       // a thread that is cancelled while it writes must unwind to its end
    } catch (...) {  // a host may make the stream throw
    }
}

}  // namespace varo_3_3::internal
