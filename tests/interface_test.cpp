// What programs compiled elsewhere rely on, seen from the installed headers alone: layouts,
// numbers, and every slot of every interface, called by its index and identified by its effect.

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "varo/text.h"
#include "varo/trace.h"
#include "varo/varo.h"

using namespace varo_3_3;
using mosaic2::variant_t;

namespace {

int failures = 0;

void check(bool holds, char const* text, int line) {
    if (!holds) {
        std::printf("interface_test.cpp:%d: %s does not hold\n", line, text);
        ++failures;
    }
}
#define CHECK(condition) check((condition), #condition, __LINE__)

// Layouts and numbers

static_assert(sizeof(variant_t) == 16 && alignof(variant_t) == 8);
static_assert(offsetof(variant_t, m_value) == 0 && sizeof(variant_t::value_t) == 8);
static_assert(offsetof(variant_t, m_type) == 8 && sizeof(mosaic2::das_variant_type_t) == 4);
static_assert(sizeof(variant_t::data_header_t) == 16);
static_assert(offsetof(variant_t::data_header_t, m_size) == 0);
static_assert(offsetof(variant_t::data_header_t, m_count) == 8);
static_assert(sizeof(variant_t::memory_functions_t) == 16);
static_assert(offsetof(variant_t::memory_functions_t, m_free) == 0);
static_assert(offsetof(variant_t::memory_functions_t, m_allocate) == 8);
static_assert(std::is_same_v<decltype(variant_t::m_mem), variant_t::memory_functions_t>);
static_assert(sizeof(Value) == 32 && alignof(Value) == 8);
static_assert(sizeof(WordWrappedText) == sizeof(std::string));
static_assert(sizeof(IParser) == 8 && sizeof(IOption) == 8 && sizeof(IParseResult) == 8);
static_assert(sizeof(EventHandler) == 8 && sizeof(mosaic2::object_t) == 8);
static_assert(!std::has_virtual_destructor_v<EventHandler>);

static_assert(kUnknownIsError == 2 && kPositionalAfterMarker == 4 && kDashGuard == 8);
static_assert(kTakeTheRest == 16 && kKeepCommas == 32 && kDoubleDashHelp == 64);
static_assert(kSuccess == 0 && kRefused == 1 && kParseError == 2 && kUnusableArguments == 3);
static_assert(kUnidentifiedProblem == 4 && kOptionFileUnreadable == 6);
static_assert(kFirstPosition == 0 && kNoPosition == 2147483647);

/// Reads a field of a foreign object at its offset in bytes.
template <class Field, class Object>
Field fieldAt(Object const& object, std::size_t offset) {
    Field field;
    std::memcpy(&field, reinterpret_cast<char const*>(&object) + offset, sizeof(field));
    return field;
}

/// Calls the virtual operation in slot `slot` of an object, as compilers on this platform do.
template <class Return, class Object, class... Arguments>
Return callSlot(std::size_t slot, Object* object, Arguments... arguments) {
    void** const table = *reinterpret_cast<void***>(object);
    return reinterpret_cast<Return (*)(Object*, Arguments...)>(table[slot])(object, arguments...);
}

/// A host's handler that was never compiled against EventHandler: a pointer to a table of
/// functions.
struct ForeignHandler {
    void const* const* m_table;
    std::string m_events;
};
bool onOption(ForeignHandler* self, char const* name) {
    self->m_events += std::string("option ") + name + ";";
    return true;
}
bool onValue(ForeignHandler* self, char const* name, Value const& value) {
    self->m_events += std::string("value ") + name + "=" + fieldAt<char const*>(value, 0) + ";";
    return true;
}
bool onUnknown(ForeignHandler* self, char const* argument) {
    self->m_events += std::string("unknown ") + argument + ";";
    return true;
}

void checkValueAndVariant() {
    Value const value("12", variant_t(12), 5);
    CHECK(std::strcmp(fieldAt<char const*>(value, 0), "12") == 0);
    CHECK(fieldAt<long>(value, 8) == 12);
    CHECK(fieldAt<int>(value, 16) == mosaic2::vtS32);
    CHECK(fieldAt<int>(value, 24) == 5);

    variant_t const text("four");
    char const* const payload = text.m_value.m_text;
    CHECK(fieldAt<unsigned long>(*(payload - 16), 0) == 5);
    CHECK(fieldAt<int>(*(payload - 16), 8) == 1);
    variant_t copy = text;
    CHECK(fieldAt<int>(*(payload - 16), 8) == 2);
    copy = variant_t();
    CHECK(fieldAt<int>(*(payload - 16), 8) == 1);
    CHECK(variant_t("a") < variant_t(1) && variant_t("a") == variant_t("a", true));
    CHECK(mosaic2::string_compare(L"a", L"b") < 0);
    void const* const object = payload;
    void const* const payloads[] = {object, object};
    CHECK(mosaic2::notype_ptr_compare(&payloads[0], &payloads[1]) == 0);
}

/// An option's builder operations by slot; what they did shows in the parses of `parser`.
void checkOptionSlots(IParser* parser) {
    IOption* const option = parser->option("level", "", mosaic2::vtS32, "general");
    CHECK(callSlot<IOption*>(0, option, "depth") == option);
    variant_t const allowed(4);
    variant_t const old(9);
    CHECK(callSlot<IOption*>(1, option, &allowed) == option);
    CHECK(callSlot<IOption*>(2, option, &old, &allowed) == option);
    CHECK(callSlot<IOption*>(3, option, &old) == option);
    CHECK(callSlot<IOption*>(4, option, ':') == option);
    IOption* const rest = parser->option("rest", "", mosaic2::vtString, "general");
    CHECK(callSlot<IOption*>(5, rest) == rest);
    IOption* const modifier = parser->modifier("fast", "", "", mosaic2::vtBool, "general");
    CHECK(callSlot<IOption*>(6, modifier, "walk") == modifier);
}

void checkParserAndResultSlots() {
    IParser* parser = nullptr;
    CHECK(createParser(&parser, (kKeepCommas | kDashGuard).bits()) == kSuccess);

    // 20 setReplace, 5 option, 6 action, 7 modifier, 8 isOptionDeclared
    checkOptionSlots(parser);
    callSlot<void>(20, parser, true);
    CHECK(callSlot<IOption*>(5, parser, "size", "Size", mosaic2::vtS32, "general") != nullptr);
    IOption* const size = parser->option("size", "Size", mosaic2::vtU64, "general");
    CHECK(size->defaultValue(variant_t(77)) == size && size->synonym(nullptr) == size);
    callSlot<IOption*>(6, parser, "run", "Runs", mosaic2::vtNull, "verbs");
    callSlot<IOption*>(6, parser, "walk", "Walks", mosaic2::vtNull, "verbs");
    callSlot<IOption*>(7, parser, "loud", "walk", "Louder", mosaic2::vtBool, "general");
    CHECK(callSlot<bool>(8, parser, "run", true, nullptr));
    CHECK(callSlot<bool>(8, parser, "size", false, "general"));
    CHECK(!callSlot<bool>(8, parser, "size", true, nullptr));

    // 16 addHandler, 17 removeHandler, 18 addOptionFileOption, 19 allowSimultaneousActions
    void const* const table[] = {nullptr, &typeid(EventHandler),  // what precedes slot 0
                                 reinterpret_cast<void const*>(&onOption),
                                 reinterpret_cast<void const*>(&onValue),
                                 reinterpret_cast<void const*>(&onUnknown)};
    ForeignHandler handler{table + 2, ""};
    CHECK(callSlot<bool>(16, parser, &handler));
    CHECK(!callSlot<bool>(16, parser, &handler));
    CHECK(callSlot<bool>(18, parser, "Reads arguments", "general"));
    CHECK(parser->isOptionDeclared("option-file", false, nullptr));
    std::set<std::string> const together{"run", "walk"};
    callSlot<int>(19, parser, &together);

    // 4 createResult, 9 parseArgsVector, 11 getErrorDesc; of a result: 1 present, 2 get, 3 next,
    // 4 nextPosition, 5 getFirstArgument, 6 getNextArgument
    IParseResult* result = nullptr;
    CHECK(callSlot<int>(4, parser, &result) == kSuccess);
    char const* const arguments[] = {"tool",  "-run",  "-walk", "-fast", "-loud", "--depth=9:4",
                                     "-what", "first", "--",    "plain", "more"};
    CHECK(callSlot<int>(9, parser, 11, arguments, result) == kSuccess);
    CHECK(std::strstr(callSlot<char const*>(11, parser), "Warning: '9'") != nullptr);
    CHECK(handler.m_events ==
          "option run;option walk;option fast;value fast=1;option loud;value loud=1;"
          "option level;value level=9;value level=4;unknown -what;value rest=first;");
    CHECK(callSlot<bool>(1, result, "level", kFirstPosition, kNoPosition));
    CHECK(!callSlot<bool>(1, result, "missing", kFirstPosition, kNoPosition));
    Value const first = callSlot<Value>(2, result, "level", kFirstPosition, kNoPosition);
    int const nextPosition = callSlot<int>(4, result);
    Value const second = callSlot<Value>(3, result, "level");
    CHECK(first.as<int>() == 4 && second.as<int>() == 4 && first.position() < nextPosition);
    CHECK(second.position() == nextPosition && result->nextPosition() == kNoPosition);
    CHECK(getLastValue(result, "level", 0, nextPosition).position() < nextPosition);
    CHECK(result->get("size", 0, 0).as<int>() == 77);
    CHECK(std::strcmp(result->get("rest", 0, kNoPosition).as<char const*>(), "first") == 0);
    char const* text = nullptr;
    CHECK(callSlot<int>(6, result, &text) == 0 && std::strcmp(text, "plain") == 0);
    CHECK(callSlot<int>(6, result, &text) == 0 && std::strcmp(text, "more") == 0);
    CHECK(callSlot<int>(6, result, &text) == 1);
    CHECK(callSlot<int>(5, result, &text) == 0 && std::strcmp(text, "plain") == 0);
    callSlot<void>(0, result);

    // 10 parseStream; a handler that was removed is told nothing
    CHECK(callSlot<bool>(17, parser, &handler));
    CHECK(!callSlot<bool>(17, parser, &handler));
    handler.m_events.clear();
    CHECK(callSlot<int>(10, parser, "-run\n--level=4", static_cast<IParseResult*>(nullptr)) == 0);
    CHECK(callSlot<int>(10, parser, "--level=5", static_cast<IParseResult*>(nullptr)) != 0);
    CHECK(handler.m_events.empty());

    // 12, 13 getDescription, 14 getActionModifiersDescription, 15 getGlobalModifiersDescription
    std::string const actions = callSlot<char const*>(12, parser, false);
    std::string const topic = callSlot<char const*>(13, parser, "size", false);
    std::string const modifiers = callSlot<char const*>(14, parser, "walk", false);
    std::string const globals = callSlot<char const*>(15, parser, false);
    CHECK(actions.find("Runs") != std::string::npos && actions.find("Louder") == std::string::npos);
    CHECK(topic.find("Size") != std::string::npos && topic.find("Louder") == std::string::npos);
    CHECK(modifiers.find("Louder") != std::string::npos);
    CHECK(globals.find("Reads arguments") != std::string::npos);
    CHECK(globals.find("Louder") == std::string::npos);

    // 0 to 2: a parser is itself a handler, which asks those that it has
    ForeignHandler behind{table + 2, ""};
    callSlot<bool>(16, parser, &behind);
    Value const value("v", variant_t(), 1);
    CHECK(callSlot<bool>(0, parser, "o") && callSlot<bool>(1, parser, "o", &value));
    CHECK(callSlot<bool>(2, parser, "u"));
    CHECK(behind.m_events == "option o;value o=v;unknown u;");

    callSlot<void>(3, parser);  // destroy
}

// The library's variables that a host may write

int reports = 0;
int allocations = 0;

void countReport(char const*, char const*, int, char const*) {
    ++reports;
}
void* countAllocation(std::size_t size) {
    ++allocations;
    return std::malloc(size);
}

/// What a host writes is seen by the library, also when the host holds the variable itself, as
/// programs without position-independent code do.
void checkVariables() {
    BRIX::debug::_private::assertion = &countReport;
    static_cast<void>(variant_t("text").get<bool>());
    CHECK(reports == 1);

    IParser* parser = nullptr;
    IParseResult* result = nullptr;
    createParser(&parser, 0);
    parser->createResult(&result);
    IOption* const name = parser->option("name", "", mosaic2::vtString, "");
    variant_t broken;  // a string without a block: the library reports it when it copies it
    broken.m_type = mosaic2::vtString;
    name->defaultValue(broken);
    CHECK(reports > 1);
    broken.m_type = mosaic2::vtNull;
    name->defaultValue(broken);
    variant_t::memory_functions_t const before = variant_t::m_mem;
    variant_t::m_mem = {&std::free, &countAllocation};
    CHECK(parser->parseStream("--name=value", result) == kSuccess);
    callSlot<void>(8,
                   result);  // the deleting destructor; the memory would leak through another slot
    CHECK(allocations > 0);
    variant_t::m_mem = before;

    std::ostringstream trace;
    std::streambuf* const console = BRIX::ucout.rdbuf(trace.rdbuf());
    CHECK(parser->parseStream("varooption=varologenable=1\n--name=value", nullptr) == kSuccess);
    CHECK(internal::varoLogEnabled && !trace.str().empty());
    BRIX::ucout.rdbuf(console);
    internal::varoLogEnabled = false;
    callSlot<void>(22, parser);  // the deleting destructor
}

void checkFunctionsAndTypes() {
    CHECK(libraryVersion() / 100 == VARO_VERSION / 100);
    CHECK(paragraphString("one two", "-a", 4, 5) == "-a  one \n    two\n");
    CHECK(std::strcmp(WordWrappedText("-a", "one two", 4, 9).getText(), "-a  one \n    two\n") ==
          0);

    Parser const parser;
    EventHandler* const handler = parser.interface();
    CHECK(dynamic_cast<IParser*>(handler) == parser.interface());
}

}  // namespace

int main() {
    checkValueAndVariant();
    checkParserAndResultSlots();
    checkVariables();
    checkFunctionsAndTypes();
    std::printf(failures == 0 ? "The interface holds.\n" : "%d checks failed.\n", failures);
    return failures == 0 ? 0 : 1;
}
