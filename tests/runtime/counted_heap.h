#pragma once

#include <cstddef>

/// The heap of the test program, counted exactly. Only what is allocated while a scope has counting switched on is
/// counted, and stays counted until it is released, wherever that happens.
namespace pedflux::jni::test {

struct Live {
    std::ptrdiff_t blocks = 0;
    std::ptrdiff_t bytes = 0;

    bool operator==(Live const&) const = default;
    Live operator+(Live const& other) const { return {blocks + other.blocks, bytes + other.bytes}; }
    Live operator-(Live const& other) const { return {blocks - other.blocks, bytes - other.bytes}; }
};

/// What is counted and not yet released.
Live live();

class CountingScope {
  public:
    explicit CountingScope(bool on);
    CountingScope(CountingScope const&) = delete;
    CountingScope& operator=(CountingScope const&) = delete;
    ~CountingScope();

  private:
    bool before_;
};

/// While it lives, `new (std::nothrow)` has no memory to give.
class ExhaustedHeap {
  public:
    ExhaustedHeap();
    ExhaustedHeap(ExhaustedHeap const&) = delete;
    ExhaustedHeap& operator=(ExhaustedHeap const&) = delete;
    ~ExhaustedHeap();
};

/// What `call` allocates and does not release.
template <class Call>
Live left_by(Call call) {
    Live const before = live();
    {
        CountingScope const on(true);
        call();
    }
    return live() - before;
}

/// What a T on the heap takes up.
template <class T>
Live size_of_new(T const& value) {
    T* copy = nullptr;
    Live const size = left_by([&] { copy = new T(value); });
    delete copy;
    return size;
}

}  // namespace pedflux::jni::test
