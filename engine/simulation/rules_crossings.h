#pragma once

#include "engine/simulation/floor_plan.h"
#include "engine/simulation/places.h"

#include <pedflux/identifiers.h>
#include <pedflux/transitions.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// Who passed from where to where, and which transitions that makes.
namespace pedflux::engine {

/// What an object means to those who come and go: regions, or a portal. One that is disabled is neither.
struct RuleArea {
    std::vector<bool> regions;
    std::uint32_t doorway = no_place;

    bool has(navigation::RegionIndex region) const { return region != navigation::none && regions[region]; }
};

/// Throws Exception for objects of which simulations do not know who is in them.
RuleArea rule_area_of(Document const& document, FloorPlan const& plan, Places& places, GlobalId const& object);

/// A change of place of one agent. Regions are `none` outside of the simulation.
struct Crossing {
    navigation::RegionIndex before = navigation::none;  ///< where it was before it was in `from`
    navigation::RegionIndex from = navigation::none;
    navigation::RegionIndex to = navigation::none;
    std::uint32_t doorway = no_place;  ///< of the portal through which it came in or left
};

/// The transitions that rules count. Each crossing makes each transition at most once.
class Crossings {
  public:
    /// Throws Exception for transitions that simulations do not follow.
    Crossings(Document const& document, FloorPlan const& plan, Places& places,
              std::span<std::shared_ptr<Transition> const> transitions);

    void came_in(std::uint32_t agent, navigation::RegionIndex region, std::uint32_t doorway);
    /// Says where an agent is now; nothing happens when it was there before.
    void is_at(std::uint32_t agent, navigation::RegionIndex region) {
        if (is_any() && trails_[agent].now != region) move(agent, region);
    }
    void went_out(std::uint32_t agent, std::uint32_t doorway);

    /// Makes what happened since the last time the counts of the frame that ends.
    void end_frame();
    std::int64_t count(std::size_t transition) const { return counts_[transition]; }

  private:
    struct Rule {
        TransitionType kind;
        RuleArea area;  ///< or the one that it comes from
        RuleArea other{};
    };
    struct Trail {
        navigation::RegionIndex before = navigation::none;
        navigation::RegionIndex now = navigation::none;
    };

    bool is_any() const { return !transitions_.empty(); }
    void move(std::uint32_t agent, navigation::RegionIndex region);
    void note(Crossing const& crossing);
    bool makes(Rule const& rule, Crossing const& crossing) const;
    void add_rules(Document const& document, FloorPlan const& plan, Places& places, Transition const& transition,
                   std::vector<Rule>& rules) const;

    std::size_t floor_count_;
    std::vector<std::vector<Rule>> transitions_;  ///< any of the rules makes it
    std::vector<Trail> trails_;                   ///< of each agent
    std::vector<std::int64_t> counts_;
    std::vector<std::int64_t> next_counts_;
};

}  // namespace pedflux::engine
