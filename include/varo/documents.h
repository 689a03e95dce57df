#pragma once

#include "mosaic2/variant.h"
#include "varo/export.h"
#include "varo/parser.h"

namespace varo_3_3 {

/// What can be written from the declarations alone. Those below are built on nextDeclaration,
/// nextActionGroup and creationFlags, as a host's own generator would be; only describeJson asks
/// the parser for more, which beginnings of names mean something.
///
/// All of these are functions outside the interface, since 3.3.1. They take a parser of this
/// library and return null or "" for null and for another implementation of IParser. None throws,
/// sends an event, writes a trace or changes the text of getErrorDesc().
///
///     varo::Declaration const* declaration = nullptr;
///     while ((declaration = varo::nextDeclaration(parser, declaration)) != nullptr) {
///         std::puts(declaration->names[0]);
///     }

/// What Declaration::kind says.
enum DeclarationKind : int {
    kDeclaredOption = 0,    ///< fits every action
    kDeclaredAction = 1,    ///< says what the tool does
    kDeclaredModifier = 2,  ///< fits the actions that it names
};

/// A value in a declaration.
struct DeclaredValue {
    char const* text;                 ///< as help and messages show it; never null
    mosaic2::variant_t const* value;  ///< null when there is no default
};

/// A value that is still accepted, and the one that is stored in its place.
struct ReplacedValue {
    DeclaredValue deprecated;
    DeclaredValue replacement;
};

/// One declaration. Texts are never null; an empty array may be. The parser owns all of it. The
/// structure stays in place until the parser is destroyed. Its members, and what they point to, are
/// valid until its option is refined or replaced, and the next walk updates them.
struct Declaration {
    /// sizeof(Declaration) in the library that filled it: later ones add members at the end, and a
    /// member beyond the size is not there.
    int size;
    int index;  ///< from 0, in the order of the declarations
    int kind;   ///< a DeclarationKind
    int type;   ///< a mosaic2::das_variant_type_t
    int nameCount;
    int actionCount;
    int allowedCount;
    int deprecatedCount;
    int sectionNumber;  ///< the same throughout a section, and ascending in the order of help
    int separator;      ///< the byte that splits a value into several, 0 to 255; 0 for none
    int isPositional;   ///< takes what no dashed option takes; of several, the first takes it all
    int isHidden;       ///< shown in the hidden help only
    int readsFiles;     ///< its values name option files
    int reserved;       ///< 0

