#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

enum class Kind { boolean, integer, real, text };

/// One option that every contestant declares.
struct Declaration {
    std::string name;
    char letter;  ///< A second name of one character; 0 for none.
    Kind kind;
    std::string description;
    bool positional = false;
    std::vector<std::string> allowed = {};  ///< Empty: every value.
};

/// What the queries of one parse found, as a count and a sum. A thorough answer takes all bytes of
/// the texts, to be compared; another one the first byte, so that timed queries do little more than
/// touch each text.
class Answer {
public:
    explicit Answer(bool thorough) : m_thorough(thorough) {}

    void add(long number) { fold(static_cast<std::uint64_t>(number)); }
    void add(double number) { fold(static_cast<std::uint64_t>(number * 1024)); }
    void add(std::string const& text) { add(text.c_str()); }
    void add(char const* text) {
        fold(m_thorough ? std::hash<std::string_view>()(text) : static_cast<unsigned char>(*text));
    }

    bool operator==(Answer const& other) const {
        return m_count == other.m_count && m_sum == other.m_sum;
    }

private:
    void fold(std::uint64_t value) {
        ++m_count;
        m_sum += value;
    }

    bool m_thorough;
    std::uint64_t m_count = 0;
    std::uint64_t m_sum = 0;
};

enum class Source { arguments, stream, file };

/// Declarations, a command line for them, and what the queries must find.
struct Workload {
    std::vector<Declaration> declarations;
    std::vector<unsigned> queries;  ///< Indices of the declarations that are asked for.
    bool takeTheRest = false;
    Source source = Source::arguments;

    std::vector<std::string> arguments = {"program"};
    std::vector<char const*> argv;  ///< Points into `arguments`, ends with null.
    std::string lines;              ///< The arguments, one a line.
    std::string path;               ///< A file that holds `lines`.
    Answer expected{true};

    int argc() const { return static_cast<int>(arguments.size()); }
};

using WorkloadPointer = std::shared_ptr<Workload const>;

/// 15 declarations of every kind and 12 arguments.
WorkloadPointer toolWorkload();

/// The declarations of the tool with `count` arguments of 20 bytes, half of them positional values,
/// of which one comes first, and half `--name=value`.
WorkloadPointer manyArguments(long count, bool takeTheRest, Source source);

/// `count` options and `arguments` arguments for options that are spread over all of them.
WorkloadPointer manyOptions(long count, long arguments, bool abbreviated);

/// `count` options in the order of their names, with descriptions of 200 bytes, and no arguments.
WorkloadPointer manyDescriptions(long count);

inline void require(bool condition, char const* text) {
    if (!condition) {
        throw std::runtime_error(text);
    }
}

/// One way to parse a command line. Its constructor makes the declarations of a workload.
class Contestant {
public:
    virtual ~Contestant() = default;

    /// Parses the workload's arguments and asks for all of its queries. Throws when it cannot.
    virtual void parse(Workload const& workload, Answer& answer) = 0;
};

using MakeContestant = std::unique_ptr<Contestant> (*)(Workload const&);

template <class Type>
std::unique_ptr<Contestant> make(Workload const& workload) {
    return std::make_unique<Type>(workload);
}

/// Something that is repeated and timed; what it needs was prepared before.
using Work = std::function<void()>;

/// Declaring, parsing, querying and destroying; and parsing and querying alone. Both throw, while
/// they prepare, if the contestant's answer is not the expected one.
Work wholeWork(MakeContestant make, WorkloadPointer const& workload);
Work parseWork(MakeContestant make, WorkloadPointer const& workload);

/// Another library for command lines.
struct Peer {
    char const* name;
    MakeContestant make;
    bool abbreviates;  ///< Takes unambiguous beginnings of names.
};

/// getopt_long, and of popt, Boost, CLI11 and cxxopts those that were there when this was built.
std::vector<Peer> const& peers();

}  // namespace bench
