#include "tests/runtime/counted_heap.h"

#include <cstdlib>
#include <new>

namespace pedflux::jni::test {
namespace {

bool counting = false;
bool exhausted = false;
Live counted;

/// Stands before each block, so that a release knows what it releases.
struct alignas(std::max_align_t) Header {
    std::size_t size;
    bool counted;
};

void* allocate(std::size_t size) noexcept {
    auto* const header = static_cast<Header*>(std::malloc(sizeof(Header) + size));
    if (!header) return nullptr;
    *header = {size, counting};
    if (counting) counted = counted + Live{1, static_cast<std::ptrdiff_t>(size)};
    return header + 1;
}

void release(void* block) noexcept {
    if (!block) return;
    auto* const header = static_cast<Header*>(block) - 1;
    if (header->counted) counted = counted - Live{1, static_cast<std::ptrdiff_t>(header->size)};
    std::free(header);
}

}  // namespace

Live live() { return counted; }

CountingScope::CountingScope(bool on) : before_(counting) { counting = on; }
CountingScope::~CountingScope() { counting = before_; }

ExhaustedHeap::ExhaustedHeap() { exhausted = true; }
ExhaustedHeap::~ExhaustedHeap() { exhausted = false; }

}  // namespace pedflux::jni::test

using pedflux::jni::test::allocate;
using pedflux::jni::test::exhausted;
using pedflux::jni::test::release;

void* operator new(std::size_t size) {
    if (void* const block = allocate(size)) return block;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept { return exhausted ? nullptr : allocate(size); }
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, std::nothrow_t const& tag) noexcept { return operator new(size, tag); }
void operator delete(void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, std::nothrow_t const&) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::nothrow_t const&) noexcept { release(block); }
