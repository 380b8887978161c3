#pragma once

#include "engine/simulation/agents/agents.h"
#include "engine/simulation/agents/journal.h"
#include "engine/simulation/world/cordons.h"
#include "engine/simulation/world/object_area.h"
#include "engine/simulation/world/world.h"

#include <pedflux/transitions.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// Counts the transitions that agents make.
namespace pedflux::engine {

class Document;

/// Where an agent is. What space asks for is set only when transitions do.
struct Whereabouts {
    navigation::RegionIndex region = navigation::none;  ///< `none` outside of the simulation
    Point position{};
    double height = 0;            ///< of the ground, metres
    std::vector<bool> volumes{};  ///< of the world's, whether it is in it

    bool is_in(std::size_t volume) const { return volume < volumes.size() && volumes[volume]; }
};

/// A change of place of one agent.
struct Crossing {
    navigation::RegionIndex before = navigation::none;  ///< where it was before it was in `from`
    Whereabouts const& from;
    Whereabouts const& to;
    std::uint32_t doorway = no_place;  ///< of the portal through which it entered or left
};

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
    struct Rule {
        TransitionType kind;
        ObjectArea area;  ///< or the one that it comes from
        ObjectArea other{};
        std::size_t cordon = 0;
        std::uint32_t server = no_place;
    };
    struct Trail {
        navigation::RegionIndex before = navigation::none;
        Whereabouts now;
    };

    /// Whether any transition is made by more than going from one surface to another.
    bool needs_space() const { return !cordons_.empty() || asks_for_volumes_; }
    Whereabouts whereabouts_of(World const& world, navigation::RegionIndex region, Point position) const;
    void count_departures(World const& world, Journal& journal);
    void enter(World const& world, BoundaryCrossing const& entered);
    void move(World const& world, std::uint32_t agent, navigation::RegionIndex region, Point position);
    void leave(World const& world, BoundaryCrossing const& left);
    template <class SomeCrossing>
    void note(SomeCrossing const& crossing);
    bool makes(Rule const& rule, Crossing const& crossing) const;
    static bool makes(Rule const& rule, ServerCrossing const& crossing);
    void add_rules(Document const& document, World& world, Transition const& transition, std::vector<Rule>& rules);

    std::size_t floor_count_;
    std::vector<std::vector<Rule>> transitions_;  ///< any of the rules makes it
    std::vector<CordonLine> cordons_;
    bool asks_for_volumes_ = false;
    std::vector<Trail> trails_;  ///< of each agent
    std::vector<std::int64_t> counts_;
    std::vector<std::int64_t> next_counts_;
};

}  // namespace pedflux::engine
