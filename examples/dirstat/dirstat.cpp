// What dirstat does: scan, save, load, sum up, print. Its command line is in command_line.cpp.
//
// A saved scan is the text "dirstat 1 FILES", then "BYTES PATH" for each file, each ended by a zero
// byte as find -print0 does, since a path may hold any other.

#include "dirstat.h"

#include <fnmatch.h>
#include <varo/printable.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <deque>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace {

namespace fs = std::filesystem;

struct File {
    std::string path;
    std::uint64_t bytes;
};

struct Row {
    std::string name;
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;

    void add(std::uint64_t moreFiles, std::uint64_t moreBytes) {
        files += moreFiles;
        bytes += std::min(moreBytes, UINT64_MAX - bytes);  // a sparse file may claim any size
    }
};

bool complain(std::string const& path, std::string const& reason) {
    std::fprintf(stderr, "dirstat: %s: %s\n", varo::printable(path).c_str(), reason.c_str());
    return false;
}

/// Collects the regular files. Goes level by level and enters each directory once, however many
/// links and arguments lead to it, so that each is met at its least depth. What cannot be read is
/// reported and passed over; the answer is then false.
bool scan(Request const& request, std::vector<File>& files) {
    auto const isWanted = [&request](fs::path const& name) {
        auto const matches = [&name](std::string const& pattern) {
            return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
        };
        auto const& patterns = request.patterns;
        return patterns.empty() || std::any_of(patterns.begin(), patterns.end(), matches);
    };
    bool isComplete = true;
    std::set<fs::path> entered;
    std::deque<std::pair<fs::path, unsigned>> waiting;
    for (std::string const& path : request.paths) {
        waiting.emplace_back(path, 0);
    }
    for (; !waiting.empty(); waiting.pop_front()) {
        auto const& [directory, depth] = waiting.front();
        std::error_code error;
        fs::path const identity = fs::canonical(directory, error);
        if (!error && !entered.insert(identity).second) {
            continue;
        }
        fs::directory_iterator entry;
        if (!error) {
            entry = fs::directory_iterator(directory, error);
        }
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            std::error_code problem;
            bool const isLink = entry->is_symlink(problem);
            if (isLink && !(request.followLinks && entry->is_directory(problem))) {
                continue;
            }
            if (entry->is_directory(problem)) {
                if (!request.depth || depth < *request.depth) {
                    waiting.emplace_back(entry->path(), depth + 1);
                }
            } else if (entry->is_regular_file(problem) && isWanted(entry->path().filename())) {
                std::uint64_t const bytes = entry->file_size(problem);
                if (!problem) {
                    files.push_back({entry->path().string(), bytes});
                }
            }
            if (problem) {
                isComplete = complain(entry->path().string(), problem.message());
            }
        }
        if (error) {
            isComplete = complain(directory.string(), error.message());
        }
    }
    return isComplete;
}

bool save(std::string const& path, std::vector<File> const& files) {
    std::ofstream out(path, std::ios::binary);
    out << "dirstat 1 " << files.size() << '\0';
    for (File const& file : files) {
        out << file.bytes << ' ' << file.path << '\0';
    }
    out.close();
    return out || complain(path, std::strerror(errno));
}

bool load(std::string const& path, std::vector<File>& files) {
    std::ifstream in(path, std::ios::binary);
    std::string const magic = "dirstat 1 ";
    std::string start(magic.size(), '\0');
    std::size_t count = 0;
    if (!in.read(start.data(), static_cast<std::streamsize>(start.size())) || start != magic ||
        !(in >> count) || in.get() != '\0') {
        return complain(path, in.is_open() ? "not a saved scan" : std::strerror(errno));
    }
    for (File file; std::isdigit(in.peek()) != 0 && in >> file.bytes && in.get() == ' ' &&
                    std::getline(in, file.path, '\0') && !in.eof();) {
        files.push_back(file);
    }
    return (in.eof() && files.size() == count) || complain(path, "damaged");
}

