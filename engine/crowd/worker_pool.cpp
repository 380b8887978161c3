#include "engine/crowd/worker_pool.h"

namespace pedflux::engine::crowd {

WorkerPool::WorkerPool(unsigned threads) {
    for (unsigned i = 1; i < threads; ++i) threads_.emplace_back([this] { serve(); });
}

WorkerPool::~WorkerPool() {
    ending_ = true;
    ++round_;
    round_.notify_all();
}

void WorkerPool::run(Loop const& loop) {
    if (threads_.empty() || loop.count <= loop.grain) {
        if (loop.count > 0) loop.call(loop.body, 0, loop.count);
        return;
    }
    loop_ = loop;
    next_ = 0;
    busy_ = static_cast<std::uint32_t>(threads_.size());
    ++round_;
    round_.notify_all();
    take_ranges(loop);
    for (std::uint32_t left = busy_; left != 0; left = busy_) busy_.wait(left);
}

void WorkerPool::take_ranges(Loop const& loop) {
    for (std::size_t first = next_.fetch_add(loop.grain); first < loop.count; first = next_.fetch_add(loop.grain))
        loop.call(loop.body, first, std::min(first + loop.grain, loop.count));
}

void WorkerPool::serve() {
    for (std::uint32_t seen = 0;; ++seen) {
        round_.wait(seen);
        if (ending_) return;
        take_ranges(loop_);
        if (--busy_ == 0) busy_.notify_one();
    }
}

}  // namespace pedflux::engine::crowd
