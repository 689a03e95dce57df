#pragma once

/// Marks what libvaro.so exports. Everything else in the library is hidden.
#if defined(__GNUC__)
#define VARO_EXPORT __attribute__((visibility("default")))
#else
#error "varo supports g++ and clang++ on Linux x86-64 only"
#endif
