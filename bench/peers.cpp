#include <getopt.h>

#include <cstdlib>
#include <limits>

#include "workload.h"

#if __has_include(<popt.h>)
#include <popt.h>
#define BENCH_POPT
#endif
#if __has_include(<boost/program_options.hpp>)
#include <boost/program_options.hpp>
#define BENCH_BOOST
#endif
#if __has_include(<CLI/CLI.hpp>)
#include <CLI/CLI.hpp>
#define BENCH_CLI11
#endif
#if __has_include(<cxxopts.hpp>)
#include <cxxopts.hpp>
#define BENCH_CXXOPTS
#endif

namespace bench {

namespace {

/// What the peers have in common: they put the values of an option into variables.
class TargetContestant : public Contestant {
protected:
    struct Target {
        bool given = false;
        int integer = std::numeric_limits<int>::min();
        double real = std::numeric_limits<double>::infinity();
        std::vector<std::string> texts;
    };

    explicit TargetContestant(Workload const& workload) : m_targets(workload.declarations.size()) {}

    void parse(Workload const& workload, Answer& answer) final {
        for (Target& target : m_targets) {
            target = {false, Target().integer, Target().real, {}};
        }
        run(workload.argc(), workload.argv.data());
        for (unsigned const index : workload.queries) {
            add(m_targets[index], answer);
        }
    }

    virtual void run(int argc, char const* const* argv) = 0;

    std::vector<Target> m_targets;

private:
    static void add(Target const& target, Answer& answer) {
        if (target.given) {
            answer.add(1L);
        }
        if (target.integer != Target().integer) {
            answer.add(static_cast<long>(target.integer));
        }
        if (target.real != Target().real) {
            answer.add(target.real);
        }
        for (std::string const& text : target.texts) {
            answer.add(text);
        }
    }
};

/// "name,l" or "l,name".
[[maybe_unused]] std::string namesOf(Declaration const& declaration, bool letterFirst) {
    std::string const letter(declaration.letter != 0, declaration.letter);
    std::string const comma(letter.size(), ',');
    return letterFirst ? letter + comma + declaration.name : declaration.name + comma + letter;
}

class GetoptLong : public TargetContestant {
public:
    explicit GetoptLong(Workload const& workload) : TargetContestant(workload) {
        for (Declaration const& declaration : workload.declarations) {
            int const index = static_cast<int>(m_kinds.size());
            bool const takesValue = declaration.kind != Kind::boolean;
            m_options.push_back({declaration.name.c_str(), takesValue, nullptr, kFirst + index});
            if (declaration.letter != 0) {
                m_letters.append(1, declaration.letter).append(takesValue, ':');
            }
            m_positional = declaration.positional ? kFirst + index : m_positional;
            m_kinds.push_back(declaration.kind);
        }
        m_options.push_back({});
    }

private:
    static constexpr int kFirst = 256;  // codes below are letters

    void run(int argc, char const* const* argv) override {
        optind = 0;
        auto const arguments = const_cast<char* const*>(argv);
        for (int code; (code = getopt_long(argc, arguments, m_letters.c_str(), m_options.data(),
                                           nullptr)) != -1;) {
            code = code == 1 ? m_positional : code;
            require(code >= kFirst, "unknown option");
            store(static_cast<std::size_t>(code - kFirst));
        }
    }

    void store(std::size_t index) {
        switch (m_kinds[index]) {
            case Kind::boolean:
                m_targets[index].given = true;
                break;
            case Kind::integer:
                m_targets[index].integer = std::atoi(optarg);
                break;
            case Kind::real:
                m_targets[index].real = std::atof(optarg);
                break;
            case Kind::text:
                m_targets[index].texts.emplace_back(optarg);
        }
    }

    std::vector<option> m_options;
    std::vector<Kind> m_kinds;
    std::string m_letters = "-";  // the dash: plain arguments come in their place, with code 1
    int m_positional = 0;
};

#ifdef BENCH_POPT
class Popt : public TargetContestant {
public:
    explicit Popt(Workload const& workload) : TargetContestant(workload) {
        for (Target& target : m_targets) {
            std::size_t const index = m_options.size();
            Declaration const& declaration = workload.declarations[index];
            auto const kind = static_cast<std::size_t>(declaration.kind);
            unsigned const types[] = {POPT_ARG_NONE, POPT_ARG_INT, POPT_ARG_DOUBLE,
                                      POPT_ARG_STRING};
            void* const places[] = {nullptr, &target.integer, &target.real, nullptr};
            m_options.push_back({declaration.name.c_str(), declaration.letter, types[kind],
                                 places[kind], static_cast<int>(index) + 1,
                                 declaration.description.c_str(), nullptr});
            m_positional = declaration.positional ? index : m_positional;
        }
        m_options.push_back(POPT_TABLEEND);
    }

private:
    void run(int argc, char const* const* argv) override {
        std::unique_ptr<poptContext_s, decltype(&poptFreeContext)> const context(
            poptGetContext(nullptr, argc, const_cast<char const**>(argv), m_options.data(), 0),
            poptFreeContext);
        int code;
        while ((code = poptGetNextOpt(context.get())) > 0) {
            auto const index = static_cast<std::size_t>(code) - 1;
            char* const text = poptGetOptArg(context.get());
            if (m_options[index].argInfo == POPT_ARG_STRING) {
                m_targets[index].texts.emplace_back(text);
            }
            m_targets[index].given = m_options[index].argInfo == POPT_ARG_NONE;
            std::free(text);
        }
        require(code == -1, "unknown option");
        char const** rest = poptGetArgs(context.get());
        while (rest != nullptr && *rest != nullptr) {
            m_targets[m_positional].texts.emplace_back(*rest++);
        }
    }

