#pragma once

#include "engine/behaviour/triggers/transition_program.h"
#include "engine/simulation/agents/agents.h"
#include "engine/simulation/agents/journal.h"
#include "engine/simulation/world/world.h"

#include <pedflux/transitions.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// Counts the transitions that agents make.
namespace pedflux::engine {

class Document;

/// The transitions that rules count. Each crossing makes each transition at most once.
class TransitionCounter {
  public:
    /// Throws Exception for transitions that simulations do not follow.
    TransitionCounter(Document const& document, World& world, std::span<std::shared_ptr<Transition> const> transitions);

    /// Counts who entered, where everybody who is here went, and who left. Takes the lists of the journal.
    void count(World const& world, Agents const& agents, Journal& journal);

    /// Counts who left since then, and makes what was counted since the last time the counts of the frame that ends.
    void end_frame(World const& world, Journal& journal);
    /// How often a transition was made in the frame that ended last.
    std::int64_t operator[](std::size_t transition) const { return counts_[transition]; }

  private:
    Whereabouts whereabouts_of(World const& world, navigation::RegionIndex region, Point position) const;
    void count_departures(World const& world, Journal& journal);
    void enter(World const& world, BoundaryCrossing const& entered);
    void move(World const& world, std::uint32_t agent, navigation::RegionIndex region, Point position);
    void leave(World const& world, BoundaryCrossing const& left);
    template <class SomeCrossing>
    void note(SomeCrossing const& crossing);

    std::vector<TransitionProgram> transitions_;
    bool asks_for_position_ = false;
    bool asks_for_volumes_ = false;
    std::vector<Trail> trails_;  ///< of each agent
    std::vector<std::int64_t> counts_;
    std::vector<std::int64_t> next_counts_;
};

}  // namespace pedflux::engine
