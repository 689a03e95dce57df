#include "parser/failure.h"

#include <exception>
#include <utility>

#include "parser/parse_session.h"

namespace varo_3_3 {
namespace {

constexpr std::size_t kMostWords = 1000;
constexpr std::size_t kMostBytes = 4096;  // of one word

void keepWords(Failure& failure, ArgumentList& args) {
    for (; !args.empty() && failure.numbers.size() < kMostWords; args.eraseFront()) {
        failure.words.add(args[0].substr(0, kMostBytes));
        failure.numbers.push_back(static_cast<std::uint32_t>(args.numberOf(0)));
    }
}

void keepGiven(Failure& failure, ParseResult const& result) {
    for (GivenOption const& given : result.givenOptions()) {
        if (given.isStored) {
            failure.given.emplace_back(given.name);
        }
    }
}

/// Lets `fill` fill in a new failure. Explaining is no reason to fail otherwise.
template <class Fill>
void keep(ParseSession& session, Failure::Stage stage, Fill fill) noexcept {
    try {
        auto failure = std::make_unique<Failure>();
        failure->stage = stage;
        fill(*failure);
        keepGiven(*failure, session.result);
        session.failure = std::move(failure);
    } catch (std::exception const&) {
        session.failure = nullptr;
    }
}

}  // namespace

std::string Origin::text() const {
    std::string text;
    if (isInFile || number != 0) {
        text = list;
        text += isInFile && number != 0 ? ":" : "";
        text += number != 0 ? std::to_string(number) : "";
        text += outer;
    }
    return text;
}

void keepFailedArgument(ParseSession& session, ArgumentList& args, Failure::Stage stage) noexcept {
    keep(session, stage, [&](Failure& failure) {
        failure.origin = session.files.originOf(session.files.current(), args.numberOf(0));
        keepWords(failure, args);
    });
}

void keepFailedFile(ParseSession& session) noexcept {
    keep(session, Failure::kOptionFile, [&](Failure& failure) {
        failure.origin = session.files.whereNamed(session.files.current());
    });
}

void keepFailedActions(ParseSession& session, OptionDescription const* one,
                       OptionDescription const* other) noexcept {
    keep(session, Failure::kActions, [&](Failure& failure) {
        int last = kNoPosition;
        for (OptionDescription const* const record : {one, other}) {
            int const position =
                record == nullptr
                    ? kNoPosition
                    : session.result.firstOccurrence(record->firstName(), session.firstPosition);
            if (position != kNoPosition && (last == kNoPosition || position > last)) {
                last = position;
                failure.misplaced = record->firstName();
            }
        }
        std::size_t const file =
            last != kNoPosition ? session.files.fileAt(last) : OptionFiles::kCommandLine;
        failure.origin = session.files.originOf(file, 0);
        session.files.readAgain(file, *session.source, session.whiteSpace,
                                [&](ArgumentList& args) { keepWords(failure, args); });
    });
}

}  // namespace varo_3_3
