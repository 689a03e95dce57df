#pragma once

#include <set>
#include <string>

#include "mosaic2/variant.h"
#include "varo/event_handler.h"
#include "varo/export.h"
#include "varo/option.h"
#include "varo/result.h"
#include "varo/standard_library.h"

namespace varo_3_3 {

/// Creation flags, combined with "|". Other bits are ignored; 0 is the most lenient parser.
enum CreationFlag : int {
    /// An argument that nothing claims ends the parse with an error. Otherwise it is dropped.
    kUnknownIsError = 0x02,

    /// The plain arguments after "--" are also given to the positional option.
    kPositionalAfterMarker = 0x04,

    /// An argument that begins with "-" is not taken as a positional value.
    kDashGuard = 0x08,

    /// The positional option takes its first value and everything after it, options and "--"
    /// included.
    kTakeTheRest = 0x10,

    /// Values are not split at ',' unless a declaration says so.
    kKeepCommas = 0x20,

    /// Help writes "--" before names of two or more characters.
    kDoubleDashHelp = 0x40
};

/// What creation and parses return.
enum ReturnCode : int {
    kSuccess = 0,

    /// A handler refused a value (getErrorDesc says which), or the result holds an option that this
    /// parser does not declare (no text).
    kRefused = 1,

    /// The arguments are wrong; getErrorDesc says how.
    kParseError = 2,

    /// A null among the arguments or pointers, or a failure in creation.
    kUnusableArguments = 3,

    /// A std::exception, from a handler or because memory ran out.
    kUnidentifiedProblem = 4,

    /// An option file could not be read; getErrorDesc names it.
    kOptionFileUnreadable = 6
};

/// A command-line parser: it takes declarations, parses argument vectors or texts into results, and
/// writes help from the same declarations.
///
///     varo_3_3::IParser* parser = nullptr;
///     varo_3_3::createParser(&parser, varo_3_3::kUnknownIsError);
///     parser->option("level,l", "Verbosity", mosaic2::vtS32, "general:General options");
///     varo_3_3::IParseResult* result = nullptr;
///     parser->createResult(&result);
///     if (parser->parseArgsVector(argc, argv, result) != varo_3_3::kSuccess) {
///         std::fputs(parser->getErrorDesc(), stderr);
///     } else if (result->present("level", 0, varo_3_3::kNoPosition)) {
///         level = result->get("level", 0, varo_3_3::kNoPosition).as<int>();
///     }
///     result->destroy();
///     parser->destroy();
///
/// Created by createParser, owned by the host, released with destroy(). One thread at a time,
/// together with its results; different parsers may be used in different threads. All parsers of
/// the process share the sequence of positions, which never descend within one parse, and the trace
/// switch.
///
/// Common lifetimes: a text that the library returns lives as long as the parser or result that
/// returned it; pointers passed in are read during the call only; handlers are not owned.
///
/// A host may call the event operations of a parser itself: they call its handlers, and let
/// std::bad_alloc through.
///
/// The order of the operations, after those of EventHandler, is the binary contract.
class VARO_EXPORT IParser : public EventHandler {
public:
    /// Deletes this parser with its declarations and every text that it handed out. Results remain
    /// valid.
    virtual void destroy() = 0;

    /// Sets `*result` to a new, empty result, which the host owns. Returns kSuccess, or
    /// kUnusableArguments with `*result` untouched when `result` is null or memory runs out.
    virtual int createResult(IParseResult** result) = 0;

    /// Declares an option: one that belongs to no action, and so goes with all of them.
    ///
    /// `name` holds up to three names separated by commas, without dashes, the primary one first; a
    /// third one has at most two characters. `type` is vtBool, vtS32, vtU32, vtS64, vtU64,
    /// vtDouble, vtString or vtNull (takes no value). `section` is the name of a help section, or
    /// "name:text" to set the text under its heading as well; a name alone sets an empty text. The
    /// section "varo_hidden" appears only in the hidden help. A null description or section is the
    /// same as "".
    ///
    /// Returns the declaration, owned by the parser and valid at least until the next declaration.
    /// A null or malformed list of names is refused and, without setReplace, so is a name that is
    /// already declared (a boolean "color" also takes the name "no-color"). A refused declaration
    /// changes nothing but its section, which is added or has its text set, and returns a
    /// placeholder, which can be refined like any other but is never parsed or shown. When memory
    /// runs out, the placeholder is returned too and nothing changes.
    virtual IOption* option(char const* name, char const* description,
                            mosaic2::das_variant_type_t type, char const* section) = 0;

