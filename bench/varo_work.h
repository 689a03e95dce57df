#pragma once

#include "varo/parser.h"
#include "workload.h"

namespace bench {

/// The library, used as a host uses it.
class Varo : public Contestant {
public:
    explicit Varo(Workload const& workload);
    Varo(Varo const&) = delete;
    ~Varo() override;

    void parse(Workload const& workload, Answer& answer) override;
    char const* help() { return m_parser->getDescription(false); }
    varo_3_3::IParser* parser() { return m_parser; }

private:
    varo_3_3::IParser* m_parser = nullptr;
};

// Work that only the library does; all of it checks what it gets.

/// `count` occurrences of one option, walked with get and next, or asked for the last value.
Work walkWork(long count);
Work lastValueWork(long count);

/// The general help for the workload's declarations.
Work helpWork(WorkloadPointer const& workload);

/// The help for one option with a description of `size` bytes.
Work longDescriptionWork(long size);

// What is written of `count` options; the first is the walk that the others begin with.
Work declarationsWork(long count);
Work manualWork(long count);
Work terminalHelpWork(long count);
Work jsonWork(long count);

/// The option file of `count` occurrences.
Work replayWork(long count);

/// Declares `count` actions, each with a modifier of the one name "level", and parses such a pair.
Work actionsWork(long count);

/// Declares the workload's options and parses its arguments and "--", or completes that line.
Work plainWork(WorkloadPointer const& workload);
Work completionWork(WorkloadPointer const& workload);

/// Parses what the names of `count` options begin with: an error that lists them all.
Work ambiguousWork(long count);

// What a user or an unusual declaration can force: `count` of something in one place and, unless
// only declaring is meant, `count` arguments that all meet it.

/// Declares an option with `count` deprecated values.
Work deprecatingWork(long count);

/// Values of an option that are all deprecated, and values that are all allowed.
Work deprecatedWork(long count);
Work allowedWork(long count);

/// All actions of one allowed group.
Work groupWork(long count);

/// An abbreviation of `count` names, all of one modifier and, in the same order, of another one.
Work sharedNamesWork(long count);

/// An abbreviation of the one name of `count` modifiers, which belong to different actions.
Work sharedNameWork(long count);

/// An abbreviated modifier with `count` tags, and another one of its name.
Work tagsWork(long count);

}  // namespace bench
