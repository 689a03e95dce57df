#include "help/paragraph.h"

#include <algorithm>

#include "platform/throw.h"
#include "varo/text.h"

namespace varo_3_3 {
namespace {

bool isBreak(char character) {
    return character == ' ' || character == '\n';
}

/// The length of the piece of `text`, which does not begin with a blank, that goes into `room`.
std::size_t cutPiece(std::string_view text, std::size_t room) {
    std::size_t const newline = text.substr(0, room).find('\n');
    std::size_t const limit = std::min(room, newline);
    std::size_t const length = std::min(limit, text.size());
    if (length == text.size() || isBreak(text[length])) {
        return length;
    }
    if (length == 0) {
        BRIX::throwOutOfRange("basic_string::at: __n (which is %zu) >= this->size() (which is %zu)",
                              length - 1, length);
    }
    if (text[length - 1] == ' ') {
        return length;
    }
    std::size_t blank = limit;
    while (blank > 0 && text[blank] != ' ') {
        --blank;
    }
    return blank > 0 ? blank : room;  // a word longer than the room is cut
}

}  // namespace

void appendParagraph(std::string& block, std::string_view text, std::string_view caption,
                     unsigned long indent, unsigned long width) {
    if (text.empty()) {
        return;  // intended: without a text there is no caption either
    }
    block += caption;
    std::size_t lineLength = caption.size();
    while (!text.empty()) {
        while (!text.empty() && isBreak(text.front())) {
            text.remove_prefix(1);
        }
        std::size_t blanks = indent - lineLength;
        std::size_t room = width - 1;  // wraps round for a width of 0: lines of any length
        if (lineLength >= indent && lineLength != 0) {
            if (lineLength - indent + 1 >= room) {
                block += '\n';
                lineLength = 0;
                continue;
            }
            blanks = 1;
            room = indent + width - 1 - lineLength - 1;
        }
        std::size_t const length = cutPiece(text, room);
        block.append(blanks, ' ');
        block.append(length + 1, '\n');
        text.copy(block.data() + block.size() - length - 1, length);
        text.remove_prefix(length);
        lineLength = 0;
    }
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is a binary contract
std::string paragraphString(std::string text, std::string caption, unsigned long indent,
                            unsigned long width) {
    std::string block;
    appendParagraph(block, text, caption, indent, width);
    return block;
}

WordWrappedText::WordWrappedText(char const* caption, char const* text, unsigned long indent,
                                 unsigned long rightMargin) {
    if (caption == nullptr || text == nullptr) {
        BRIX::throwLogicError("basic_string::_M_construct null not valid");
    }
    appendParagraph(m_text, text, caption, indent, rightMargin - indent);
}

WordWrappedText::~WordWrappedText() = default;

char const* WordWrappedText::getText() const {
    return m_text.c_str();
}

}  // namespace varo_3_3
