#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace clidiff {

/// A JSON value that knows where it stood, which the JSON library does not keep.
struct Node {
    enum Kind { kNull, kBool, kNumber, kText, kArray, kObject };

    std::size_t offset = 0;
    Kind kind = kNull;
    bool isTrue = false;
    unsigned long long number = 0;  ///< a whole one; others are kNull
    std::string text = {};
    std::vector<std::pair<std::string, Node>> members = {};  ///< of arrays with empty names

    /// The first member of this name, null if there is none.
    Node const* find(std::string_view name) const;
};

/// Reads a JSON text. Throws Fault, also for one that is nested too deep to be ours.
Node readTree(std::string_view text);

}  // namespace clidiff
