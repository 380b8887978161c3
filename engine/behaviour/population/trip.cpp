#include "engine/behaviour/population/trip.h"

#include "engine/base/checks.h"

#include <string>
#include <utility>

#include <fmt/format.h>

namespace pedflux {
namespace {

engine::TripPath path_over(std::vector<GlobalId> const& nodes, TripBoundaryMethod start, TripBoundaryMethod end) {
    engine::TripPath path{{}, start, end};
    path.nodes.reserve(nodes.size());
    for (auto const& node : nodes) path.nodes.push_back({node});
    return path;
}

void require_named(std::string const& which, TripBoundaryMethod method) {
    if (engine::name_of_value(method).empty()) {
        engine::refuse(fmt::format("Trip: {} must be one of {}, not {}", which, engine::names_of<TripBoundaryMethod>(),
                                   static_cast<int>(method)));
    }
}

engine::TripPath checked(engine::TripPath path) {
    if (path.nodes.empty()) engine::refuse("Trip: nodes must have at least one place, not none");
    for (std::size_t index = 0; index < path.nodes.size(); ++index) {
        if (!path.nodes[index].place.IsValid()) {
            engine::refuse(fmt::format(
                "Trip: node {} must be a floor, connection, portal or zone, not the invalid identifier", index));
        }
    }
    require_named("startNodeType", path.start);
    require_named("endNodeType", path.end);
    return path;
}

}  // namespace

Trip::Trip(engine::TripPath path) : path_(std::make_unique<engine::TripPath const>(checked(std::move(path)))) {}
Trip::Trip(std::vector<GlobalId> const& nodes, TripBoundaryMethod startType, TripBoundaryMethod endType)
    : Trip(path_over(nodes, startType, endType)) {}
Trip::Trip(GlobalId start, GlobalId end, TripBoundaryMethod startType, TripBoundaryMethod endType)
    : Trip(path_over({std::move(start), std::move(end)}, startType, endType)) {}
Trip::~Trip() = default;

std::vector<GlobalId> Trip::GetNodeGlobalIds() {
    std::vector<GlobalId> nodes;
    nodes.reserve(path_->nodes.size());
    for (auto const& node : path_->nodes) nodes.push_back(node.place);
    return nodes;
}
TripBoundaryMethod Trip::GetStartNodeType() { return path_->start; }
TripBoundaryMethod Trip::GetEndNodeType() { return path_->end; }

}  // namespace pedflux
