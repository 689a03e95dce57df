#include "varo_work.h"

#include "varo/completion.h"
#include "varo/documents.h"

namespace bench {

using namespace varo_3_3;

namespace {

mosaic2::das_variant_type_t typeOf(Kind kind) {
    constexpr mosaic2::das_variant_type_t kTypes[] = {mosaic2::vtBool, mosaic2::vtS32,
                                                      mosaic2::vtDouble, mosaic2::vtString};
    return kTypes[static_cast<int>(kind)];
}

void declare(IParser* parser, Declaration const& declaration) {
    std::string names = declaration.name;
    if (declaration.letter != 0) {
        names.append(",").append(1, declaration.letter);
    }
    IOption* const option = parser->option(names.c_str(), declaration.description.c_str(),
                                           typeOf(declaration.kind), "");
    for (std::string const& value : declaration.allowed) {
        option->allowValue(value.c_str());
    }
    if (declaration.positional) {
        option->positional();
    }
}

int run(IParser* parser, Workload const& workload, IParseResult* result) {
    if (workload.source == Source::stream) {
        return parser->parseStream(workload.lines.c_str(), result);
    }
    if (workload.source == Source::file) {
        std::string const argument = "--option-file=" + workload.path;
        char const* const argv[] = {"program", argument.c_str()};
        return parser->parseArgsVector(2, argv, result);
    }
    return parser->parseArgsVector(workload.argc(), workload.argv.data(), result);
}

void query(IParseResult* result, Workload const& workload, Answer& answer) {
    for (unsigned const index : workload.queries) {
        char const* const name = workload.declarations[index].name.c_str();
        for (Value value = result->get(name, kFirstPosition, kNoPosition);
             value.position() != kNoPosition; value = result->next(name)) {
            switch (workload.declarations[index].kind) {
                case Kind::boolean:
                case Kind::integer:
                    answer.add(value.as<long>());
                    break;
                case Kind::real:
                    answer.add(value.as<double>());
                    break;
                case Kind::text:
                    answer.add(value.as<char const*>());
            }
        }
    }
}

/// A parser that reports unknown arguments, and a result.
struct Pair {
    Pair() {
        createParser(&parser, kUnknownIsError);
        parser->createResult(&result);
    }
    Pair(Pair const&) = delete;
    ~Pair() {
        result->destroy();
        parser->destroy();
    }

