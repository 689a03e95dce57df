#pragma once

#include <string>

// Strings and sets are passed between program and library, so both must use the same layout.
#if !defined(__GLIBCXX__)
#error "varo needs libstdc++: std::set<std::string> of another standard library has another layout"
#elif !_GLIBCXX_USE_CXX11_ABI
#error "varo needs _GLIBCXX_USE_CXX11_ABI=1: std::set<std::string> has another layout without it"
#elif defined(_GLIBCXX_DEBUG) && !defined(VARO_GLIBCXX_DEBUG)
#error "_GLIBCXX_DEBUG changes std::set<std::string>, and this varo was built without it"
#elif !defined(_GLIBCXX_DEBUG) && defined(VARO_GLIBCXX_DEBUG)
#error "this varo was built with _GLIBCXX_DEBUG, which changes std::set<std::string>: define it too"
#endif
