#pragma once

#include <optional>
#include <string>
#include <vector>

enum class Key { extension, directory };
enum class Format { table, csv, json };
enum class Order { bytes, files, name };

/// What the user asked for, in the tool's own terms: the rest of the tool knows no command line.
struct Request {
    bool isReport = false;              ///< Sum up a saved scan instead of scanning.
    std::vector<std::string> paths;     ///< The directories to scan, or the one saved scan.
    std::vector<std::string> patterns;  ///< Of names to count; none: every file counts.
    std::optional<unsigned> depth;      ///< Levels of subdirectories to enter; nothing: all.
    std::optional<std::string> save;    ///< The file to keep the scan in.
    Key by = Key::extension;
    Format format = Format::table;
    Order sort = Order::bytes;
    unsigned limit = 0;        ///< Rows before the rest is one row; 0: all.
    bool followLinks = false;  ///< Enter symbolic links to directories as well.
};

/// Reads the command line into `request`. Nothing when there is a task to do, else the exit status:
/// 0 after printing help, 2 after saying what is wrong. (1 is for what can't be read or written.)
std::optional<int> readCommandLine(int argc, char const* const* argv, Request& request);
