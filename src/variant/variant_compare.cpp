#include <cstring>
#include <functional>
#include <string_view>

#include "mosaic2/variant.h"

namespace mosaic2 {

int string_compare(char const* left, char const* right) {
    return std::string_view(left != nullptr ? left : "").compare(right != nullptr ? right : "");
}

int string_compare(wchar_t const* left, wchar_t const* right) {
    std::size_t at = 0;
    left = left != nullptr ? left : L"";
    right = right != nullptr ? right : L"";
    while (left[at] != L'\0' && left[at] == right[at]) {
        ++at;
    }
    return left[at] < right[at] ? -1 : left[at] > right[at] ? 1 : 0;
}

int notype_ptr_compare(void const* left, void const* right) {
    auto const objectOf = [](void const* payload) {
        void const* object = nullptr;
        if (payload != nullptr) {
            std::memcpy(&object, payload, sizeof(object));
        }
        return object;
    };
    std::less<void const*> const before;
    void const* const leftObject = objectOf(left);
    void const* const rightObject = objectOf(right);
    return before(leftObject, rightObject) ? -1 : before(rightObject, leftObject) ? 1 : 0;
}

}  // namespace mosaic2
