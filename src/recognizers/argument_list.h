#pragma once

#include <cstddef>
#include <string_view>

namespace varo_3_3 {

/// Yields arguments one by one. They stay in place until the parse of their source ends.
class ArgumentSource {
public:
    /// Sets `argument` to the next argument. False, with `argument` untouched, at the end.
    virtual bool next(std::string_view& argument) = 0;

protected:
    ~ArgumentSource() = default;
};

/// The arguments not yet consumed, the first one as [0]. It looks at no more than two of them and
/// copies none, so consuming one costs the same however many follow.
class ArgumentList {
public:
    explicit ArgumentList(ArgumentSource& source) : m_source(source) {
        while (m_size < 2 && m_source.next(m_window[m_size])) {
            ++m_size;
        }
    }

    bool empty() const { return m_size == 0; }
    bool hasSecond() const { return m_size == 2; }

    /// Requires: `at` is 0 and the list is not empty, or `at` is 1 and it has a second argument.
    std::string_view operator[](std::size_t at) const { return m_window[at]; }

    /// Requires: the list is not empty.
    void eraseFront() {
        m_window[0] = m_window[1];
        if (m_size < 2 || !m_source.next(m_window[1])) {
            --m_size;
        }
    }

private:
    ArgumentSource& m_source;
    std::string_view m_window[2];
    std::size_t m_size = 0;
};

/// A single argument.
class SingleArgument final : public ArgumentSource {
public:
    explicit SingleArgument(std::string_view argument) : m_argument(argument) {}

    bool next(std::string_view& argument) override {
        bool const isLeft = !m_isTaken;
        if (isLeft) {
            argument = m_argument;
            m_isTaken = true;
        }
        return isLeft;
    }

private:
    std::string_view m_argument;
    bool m_isTaken = false;
};

/// The arguments of a program, in the order of argv.
class ArgumentVector final : public ArgumentSource {
public:
    /// Requires: none of the `count` pointers is null.
    ArgumentVector(char const* const* arguments, std::size_t count)
        : m_next(arguments), m_end(arguments + count) {}

    bool next(std::string_view& argument) override {
        if (m_next == m_end) {
            return false;
        }
        argument = *m_next++;
        return true;
    }

private:
    char const* const* m_next;
    char const* const* m_end;
};

}  // namespace varo_3_3
