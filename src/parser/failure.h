#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "recognizers/argument_list.h"
#include "results/parse_result.h"

namespace varo_3_3 {

class OptionFiles;
struct ParseSession;

/// Where an argument is: its number or line, and what leads there.
struct Origin {
    bool isInFile = false;
    std::string list;        ///< the name of the file; else "argument ", or "text:"
    std::size_t number = 0;  ///< 0 when it is not known
    std::string outer;       ///< ", from weekly.options:5, from argument 2"

    /// Appends "common.options:3, from weekly.options:5, from argument 2"; for a file without a
    /// known line, the name alone; nothing when nothing is known.
    void appendTo(std::string& text) const;
};

/// What is kept of a parse that failed, to explain it afterwards. Costs a parse nothing until it
/// fails.
struct Failure {
    static constexpr std::size_t kMostBytes = 4096;  ///< of a word; longer ones are cut

    /// What failed.
    enum Stage {
        kArgument,    ///< an argument before the end marker
        kPositional,  ///< one that only the positional option could take
        kPlain,       ///< one after the end marker
        kOptionFile,  ///< an option file, which could not be read
        kActions      ///< the options and actions together
    };

    Stage stage = kArgument;
    Origin origin;

    /// The failed argument and those after it; for kActions, the whole list that `misplaced` is in
    /// or, without that, the parse's own. Long ones are cut, and the last of many are left out.
    CopiedArguments words;
    std::vector<std::uint32_t> numbers;  ///< theirs, of arguments or lines

    /// Keys of the options that were stored.
    CopiedArguments given;

    /// The name of the option or action that does not fit; "" if there is none.
    std::string misplaced;
};

/// Records that the first of `args` failed. Does nothing when memory is short, like those below.
void keepFailedArgument(ParseSession& session, ArgumentList& args, Failure::Stage stage) noexcept;

/// Records that the option file loaded last failed.
void keepFailedFile(ParseSession& session) noexcept;

/// Records that `one` or, when both are given, the later of the two does not fit. Either may be
/// null.
void keepFailedActions(ParseSession& session, OptionDescription const* one,
                       OptionDescription const* other) noexcept;

}  // namespace varo_3_3
