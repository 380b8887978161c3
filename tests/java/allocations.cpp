#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

#include <jni.h>

/// Counts what the native libraries hold on the heap. Loaded before them, so that their operators new and delete are
/// these; Java asks the same library for the counts.
namespace {

std::atomic<jlong> live_blocks;
std::atomic<jlong> live_bytes;

/// Keeps the block's size in front of it, at the alignment that `new` owes.
constexpr std::size_t front = alignof(std::max_align_t);

}  // namespace

void* operator new(std::size_t size) {
    void* const block = std::malloc(size + front);
    if (!block) throw std::bad_alloc();
    *static_cast<std::size_t*>(block) = size;
    ++live_blocks;
    live_bytes += static_cast<jlong>(size);
    return static_cast<char*>(block) + front;
}

void operator delete(void* memory) noexcept {
    if (!memory) return;
    void* const block = static_cast<char*>(memory) - front;
    --live_blocks;
    live_bytes -= static_cast<jlong>(*static_cast<std::size_t*>(block));
    std::free(block);
}

void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

extern "C" JNIEXPORT jlong Java_com_kelvar_pedflux_Allocations_00024Heap_liveBlocks(JNIEnv*, jclass) {
    return live_blocks;
}

extern "C" JNIEXPORT jlong Java_com_kelvar_pedflux_Allocations_00024Heap_liveBytes(JNIEnv*, jclass) {
    return live_bytes;
}
