#include "engine/behaviour/triggers/cordon_line.h"

#include "engine/base/checks.h"
#include "engine/geometry/access.h"
#include "engine/model/document.h"
#include "engine/scene/cordon_direction.h"
#include "engine/scene/goal_lines.h"
#include "engine/scene/scene_states.h"

#include <pedflux/geometry.h>

#include <algorithm>

#include <fmt/format.h>

namespace pedflux::engine {

CordonLine cordon_line_of(Document const& document, GlobalId const& id) {
    auto const* const state = document.find<CordonState>(id);
    if (state == nullptr) refuse(fmt::format("'{}' is no cordon of the project", GlobalId(id).GetString()));
    auto goal_line = centre_goal_line(*state->geometry);
    Vector const from = vector_of(goal_line.GetStartPoint());
    Vector const to = vector_of(goal_line.GetEndPoint());
    CordonLine cordon{{{from.x, from.z}, {to.x, to.z}}};
    auto const& vertices = mesh_of(*state->geometry->AsMeshGeometry()).vertices;
    auto const height = [](Vector vertex) { return vertex.y; };
    cordon.low = std::ranges::min(vertices, {}, height).y;
    cordon.high = std::ranges::max(vertices, {}, height).y;
    if (!state->enabled) return cordon;
    Vector const across = direction_of(*state);
    bool const counts_to_left = dot(turned_left(cordon.line.to - cordon.line.from), Point{across.x, across.z}) > 0;
    bool const both_ways = state->direction == CordonDirection::BOTH_WAYS;
    cordon.counts = {both_ways || counts_to_left, both_ways || !counts_to_left};
    return cordon;
}

bool crosses(CordonLine const& cordon, Segment step, double height) {
    constexpr double reach_down = 2;
    constexpr double reach_up = 0.3;
    bool const ends_left = side_of(cordon.line, step.to) > 0;
    if (!cordon.counts[ends_left ? 0 : 1]) return false;
    if (height < cordon.low - reach_down || height > cordon.high + reach_up) return false;
    return cross_each_other(cordon.line, step);
}

}  // namespace pedflux::engine
