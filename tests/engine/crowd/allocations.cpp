#include "tests/engine/crowd/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> counted = 0;

}  // namespace

void* operator new(std::size_t size) {
    ++counted;
    if (void* const memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace pedflux::engine::crowd {

std::size_t allocations() { return counted; }

}  // namespace pedflux::engine::crowd