    /// Declares an action: a verb that says what the tool does, given with dashes like an option.
    /// It is tagged with its own names, by which modifiers refer to it. Otherwise like option().
    virtual IOption* action(char const* name, char const* description,
                            mosaic2::das_variant_type_t type, char const* section) = 0;

    /// Declares a modifier: an option of the actions that `action` names, separated by commas. They
    /// need not be declared yet. Modifiers that have no action in common may share a name. A null
    /// `action` declares an option. Otherwise like option().
    virtual IOption* modifier(char const* name, char const* action, char const* description,
                              mosaic2::das_variant_type_t type, char const* section) = 0;

    /// Whether `name` is a name of a declared action (`action` true), or of an option or modifier
    /// (false). With `section` not null, only declarations in the help section of exactly that name
    /// count. False for a null name. This does not tell whether a declaration was refused: a name
    /// that was taken is declared either way.
    virtual bool isOptionDeclared(char const* name, bool action, char const* section) = 0;

    /// Parses argv[1] to argv[argc - 1] into `result`, which may come from any parser; null only
    /// checks the arguments. Applies the defaults first. Returns kSuccess or another ReturnCode,
    /// with the text of getErrorDesc(); on failure the result keeps what was stored before. Parsing
    /// again into the same result adds to it. An argc below 2 is an empty command line: only the
    /// defaults are applied. When memory runs out for those, std::bad_alloc reaches the host. Once
    /// a handler has been called, `argv` and its texts are not read again.
    ///
    /// When the actions are checked, an option or action with a default counts as given.
    virtual int parseArgsVector(int argc, char const* const* argv, IParseResult* result) = 0;

    /// Parses `text`, written like an option file (null for an empty one): each line is one
    /// argument, without its leading white space; lines that begin with ";" or "#" are comments. No
    /// program name is skipped and no defaults are applied. Otherwise like parseArgsVector; once a
    /// handler has been called, `text` is not read again.
    virtual int parseStream(char const* text, IParseResult* result) = 0;

    /// The text of the last parse: its error, or after success its warnings, one per line, or "".
    virtual char const* getErrorDesc() = 0;

    /// The help: a list of the actions or, when there are none, all options by section. With
    /// `hidden` true, the same for the hidden section alone.
    virtual char const* getDescription(bool hidden) = 0;

    /// The help for the declaration that `topic` names; if there is none, a sentence that says so,
    /// followed by the list of topics. Null is the same as getDescription(hidden).
    virtual char const* getDescription(char const* topic, bool hidden) = 0;

    /// The help for the modifiers that belong to `action`, or the text for an unknown topic. Throws
    /// std::logic_error for null.
    virtual char const* getActionModifiersDescription(char const* action, bool hidden) = 0;

    /// The help for the options that belong to no action; "" if there are none.
    virtual char const* getGlobalModifiersDescription(bool hidden) = 0;

    /// Registers a handler for all events from now on. Handlers are called in the order of their
    /// addresses. False, with nothing changed, when it is already registered, null, or this parser,
    /// or when memory runs out.
    virtual bool addHandler(EventHandler* handler) = 0;

    /// False when the handler is not registered.
    virtual bool removeHandler(EventHandler* handler) = 0;

    /// Declares the option "option-file", whose values name files to take more arguments from, in
    /// the format of parseStream. False when the declaration was refused. Option files are read
    /// from then on either way, so a host may declare "option-file" itself.
    virtual bool addOptionFileOption(char const* description, char const* section) = 0;

    /// Allows any of `actions`, given by their primary names, to be used together. Returns 1, or 0
    /// with nothing changed when memory runs out.
    virtual int allowSimultaneousActions(std::set<std::string> const& actions) = 0;

    /// Sets whether a declaration with a name that is taken replaces the earlier one, in its place.
    /// When a handler replaces one, the argument being parsed still uses the earlier declaration,
    /// and the next argument the new one.
    virtual void setReplace(bool replace) = 0;

    virtual ~IParser() = default;
};

/// Sets `*parser` to a new parser with these creation flags. Returns kSuccess, or
/// kUnusableArguments with `*parser` untouched when `parser` is null or memory runs out.
VARO_EXPORT int createParser(IParser** parser, int flags);

}  // namespace varo_3_3