    std::vector<poptOption> m_options;
    std::size_t m_positional = 0;
};
#endif

#ifdef BENCH_BOOST
namespace options = boost::program_options;

class Boost : public TargetContestant {
public:
    explicit Boost(Workload const& workload) : TargetContestant(workload) {
        std::size_t index = 0;
        for (Declaration const& declaration : workload.declarations) {
            m_options.add_options()(namesOf(declaration, false).c_str(),
                                    semanticOf(declaration.kind, m_targets[index++]),
                                    declaration.description.c_str());
            if (declaration.positional) {
                m_positional.add(declaration.name.c_str(), -1);
            }
        }
    }

private:
    static options::value_semantic const* semanticOf(Kind kind, Target& target) {
        switch (kind) {
            case Kind::boolean:
                return options::bool_switch(&target.given);
            case Kind::integer:
                return options::value(&target.integer);
            case Kind::real:
                return options::value(&target.real);
            case Kind::text:
                break;
        }
        return options::value(&target.texts);
    }

    void run(int argc, char const* const* argv) override {
        options::variables_map map;
        options::command_line_parser parser(argc, argv);
        options::store(parser.options(m_options).positional(m_positional).run(), map);
        options::notify(map);
    }

    options::options_description m_options;
    options::positional_options_description m_positional;
};
#endif

#ifdef BENCH_CLI11
class Cli11 : public TargetContestant {
public:
    explicit Cli11(Workload const& workload) : TargetContestant(workload) {
        std::size_t index = 0;
        for (Declaration const& declaration : workload.declarations) {
            std::string const name = "--" + declaration.name;
            std::string const letter(declaration.letter != 0, declaration.letter);
            add(name + (letter.empty() ? "" : ",-" + letter) +
                    (declaration.positional ? "," + declaration.name : ""),
                declaration, m_targets[index++]);
        }
    }

private:
    void add(std::string const& names, Declaration const& declaration, Target& target) {
        std::string const& description = declaration.description;
        if (declaration.kind == Kind::boolean) {
            m_app.add_flag(names, target.given, description);
        } else if (declaration.kind == Kind::integer) {
            m_app.add_option(names, target.integer, description);
        } else if (declaration.kind == Kind::real) {
            m_app.add_option(names, target.real, description);
        } else {
            CLI::Option* const option = m_app.add_option(names, target.texts, description);
            if (declaration.positional) {
                option->expected(-1);
            } else {
                option->allow_extra_args(false);
            }
            if (!declaration.allowed.empty()) {
                option->check(CLI::IsMember(declaration.allowed));
            }
        }
    }

    void run(int argc, char const* const* argv) override { m_app.parse(argc, argv); }

    CLI::App m_app;
};
#endif

#ifdef BENCH_CXXOPTS
class Cxxopts : public TargetContestant {
public:
    explicit Cxxopts(Workload const& workload) : TargetContestant(workload) {
        std::size_t index = 0;
        for (Declaration const& declaration : workload.declarations) {
            m_options.add_options()(namesOf(declaration, true), declaration.description,
                                    valueOf(declaration.kind, m_targets[index++]));
            if (declaration.positional) {
                m_options.parse_positional({declaration.name});
            }
        }
    }

private:
    static std::shared_ptr<cxxopts::Value> valueOf(Kind kind, Target& target) {
        switch (kind) {
            case Kind::boolean:
                return cxxopts::value(target.given);
            case Kind::integer:
                return cxxopts::value(target.integer);
            case Kind::real:
                return cxxopts::value(target.real);
            case Kind::text:
                break;
        }
        return cxxopts::value(target.texts);
    }

    void run(int argc, char const* const* argv) override { m_options.parse(argc, argv); }

    cxxopts::Options m_options{"program"};
};
#endif

}  // namespace

std::vector<Peer> const& peers() {
    static std::vector<Peer> const all = {
        {"getopt_long", make<GetoptLong>, true},
#ifdef BENCH_POPT
        {"popt", make<Popt>, false},
#endif
#ifdef BENCH_BOOST
        {"Boost", make<Boost>, true},
#endif
#ifdef BENCH_CLI11
        {"CLI11", make<Cli11>, false},
#endif
#ifdef BENCH_CXXOPTS
        {"cxxopts", make<Cxxopts>, false},
#endif
    };
    return all;
}

}  // namespace bench
