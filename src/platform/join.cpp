#include "platform/join.h"

namespace varo_3_3::internal {

std::string join(std::initializer_list<std::string_view> parts) {
    std::size_t size = 0;
    for (std::string_view const part : parts) {
        size += part.size();
    }
    std::string text;
    text.reserve(size);
    append(text, parts);
    return text;
}

void append(std::string& text, std::initializer_list<std::string_view> parts) {
    for (std::string_view const part : parts) {
        text += part;
    }
}

}  // namespace varo_3_3::internal
