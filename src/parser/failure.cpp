#include "parser/failure.h"

#include <exception>
#include <utility>

#include "options/value_text.h"
#include "parser/parse_session.h"

namespace varo_3_3 {
namespace {

constexpr std::size_t kMostWords = 1000;

void keepWords(Failure& failure, ArgumentList& args) {
    for (; !args.empty() && failure.numbers.size() < kMostWords; args.eraseFront()) {
        failure.words.add(args[0].substr(0, Failure::kMostBytes));
        failure.numbers.push_back(static_cast<std::uint32_t>(args.numberOf(0)));
    }
}

void keepGiven(Failure& failure, ParseResult const& result) {
    for (GivenOption const& given : result.givenOptions()) {
        if (given.isStored) {
            failure.given.add(given.name);
        }
    }
}

/// Fills in what does not fit the rules for actions.
void keepMisplaced(Failure& failure, ParseSession& session, OptionDescription const* one,
                   OptionDescription const* other) {
    int last = kNoPosition;
    for (OptionDescription const* const record : {one, other}) {
        int const position = record == nullptr ? kNoPosition
                                               : session.result.firstOccurrence(
                                                     record->firstName(), session.firstPosition);
        if (position != kNoPosition && (last == kNoPosition || position > last)) {
            last = position;
            failure.misplaced = record->firstName();
        }
    }
    std::size_t const file =
        last != kNoPosition ? session.files.fileAt(last) : OptionFiles::kCommandLine;
    failure.origin = session.files.originOf(file, 0);
    bool const isInFile = file != OptionFiles::kCommandLine;
    OptionLines lines(isInFile ? session.files.contentOf(file) : "", session.whiteSpace);
    ArgumentSource& source = isInFile ? lines : *session.source;
    source.rewind();
    ArgumentList args(source);
    keepWords(failure, args);
}

/// Keeps a failure of any stage; what does not belong to the stage is null. Running out of memory
/// here must not change the outcome.
void keep(ParseSession& session, Failure::Stage stage, ArgumentList* args,
          OptionDescription const* one, OptionDescription const* other) noexcept {
    try {
        auto failure = std::make_unique<Failure>();
        failure->stage = stage;
        OptionFiles const& files = session.files;
        if (args != nullptr) {
            failure->origin = files.originOf(files.current(), args->numberOf(0));
            keepWords(*failure, *args);
        } else if (stage == Failure::kOptionFile) {
            failure->origin = files.whereNamed(files.current());
        } else {
            keepMisplaced(*failure, session, one, other);
        }
        keepGiven(*failure, session.result);
        session.failure = std::move(failure);
    } catch (std::exception const&) {
        session.failure = nullptr;
    }
}

}  // namespace

void Origin::appendTo(std::string& text) const {
    if (!isInFile && number == 0) {
        return;
    }
    text += list;
    if (number != 0) {
        text += isInFile ? ":" : "";
        appendText(text, number);
    }
    text += outer;
}

void keepFailedArgument(ParseSession& session, ArgumentList& args, Failure::Stage stage) noexcept {
    keep(session, stage, &args, nullptr, nullptr);
}

void keepFailedFile(ParseSession& session) noexcept {
    keep(session, Failure::kOptionFile, nullptr, nullptr, nullptr);
}

void keepFailedActions(ParseSession& session, OptionDescription const* one,
                       OptionDescription const* other) noexcept {
    keep(session, Failure::kActions, nullptr, one, other);
}

}  // namespace varo_3_3
