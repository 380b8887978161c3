#pragma once

#include "tests/engine/simulation/scene.h"

#include <pedflux/agent_actions.h>
#include <pedflux/tallies.h>
#include <pedflux/transitions.h>
#include <pedflux/triggers.h>
#include <pedflux/wait_styles.h>

namespace pedflux {

inline std::shared_ptr<TriggerRange> span(int from, int seconds) {
    return std::make_shared<OverDurationTriggerRange>(after(from), seconds);
}

/// Two rooms of 10 m by 4 m and a link of 2 m between them; portals in the west, north and east.
struct Rooms : Scene {
    Rooms() {
        left = room("Left", 0, 0, 10, 4)->GetId();
        right = room("Right", 12, 0, 22, 4)->GetId();
        auto const connection = project->CreateLink("Link", MeshGeometry::CreateRamp({10, 0, 2}, {12, 0, 2}, 2));
        connection->SetGated(true);
        link = connection->GetId();
        west = portal("West", 0, 1, 0, 3)->GetId();
        east = portal("East", 22, 1, 22, 3)->GetId();
        north = portal("North", 16, 0, 18, 0)->GetId();
        steady = walkers("Steady", 1)->GetId();
        counter = project->CreateTallyObject("Counter")->GetId();
        project->SetDurationInSeconds(120);
    }
    /// One who walks from west to east in 22 s, at 1 m/s.
    std::shared_ptr<Journey> walk(int start = 0) const {
        auto const created = journey(numbered("Walk"), west, east, 1, steady);
        created->SetStartTrigger(after(start));
        return created;
    }
    std::shared_ptr<Journey> stay(GlobalId const& where, double count, GlobalId const& profile = {}) const {
        auto const created = journey(numbered("Stay"), where, east, count, profile);
        created->SetInitialAction(std::make_shared<WaitForeverAction>(WaitStyle::StandStill()));
        return created;
    }
    /// A name that no object has yet.
    std::string numbered(std::string const& name) const { return name + " " + std::to_string(++names); }
    std::shared_ptr<AgentAction> count_one() const { return std::make_shared<AddToTallyAction>(counter, 1.0); }
    double counted(Simulation& simulation) const { return simulation.GetTallyValue(counter); }

    GlobalId left, right, link, west, east, north, steady, counter;
    mutable int names = 0;
};

}  // namespace pedflux
