#include <algorithm>

#include "parser/option_files.h"

namespace varo_3_3 {

// What every line runs through, and every option while files may be read.

bool OptionLines::next(std::string_view& argument) {
    while (!m_rest.empty()) {
        std::size_t const lineEnd = std::min(m_rest.find('\n'), m_rest.size());
        std::string_view line = m_rest.substr(0, lineEnd);
        m_rest.remove_prefix(std::min(lineEnd + 1, m_rest.size()));
        while (!line.empty() && m_whiteSpace.contains(line.front())) {
            line.remove_prefix(1);
        }
        while (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (!line.empty() && line.front() != ';' && line.front() != '#') {
            argument = line;
            return true;
        }
    }
    return false;
}

bool isNamed(OptionDescription const& option, std::string_view name) {
    for (std::string_view const own : option.m_names) {
        if (own == name) {
            return true;
        }
    }
    return false;
}

void OptionFiles::store(OptionDescription const& option, OptionData const& data) {
    if (namesFiles(option)) {
        note(data);  // if it cannot be stored, the parse ends, and no file is read
    }
    m_result.store(option, data);
}

}  // namespace varo_3_3
