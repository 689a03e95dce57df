#pragma once

#include <cstddef>
#include <forward_list>
#include <string>
#include <string_view>
#include <vector>

#include "parser/failure.h"
#include "platform/load_file.h"
#include "platform/white_space.h"
#include "recognizers/argument_list.h"
#include "results/parse_result.h"

namespace varo_3_3 {

/// The name of the option whose values name option files.
inline constexpr std::string_view kOptionFileName = "option-file";

/// Whether this is one of the option's names.
bool isNamed(OptionDescription const& option, std::string_view name);

/// The arguments of a text in the format of option files: one per line, without leading white space
/// and trailing carriage returns; empty lines and comments yield none.
class OptionLines final : public ArgumentSource {
public:
    /// `text` and `whiteSpace` outlive this object.
    OptionLines(std::string_view text, internal::WhiteSpace& whiteSpace)
        : ArgumentSource("text:"),
          m_text(text),
          m_rest(text),
          m_whiteSpace(whiteSpace),
          m_counted(text.data()) {}

    bool next(std::string_view& argument) override;
    std::size_t numberOf(std::string_view argument, std::size_t taken) override;
    void rewind() override { m_rest = m_text; }

private:
    std::string_view m_text;
    std::string_view m_rest;
    internal::WhiteSpace& m_whiteSpace;
    char const* m_counted;  // where numberOf() was last asked for, in this line:
    std::size_t m_line = 1;
};

/// The option files of one parse. As the collector before the result, it notes the files named
/// during the parse (even if they are never read), and hands out their texts in that order.
class OptionFiles final : public IResultCollector {
public:
    explicit OptionFiles(ParseResult& result) : m_result(result) {}

    /// In the place of a file's number: the arguments of the parse itself.
    static constexpr std::size_t kCommandLine = ~std::size_t{0};

    /// Whether this is the option for option files, by any of its names.
    static bool namesFiles(OptionDescription const& option) {
        return isNamed(option, kOptionFileName);
    }

    /// From now on, what is stored (at `position` and later) is named in `args`, the parse's own or
    /// the last loaded file's.
    void readFrom(ArgumentList const& args, ArgumentSource const& source, int position);

    void store(OptionDescription const& option, OptionData const& data) override;

    /// Notes the default of the option if it was not given. Called once, before the first load.
    void noteDefault();

    /// Whether there are files left to load.
    bool hasNext() const { return m_next < m_files.size(); }

    /// Loads the next file, whose `content` lives as long as this object; files noted from then on
    /// are named in it. False, with the text for the user in `error`, when it cannot be read, names
    /// itself directly or through others, or exceeds the limits of one parse.
    bool loadNext(std::string_view& content, std::string& error);

    /// The last file that was loaded or could not be; before that kCommandLine.
    std::size_t current() const { return m_current; }

    /// The text of a file that was loaded. Lives as long as this object.
    std::string_view contentOf(std::size_t file) const { return m_files[file].content; }

    /// The place of an argument of this file, with this number or line.
    Origin placeOf(std::size_t file, std::size_t number) const;

    /// The same, with what leads to that file.
    Origin originOf(std::size_t file, std::size_t number) const;

    /// Where a file is named.
    Origin whereNamed(std::size_t file) const {
        return originOf(m_files[file].namedIn, m_files[file].number);
    }

    /// The file whose arguments this position belongs to.
    std::size_t fileAt(int position) const;

private:
    // Far more than people write; it ends a parse whose files name ever more files.
    static constexpr std::size_t kMostFiles = 1000;
    static constexpr std::size_t kMostBytes = std::size_t{256} << 20;

    struct File {
        std::string_view name;  // ended by a zero
        std::size_t namedIn;    // number of a file, or kCommandLine
        std::size_t number;     // of the line or argument there; 0 for a default
        std::string_view content{};
        int firstPosition = kNoPosition;
        BRIX::file_t::identity_t identity{};
    };

    void note(OptionData const& data);
    void addFile(char const* name, std::size_t number);
    bool load(File& wanted, std::string& text) const;
    bool isInsideItself(std::size_t number) const;

    ParseResult& m_result;
    ArgumentList const* m_args = nullptr;
    std::string_view m_label;  // what numbers on the command line belong to
    std::vector<File> m_files;
    std::forward_list<std::string> m_texts;  // names and contents
    std::size_t m_next = 0;
    std::size_t m_current = kCommandLine;
    std::size_t m_bytesLeft = kMostBytes;
    bool m_isGiven = false;
    bool m_isAtEnd = false;  // a value that is not a text ends the walk
};

}  // namespace varo_3_3
