#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

namespace pedflux::engine::crowd {

/// Threads that share the indices of a loop. Which thread gets which index is not determined, so the body writes only
/// data of its own indices and reads nothing that other indices write.
class WorkerPool {
  public:
    /// `threads` includes the calling one and is at least 1.
    explicit WorkerPool(unsigned threads);
    WorkerPool(WorkerPool const&) = delete;
    WorkerPool& operator=(WorkerPool const&) = delete;
    ~WorkerPool();

    /// Calls body(first, last) for ranges of at most `grain` indices that cover 0 to count, and returns when all are
    /// done.
    template <typename Body>
    void for_ranges(std::size_t count, std::size_t grain, Body const& body) {
        Loop const loop{count, grain, &body, [](void const* it, std::size_t first, std::size_t last) {
                            (*static_cast<Body const*>(it))(first, last);
                        }};
        run(loop);
    }

  private:
    struct Loop {
        std::size_t count = 0;
        std::size_t grain = 1;
        void const* body = nullptr;
        void (*call)(void const*, std::size_t, std::size_t) = nullptr;
    };

    void run(Loop const& loop);
    void take_ranges(Loop const& loop);
    void serve();

    Loop loop_;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<std::uint32_t> round_ = 0;
    std::atomic<std::uint32_t> busy_ = 0;
    std::atomic<bool> ending_ = false;
    std::vector<std::jthread> threads_;
};

}  // namespace pedflux::engine::crowd
