#pragma once

#include <algorithm>
#include <charconv>
#include <cstring>
#include <fstream>
#include <utility>

#include "workload.h"

namespace bench {

/// The baseline: what a tool would write by hand if nothing but speed mattered. An argument costs
/// one strlen, one memchr for "=", one probe of a hash table (or one search in a sorted array,
/// where names may be abbreviated) and one copy of its value into a vector of strings. It takes no
/// value from the next argument, checks nothing and reports nothing.
class Baseline : public Contestant {
public:
    explicit Baseline(Workload const& workload, bool abbreviates = false)
        : m_takeTheRest(workload.takeTheRest) {
        for (Declaration const& declaration : workload.declarations) {
            declare(declaration);
        }
        if (abbreviates) {
            m_sorted = m_names;
            std::sort(m_sorted.begin(), m_sorted.end());
        }
    }

    void parse(Workload const& workload, Answer& answer) override {
        clear();
        if (workload.source == Source::file) {
            takeFile(workload.path.c_str());
        } else if (workload.source == Source::stream) {
            takeLines(workload.lines);
        } else {
            for (int index = 1; index < workload.argc(); ++index) {
                take({workload.argv[index], std::strlen(workload.argv[index])});
            }
        }
        query(workload, answer);
    }

private:
    static constexpr std::uint32_t kNone = 0xffffffff;

    using Name = std::pair<std::string, std::uint32_t>;  ///< A name and its option.

    struct Option {
        std::string description;
        std::uint32_t first = kNone;  ///< Its first value; the others follow through m_next.
        std::uint32_t last = kNone;
    };

    struct Slot {
        std::size_t hash = 0;
        std::uint32_t name = kNone;
    };

    std::uint32_t find(std::string_view name) const {
        std::size_t const hash = std::hash<std::string_view>()(name);
        for (std::size_t at = hash;; ++at) {
            Slot const& slot = m_slots[at & (m_slots.size() - 1)];
            if (slot.name == kNone) {
                return kNone;
            }
            if (slot.hash == hash && m_names[slot.name].first == name) {
                return m_names[slot.name].second;
            }
        }
    }

    /// The option of the only name that begins with `name`.
    std::uint32_t findBeginning(std::string_view name) const {
        auto const at = std::lower_bound(
            m_sorted.begin(), m_sorted.end(), name,
            [](Name const& left, std::string_view right) { return left.first < right; });
        auto const begins = [&](auto place) {
            return place != m_sorted.end() && place->first.starts_with(name);
        };
        return begins(at) && !begins(at + 1) ? at->second : kNone;
    }

    void declare(Declaration const& declaration) {
        auto const option = static_cast<std::uint32_t>(m_options.size());
        m_options.push_back({declaration.description});
        m_positional = declaration.positional ? option : m_positional;
        insertName({declaration.name, option});
        if (declaration.letter != 0) {
            insertName({std::string(1, declaration.letter), option});
        }
    }

    void insertName(Name&& name) {
        m_names.push_back(std::move(name));
        if (2 * m_names.size() > m_slots.size()) {
            std::vector<Slot> const old =
                std::exchange(m_slots, std::vector<Slot>(2 * m_slots.size()));
            for (Slot const& slot : old) {
                if (slot.name != kNone) {
                    insert(slot);
                }
            }
        }
        insert({std::hash<std::string_view>()(m_names.back().first),
                static_cast<std::uint32_t>(m_names.size() - 1)});
    }

    void insert(Slot const& slot) {
        std::size_t at = slot.hash;
        while (m_slots[at & (m_slots.size() - 1)].name != kNone) {
            ++at;
        }
        m_slots[at & (m_slots.size() - 1)] = slot;
    }

    /// Starts over with empty vectors, as with a new result.
    void clear() {
        for (std::uint32_t const option : m_given) {
            m_options[option].first = m_options[option].last = kNone;
        }
        m_given.clear();
        m_values = {};
        m_next = {};
        m_rest = false;
    }

    void takeFile(char const* path) {
        std::ifstream file(path, std::ios::ate | std::ios::binary);
        std::string text(static_cast<std::size_t>(file.tellg()), '\0');
        file.seekg(0).read(text.data(), static_cast<std::streamsize>(text.size()));
        require(file.good(), "cannot read the file");
        takeLines(text);
    }

