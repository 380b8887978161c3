#pragma once

#include "tests/engine/simulation/rooms.h"

#include <pedflux/access_rules.h>
#include <pedflux/servers.h>

namespace pedflux {

inline std::shared_ptr<Distribution> seconds(double value) { return Distribution::CreateConstant(value); }

/// A hall of 30 by 12 m that people cross from west to east, and a desk in it along whose line they queue westwards.
struct Office : Scene {
    Office() {
        hall = room("Hall", 0, 0, 30, 12)->GetId();
        west = portal("West", 0, 4, 0, 8)->GetId();
        east = portal("East", 30, 4, 30, 8)->GetId();
        desk = server("Desk", 6);
        token = project->CreateToken("Token")->GetId();
        project->SetDurationInSeconds(600);
    }

    /// Its head is at x, its line 7 m long.
    std::shared_ptr<Server> server(std::string const& name, double z, double x = 20) const {
        auto created = project->CreateServer(name, std::vector{Vec3d(x, 0, z), Vec3d(x - 7, 0, z)});
        created->SetContactTime(seconds(5));
        return created;
    }
    std::shared_ptr<AgentAction> seek(std::vector<std::shared_ptr<Server>> const& servers,
                                      std::vector<double> const& weights = {}) const {
        std::vector<GlobalId> ids;
        for (auto const& each : servers) ids.push_back(each->GetId());
        if (weights.empty()) return std::make_shared<SeekProcessStartAction>(ids, false);
        return std::make_shared<SeekProcessStartAction>(ids, weights, false);
    }
    /// People who are to be served; they come one after the other at the west.
    std::shared_ptr<Journey> visitors(double count, std::shared_ptr<AgentAction> const& action = nullptr) const {
        auto created = journey("Visitors " + std::to_string(project->GetJourneys().size()), west, east, count, walker);
        created->SetInitialAction(action ? action : seek({desk}));
        return created;
    }
    GlobalId tally(std::shared_ptr<Tally> const& measured) const {
        auto object = project->CreateTallyObject("Tally " + std::to_string(project->GetTallyObjects().size()));
        object->SetTallyValueByCount(measured);
        return object->GetId();
    }
    /// A tally object of how many have made a transition.
    GlobalId total(std::shared_ptr<Transition> const& transition) const {
        auto object = project->CreateTallyObject("Tally " + std::to_string(project->GetTallyObjects().size()));
        object->SetTallyValueByAggregateSumOverTime(std::make_shared<TransitionTally>(transition));
        return object->GetId();
    }
    GlobalId served(std::shared_ptr<Server> const& server) const {
        return total(Transition::ServerExit(server->GetId()));
    }

    GlobalId hall, west, east, token;
    GlobalId walker = walkers("Walker", 1.3)->GetId();
    std::shared_ptr<Server> desk;
};

}  // namespace pedflux