    char const* const* names;  ///< nameCount of them, the primary one first, without dashes
    /// actionCount of them, in byte order: for a modifier, the actions that it fits; for an action,
    /// the names by which modifiers may refer to it. A modifier fits an action when they share one.
    char const* const* actions;
    char const* description;
    char const* typeName;     ///< "integer"; "" for a boolean and for what takes no value
    char const* section;      ///< its name
    char const* sectionText;  ///< what is shown below its name
    DeclaredValue defaultValue;
    DeclaredValue const* allowed;     ///< none: every value of the type
    ReplacedValue const* deprecated;  ///< each deprecated value once
};

/// The declaration after `previous`, which this parser returned; the first one for null; null after
/// the last one. Starting a walk takes time and memory linear in the number of declarations; each
/// step takes constant time. What is declared during a walk is part of the next one. Walks may be
/// nested. Null instead of the first one means that nothing is declared or that memory ran out: a
/// walk that has started always reaches the end.
VARO_EXPORT Declaration const* nextDeclaration(IParser* parser, Declaration const* previous);

/// Actions that may be given together: all of them or any of them.
struct ActionGroup {
    int size;   ///< as Declaration::size
    int index;  ///< from 0, in the order of the calls of allowSimultaneousActions
    int actionCount;
    int reserved;                ///< 0
    char const* const* actions;  ///< primary names in byte order; not all need be declared
};

/// Like nextDeclaration, for the groups of actions. Each lives as long as the parser and never
/// changes.
VARO_EXPORT ActionGroup const* nextActionGroup(IParser* parser, ActionGroup const* previous);

/// The flags that the parser was created with; -1 for null and for another implementation of
/// IParser.
VARO_EXPORT int creationFlags(IParser* parser);

/// The command line as JSON, for other programs and for comparing one version of a program with the
/// next (varo-clidiff does that): the declarations in order with all that decides what a line
/// means, the creation flags, the groups of actions, and the shortest abbreviation of each name.
/// docs/json.md describes it; its member "version" counts the changes that a reader must know
/// about. Always valid JSON and UTF-8: a text that is not UTF-8 comes with its bytes in
/// hexadecimal. The same declarations give the same text. "" when memory runs out.
VARO_EXPORT char const* describeJson(IParser* parser);

/// What a program says about itself. Texts are read during the call only, and null is the same as
/// "". In the longer ones a line feed ends a line, an empty line ends a paragraph, and lines that
/// begin with a blank are kept as they are.
///
///     varo::Manual about;
///     about.name = "dirstat";
///     about.summary = "sum up the files of a directory";
///     about.date = "2026-11-21";
///
/// answerShell in varo/completion.h takes it, so whoever packages the program gets its documents.
struct Manual {
    int size = sizeof(Manual);          ///< lets the library know which members are there
    int section = 1;                    ///< of the manual, 1 to 9
    char const* name = nullptr;         ///< required: the program's name, without blanks
    char const* summary = nullptr;      ///< required: what it does; one line, ASCII, no full stop
    char const* date = nullptr;         ///< required: of the text, as year-month-day
    char const* version = nullptr;      ///< of the program
    char const* synopsis = nullptr;     ///< "": a line for each action is made
    char const* description = nullptr;  ///< what the program does, longer than the summary
    char const* exitStatus = nullptr;   ///< what the program's exit status means
    char const* files = nullptr;        ///< which files the program reads and writes
    char const* examples = nullptr;     ///< command lines and what they do
    char const* seeAlso = nullptr;      ///< "du(1), find(1)"
};

enum ManualForm : int {
    kManualPage = 0,      ///< for man(7), in ASCII; any other character is written as an escape
    kManualMarkdown = 1,  ///< CommonMark, in UTF-8
};

/// The program's manual: the synopsis, the actions, the modifiers of each, the options by section,
/// and the texts of `about`. Hidden declarations are left out. What is not UTF-8, and control
/// characters, become the replacement character. The text lives as long as the parser. It is "",
/// and nothing changes, when a required text is missing, the date is malformed, `form` or the
/// section is unknown, or memory runs out.
VARO_EXPORT char const* manual(IParser* parser, Manual const* about, int form);

/// Which help helpText writes and how.
struct HelpLayout {
    int size = sizeof(HelpLayout);  ///< lets the library know which members are there
    /// Of the terminal; less than 20 counts as 20, more than 10,000 as 10,000. 0: as many as
    /// standard output has, or 80.
    int columns = 0;
    int hidden = 0;    ///< not 0: only what is hidden, instead of all else
    int emphasis = 0;  ///< not 0: headings and names in bold, by the terminal's sequences
    char const* topic = nullptr;    ///< an action or another declaration; null: all
    char const* program = nullptr;  ///< its name, for the usage lines; null: left out there
};

/// The help for a terminal with this many columns: usage lines, the actions, the modifiers of each,
/// the options by section. For an action as the topic, its usage line and what fits it; for another
/// name, the declarations of that name. No line is wider than `columns` - 1, counted as terminals
/// do: wide characters 2, combining ones 0. Texts become printable as in manual(). A null `layout`
/// is the same as a default one. The text lives as long as the parser; "" when there is nothing to
/// show, or memory runs out.
VARO_EXPORT char const* helpText(IParser* parser, HelpLayout const* layout);

/// The forms of toOptionFile.
enum ReplayForm : int {
    kOptionLines = 0,  ///< an option file: one argument a line, the defaults as comments
    kShellWords = 1,   ///< words for a POSIX shell, to follow the program's name
};

/// What was given in `result`, to be given again: names in full, values joined by "=" as they were
/// typed, in the same order, plain arguments last. The contents of option files replace their
/// names. Parsed by parseStream into a result that has the defaults (the words by parseArgsVector),
/// it yields the same options, values and plain arguments in the same order; after a failed parse,
/// those that were stored. Takes time linear in what was given, except for sorting.
///
/// "" when the form cannot hold all of it, and never a part. Option files cannot hold an empty
/// value, a line end in a value or a carriage return at its end, or a plain argument that would be
/// read otherwise; neither form holds what another parser stored, a default of "option-file", which
/// would be read again, or an order that would change because plain arguments go last. Also "" for
/// another implementation of IParser or IParseResult, for null, for an unknown form, and when
/// memory runs out. An empty command line is not refused: it yields a comment, or the word "--".
VARO_EXPORT char const* toOptionFile(IParser* parser, IParseResult* result,
                                     int form = kOptionLines);

}  // namespace varo_3_3
