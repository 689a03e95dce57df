#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/load_file.h"
#include "platform/white_space.h"
#include "recognizers/argument_list.h"
#include "results/parse_result.h"

namespace varo_3_3 {

/// The name of the option whose values name option files.
inline constexpr std::string_view kOptionFileName = "option-file";

/// The arguments of a text in the format of option files: one per line, without leading white space
/// and trailing carriage returns; empty lines and comments yield none.
class OptionLines final : public ArgumentSource {
public:
    /// `text` and `whiteSpace` outlive this object.
    OptionLines(std::string_view text, internal::WhiteSpace& whiteSpace)
        : m_rest(text), m_whiteSpace(whiteSpace) {}

    bool next(std::string_view& argument) override;

private:
    std::string_view m_rest;
    internal::WhiteSpace& m_whiteSpace;
};

/// The option files of one parse. As the collector before the result, it notes the files that are
/// named during the parse (whether or not they will be read), and hands out their texts in that
/// order.
class OptionFiles final : public IResultCollector {
public:
    explicit OptionFiles(ParseResult& result) : m_result(result) {}

    void store(OptionDescription const& option, OptionData const& data) override;

    /// Notes the default of the option if it was not given. Called once, before the first load.
    void noteDefault();

    /// Whether there are files left to load.
    bool hasNext() const { return m_next < m_files.size(); }

    /// Loads the next file into `text`; files noted from then on are named in it. False, with the
    /// text for the user in `error`, when it cannot be read, names itself directly or through
    /// others, or exceeds the limits of one parse.
    bool loadNext(std::string& text, std::string& error);

private:
    // Far more than people write: they end a parse whose files name ever more files.
    static constexpr std::size_t kMostFiles = 1000;
    static constexpr std::size_t kMostBytes = std::size_t{256} << 20;
    static constexpr std::size_t kCommandLine = ~std::size_t{0};

    struct File {
        std::string name;
        std::size_t namedIn;  // number of a file, or kCommandLine
        BRIX::file_t::identity_t identity{};
    };

    static bool namesFiles(OptionDescription const& option);
    bool load(File& wanted, std::string& text) const;
    bool isInsideItself(std::size_t number) const;

    ParseResult& m_result;
    std::vector<File> m_files;
    std::size_t m_next = 0;
    std::size_t m_current = kCommandLine;
    std::size_t m_bytesLeft = kMostBytes;
    bool m_isGiven = false;
    bool m_isAtEnd = false;  // a value that is no text ends the walk
};

}  // namespace varo_3_3
