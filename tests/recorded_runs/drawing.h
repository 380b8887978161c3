#pragma once

#include <pedflux/access_rules.h>
#include <pedflux/agent_actions.h>
#include <pedflux/agent_filters.h>
#include <pedflux/agent_tests.h>
#include <pedflux/avatars.h>
#include <pedflux/color.h>
#include <pedflux/conditions.h>
#include <pedflux/distributions.h>
#include <pedflux/events.h>
#include <pedflux/exception.h>
#include <pedflux/geometry.h>
#include <pedflux/networks.h>
#include <pedflux/population_sources.h>
#include <pedflux/profiles.h>
#include <pedflux/project.h>
#include <pedflux/scene.h>
#include <pedflux/servers.h>
#include <pedflux/tallies.h>
#include <pedflux/time_references.h>
#include <pedflux/transitions.h>
#include <pedflux/triggers.h>
#include <pedflux/value_pairs.h>
#include <pedflux/wait_styles.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace pedflux::recorded {

using Ids = std::vector<GlobalId>;
using Action = std::shared_ptr<AgentAction>;
using Test = std::shared_ptr<AgentTest>;
using Source = std::shared_ptr<PopulationSource>;

template <class Kind, class... Arguments>
std::shared_ptr<Kind> make(Arguments&&... arguments) {
    return std::make_shared<Kind>(std::forward<Arguments>(arguments)...);
}

std::shared_ptr<Distribution> constant(double value);
/// So many seconds after the start of the simulation.
std::shared_ptr<Trigger> after(int seconds);
std::shared_ptr<TriggerRange> span(int from, int seconds);

Action in_order(std::vector<Action> const& actions);
Action wait(double seconds);
Action wait_forever(std::shared_ptr<WaitStyle> const& style = WaitStyle::StandStill());
Action leave();
Action paint(Color color);

/// A project to draw in. Objects that the program does not ask for by name are numbered.
class Drawing {
  public:
    Drawing();
    ~Drawing();
    Drawing(Drawing const&) = delete;
    Drawing& operator=(Drawing const&) = delete;

    GlobalId room(std::string const& name, double x1, double z1, double x2, double z2, double y = 0);
    /// An upright portal between two points of the plan.
    GlobalId portal(std::string const& name, double x1, double z1, double x2, double z2, double y = 0);
    void wall(double x1, double z1, double x2, double z2);
    std::shared_ptr<Link> link(std::string const& name, Vec3d const& from, Vec3d const& to, double width);
    GlobalId wait_space(std::string const& name, double x1, double z1, double x2, double z2);
    GlobalId token(std::string const& name);
    std::shared_ptr<Server> server(std::string const& name, std::vector<Vec3d> const& line, double contact_time);

    std::shared_ptr<Profile> profile(std::shared_ptr<Distribution> const& speed);
    GlobalId walkers(double speed);
    std::shared_ptr<Journey> journey(Source const& source, GlobalId const& profile = {});
    /// Who comes in one after the other from the start on, as far as there is room.
    std::shared_ptr<Journey> journey(GlobalId const& from, GlobalId const& to, double count,
                                     GlobalId const& profile = {});

    std::shared_ptr<TallyObject> tally(std::shared_ptr<Tally> const& count);
    /// Adds up how many make a transition.
    std::shared_ptr<TallyObject> total(std::shared_ptr<Transition> const& transition);
    std::shared_ptr<Broadcast> broadcast(std::shared_ptr<TriggerRange> const& range, Action const& action);
    std::shared_ptr<GateAccess> gate_access(GlobalId const& gate, std::shared_ptr<TriggerRange> const& range);
    std::shared_ptr<Dispatch> dispatch(Ids const& sources, Ids const& sinks);

    std::string numbered(std::string const& name);

    std::shared_ptr<Project> const project;

  private:
    int count_ = 0;
};

/// Two rooms of 10 m by 4 m and a gated link of 2 m between them; portals in the west, north and east.
struct Rooms {
    explicit Rooms(Drawing& into);
    std::shared_ptr<Journey> walk(int start = 0, Action const& action = nullptr) const;
    void stay(GlobalId const& where, double count) const;

    Drawing& drawing;
    GlobalId left, right, link, west, east, north, steady, counter;
};

/// A hall of 30 by 12 m that people cross from west to east, with two desks in it; a gate in the north.
struct Office {
    explicit Office(Drawing& into);
    void visitors(double count, Action const& action) const;
    static Action seek(Ids const& servers);

    Drawing& drawing;
    GlobalId hall, west, east, gate, walker;
    std::shared_ptr<Server> desk, ticket;
};

/// Two rooms of 10 m by 20 m and two ways between them: a ramp straight ahead, and a link 12 m aside.
struct TwoWays {
    explicit TwoWays(Drawing& drawing);

    GlobalId left, right, far, west, east;
    std::shared_ptr<Ramp> near;
};

}  // namespace pedflux::recorded
