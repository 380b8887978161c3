#pragma once

#include "engine/simulation/world/cordons.h"
#include "engine/simulation/world/floor_plan.h"
#include "engine/simulation/world/places.h"
#include "engine/simulation/world/volumes.h"

#include <pedflux/identifiers.h>
#include <pedflux/transitions.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// Who passed from where to where, and which transitions that makes.
namespace pedflux::engine {

/// What an object means to those who come and go: regions, a portal or a volume. One that is disabled is none of them.
struct RuleArea {
    std::vector<bool> regions;
    std::uint32_t doorway = no_place;
    std::size_t volume = no_volume;  ///< of the project's enabled ones

    bool has(navigation::RegionIndex region) const { return region < regions.size() && regions[region]; }
};

/// Throws Exception for objects of which simulations do not know who is in them.
RuleArea rule_area_of(Document const& document, FloorPlan const& plan, Places& places, GlobalId const& object);

/// Where an agent is. What space asks for is set only when rules do.
struct Whereabouts {
    navigation::RegionIndex region = navigation::none;  ///< `none` outside of the simulation
    Point position{};
    double height = 0;            ///< of the ground, metres
    std::vector<bool> volumes{};  ///< of the project's enabled ones, whether it is in it

    bool is_in(std::size_t volume) const { return volume < volumes.size() && volumes[volume]; }
};

/// A change of place of one agent.
struct Crossing {
    navigation::RegionIndex before = navigation::none;  ///< where it was before it was in `from`
    Whereabouts const& from;
    Whereabouts const& to;
    std::uint32_t doorway = no_place;  ///< of the portal through which it came in or left
};

/// Somebody enters a server or leaves it.
struct ServerCrossing {
    std::uint32_t server;
    bool enters;
};

/// The transitions that rules count. Each crossing makes each transition at most once.
class Crossings {
  public:
    /// Throws Exception for transitions that simulations do not follow.
    Crossings(Document const& document, FloorPlan const& plan, Places& places,
              std::span<std::shared_ptr<Transition> const> transitions);

    bool is_any() const { return !transitions_.empty(); }
    /// Whether any transition is made by more than going from one surface to another.
    bool needs_space() const { return !cordons_.empty() || !volumes_.empty(); }
    std::vector<bool> volumes_around(Vector point) const;

    void came_in(std::uint32_t agent, Whereabouts const& now, std::uint32_t doorway);
    /// Says where an agent is now.
    void is_at(std::uint32_t agent, Whereabouts const& now) {
        if (needs_space() || trails_[agent].now.region != now.region) move(agent, now);
    }
    void went_out(std::uint32_t agent, std::uint32_t doorway);
    void passed(ServerCrossing const& crossing);

    /// Makes what happened since the last time the counts of the frame that ends.
    void end_frame();
    std::int64_t count(std::size_t transition) const { return counts_[transition]; }

  private:
    struct Rule {
        TransitionType kind;
        RuleArea area;  ///< or the one that it comes from
        RuleArea other{};
        std::size_t cordon = 0;
        std::uint32_t server = no_place;
    };
    struct Trail {
        navigation::RegionIndex before = navigation::none;
        Whereabouts now;
    };

    void move(std::uint32_t agent, Whereabouts const& now);
    template <class SomeCrossing>
    void note(SomeCrossing const& crossing);
    bool makes(Rule const& rule, Crossing const& crossing) const;
    static bool makes(Rule const& rule, ServerCrossing const& crossing);
    void add_rules(Document const& document, FloorPlan const& plan, Places& places, Transition const& transition,
                   std::vector<Rule>& rules);

    std::size_t floor_count_;
    std::vector<std::vector<Rule>> transitions_;  ///< any of the rules makes it
    std::vector<CordonLine> cordons_;
    std::vector<VolumeMesh> volumes_;  ///< those of the project when any rule is about one
    std::vector<Trail> trails_;        ///< of each agent
    std::vector<std::int64_t> counts_;
    std::vector<std::int64_t> next_counts_;
};

}  // namespace pedflux::engine
