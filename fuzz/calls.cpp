// Sequences of public calls, by the host and by handlers in the middle of a parse, which also
// throw and delete themselves, while memory runs out. One fixed option file is all that is read.

#include <unistd.h>

#include <fstream>
#include <memory>
#include <stdexcept>

#include "failing_memory.h"
#include "input.h"

namespace {

/// An exception that no parse may catch.
struct Foreign {};

/// Holds some arguments; its name may be shortened to a beginning of it.
struct OptionFile {
    OptionFile() { std::ofstream(m_name) << "-a\n-b=1,2\nplain\n-o=/\n-a\n"; }
    ~OptionFile() { unlink(m_name.c_str()); }
    std::string const m_name = "/dev/shm/varo-fuzz-" + std::to_string(getpid());
};

/// A parser, two results and up to three handlers, and an input that says what happens to them.
class World {
public:
    World(fuzz::Input& input, OptionFile const& file) : m_input(input), m_parser(input.flags()) {
        m_parser->option("option-file", "", mosaic2::vtString, "")->allowValue(file.m_name.c_str());
        m_parser->addOptionFileOption("", "");
    }

    /// Makes one call. Throws what the call throws, and in a handler anything.
    void act();

private:
    struct Handler final : varo::EventHandler {
        explicit Handler(World& world) : m_world(world) {}
        bool onOptionParse(char const*) override { return m_world.react(); }
        bool onValueParse(char const*, varo::Value const&) override { return m_world.react(); }
        bool onUknownArgument(char const*) override { return m_world.react(); }
        World& m_world;
    };

    /// What a handler does, which may delete it, and answers.
    bool react() {
        struct Depth {
            explicit Depth(int& depth) : m_depth(++depth) {}
            ~Depth() { --m_depth; }
            int& m_depth;
        } const depth(m_depth);
        if (m_depth <= 3) {
            act();
        }
        return m_input.number(8) != 7;
    }

    void query(varo::IParseResult* result);
    void help();
    void addOrDelete(std::unique_ptr<Handler>& handler);

    fuzz::Input& m_input;
    varo::Parser m_parser;
    varo::Result m_results[2] = {m_parser.createResult(), m_parser.createResult()};
    std::unique_ptr<Handler> m_handlers[3];
    varo::IOption* m_newest = nullptr;  // declaration, as long as it is sure to be there
    int m_depth = 0;
};

void World::act() {
    unsigned const choice = m_input.number(16);
    unsigned const number = choice != 0 ? m_input.number() : 0;
    varo::Result& result = m_results[number % 2];
    varo::IParseResult* const target = number < 250 ? result.interface() : nullptr;
    switch (choice) {
        case 1:
            m_newest = nullptr;
            m_newest = fuzz::declare(m_parser, m_input).option;
            break;
        case 2:
            if (m_newest != nullptr) {
                unsigned const what = m_input.number();
                fuzz::refine(m_newest, what, m_input.text(), number % 2 != 0);
            }
            break;
        case 3:
        case 4:
            fuzz::parse(m_parser, fuzz::Input(m_input.text()).arguments('\n'), target);
            break;
        case 5: {
            std::string const text = m_input.text();
            fuzz::checkedParse(m_parser,
                               [&] { return m_parser->parseStream(text.c_str(), target); });
            break;
        }
        case 6:
        case 7:
            return query(result.interface());
        case 8:
            return help();
        case 9:
        case 10:
            return addOrDelete(m_handlers[number % 3]);
        case 11:
            return m_parser->setReplace(number % 2 != 0);
        case 12:
            REQUIRE(m_parser->allowSimultaneousActions({"a", m_input.text()}) == 1 ||
                    memory::failed);
            break;
        case 13:
            return memory::failAfter(number, 1 + m_input.number(3), m_input.number(2) == 0);
        case 14:
            memory::sources = 0;
            if (m_depth == 0) {
                result = m_parser.createResult();
            }
            break;
        case 15:
            if (m_depth > 0) {
                number % 2 != 0 ? throw Foreign() : throw std::runtime_error("handler");
            }
            break;
        default:
            break;
    }
}

void World::query(varo::IParseResult* result) {
    std::string const text = m_input.text();
    char const* const name = text.c_str();
    int const from = static_cast<int>(m_input.number()) - 1;
    int const to = m_input.number(2) == 0 ? varo::kNoPosition : from + 20;
    varo::Value const last = varo::getLastValue(result, name, from, to);
    bool const isPresent = result->present(name, from, to);
    REQUIRE(isPresent || last.position() == varo::kNoPosition);
    REQUIRE(result->get(name, from, to).text() != nullptr && last.text() != nullptr);
    for (int at = 0; at != varo::kNoPosition;) {
        at = result->nextPosition();
        REQUIRE(result->next(name).position() == at);
    }
    char const* plain = nullptr;
    REQUIRE(result->getFirstArgument(&plain) == 1 || plain != nullptr);
    REQUIRE(result->getNextArgument(&plain) == 1 || plain != nullptr);
}

void World::help() {
    std::string const name = m_input.text();
    bool const isHidden = m_input.number(2) == 1;
    REQUIRE(m_parser->getDescription(isHidden) != nullptr);
    REQUIRE(m_parser->getDescription(name.c_str(), isHidden) != nullptr);
    REQUIRE(m_parser->getActionModifiersDescription(name.c_str(), isHidden) != nullptr);
    REQUIRE(m_parser->getGlobalModifiersDescription(isHidden) != nullptr);
    m_parser->isOptionDeclared(name.c_str(), isHidden, nullptr);
}

void World::addOrDelete(std::unique_ptr<Handler>& handler) {
    if (handler == nullptr) {
        auto added = std::make_unique<Handler>(*this);
        if (m_parser->addHandler(added.get())) {
            REQUIRE(!m_parser->addHandler(added.get()));
            handler = std::move(added);
        } else {
            REQUIRE(memory::failed);
        }
    } else {
        REQUIRE(m_parser->removeHandler(handler.get()));
        REQUIRE(!m_parser->removeHandler(handler.get()));
        handler.reset();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static OptionFile const file;
    fuzz::dropTrace();
    std::string_view const text(reinterpret_cast<char const*>(data), size);
    if (text.find("option-file") != std::string_view::npos) {
        return -1;  // could replace the declaration that says which file is read
    }
    long const outstanding = memory::outstanding;
    {
        fuzz::Input input(text);
        World world(input, file);
        while (!input.isEmpty()) {
            try {
                world.act();
            } catch (Foreign const&) {
            } catch (std::bad_alloc const&) {
                REQUIRE(memory::failed);
                memory::sources = 0;
            }
        }
        memory::sources = 0;
    }
    REQUIRE(memory::outstanding == outstanding);
    return 0;
}
