#include "read_json.h"

#include <charconv>

#include "json_tree.h"

namespace clidiff {
namespace {

constexpr std::string_view kSchema = "varo-command-line";
constexpr unsigned long long kVersion = 1;

[[noreturn]] void fail(Node const& node, std::string reason) {
    throw Fault{node.offset, std::move(reason)};
}

std::string inQuotes(std::string_view text) {
    return "'" + std::string(text) + "'";
}

Node const& expect(Node const& node, Node::Kind kind) {
    static constexpr char const* kNames[] = {"nothing", "true or false", "a number",
                                             "a text",  "an array",      "an object"};
    if (node.kind != kind) {
        fail(node, std::string("this should be ") + kNames[kind]);
    }
    return node;
}

Node const& member(Node const& object, std::string_view name) {
    Node const* const found = expect(object, Node::kObject).find(name);
    if (found == nullptr) {
        fail(object, "this has no " + inQuotes(name));
    }
    return *found;
}

bool isTrue(Node const& object, std::string_view name) {
    return expect(member(object, name), Node::kBool).isTrue;
}

/// A text, which is an object with the bytes in hexadecimal where it is not UTF-8.
std::string readText(Node const& node) {
    if (node.kind != Node::kObject) {
        return expect(node, Node::kText).text;
    }
    Node const& digits = expect(member(node, "bytes"), Node::kText);
    std::string text;
    for (std::size_t at = 0; at < digits.text.size(); at += 2) {
        unsigned char byte = 0;
        char const* const begin = digits.text.data() + at;
        char const* const end = begin + std::min<std::size_t>(2, digits.text.size() - at);
        auto const [stop, error] = std::from_chars(begin, end, byte, 16);
        if (error != std::errc() || stop != begin + 2) {
            fail(digits, "these are no bytes in hexadecimal");
        }
        text += static_cast<char>(byte);
    }
    return text;
}

template <class Read>
void readEach(Node const& object, std::string_view name, Read read) {
    for (auto const& [unnamed, element] : expect(member(object, name), Node::kArray).members) {
        read(element);
    }
}

/// A value: its text alone where it has the type of its declaration.
TypedValue readValue(Node const& node, std::string const& type) {
    if (node.kind == Node::kObject && node.find("type") != nullptr) {
        return {readText(member(node, "type")), readText(member(node, "text"))};
    }
    return {type, readText(node)};
}

bool readIsAction(Node const& kind) {
    std::string const& text = expect(kind, Node::kText).text;
    if (text != "action" && text != "modifier" && text != "option") {
        fail(kind, "this should be 'option', 'action' or 'modifier'");
    }
    return text == "action";
}

Declaration readDeclaration(Node const& node) {
    Declaration declaration;
    declaration.isAction = readIsAction(member(node, "kind"));
    readEach(node, "names", [&](Node const& name) {
        declaration.names.push_back(readText(member(name, "name")));
    });
    if (declaration.names.empty()) {
        fail(node, "this has no name");
    }
    declaration.type = expect(member(node, "type"), Node::kText).text;
    readEach(node, "actions",
             [&](Node const& action) { declaration.tags.insert(readText(action)); });
    declaration.separator = readText(member(node, "separator"));
    declaration.isPositional = isTrue(node, "positional");
    declaration.isHidden = isTrue(node, "hidden");
    declaration.readsFiles = isTrue(node, "readsFiles");
    readEach(node, "allowed", [&](Node const& value) {
        declaration.allowed.push_back(readValue(value, declaration.type));
    });
    readEach(node, "deprecated", [&](Node const& pair) {
        declaration.deprecated.emplace_back(
            readValue(member(pair, "value"), declaration.type),
            readValue(member(pair, "replacement"), declaration.type));
    });
    Node const& defaultValue = member(node, "default");
    if (defaultValue.kind != Node::kNull) {
        declaration.defaultValue = readValue(defaultValue, declaration.type);
    }
    return declaration;
}

void readFlags(Node const& root, CommandLine& line) {
    readEach(root, "flags", [&](Node const& flag) {
        std::string const& name = expect(flag, Node::kText).text;
        line.unknownIsError |= name == "unknownIsError";
        line.positionalAfterMarker |= name == "positionalAfterMarker";
        line.dashGuard |= name == "dashGuard";
        line.takeTheRest |= name == "takeTheRest";
    });
}

}  // namespace

CommandLine readJson(std::string_view text) {
    Node const root = readTree(text);
    Node const& schema = member(root, "schema");
    if (expect(schema, Node::kText).text != kSchema) {
        fail(schema, "this is no description of a command line");
    }
    Node const& version = member(root, "version");
    if (expect(version, Node::kNumber).number != kVersion) {
        fail(version, "this is version " + std::to_string(version.number) +
                          " of the schema; version " + std::to_string(kVersion) + " is known");
    }
    CommandLine line;
    readFlags(root, line);
    readEach(root, "together", [&](Node const& group) {
        std::set<std::string>& actions = line.together.emplace_back();
        for (auto const& [unnamed, action] : expect(group, Node::kArray).members) {
            actions.insert(readText(action));
        }
    });
    readEach(root, "declarations", [&](Node const& declaration) {
        line.declarations.push_back(readDeclaration(declaration));
    });
    return line;
}

}  // namespace clidiff
