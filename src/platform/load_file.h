#pragma once

#include <sys/types.h>
#include <time.h>

#include <cstddef>
#include <string>

namespace BRIX {

/// A file opened for reading, closed when it goes out of scope. Tests true when it is open.
class file_t {
public:
    /// Opens the file `name`. Directories are refused.
    explicit file_t(char const* name);
    ~file_t();
    file_t(file_t const&) = delete;
    file_t& operator=(file_t const&) = delete;

    explicit operator bool() const { return m_descriptor >= 0; }

    /// Equal for two names of the same file.
    struct identity_t {
        dev_t m_device;
        ino_t m_inode;
        time_t m_changedSecond;
        long m_changedNanosecond;
        bool operator==(identity_t const&) const = default;
    };
    identity_t identity() const { return m_identity; }

    /// The identity of the file `name`, found without opening it, since opening a FIFO waits for
    /// its writer. When there is none, an identity that no file has.
    static identity_t identify(char const* name);

    /// Appends the rest of the file to `text`, even if the file reports no size. False when reading
    /// fails or the file holds more than `limit` bytes. Throws std::bad_alloc.
    bool load_file(std::string& text, std::size_t limit) const;

private:
    int m_descriptor;
    identity_t m_identity{};
    std::size_t m_reportedSize = 0;
};

}  // namespace BRIX
