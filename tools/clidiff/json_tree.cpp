#include "json_tree.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

#include "read_json.h"

namespace clidiff {
namespace {

using Json = nlohmann::json;

/// Walks over a text and leaves in `*reached` how far the JSON library has come.
class Cursor {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = char const*;
    using reference = char const&;

    Cursor(char const* at, char const** reached) : m_at(at), m_reached(reached) {}
    char const& operator*() const { return *m_at; }
    Cursor& operator++() {
        *m_reached = ++m_at;
        return *this;
    }
    bool operator==(Cursor const& other) const { return m_at == other.m_at; }
    bool operator!=(Cursor const& other) const { return m_at != other.m_at; }

private:
    char const* m_at;
    char const** m_reached;
};

/// Takes the parts of a text as the JSON library finds them, and builds the tree.
class Builder final : public nlohmann::json_sax<Json> {
public:
    explicit Builder(std::string_view text) : m_text(text), m_reached(text.data()) {}

    Node build() {
        char const* const end = m_text.data() + m_text.size();
        Json::sax_parse(Cursor(m_text.data(), &m_reached), Cursor(end, &m_reached), this);
        return std::move(m_root);
    }

    bool null() override { return add({}); }
    bool boolean(bool value) override {
        Node node{.kind = Node::kBool};
        node.isTrue = value;
        return add(std::move(node));
    }
    bool number_integer(number_integer_t) override { return add({}); }
    bool number_unsigned(number_unsigned_t value) override {
        Node node{.kind = Node::kNumber};
        node.number = value;
        return add(std::move(node));
    }
    bool number_float(number_float_t, string_t const&) override { return add({}); }
    bool string(string_t& value) override {
        Node node{.kind = Node::kText};
        node.text = std::move(value);
        return add(std::move(node));
    }
    bool binary(binary_t&) override { return add({}); }
    bool start_object(std::size_t) override { return open(Node::kObject); }
    bool start_array(std::size_t) override { return open(Node::kArray); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool key(string_t& name) override {
        m_name = std::move(name);
        m_end = m_reached;
        return true;
    }
    bool parse_error(std::size_t position, std::string const&, Json::exception const&) override {
        throw Fault{position > 0 ? position - 1 : 0, "this is not JSON"};
    }

private:
    static constexpr std::size_t kDeepest = 16;

    bool add(Node node) {
        static constexpr std::string_view kBetween = " \t\r\n,:";
        auto const from = static_cast<std::size_t>(m_end - m_text.data());
        node.offset = std::min(m_text.find_first_not_of(kBetween, from), m_text.size());
        m_end = m_reached;
        if (m_open.empty()) {
            m_root = std::move(node);
            return true;
        }
        m_open.back()->members.emplace_back(std::move(m_name), std::move(node));
        m_name.clear();
        return true;
    }

    bool open(Node::Kind kind) {
        add({.kind = kind});
        Node* const added = m_open.empty() ? &m_root : &m_open.back()->members.back().second;
        m_open.push_back(added);
        if (m_open.size() > kDeepest) {
            throw Fault{added->offset, "nested too deeply"};
        }
        return true;
    }

    bool close() {
        m_open.pop_back();
        m_end = m_reached;
        return true;
    }

    std::string_view m_text;
    char const* m_reached;
    char const* m_end = m_text.data();  // of the part before
    Node m_root;
    std::string m_name;
    std::vector<Node*> m_open;
};

}  // namespace

Node const* Node::find(std::string_view name) const {
    auto const found = std::find_if(members.begin(), members.end(),
                                    [&](auto const& member) { return member.first == name; });
    return found != members.end() ? &found->second : nullptr;
}

Node readTree(std::string_view text) {
    return Builder(text).build();
}

}  // namespace clidiff
