#include "failing_memory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

#include "mosaic2/variant.h"

namespace memory {

unsigned sources = 0;
long countdown = 0;
bool once = true;
bool failed = false;
long made = 0;
long outstanding = 0;
long outstandingVariants = 0;

void failAfter(long allocations, unsigned which, bool onlyOnce) {
    countdown = allocations;
    sources = which;
    once = onlyOnce;
    failed = false;
}

namespace {

void* allocate(Source source, std::size_t size) noexcept {
    if ((sources & source) != 0 && countdown-- <= 0) {
        countdown = 0;
        failed = true;
        sources = once ? 0 : sources;
        return nullptr;
    }
    ++made;
    ++outstanding;
    return std::malloc(size != 0 ? size : 1);
}

void release(void* block) noexcept {
    outstanding -= block != nullptr ? 1 : 0;
    std::free(block);
}

[[maybe_unused]] bool const kIsInstalled = [] {
    mosaic2::variant_t::m_mem.m_allocate = [](std::size_t size) {
        void* const block = allocate(kVariants, size);
        outstandingVariants += block != nullptr ? 1 : 0;
        return block;
    };
    mosaic2::variant_t::m_mem.m_free = [](void* block) {
        --outstandingVariants;
        release(block);
    };
    return true;
}();

}  // namespace
}  // namespace memory

void* operator new(std::size_t size) {
    void* const block = memory::allocate(memory::kOperatorNew, size);
    return block != nullptr ? block : throw std::bad_alloc();
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return memory::allocate(memory::kOperatorNew, size);
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void operator delete(void* block) noexcept {
    memory::release(block);
}
void operator delete(void* block, std::size_t) noexcept {
    memory::release(block);
}
void operator delete[](void* block) noexcept {
    memory::release(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    memory::release(block);
}