    IParser* parser = nullptr;
    IParseResult* result = nullptr;
};

std::shared_ptr<Pair> parsedOccurrences(long count) {
    auto pair = std::make_shared<Pair>();
    pair->parser->option("option", "A text", mosaic2::vtString, "");
    std::vector<char const*> const argv(static_cast<std::size_t>(count) + 1, "--option=text");
    int const code =
        pair->parser->parseArgsVector(static_cast<int>(count) + 1, argv.data(), pair->result);
    require(code == kSuccess, "cannot parse");
    return pair;
}

using Refine = std::function<void(IParser*)>;

/// Parses `arguments` again and again with a parser that `declare` prepares.
Work parseAllWork(Refine const& declare, std::vector<std::string> arguments) {
    auto const pair = std::make_shared<Pair>();
    declare(pair->parser);
    return [pair, arguments = std::move(arguments)] {
        std::vector<char const*> argv = {"program"};
        for (std::string const& argument : arguments) {
            argv.push_back(argument.c_str());
        }
        IParseResult* result = nullptr;
        pair->parser->createResult(&result);
        int const code =
            pair->parser->parseArgsVector(static_cast<int>(argv.size()), argv.data(), result);
        result->destroy();
        require(code == kSuccess, pair->parser->getErrorDesc());
    };
}

/// As many texts that differ in their numbers, from 0 on.
std::vector<std::string> numbered(std::string const& text, long count) {
    std::vector<std::string> texts;
    for (long index = 0; index < count; ++index) {
        texts.push_back(text + std::to_string(index));
    }
    return texts;
}

std::string join(std::vector<std::string> const& names) {
    std::string list;
    for (std::string const& name : names) {
        list += (list.empty() ? "" : ",") + name;
    }
    return list;
}

/// A document of `count` options, which `write` writes.
Work documentWork(long count, char const* (*write)(IParser*)) {
    auto const varo = std::make_shared<Varo>(*manyOptions(count, 0, false));
    return [varo, write] { require(*write(varo->parser()) != '\0', "there is no document"); };
}

void deprecate(IParser* parser, long count) {
    IOption* const option = parser->option("option", "A text", mosaic2::vtString, "");
    for (std::string const& value : numbered("old", count)) {
        option->allowDeprecatedValue(value.c_str(), "new");
    }
}

}  // namespace

Varo::Varo(Workload const& workload) {
    createParser(&m_parser,
                 kUnknownIsError | kDoubleDashHelp | (workload.takeTheRest ? kTakeTheRest : 0));
    for (Declaration const& declaration : workload.declarations) {
        declare(m_parser, declaration);
    }
    if (workload.source == Source::file) {
        m_parser->addOptionFileOption("A file of further arguments", "");
    }
}

Varo::~Varo() {
    m_parser->destroy();
}

void Varo::parse(Workload const& workload, Answer& answer) {
    IParseResult* result = nullptr;
    m_parser->createResult(&result);
    int const code = run(m_parser, workload, result);
    require(code == kSuccess, m_parser->getErrorDesc());
    query(result, workload, answer);
    result->destroy();
}

Work walkWork(long count) {
    std::shared_ptr<Pair> const pair = parsedOccurrences(count);
    return [pair, count] {
        long values = 0;
        for (Value value = pair->result->get("option", kFirstPosition, kNoPosition);
             value.position() != kNoPosition; value = pair->result->next("option")) {
            values += *value.as<char const*>() == 't';
        }
        require(values == count, "wrong number of values");
    };
}

Work lastValueWork(long count) {
    std::shared_ptr<Pair> const pair = parsedOccurrences(count);
    return [pair] {
        Value const last = getLastValue(pair->result, "option", kFirstPosition, kNoPosition);
        require(std::string_view(last.text()) == "text", "wrong last value");
    };
}

Work helpWork(WorkloadPointer const& workload) {
    auto const varo = std::make_shared<Varo>(*workload);
    return [varo] { varo->help(); };
}

Work declarationsWork(long count) {
    return documentWork(count, [](IParser* parser) {
        char const* name = "";
        varo_3_3::Declaration const* declaration = nullptr;
        while ((declaration = nextDeclaration(parser, declaration)) != nullptr) {
            name = declaration->names[0];
        }
        return name;
    });
}

Work manualWork(long count) {
    return documentWork(count, [](IParser* parser) {
        Manual about;
        about.name = "bench";
        about.summary = "measure";
        about.date = "2026-11-21";
        return manual(parser, &about, kManualPage);
    });
}

Work terminalHelpWork(long count) {
    return documentWork(count, [](IParser* parser) {
        HelpLayout layout;
        layout.columns = 80;
        return helpText(parser, &layout);
    });
}

Work jsonWork(long count) {
    return documentWork(count, describeJson);
}

Work replayWork(long count) {
    std::shared_ptr<Pair> const pair = parsedOccurrences(count);
    return [pair] {
        require(*toOptionFile(pair->parser, pair->result) != '\0', "there is no option file");
    };
}

Work longDescriptionWork(long size) {
    std::string description;
    while (static_cast<long>(description.size()) < size) {
        description.append("words that wrap somewhere ");
    }
    return [description] {
        Pair const pair;
        pair.parser->option("option", description.c_str(), mosaic2::vtString, "");
        std::string_view const help = pair.parser->getDescription(false);
        require(help.size() > description.size(), "the help is too short");
    };
}

Work actionsWork(long count) {
    return [count] {
        Pair const pair;
        for (long index = 0; index < count; ++index) {
            std::string const name = "action" + std::to_string(index);
            pair.parser->action(name.c_str(), "Does something", mosaic2::vtNull, "");
            pair.parser->modifier("level", name.c_str(), "How", mosaic2::vtS32, "");
        }
        char const* const argv[] = {"program", "--action0", "--level=3"};
        int const code = pair.parser->parseArgsVector(3, argv, pair.result);
        Value const level = pair.result->get("level", kFirstPosition, kNoPosition);
        require(code == kSuccess && level.as<int>() == 3, "wrong level");
    };
}

Work plainWork(WorkloadPointer const& workload) {
    std::vector<char const*> argv = workload->argv;
    argv.back() = "--";  // in the place of the null
    return [workload, argv] {
        Pair const pair;
        for (Declaration const& declaration : workload->declarations) {
            declare(pair.parser, declaration);
        }
        int const code =
            pair.parser->parseArgsVector(static_cast<int>(argv.size()), argv.data(), pair.result);
        require(code == kSuccess, pair.parser->getErrorDesc());
    };
}

Work completionWork(WorkloadPointer const& workload) {
    std::string line;
    for (std::string const& argument : workload->arguments) {
        line += argument + " ";
    }
    line += "--";
    return [workload, line] {
        Pair const pair;
        for (Declaration const& declaration : workload->declarations) {
            declare(pair.parser, declaration);
        }
        char const* const argv[] = {"program",          "varooption=complete", "bash",
                                    "program",          line.c_str(),          "",
                                    " \t\n\"'@><=;|&(:"};
        std::string_view const answer = completion(pair.parser, 7, argv, nullptr);
        require(answer.size() > 10 * workload->declarations.size(), "the answer is too short");
    };
}

Work ambiguousWork(long count) {
    auto const pair = std::make_shared<Pair>();
    for (long index = 0; index < count; ++index) {
        std::string const name = "common" + std::to_string(index);
        pair->parser->option(name.c_str(), "A text", mosaic2::vtString, "");
    }
    return [pair, count] {
        char const* const argv[] = {"program", "--comm=1"};
        int const code = pair->parser->parseArgsVector(2, argv, pair->result);
        std::string_view const text = pair->parser->getErrorDesc();
        require(code == kParseError && static_cast<long>(text.size()) > 10 * count, "wrong error");
    };
}

Work deprecatingWork(long count) {
    return [count] {
        Pair const pair;
        deprecate(pair.parser, count);
        std::string const argument = "--option=old" + std::to_string(count - 1);
        char const* const argv[] = {"program", argument.c_str()};
        int const code = pair.parser->parseArgsVector(2, argv, pair.result);
        require(code == kSuccess && *pair.parser->getErrorDesc() != '\0', "no warning");
    };
}

Work deprecatedWork(long count) {
    return parseAllWork([count](IParser* parser) { deprecate(parser, count); },
                        numbered("--option=old", count));
}

Work allowedWork(long count) {
    auto const allow = [count](IParser* parser) {
        IOption* const option = parser->option("option", "A text", mosaic2::vtString, "");
        for (std::string const& value : numbered("value", count)) {
            option->allowValue(value.c_str());
        }
    };
    return parseAllWork(allow, numbered("--option=value", count));
}

Work groupWork(long count) {
    auto const declare = [count](IParser* parser) {
        std::vector<std::string> const names = numbered("action", count);
        for (std::string const& name : names) {
            parser->action(name.c_str(), "Does something", mosaic2::vtNull, "");
        }
        parser->allowSimultaneousActions({names.begin(), names.end()});
    };
    return parseAllWork(declare, numbered("--action", count));
}

Work sharedNamesWork(long count) {
    auto const declare = [count](IParser* parser) {
        for (char const* const action : {"one", "two"}) {
            parser->action(action, "Does something", mosaic2::vtNull, "");
            IOption* const option =
                parser->modifier("common", action, "A number", mosaic2::vtS32, "");
            for (std::string const& name : numbered("common", count)) {
                option->synonym(name.c_str());
            }
        }
    };
    std::vector<std::string> arguments(static_cast<std::size_t>(count), "--comm=1");
    arguments.front() = "--one";
    return parseAllWork(declare, std::move(arguments));
}

Work sharedNameWork(long count) {
    auto const declare = [count](IParser* parser) {
        for (std::string const& name : numbered("action", count)) {
            parser->action(name.c_str(), "Does something", mosaic2::vtNull, "");
            parser->modifier("level", name.c_str(), "How", mosaic2::vtS32, "");
        }
    };
    std::vector<std::string> arguments(static_cast<std::size_t>(count), "--lev=1");
    arguments.front() = "--action0";
    return parseAllWork(declare, std::move(arguments));
}

Work tagsWork(long count) {
    auto const declare = [count](IParser* parser) {
        parser->action("action0", "Does something", mosaic2::vtNull, "");
        std::string const tags = join(numbered("action", count));
        parser->modifier("level", tags.c_str(), "How", mosaic2::vtS32, "");
        parser->modifier("level", "other", "How else", mosaic2::vtS32, "");
    };
    std::vector<std::string> arguments(static_cast<std::size_t>(count), "--lev=1");
    arguments.front() = "--action0";
    return parseAllWork(declare, std::move(arguments));
}

}  // namespace bench
