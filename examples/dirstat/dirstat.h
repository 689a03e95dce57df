#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the user asked for, in the tool's own terms: the rest of the tool knows no command line.
struct Request {
    bool isReport = false;              ///< Sum up a saved scan instead of scanning.
    std::vector<std::string> paths;     ///< The directories to scan, or the one saved scan.
    std::vector<std::string> patterns;  ///< Of names to count; none: every file counts.
    std::optional<unsigned> depth;      ///< Levels of subdirectories to enter; nothing: all.
    std::optional<std::string> save;    ///< The file to keep the scan in.
    std::string by;                     ///< "extension" or "directory"
    std::string format;                 ///< "table", "csv" or "json"
    std::string sort;                   ///< "bytes", "files" or "name"
    unsigned limit = 0;                 ///< Rows before the rest is one row; 0: all.
    bool followLinks = false;           ///< Enter symbolic links to directories as well.
};

/// Reads the command line into `request`. Nothing when there is a task to do, else the exit status:
/// 0 after printing help, 2 after saying what is wrong. (1 is for what can't be read or written.)
std::optional<int> readCommandLine(int argc, char const* const* argv, Request& request);

/// `text` as it may be shown and put between quotes: control characters, bytes that are not UTF-8,
/// double quotes and backslashes are escaped.
std::string escaped(std::string_view text);
