#include "help/paragraph.h"

#include <algorithm>

#include "platform/throw.h"
#include "varo/text.h"

namespace varo_3_3 {
namespace {

bool isBreak(char character) {
    return character == ' ' || character == '\n';
}

/// The beginning of `text`, which does not begin with a blank, that goes into `room`; the first
/// newline is at `newline`.
std::string_view cutPiece(std::string_view text, std::size_t newline, std::size_t room) {
    std::string_view const piece = text.substr(0, std::min(room, newline));
    if (piece.size() == text.size() || isBreak(text[piece.size()])) {
        return piece;
    }
    if (piece.empty()) {
        internal::throwOutOfRange(
            "basic_string::at: __n (which is %zu) >= this->size() (which is %zu)", piece.size() - 1,
            piece.size());
    }
    if (piece.back() == ' ') {
        return piece;
    }
    // A word that is longer than the room is cut.
    return piece.substr(0, piece.rfind(' '));
}

}  // namespace

void appendParagraph(std::string& block, std::string_view text, std::string_view caption,
                     unsigned long indent, unsigned long width) {
    if (text.empty()) {
        return;  // intended: without a text there is no caption either
    }
    block += caption;
    std::size_t lineLength = caption.size();
    std::size_t at = 0;                     // how far the text is laid out
    std::size_t newline = text.find('\n');  // the first one from there on
    while (at < text.size()) {
        while (at < text.size() && isBreak(text[at])) {
            ++at;
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
        if (newline < at) {
            newline = text.find('\n', at);
        }
        std::string_view const piece = cutPiece(text.substr(at), newline - at, room);
        block.append(blanks, ' ');
        block += piece;
        block += '\n';
        at += piece.size();
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
        internal::throwLogicError("basic_string::_M_construct null not valid");
    }
    appendParagraph(m_text, text, caption, indent, rightMargin - indent);
}

WordWrappedText::~WordWrappedText() = default;

char const* WordWrappedText::getText() const {
    return m_text.c_str();
}

}  // namespace varo_3_3
