#pragma once

#include <sys/types.h>
#include <time.h>

#include <cstddef>
#include <string>

namespace BRIX {

/// A file opened for reading, closed by its owner's end. Testing it says whether it is open.
class file_t {
public:
    /// Opens the file `name`; a directory is not opened.
    explicit file_t(char const* name);
    ~file_t();
    file_t(file_t const&) = delete;
    file_t& operator=(file_t const&) = delete;

    explicit operator bool() const { return m_descriptor >= 0; }

    /// What two names of one file have in common.
    struct identity_t {
        dev_t m_device;
        ino_t m_inode;
        time_t m_changedSecond;
        long m_changedNanosecond;
        bool operator==(identity_t const&) const = default;
    };
    identity_t identity() const { return m_identity; }

    /// The identity of the file `name`, without opening it: to open a FIFO waits for its writer. Of
    /// no file when there is none.
    static identity_t identify(char const* name);

    /// Appends the file's bytes to `text`, to its end, whether or not the file reports a size.
    /// False when reading fails or the file holds more than `limit` bytes. Throws std::bad_alloc.
    bool load_file(std::string& text, std::size_t limit) const;

private:
    int m_descriptor;
    identity_t m_identity{};
    std::size_t m_reportedSize = 0;
};

}  // namespace BRIX
