#include "engine/simulation/events/transition_counter.h"

#include "engine/simulation/world/object_area.h"

#include <algorithm>

namespace pedflux::engine {

namespace {

class WorldObjects final : public TransitionObjects {
  public:
    WorldObjects(Document const& document, World& world) : document_(document), world_(world) {}

    Area area(GlobalId const& object) override { return object_area_of(document_, world_, object); }
    CordonLine cordon(NodeState const&, GlobalId const& cordon) override { return cordon_line_of(document_, cordon); }
    std::uint32_t server(NodeState const&, GlobalId const& server) override { return server_of(world_.plan, server); }

  private:
    Document const& document_;
    World& world_;
};

std::optional<std::uint32_t> portal_of(BoundaryCrossing const& crossing) {
    return crossing.doorway == no_place ? std::nullopt : std::optional(crossing.doorway);
}

}  // namespace

TransitionCounter::TransitionCounter(Document const& document, World& world,
                                     std::span<std::shared_ptr<Transition> const> transitions)
    : counts_(transitions.size()), next_counts_(transitions.size()) {
    WorldObjects objects(document, world);
    for (auto const& transition : transitions) transitions_.push_back(compile(*transition, objects));
    asks_for_position_ = std::ranges::any_of(transitions_, asks_for_position);
    asks_for_volumes_ = std::ranges::any_of(transitions_, asks_for_volumes);
}

Whereabouts TransitionCounter::whereabouts_of(World const& world, navigation::RegionIndex region,
                                              Point position) const {
    Whereabouts now{.surface = region, .on_connection = region >= world.plan.floor_count};
    if (!asks_for_position_) return now;
    now.position = position;
    now.height = height_at(world.plan, region, position);
    if (!asks_for_volumes_) return now;
    Vector const point{position.x, now.height + above_ground, position.z};
    for (auto const& volume : world.volumes) now.volumes.push_back(contains(volume, point));
    return now;
}

void TransitionCounter::enter(World const& world, BoundaryCrossing const& entered) {
    trails_.resize(std::max<std::size_t>(trails_.size(), entered.agent + 1));
    trails_[entered.agent].enter(whereabouts_of(world, entered.region, entered.position), portal_of(entered),
                                 [&](Crossing const& crossing) { note(crossing); });
}

void TransitionCounter::move(World const& world, std::uint32_t agent, navigation::RegionIndex region, Point position) {
    auto& trail = trails_[agent];
    if (!asks_for_position_ && trail.now.surface == region) return;
    trail.move(whereabouts_of(world, region, position), [&](Crossing const& crossing) { note(crossing); });
}

void TransitionCounter::leave(World const& world, BoundaryCrossing const& left) {
    move(world, left.agent, left.region, left.position);
    trails_[left.agent].leave(portal_of(left), [&](Crossing const& crossing) { note(crossing); });
}

void TransitionCounter::count(World const& world, Agents const& agents, Journal& journal) {
    if (!transitions_.empty()) {
        for (auto const& entered : journal.entered) enter(world, entered);
        for (auto const& motion : agents.motions) move(world, motion.agent, motion.region, motion.position);
    }
    journal.entered.clear();
    count_departures(world, journal);
}

void TransitionCounter::count_departures(World const& world, Journal& journal) {
    if (!transitions_.empty()) {
        for (auto const& left : journal.left) leave(world, left);
        for (auto const& crossing : journal.server_crossings) note(crossing);
    }
    journal.left.clear();
    journal.server_crossings.clear();
}

template <class SomeCrossing>
void TransitionCounter::note(SomeCrossing const& crossing) {
    for (std::size_t i = 0; i < transitions_.size(); ++i) {
        if (makes(transitions_[i], crossing)) ++next_counts_[i];
    }
}

void TransitionCounter::end_frame(World const& world, Journal& journal) {
    count_departures(world, journal);
    std::swap(counts_, next_counts_);
    std::ranges::fill(next_counts_, 0);
}

}  // namespace pedflux::engine
