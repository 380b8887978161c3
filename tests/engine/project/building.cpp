#include "tests/engine/project/building.h"

namespace pedflux::engine {

namespace {

void set_up(ConnectionObject& connection, GlobalId const& perimeter) {
    connection.SetDistanceAdded(12.5);
    connection.SetAgentTraversalType(AgentTraversalType::SINGLE_FILE);
    connection.SetDirection(ConnectionObjectDirection::BOX_TO_BALL);
    connection.SetEnteringFlowCap(FlowRateType::PERSONS_PER_METER_AND_MINUTE, 79.25);
    connection.SetEntranceDelayDistribution(Distribution::CreateTriangular(1, 2, 4));
    connection.SetExitDelayDistribution(Distribution::CreateExponential(0.5, 1, 30));
    connection.SetGated(true);
    connection.SetIgnoreBarriers(true);
    connection.SetIgnoreNeighbors(true);
    connection.SetQueuingForceOnApproach(true);
    connection.SetPriorityDirection(ConnectionObjectDirection::BALL_TO_BOX);
    connection.SetPerimeters({perimeter});
    connection.SetLocalAgentBodyRadius(0.23);
}

void set_up(Profile& profile) {
    profile.SetSpeedDistribution(Distribution::CreateUniform(0.5, 1.75));
    profile.SetRadiusDistribution(Distribution::CreateDiscrete({0.18, 0.25}, {3, 1}));
    profile.SetPersonalSpaceDistribution(Distribution::CreateLogNormal(-1, 0.5, 0.1, 2));
    profile.SetHorizontalCostDistribution(Distribution::CreateConstant(1.1));
    profile.SetVerticalCostDistribution(Distribution::CreateConstant(1.2));
    profile.SetQueueCostDistribution(Distribution::CreateConstant(1.3));
    profile.SetProcessingCostDistribution(Distribution::CreateConstant(1.4));
    profile.SetAgentDirectionBias(AgentDirectionBias::LEFT);
    profile.SetAccelerationForwardMax(1.5);
    profile.SetSpeedShuffleFactor(0.25);
    profile.SetTurnRateCapInDegreesAtMaxSpeed(270);
}

void set_up(MapQuery& query, GlobalId const& floor) { query.SetMapDisplayObjects({floor}); }

template <class Query>
void set_up_density(Query& query, GlobalId const& floor) {
    set_up(query, floor);
    query.SetLevelOfServiceColorFunction(LevelOfServiceColorFunctionTypeId::IATA_WAIT_CIRCULATE,
                                         ColorTransition::GRADUAL);
    if constexpr (requires { query.SetTimeRange(TimeRange(60, 120)); }) query.SetTimeRange(TimeRange(60, 120));
}

}  // namespace

std::shared_ptr<Project> full_project() {
    auto const project = Project::Create();
    project->SetStartTimeInSeconds(8 * 3600);
    project->SetDurationInSeconds(1234);
    project->SetFrameRate(8);
    project->SetRandomSeed(-77);
    project->SetPopulationMultiplier(1.25);
    project->SetProjectOrigin({1000.5, -2, 0.1});

    auto const hall = project->CreateFloor("Hall \"große\" \xe2\x82\xac", slab(0, 0, 20, 10));
    auto const upper = project->CreateFloor("Upper", slab(24, 0, 10, 10, 3));
    hall->SetDistanceAdded(1);
    upper->SetDistanceAdded(2);
    auto const portal = project->CreatePortal("West door", MeshGeometry::CreateVerticalRectangle({0, 0, 4}, {0, 2, 6}));
    portal->SetAgentInitialPlacement(AgentInitialPlacement::EVEN);
    portal->SetDistanceAdded(3);
    auto const barrier = project->CreateBarrier("Pillar", MeshGeometry::CreateBox({9, 0, 4}, {10, 3, 5}));
    barrier->SetColor(Color(0.1, 0.2, 0.3, 0.4));

    auto const perimeter = project->CreatePerimeter("Surroundings");
    perimeter->AddItems({hall->GetId(), upper->GetId()});
    auto const link = project->CreateLink("Gate", slab(20, 4, 1, 2));
    auto const stair = project->CreateStair("Stair", MeshGeometry::CreateRamp({20, 0, 2}, {24, 3, 2}, 1.5, 0.2));
    auto const ramp = project->CreateRamp("Ramp", MeshGeometry::CreateRamp({20, 0, 8}, {24, 3, 8}, 2));
    for (auto const& connection : project->GetConnectionObjects()) set_up(*connection, perimeter->GetId());
    link->SetLocalAgentMaxSpeed(0.75);
    link->SetLocalDirectionBias(AgentDirectionBias::RIGHT);
    link->SetLocalSpeedDensityStandard(SpeedDensityStandard::WALKWAY);
    stair->SetLocalAgentMaxSpeedUpAndDown(0.6, 0.7);
    stair->SetLocalDirectionBias(AgentDirectionBias::LEFT);
    stair->SetLocalSpeedDensityStandard(SpeedDensityStandard::STAIR);
    ramp->SetLocalAgentMaxSpeedUpAndDown(0.8, 0.9);
    ramp->SetLocalDirectionBias(AgentDirectionBias::NONE);
    ramp->SetLocalSpeedDensityStandard(SpeedDensityStandard::NONE);

    auto const zone = project->CreateZone("Ground", {hall->GetId()});
    zone->SetMembershipType(ZoneMembershipStrategy::BASE_MEMBERS_AND_CONNECTIONS);
    auto const collection = project->CreateCollection("Doors", {portal->GetId()});
    collection->AddItemWithWeight(link->GetId(), 2.5);
    auto const bank = project->CreateRouteBank("Ways up");
    bank->SetItems({stair->GetId(), ramp->GetId()});
    auto const transform = project->CreateTransform("Furniture");
    transform->AddItem(barrier->GetId());
    transform->SetTranslation({0.5, 0, -0.25});
    transform->SetRotation({0, 30, 0});
    transform->SetScale(1.5);

    auto const profile = project->CreateProfile("Commuters");
    set_up(*profile);
    auto const source = std::make_shared<CountPopulationSource>(std::vector{hall->GetId()}, 40.0);
    source->SetOriginsWeighted({hall->GetId(), upper->GetId()}, {1, 3});
    source->SetDestinationsByLowestCost({portal->GetId()});
    std::vector<std::shared_ptr<SinglePopulationEvent>> const events{project->CreateJourney("Rush"),
                                                                     project->CreateEvacuation("Alarm")};
    for (auto const& event : events) {
        event->SetPopulationSource(source);
        event->SetProfile(profile->GetId());
        event->SetColorSchemeSpecified(Color::TEAL);
    }
    auto const evacuation = project->GetEvacuation("Alarm");
    evacuation->SetZones({zone->GetId()});
    evacuation->SetPreMovementWaitDistribution(Distribution::CreateNormal(30, 10, 0, 90));

    auto const run = project->CreateSimulationRun("Run");
    set_up_density(*project->CreateAverageDensityMapQuery("Average", run->GetId()), hall->GetId());
    set_up_density(*project->CreateMaxDensityMapQuery("Greatest", run->GetId()), hall->GetId());
    set_up_density(*project->CreateInstantaneousDensityMapQuery("Momentary", run->GetId()), hall->GetId());
    set_up_density(*project->CreateExperiencedDensityMapQuery("Experienced", run->GetId()), hall->GetId());
    set_up_density(*project->CreateNonZeroAverageDensityMapQuery("Occupied", run->GetId()), hall->GetId());
    auto const count = project->CreateAgentCountMapQuery("Passages", run->GetId());
    set_up(*count, hall->GetId());
    count->SetTimeRange(TimeRange(1, 2));
    auto const graph = project->CreatePopulationCountGraphQuery("Population", run->GetId());
    graph->SetTimeRange(TimeRange(3, 4));
    graph->SetTitle("Persons in the hall");
    graph->SetHorizontalLabel("t");
    graph->SetVerticalLabel("n");
    graph->SetWindowSizeInSeconds(30);
    graph->SetShowLegend(false);
    graph->SetShowMetadata(true);
    graph->SetAreaIds({zone->GetId()});

    for (auto const& object : project->GetObjects()) {
        object->SetVisible(false);
        object->SetEnabled(false);
        if (object != barrier) object->SetColor(Color::OLIVE);
    }
    return project;
}

}  // namespace pedflux::engine
