#pragma once

#include "engine/behaviour/area.h"
#include "engine/behaviour/triggers/cordon_line.h"
#include "engine/behaviour/triggers/crossing.h"

#include <pedflux/transitions.h>

#include <cstdint>
#include <optional>
#include <vector>

/// Transitions compiled for a simulation or a stored run.
namespace pedflux::engine {

struct NodeState;

/// The objects of transitions as a simulation or stored run knows them. Each operation throws Exception for what it
/// does not know, or what its crossings do not tell.
struct TransitionObjects {
    TransitionObjects() = default;
    TransitionObjects(TransitionObjects const&) = delete;
    TransitionObjects& operator=(TransitionObjects const&) = delete;
    virtual ~TransitionObjects() = default;

    virtual Area area(GlobalId const& object) = 0;
    /// @param transition the one that asks for the cordon
    virtual CordonLine cordon(NodeState const& transition, GlobalId const& cordon) = 0;
    /// The number of a server.
    /// @param transition the one that asks for it
    virtual std::uint32_t server(NodeState const& transition, GlobalId const& server) = 0;
};

struct TransitionRule {
    TransitionType kind;  ///< any but ANY_OF
    Area area{};          ///< or the one that the agent comes from
    Area other{};
    std::optional<CordonLine> cordon{};
    std::optional<std::uint32_t> server{};
};

/// A transition. A crossing that any of the rules matches makes it, once.
using TransitionProgram = std::vector<TransitionRule>;

/// Throws Exception for a transition that nests too deep or of which `objects` do not tell.
TransitionProgram compile(Transition const& transition, TransitionObjects& objects);

/// Whether a transition depends on where in space agents are, rather than only on the surface.
bool asks_for_position(TransitionProgram const& program);
/// Whether it depends on the volumes that they are in.
bool asks_for_volumes(TransitionProgram const& program);

bool makes(TransitionProgram const& program, Crossing const& crossing);
bool makes(TransitionProgram const& program, ServerCrossing const& crossing);

/// Whether an agent comes into an area or goes out of it. It passes the area of a portal when it enters or leaves the
/// simulation there.
bool enters(Area const& area, Crossing const& crossing);
bool exits(Area const& area, Crossing const& crossing);

}  // namespace pedflux::engine