/// The rows in the order asked for; those beyond the limit are one.
std::vector<Row> sumUp(Request const& request, std::vector<File> const& files) {
    std::map<std::string, Row> sums;
    for (File const& file : files) {
        fs::path const path = file.path;
        fs::path const key = request.by == Key::directory ? path.parent_path() : path.extension();
        sums[key.empty() ? "(none)" : key.string()].add(1, file.bytes);
    }
    std::vector<Row> rows;
    rows.reserve(sums.size());
    for (auto const& [name, sum] : sums) {
        rows.push_back({name, sum.files, sum.bytes});
    }
    std::stable_sort(rows.begin(), rows.end(), [&request](Row const& left, Row const& right) {
        return request.sort == Order::bytes   ? left.bytes > right.bytes
               : request.sort == Order::files ? left.files > right.files
                                              : false;  // as they are, by name
    });
    if (request.limit != 0 && request.limit < rows.size()) {
        Row others{"(" + std::to_string(rows.size() - request.limit) + " others)"};
        for (std::size_t index = request.limit; index < rows.size(); ++index) {
            others.add(rows[index].files, rows[index].bytes);
        }
        rows.resize(request.limit);
        rows.push_back(others);
    }
    return rows;
}

std::string csvField(std::string const& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string field = "\"";
    for (char const byte : text) {
        field.append(byte == '"' ? 2 : 1, byte);
    }
    return field + '"';
}

/// `text` between the quotes of a JSON string; a byte that is no UTF-8 becomes U+FFFD.
std::string jsonText(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        std::mbstate_t state{};
        wchar_t code = 0;
        std::size_t length = std::mbrtowc(&code, text.data(), text.size(), &state);
        if (length > text.size() || code > 0x10FFFF) {  // errors are huge lengths
            length = 1;
            result += "\\ufffd";
        } else if (code < 0x20 || (code >= 0x7F && code < 0xA0)) {
            length = std::max<std::size_t>(length, 1);
            char escape[16];
            std::snprintf(escape, sizeof(escape), "\\u%04x", static_cast<unsigned>(code));
            result += escape;
        } else {
            result.append(code == '"' || code == '\\' ? "\\" : "").append(text.substr(0, length));
        }
        text.remove_prefix(length);
    }
    return result;
}

void print(Request const& request, std::vector<Row> const& rows) {
    char const* const by = request.by == Key::directory ? "directory" : "extension";
    if (request.format == Format::csv) {
        std::printf("%s,files,bytes\n", by);
        for (Row const& row : rows) {
            std::printf("%s,%lu,%lu\n", csvField(row.name).c_str(), row.files, row.bytes);
        }
    } else if (request.format == Format::json) {
        char const* separator = "[\n";
        for (Row const& row : rows) {
            std::printf("%s{\"%s\": \"%s\", \"files\": %lu, \"bytes\": %lu}", separator, by,
                        jsonText(row.name).c_str(), row.files, row.bytes);
            separator = ",\n";
        }
        std::puts(rows.empty() ? "[]" : "\n]");
    } else {
        Row total;
        std::printf("%9s %15s  %s\n", "files", "bytes", by);
        for (Row const& row : rows) {
            std::printf("%9lu %15lu  %s\n", row.files, row.bytes,
                        varo::printable(row.name).c_str());
            total.add(row.files, row.bytes);
        }
        std::printf("%9lu %15lu  total\n", total.files, total.bytes);
    }
}

int run(int argc, char const* const* argv) {
    Request request;
    if (std::optional<int> const status = readCommandLine(argc, argv, request)) {
        return *status;
    }
    std::vector<File> files;
    bool const isComplete = request.isReport ? load(request.paths[0], files) : scan(request, files);
    bool const isSaved = !request.save || save(*request.save, files);
    if (isComplete || !request.isReport) {
        print(request, sumUp(request, files));
    }
    return isComplete && isSaved ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) try {
    std::setlocale(LC_CTYPE, "C.UTF-8");  // for jsonText()
    int const status = run(argc, argv);
    return std::fflush(stdout) == 0 || complain("output", std::strerror(errno)) ? status : 1;
} catch (std::exception const& problem) {
    complain("stopped", problem.what());
    return 1;
}
