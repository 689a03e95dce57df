#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace varo_3_3 {

/// Yields arguments one by one. They stay in place until the parse of their source ends.
class ArgumentSource {
public:
    /// Sets `argument` to the next argument. False, with `argument` untouched, at the end.
    virtual bool next(std::string_view& argument) = 0;

    /// The number of an argument that was taken, from 1; in a text, its line. `taken` is how many
    /// arguments were taken since, itself included. Nothing is counted until this is called.
    virtual std::size_t numberOf(std::string_view argument, std::size_t taken) = 0;

    /// Begins again with the first argument.
    virtual void rewind() = 0;

    /// What precedes a number: "argument ", or "text:".
    std::string_view label() const { return m_label; }

protected:
    explicit ArgumentSource(std::string_view label) : m_label(label) {}
    ~ArgumentSource() = default;

private:
    std::string_view m_label;
};

/// The arguments not yet consumed, the first one as [0]. It looks at no more than two of them and
/// copies none, so consuming one costs the same however many follow.
class ArgumentList {
public:
    explicit ArgumentList(ArgumentSource& source) : m_source(&source) {
        while (m_size < 2 && source.next(m_window[m_size])) {
            ++m_size;
        }
    }

    /// One argument, of no source.
    explicit ArgumentList(std::string_view argument) : m_window{argument, {}}, m_size(1) {}

    bool empty() const { return m_size == 0; }
    bool hasSecond() const { return m_size == 2; }

    /// Requires: `at` is 0 and the list is not empty, or `at` is 1 and it has a second argument.
    std::string_view operator[](std::size_t at) const { return m_window[at]; }

    /// The number of the argument that is now [at] in its source. Requires: it has one.
    std::size_t numberOf(std::size_t at) const {
        return m_source->numberOf(m_window[at], m_size - at);
    }

    /// Requires: the list is not empty.
    void eraseFront() {
        m_window[0] = m_window[1];
        if (m_size < 2 || !m_source->next(m_window[1])) {
            --m_size;
        }
    }

private:
    ArgumentSource* m_source = nullptr;
    std::string_view m_window[2];
    std::size_t m_size = 0;
};

/// The arguments of a program, in the order of argv.
class ArgumentVector final : public ArgumentSource {
public:
    /// Requires: none of the `count` pointers is null.
    ArgumentVector(char const* const* arguments, std::size_t count)
        : ArgumentSource("argument "),
          m_begin(arguments),
          m_next(arguments),
          m_end(arguments + count) {}

    bool next(std::string_view& argument) override {
        if (m_next == m_end) {
            return false;
        }
        argument = *m_next++;
        return true;
    }
    std::size_t numberOf(std::string_view /*argument*/, std::size_t taken) override {
        return static_cast<std::size_t>(m_next - m_begin) - taken + 1;
    }
    void rewind() override { m_next = m_begin; }

private:
    char const* const* m_begin;
    char const* const* m_next;
    char const* const* m_end;
};

/// The same from a copy, for a parse whose handlers may overwrite or free the program's arguments.
class CopiedArguments final : public ArgumentSource {
public:
    /// Requires: none of the `count` pointers is null. Throws std::bad_alloc.
    CopiedArguments(char const* const* arguments, std::size_t count) : ArgumentSource("argument ") {
        for (std::size_t number = 0; number < count; ++number) {
            add(arguments[number]);
        }
    }
    CopiedArguments() : ArgumentSource("argument ") {}

    /// Adds an argument, which has no zeros, at the end.
    void add(std::string_view argument) {
        m_texts += argument;
        m_texts += '\0';
    }

    bool empty() const { return m_texts.empty(); }

    bool next(std::string_view& argument) override {
        if (m_next == m_texts.size()) {
            return false;
        }
        argument = m_texts.data() + m_next;
        m_next += argument.size() + 1;
        ++m_number;
        return true;
    }
    std::size_t numberOf(std::string_view /*argument*/, std::size_t taken) override {
        return m_number - taken + 1;
    }
    void rewind() override { m_next = m_number = 0; }

private:
    std::string m_texts;  // each ended by a zero
    std::size_t m_next = 0;
    std::size_t m_number = 0;  // of arguments that were yielded
};

}  // namespace varo_3_3
