#include <cstring>
#include <cwchar>
#include <functional>

#include "mosaic2/variant.h"

namespace mosaic2 {

int string_compare(char const* left, char const* right) {
    return std::strcmp(left != nullptr ? left : "", right != nullptr ? right : "");
}

int string_compare(wchar_t const* left, wchar_t const* right) {
    return std::wcscmp(left != nullptr ? left : L"", right != nullptr ? right : L"");
}

int notype_ptr_compare(void const* left, void const* right) {
    std::less<void const*> const before;
    return before(left, right) ? -1 : before(right, left) ? 1 : 0;
}

}  // namespace mosaic2
