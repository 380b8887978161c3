#include "tests/engine/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

// The engine can be a library of its own, which takes these operators only from where they can be seen.
#define VISIBLE __attribute__((visibility("default")))

namespace {

std::atomic<std::size_t> counted = 0;
std::atomic<std::size_t> live = 0;

/// Keeps the block's size in front of it, at the alignment that `new` owes.
constexpr std::size_t front = alignof(std::max_align_t);

}  // namespace

VISIBLE void* operator new(std::size_t size) {
    void* const block = std::malloc(size + front);
    if (!block) throw std::bad_alloc();
    *static_cast<std::size_t*>(block) = size;
    ++counted;
    live += size;
    return static_cast<char*>(block) + front;
}

VISIBLE void operator delete(void* memory) noexcept {
    if (!memory) return;
    void* const block = static_cast<char*>(memory) - front;
    live -= *static_cast<std::size_t*>(block);
    std::free(block);
}

VISIBLE void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

namespace pedflux {

std::size_t allocations() { return counted; }
std::size_t live_bytes() { return live; }

}  // namespace pedflux
