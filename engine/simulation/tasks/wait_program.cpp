#include "engine/simulation/tasks/wait_program.h"

#include "engine/behaviour/actions/wait_style_states.h"
#include "engine/geometry/checks.h"
#include "engine/geometry/polygons.h"
#include "engine/model/document.h"
#include "engine/model/node.h"
#include "engine/scene/scene_states.h"
#include "engine/simulation/world/contacts.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

/// A wait space may be drawn within these distances (metres) over and under its floor.
constexpr double highest_over = 2;
constexpr double deepest_under = 0.5;

/// Puts the space on the floor that is the nearest under it.
void put_on_floor(WaitSpace& space, WaitSpaceState const& state, FloorPlan const& plan) {
    auto const faces = upward_faces_of(state);
    if (faces.empty()) return;
    auto const drawn = area_of(faces);
    double lowest = faces.front().front().y;
    for (auto const& face : faces) {
        for (auto const& corner : face) lowest = std::min(lowest, corner.y);
    }
    double least = highest_over;
    for (navigation::RegionIndex region = 0; region < plan.floor_count; ++region) {
        auto on_floor = intersection(drawn, plan.surfaces[region].walkable);
        if (on_floor.empty()) continue;
        double const over = lowest - plan.grounds[region].height(on_floor.front().outline.front());
        if (over < -deepest_under || std::abs(over) > least) continue;
        least = std::abs(over);
        space.region = region;
        space.area = std::move(on_floor);
    }
}

std::vector<std::uint32_t> numbers_of(std::vector<GlobalId> const& ids, std::vector<WaitSpace> const& spaces) {
    std::vector<std::uint32_t> numbers;
    for (auto const& id : ids) {
        auto const found =
            std::ranges::find_if(spaces, [&](WaitSpace const& space) { return space.id.InternalEquals(id); });
        if (found == spaces.end()) {
            refuse(fmt::format("'{}' is no enabled wait space of the simulated project", GlobalId(id).GetString()));
        }
        if (found->region == navigation::none) {
            refuse(fmt::format("{} lies on no floor: it must be over one, at most 2 m above or 0.5 m below",
                               found->title));
        }
        numbers.push_back(static_cast<std::uint32_t>(found - spaces.begin()));
    }
    return numbers;
}

}  // namespace

std::vector<WaitSpace> wait_spaces_of(Document const& document, FloorPlan const& plan) {
    std::vector<WaitSpace> spaces;
    for (auto const* const state : document.objects<WaitSpaceState>()) {
        if (!state->enabled) continue;
        WaitSpace space;
        space.id = state->id;
        space.title = title_of(*state);
        auto const& style = state->wait_style;
        space.spreads_out = style && style->GetWaitStyleTypeId() == WaitStyleTypeId::SPREAD_OUT;
        put_on_floor(space, *state, plan);
        spaces.push_back(std::move(space));
    }
    return spaces;
}

WaitProgram wait_program_of(WaitStyle& style, std::vector<WaitSpace> const& spaces) {
    WaitProgram program;
    switch (style.GetWaitStyleTypeId()) {
        case WaitStyleTypeId::STAND_STILL:
            break;
        case WaitStyleTypeId::SPREAD_OUT:
            program.spreads_out = true;
            break;
        case WaitStyleTypeId::ASSIGNED_WAIT_SPACE:
            program.weights = state_of<AssignedWaitSpaceWaitStyleState>(style).weights;
            if (program.weights.empty()) {
                program.weights.resize(state_of<WaitInSpacesState>(style).spaces.size(), 1);
            }
            [[fallthrough]];
        case WaitStyleTypeId::LOWEST_COST_WAIT_SPACE: {
            auto const& state = state_of<WaitInSpacesState>(style);
            program.spaces = numbers_of(state.spaces, spaces);
            program.spreads_out = state.fallback == WaitStyleTypeId::SPREAD_OUT;
            break;
        }
    }
    return program;
}

}  // namespace pedflux::engine
