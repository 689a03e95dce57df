#include "parser/option_files.h"

#include <algorithm>

#include "parser/basic_parser.h"
#include "platform/join.h"

namespace varo_3_3 {

/// Counts from the line returned last, so that all calls together read the text once.
std::size_t OptionLines::numberOf(std::string_view argument, std::size_t /*taken*/) {
    char const* const begin = argument.data();
    auto const [first, last] = std::minmax(m_counted, begin);
    auto const lines = static_cast<std::size_t>(std::count(first, last, '\n'));
    m_line = m_counted <= begin ? m_line + lines : m_line - lines;
    m_counted = begin;
    return m_line;
}

void OptionFiles::readFrom(ArgumentList const& args, ArgumentSource const& source, int position) {
    m_args = &args;
    if (m_current == kCommandLine) {
        m_label = source.label();
    } else {
        m_files[m_current].firstPosition = position;
    }
}

void OptionFiles::note(OptionData const& data) {
    for (NewValue const& taken : data.m_values) {
        mosaic2::variant_t const& value = taken.value;
        char const* const name = value.can_get<char const*>() ? value.get<char const*>() : nullptr;
        m_isAtEnd = m_isAtEnd || name == nullptr;
        if (!m_isAtEnd) {
            addFile(name, m_args->numberOf(0));
        }
    }
    m_isGiven = true;
}

void OptionFiles::noteDefault() {
    char const* const name = m_result.defaultOf(kOptionFileName).as<char const*>();
    if (!m_isGiven && name != nullptr) {
        addFile(name, 0);
    }
}

/// Adds a file that is named in the current one.
void OptionFiles::addFile(char const* name, std::size_t number) {
    m_files.push_back({m_texts.emplace_front(name), m_current, number});
}

bool OptionFiles::loadNext(std::string_view& content, std::string& error) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    std::string& text = m_texts.emplace_front();
    m_current = m_next++;
    File& wanted = m_files[m_current];
    wanted.identity = BRIX::file_t::identify(wanted.name.data());
    bool const isInside = isInsideItself(m_current);
    if (isInside || m_current >= kMostFiles || !load(wanted, text)) {
        error = internal::join({isInside ? "Option file '" : "Error reading option file '",
                                wanted.name, isInside ? "' includes itself" : "'"});
        return false;
    }
    m_bytesLeft -= text.size();
    content = text;
    if (content.starts_with(kByteOrderMark)) {
        content.remove_prefix(kByteOrderMark.size());
    }
    wanted.content = content;
    return true;
}

bool OptionFiles::load(File& wanted, std::string& text) const {
    BRIX::file_t const file(wanted.name.data());
    wanted.identity = file.identity();
    return file && file.load_file(text, m_bytesLeft) && text.find('\0') == std::string::npos;
}

/// Whether a file names itself, directly or through others.
bool OptionFiles::isInsideItself(std::size_t number) const {
    std::size_t outer = m_files[number].namedIn;
    while (outer != kCommandLine && !(m_files[outer].identity == m_files[number].identity)) {
        outer = m_files[outer].namedIn;
    }
    return outer != kCommandLine;
}

Origin OptionFiles::originOf(std::size_t file, std::size_t number) const {
    Origin origin = placeOf(file, number);
    while (file != kCommandLine) {
        number = m_files[file].number;
        file = m_files[file].namedIn;
        bool const isDefault = file == kCommandLine && number == 0;
        origin.outer += isDefault ? ", from a default" : ", from ";
        placeOf(file, number).appendTo(origin.outer);
    }
    return origin;
}

Origin OptionFiles::placeOf(std::size_t file, std::size_t number) const {
    bool const isInFile = file != kCommandLine;
    return {isInFile, std::string(isInFile ? m_files[file].name : m_label), number, {}};
}

std::size_t OptionFiles::fileAt(int position) const {
    std::size_t file = kCommandLine;
    for (std::size_t next = 0; next < m_next && m_files[next].firstPosition <= position; ++next) {
        file = next;
    }
    return file;
}

int BasicParser::expandOptionFiles(ParseSession& session) {
    session.files.noteDefault();
    std::string_view content;
    while (session.files.hasNext()) {
        if (!session.files.loadNext(content, session.error)) {
            keepFailedFile(session);
            return kOptionFileUnreadable;
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