    void takeLines(std::string_view text) {
        while (!text.empty()) {
            void const* const found = std::memchr(text.data(), '\n', text.size());
            std::size_t const end = found != nullptr ? offset(text, found) : text.size();
            std::string_view line = text.substr(0, end);
            while (!line.empty() && (line[0] == ' ' || line[0] == '\t')) {
                line.remove_prefix(1);
            }
            if (!line.empty() && line[0] != ';' && line[0] != '#') {
                take(line);
            }
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    }

    void take(std::string_view argument) {
        if (m_rest || argument.size() < 2 || argument[0] != '-') {
            m_rest = m_takeTheRest;
            return store(m_positional, argument);
        }
        argument.remove_prefix(argument[1] == '-' ? 2 : 1);
        void const* const found = std::memchr(argument.data(), '=', argument.size());
        std::size_t const end = found != nullptr ? offset(argument, found) : argument.size();
        std::string_view const name = argument.substr(0, end);
        std::uint32_t const option = m_sorted.empty() ? find(name) : findBeginning(name);
        require(option != kNone, "unknown option");
        store(option, found != nullptr ? argument.substr(end + 1) : "1");
    }

    void store(std::uint32_t option, std::string_view value) {
        auto const index = static_cast<std::uint32_t>(m_values.size());
        m_values.emplace_back(value);
        m_next.push_back(kNone);
        Option& given = m_options[option];
        if (given.first == kNone) {
            given.first = index;
            m_given.push_back(option);
        } else {
            m_next[given.last] = index;
        }
        given.last = index;
    }

    void query(Workload const& workload, Answer& answer) const {
        for (unsigned const index : workload.queries) {
            Declaration const& declaration = workload.declarations[index];
            Option const& option = m_options[find(declaration.name)];
            for (std::uint32_t value = option.first; value != kNone; value = m_next[value]) {
                addValue(declaration.kind, m_values[value], answer);
            }
        }
    }

    static void addValue(Kind kind, std::string const& text, Answer& answer) {
        long integer = 0;
        double real = 0;
        if (kind == Kind::text) {
            answer.add(text);
        } else if (kind == Kind::real) {
            std::from_chars(text.data(), text.data() + text.size(), real);
            answer.add(real);
        } else {
            std::from_chars(text.data(), text.data() + text.size(), integer);
            answer.add(integer);
        }
    }

    static std::size_t offset(std::string_view text, void const* place) {
        return static_cast<std::size_t>(static_cast<char const*>(place) - text.data());
    }

    std::vector<Option> m_options;
    std::vector<Name> m_names;
    std::vector<Name> m_sorted;
    std::vector<Slot> m_slots = std::vector<Slot>(32);
    std::uint32_t m_positional = kNone;
    bool m_takeTheRest;
    bool m_rest = false;

    std::vector<std::string> m_values;
    std::vector<std::uint32_t> m_next;   ///< For each value the next one of the same option.
    std::vector<std::uint32_t> m_given;  ///< The options that have values.
};

/// The baseline for abbreviated names: one search in a sorted array instead of the hash probe.
class AbbreviatingBaseline : public Baseline {
public:
    explicit AbbreviatingBaseline(Workload const& workload) : Baseline(workload, true) {}
};

/// Lays out names and descriptions in two columns: the baseline for help.
inline std::string wrapHelp(Workload const& workload) {
    constexpr std::size_t kIndent = 30;
    constexpr std::size_t kRoom = 49;
    std::string out;
    for (Declaration const& declaration : workload.declarations) {
        std::size_t const start = out.size();
        out.append("--").append(declaration.name).append("=<string>");
        out.append(kIndent - (out.size() - start), ' ');
        std::string_view rest = declaration.description;
        while (rest.size() > kRoom) {
            std::size_t const end = rest.rfind(' ', kRoom);
            out.append(rest.substr(0, end)).append("\n").append(kIndent, ' ');
            rest.remove_prefix(end + 1);
        }
        out.append(rest).append("\n");
    }
    return out;
}

}  // namespace bench
