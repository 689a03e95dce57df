#pragma once

#include <set>

#include "input.h"

namespace fuzz {

/// Counts the values that a parser reports and refuses one of them; then holds the result against
/// what was seen. For one parse into an empty result.
class EventRecorder : public varo::EventHandler {
public:
    /// Refuses the value with this number, from 1 on; 0 for none.
    explicit EventRecorder(unsigned refusedValue) : m_refusedValue(refusedValue) { dropTrace(); }

    bool onValueParse(char const* name, varo::Value const& value) override {
        REQUIRE(value.position() > m_last && !m_isRefused);
        m_run = value.position() == m_last + 1 ? m_run + 1 : 1;
        m_last = value.position();
        m_isRefused = ++m_count == m_refusedValue || !isAcceptable(name, value);
        return !m_isRefused;
    }

    /// Has check() look for values under this name, a primary one.
    void watch(std::string const& name) { m_names.insert(name); }

    /// Requires: `code` came from the parse of `parser` into `result` that was observed. Every
    /// value seen must be stored, but for those of the occurrence with which the parse failed.
    void check(int code, varo::Parser const& parser, varo::Result const& result) const {
        std::string_view const error = parser.error();
        REQUIRE(m_isRefused ? code == varo::kRefused && !error.empty() : code != varo::kRefused);
        std::set<int> stored;
        for (std::string const& name : m_names) {
            int last = -1;
            for (varo::Value const& value : result.values(name.c_str())) {
                REQUIRE(value.position() > last);
                last = value.position();
                *value.text() != '\0' ? void(stored.insert(last)) : void();  // else an occurrence
            }
        }
        // Each occurrence takes a position before those of its values. The last values seen belong
        // to one that failed if nothing has taken a position since.
        bool const isInvalid = error.rfind("Value validation problem", 0) == 0 && code != 0;
        bool const hasFailed = m_isRefused || (isInvalid && m_last == takePosition() - 1);
        REQUIRE(stored.size() == m_count - (hasFailed ? m_run : 0));
    }

private:
    virtual bool isAcceptable(char const* /*name*/, varo::Value const& /*value*/) { return true; }

    /// Takes the next number of the process's sequence of positions.
    static int takePosition() {
        static varo::Parser const parser;
        parser->option("t", "", mosaic2::vtNull, "");
        varo::Result const result = parser.createResult();
        parser->parseStream("-t", result.interface());
        return result.interface()->get("t", 0, varo::kNoPosition).position();
    }

    unsigned const m_refusedValue;
    unsigned m_count = 0;
    unsigned m_run = 0;  // values in a row that took positions in a row
    int m_last = -1;
    bool m_isRefused = false;
    std::set<std::string> m_names;
};

}  // namespace fuzz
