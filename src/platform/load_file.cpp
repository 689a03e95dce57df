#include "platform/load_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace BRIX {
namespace {

template <class Call>
auto retryWhenInterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// With the time of the last change, since a new file may get the number of a removed one. Reading
/// a FIFO changes the time, so it is left out there.
file_t::identity_t identityOf(struct stat const& status) {
    bool const isRegular = S_ISREG(status.st_mode);
    return {status.st_dev, status.st_ino, isRegular ? status.st_ctim.tv_sec : 0,
            isRegular ? status.st_ctim.tv_nsec : 0};
}

}  // namespace

file_t::file_t(char const* name)
    : m_descriptor(
          retryWhenInterrupted([name] { return open(name, O_RDONLY | O_CLOEXEC | O_NOCTTY); })) {
    struct stat status {};
    if (m_descriptor < 0) {
        return;
    }
    if (fstat(m_descriptor, &status) != 0 || S_ISDIR(status.st_mode)) {
        close(m_descriptor);
        m_descriptor = -1;
        return;
    }
    m_identity = identityOf(status);
    m_reportedSize = S_ISREG(status.st_mode) ? static_cast<std::size_t>(status.st_size) : 0;
}

file_t::identity_t file_t::identify(char const* name) {
    struct stat status {};
    return stat(name, &status) == 0 ? identityOf(status) : identity_t{};
}

file_t::~file_t() {
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
}

bool file_t::load_file(std::string& text, std::size_t limit) const {
    constexpr std::size_t kSmallestPiece = 4096;  // what /proc returns at once, without a size
    std::size_t const start = text.size();
    std::size_t end = start;
    // One byte more than the file's reported size, so that its end shows without growing the text
    // again.
    text.resize(start + std::max(kSmallestPiece, std::min(m_reportedSize, limit) + 1));
    for (;;) {
        if (end == text.size()) {
            text.resize(end + std::max(kSmallestPiece, end - start));
        }
        ssize_t const count = retryWhenInterrupted(
            [&] { return read(m_descriptor, text.data() + end, text.size() - end); });
        if (count <= 0) {
            text.resize(end);
            return count == 0;
        }
        end += static_cast<std::size_t>(count);
        if (end - start > limit) {
            text.resize(start);
            return false;
        }
    }
}

}  // namespace BRIX
