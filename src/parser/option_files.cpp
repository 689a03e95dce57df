#include "parser/option_files.h"

#include <algorithm>

#include "parser/basic_parser.h"
#include "platform/join.h"
#include "platform/reserve_more.h"

namespace varo_3_3 {

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

void OptionFiles::store(OptionDescription const& option, OptionData const& data) {
    if (!namesFiles(option)) {
        m_result.store(option, data);
        return;
    }
    std::vector<File> named;
    bool isAtEnd = m_isAtEnd;
    for (std::size_t at = 0; !isAtEnd && at < data.m_values.size(); ++at) {
        char const* const name = data.m_values[at].as<char const*>();
        isAtEnd = name == nullptr;
        if (name != nullptr) {
            named.push_back({name, m_current});
        }
    }
    internal::reserveMore(m_files, named.size());
    m_result.store(option, data);
    m_isGiven = true;
    m_isAtEnd = isAtEnd;
    std::move(named.begin(), named.end(), std::back_inserter(m_files));
}

/// Whether this is the option for option files, by any of its names.
bool OptionFiles::namesFiles(OptionDescription const& option) {
    std::vector<std::string> const& names = option.m_names;
    return std::find(names.begin(), names.end(), kOptionFileName) != names.end();
}

void OptionFiles::noteDefault() {
    char const* const name = m_result.defaultOf(kOptionFileName).as<char const*>();
    if (!m_isGiven && name != nullptr) {
        m_files.push_back({name, kCommandLine});
    }
}

bool OptionFiles::loadNext(std::string& text, std::string& error) {
    m_current = m_next++;
    File& wanted = m_files[m_current];
    wanted.identity = BRIX::file_t::identify(wanted.name.c_str());
    if (isInsideItself(m_current)) {
        error = internal::join({"Option file '", wanted.name, "' includes itself"});
        return false;
    }
    if (m_current >= kMostFiles || !load(wanted, text)) {
        error = internal::join({"Error reading option file '", wanted.name, "'"});
        return false;
    }
    m_bytesLeft -= text.size();
    return true;
}

bool OptionFiles::load(File& wanted, std::string& text) const {
    BRIX::file_t const file(wanted.name.c_str());
    wanted.identity = file.identity();
    text.clear();
    return file && file.load_file(text, m_bytesLeft) && text.find('\0') == std::string::npos;
}

/// Whether a file is the same as one of those that it is named in, directly or through others.
bool OptionFiles::isInsideItself(std::size_t number) const {
    std::size_t outer = m_files[number].namedIn;
    while (outer != kCommandLine && !(m_files[outer].identity == m_files[number].identity)) {
        outer = m_files[outer].namedIn;
    }
    return outer != kCommandLine;
}

int BasicParser::expandOptionFiles(ParseSession& session) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    session.files.noteDefault();
    std::string text;
    while (session.files.hasNext()) {
        if (!session.files.loadNext(text, session.error)) {
            return kOptionFileUnreadable;
        }
        std::string_view content = text;
        if (content.starts_with(kByteOrderMark)) {
            content.remove_prefix(kByteOrderMark.size());
        }
        OptionLines lines(content, session.whiteSpace);
        int const code = parseList(lines, session);
        if (code != kSuccess) {
            return code;
        }
    }
    return kSuccess;
}

}  // namespace varo_3_3
