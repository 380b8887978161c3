#pragma once

#include "engine/behaviour/area.h"
#include "engine/geometry/plane.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

/// The changes of place of agents, as running simulations and stored runs tell them.
namespace pedflux::engine {

/// Where an agent is at a moment. Position, height and volumes are set only when transitions ask for them.
struct Whereabouts {
    SurfaceIndex surface = no_surface;
    bool on_connection = false;  ///< the surface is a link, stair or ramp
    Point position{};
    double height = 0;            ///< of the ground, metres
    std::vector<bool> volumes{};  ///< by number, whether the agent is in it

    bool is_in(std::size_t volume) const { return volume < volumes.size() && volumes[volume]; }
};

/// A change of place of one agent, within the simulation, into it or out of it.
struct Crossing {
    SurfaceIndex before = no_surface;  ///< the surface before that of `from`
    Whereabouts const& from;
    Whereabouts const& to;
    std::optional<std::uint32_t> portal{};  ///< the number of the one through which the agent entered or left
};

/// An agent entered a server or left it.
struct ServerCrossing {
    std::uint32_t server;
    bool enters;
};

/// Where an agent was and is. Its crossings are told to a function: told(Crossing const&).
struct Trail {
    SurfaceIndex before = no_surface;
    Whereabouts now{};

    template <class Told>
    void enter(Whereabouts place, std::optional<std::uint32_t> portal, Told const& told) {
        now = std::move(place);
        told(Crossing{.from = {}, .to = now, .portal = portal});
    }
    template <class Told>
    void move(Whereabouts place, Told const& told) {
        told(Crossing{.before = before, .from = now, .to = place});
        if (now.surface != place.surface) before = now.surface;
        now = std::move(place);
    }
    template <class Told>
    void leave(std::optional<std::uint32_t> portal, Told const& told) const {
        told(Crossing{.before = before, .from = now, .to = {}, .portal = portal});
    }
};

}  // namespace pedflux::engine
