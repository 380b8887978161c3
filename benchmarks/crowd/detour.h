#pragma once

#include "benchmarks/crowd/situations.h"

#include <memory>

namespace pedflux::engine::crowd::benchmark {

/// DetourCrowd in a situation, told the wanted velocity of everybody before each step as our crowd is: neither finds
/// routes.
class DetourRun {
  public:
    explicit DetourRun(Situation const& situation);
    ~DetourRun();
    void step(double seconds);
    /// Mean distance from where people began.
    double mean_way() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace pedflux::engine::crowd::benchmark
