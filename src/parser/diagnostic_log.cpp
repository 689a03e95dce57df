#include "parser/diagnostic_log.h"

namespace varo_3_3::internal {

bool varoLogEnabled = false;

std::ostream& VaroLog::discardingStream() {
    if (m_stream == nullptr) {
        m_buffer = std::make_unique<basic_nullbuf<char, std::char_traits<char>>>();
        m_stream = std::make_unique<std::ostream>(m_buffer.get());
    }
    return *m_stream;
}

std::ostream& varoLog() {
    static VaroLog log;
    return varoLogEnabled ? BRIX::console() : log.discardingStream();
}

void writeTraceLine(std::initializer_list<std::string_view> parts) noexcept {
    try {
        std::ostream& log = varoLog();
        for (std::string_view const part : parts) {
            log << part;
        }
        log << std::endl;
    } catch (...) {  // a host may have the console throw; the trace never fails visibly
    }
}

}  // namespace varo_3_3::internal
