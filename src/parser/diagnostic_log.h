#pragma once

#include <initializer_list>
#include <memory>
#include <ostream>
#include <string_view>

#include "platform/console.h"

namespace varo_3_3::internal {

/// A stream buffer without room: every write to a stream over it fails and is thrown away.
template <class Char, class Traits>
class basic_nullbuf : public std::basic_streambuf<Char, Traits> {};

/// The stream that swallows the trace while it is off, made when it is first asked for.
class VaroLog {
public:
    std::ostream& discardingStream();

private:
    std::unique_ptr<basic_nullbuf<char, std::char_traits<char>>> m_buffer;
    std::unique_ptr<std::ostream> m_stream;
};

/// Where the trace goes: the console while varoLogEnabled is set, else nowhere.
std::ostream& varoLog();

/// Writes the parts as one line to varoLog(). Never fails: what the console refuses is lost.
void writeTraceLine(std::initializer_list<std::string_view> parts) noexcept;

/// Writes one line of the trace. While it is off this costs one branch.
template <class... Parts>
void trace(Parts const&... parts) {
    if (varoLogEnabled) [[unlikely]] {
        writeTraceLine({std::string_view(parts)...});
    }
}

}  // namespace varo_3_3::internal
