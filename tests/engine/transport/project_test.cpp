#include "engine/model/codec.h"
#include "engine/model/document.h"
#include "engine/model/saving.h"
#include "engine/project/kinds.h"
#include "engine/transport/car.h"
#include "tests/engine/project/building.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/elevators.h>
#include <pedflux/time_references.h>
#include <pedflux/timetables.h>
#include <pedflux/vehicles.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

std::vector<std::string> strings(std::vector<GlobalId> ids) {
    std::vector<std::string> found;
    for (auto& id : ids) found.push_back(id.GetString());
    return found;
}

/// A change that must be refused, and what the refusal says.
struct Refusal {
    std::function<void()> change;
    std::string message;
};

class Transport : public ::testing::Test {
  protected:
    Transport()
        : project(Project::Create()),
          lobby(project->CreateFloor("Lobby", slab(0, 0, 20, 20))->GetId()),
          office(project->CreateFloor("Office", slab(0, 0, 20, 20, 4))->GetId()),
          roof(project->CreateFloor("Roof", slab(0, 0, 20, 20, 12))->GetId()),
          door(project->CreateLink("Door", slab(20, 5, 1, 2))->GetId()),
          exit(project->CreatePortal("Exit", slab(0, 9, 0.5, 2))->GetId()),
          adults(project->CreateProfile("Adults")->GetId()) {}
    ~Transport() override { project->Close(); }

    std::shared_ptr<Elevator> elevator(std::string const& name) {
        return project->CreateElevator(name, slab(5, 5, 2, 2));
    }
    std::string saved() { return to_text(document_of(*project)); }

    /// Each refusal says what it must and leaves the project as it was.
    void expect_refused(std::vector<Refusal> const& refusals) {
        auto const before = saved();
        for (auto const& [change, message] : refusals) {
            EXPECT_REFUSED(change(), message);
            EXPECT_EQ(saved(), before) << message;
        }
    }
    /// The project opens equal to what was saved.
    void expect_round_trip() {
        auto const opened = from_text(saved(), object_kinds());
        EXPECT_THAT(differences(document_of(*project), *opened), IsEmpty());
        EXPECT_THAT(opened->open_warnings, IsEmpty());
    }

    std::shared_ptr<Project> project;
    GlobalId lobby, office, roof, door, exit, adults;
};

TEST_F(Transport, ElevatorsRefuseWhatTheyCannotBe) {
    auto const lift = elevator("Lift");
    auto const twice = std::make_shared<OrderedListElevatorOperation>(
        std::vector{lobby, lobby}, ElevatorVisitingOrder::UPWARDS, ElevatorOperationRepeatType::ONCE);
    auto const strange = std::make_shared<ShuttleElevatorOperation>(
        std::vector{adults}, ElevatorVisitingOrder::AS_LISTED, std::vector<GlobalId>());
    auto const unknown = std::make_shared<ShuttleElevatorOperation>(
        std::vector<GlobalId>(1), ElevatorVisitingOrder::AS_LISTED, std::vector<GlobalId>());
    expect_refused({
        {[&] { lift->SetSpeed(0); }, "Elevator 'Lift': speed must be greater than 0 m/s, not 0"},
        {[&] { lift->SetJerk(NOT_A_NUMBER); }, "jerk must be greater than 0 m/s³"},
        {[&] { lift->SetDoorWidth(-1); }, "doors.width must be greater than 0 m, not -1"},
        {[&] { lift->SetQueueMultiplier(-1); }, "queueMultiplier must be at least 0, not -1"},
        {[&] { lift->SetCapacityByAgentCount(0); }, "capacity.agentCount must be at least 1 person, not 0"},
        {[&] { lift->SetCapacityByCustomArea(0, 0.2); }, "capacity.customArea must be greater than 0 m², not 0"},
        {[&] { lift->SetCapacityByCustomArea(3, 5); }, "capacity.agentRadius must be greater than 0 and at most 2 m"},
        {[&] { lift->SetCycleDurationOverride(0); }, "cycleDurationOverride must be at least 1 s, not 0"},
        {[&] { lift->SetBoardingFlowCap(FlowRateType{9}, 1); }, "boardingFlowCap.type must be one of"},
        {[&] { lift->SetBallBoardingFloors({door}); }, "ball.boardingFloors.0 must be the identifier of a floor"},
        {[&] {
             lift->SetTwoWayFloors({lobby}, {roof, roof});
         },
         "box.boardingFloors must be a list of different"},
        {[&] { lift->SetRestFloor(exit); }, "restFloor must be the identifier of a floor, not that of Portal 'Exit'"},
        {[&] { lift->SetElevatorBank(lobby); }, "elevatorBank must be the identifier of an elevator bank"},
        {[&] { lift->SetElevatorOperation(nullptr); }, "elevatorOperation must be given, not empty"},
        {[&] { lift->SetElevatorOperation(twice); }, "elevatorOperation.orderedFloors must be a list of different"},
        {[&] { lift->SetElevatorOperation(strange); }, "elevatorOperation.boardingFloors.0 must be the identifier of"},
        {[&] { lift->SetElevatorOperation(unknown); }, "not the invalid identifier"},
        {[&] { lift->SetWaitStyle(nullptr); }, "waitStyle must be given, not empty"},
        {[&] { project->CreateElevator("None", nullptr); }, "geometry must be a mesh, not empty"},
        {[&] { lift->GetBoardingFlowRateValue(); }, "Elevator 'Lift' has no boardingFlowCap"},
        {[&] { lift->GetCycleDurationOverride(); }, "Elevator 'Lift' has no cycleDurationOverride"},
        {[&] { lift->GetElevatorBank(); }, "Elevator 'Lift' has no elevatorBank"},
        {[&] { lift->GetAccessAgentTest(); }, "Elevator 'Lift' has no accessAgentTest"},
    });
    EXPECT_REFUSED(OrderedListElevatorOperation({}, ElevatorVisitingOrder{7}, ElevatorOperationRepeatType::ONCE),
                   "visitingOrder must be one of");
}

TEST_F(Transport, ElevatorsKeepOperationsOfEveryKindAsCopies) {
    auto const lift = elevator("Lift");
    auto const shuttle = std::make_shared<ShuttleElevatorOperation>(std::vector{lobby}, ElevatorVisitingOrder::UPWARDS,
                                                                    std::vector{office, roof});
    std::vector<std::shared_ptr<ElevatorOperation>> const operations{
        std::make_shared<CallAnswerElevatorOperation>(), shuttle, std::make_shared<SabbathElevatorOperation>(false),
        std::make_shared<OrderedListElevatorOperation>(std::vector{roof, lobby}, ElevatorVisitingOrder::AS_LISTED,
                                                       ElevatorOperationRepeatType::BACK_AND_FORTH)};
    for (auto const& operation : operations) {
        lift->SetElevatorOperation(operation);
        auto const held = lift->GetElevatorOperation();
        EXPECT_NE(held, operation);
        EXPECT_EQ(held->GetElevatorOperationTypeId(), operation->GetElevatorOperationTypeId());
        EXPECT_EQ(json_of<std::shared_ptr<ElevatorOperation>>(held),
                  json_of<std::shared_ptr<ElevatorOperation>>(operation));
        expect_round_trip();
    }
    lift->SetElevatorOperation(shuttle);
    shuttle->SetLeaveDoorsOpenWhenIdle(true);
    auto const held = std::dynamic_pointer_cast<ShuttleElevatorOperation>(lift->GetElevatorOperation());
    ASSERT_TRUE(held);
    EXPECT_FALSE(held->IsLeaveDoorsOpenWhenIdle());
    EXPECT_EQ(strings(held->GetDestinationFloors()), strings({office, roof}));
    EXPECT_REFUSED(project->RemoveAndDeleteObject(roof), "Elevator 'Lift'");
}

TEST_F(Transport, FloorsOfASideAreThoseOfBothWays) {
    auto const lift = elevator("Lift");
    EXPECT_TRUE(lift->AreAllFloorsTwoWay());
    lift->SetTwoWayFloors({lobby, roof}, {office});
    EXPECT_TRUE(lift->AreAllFloorsTwoWay());
    lift->SetBallAlightingFloors({office, roof});
    EXPECT_FALSE(lift->AreAllFloorsTwoWay());
    EXPECT_EQ(strings(lift->GetBallFloors()), strings({lobby, roof, office}));
    EXPECT_EQ(strings(lift->GetBoxFloors()), strings({office}));
    lift->SetBallBoardingFloors({roof, office});
    EXPECT_TRUE(lift->AreAllFloorsTwoWay());
}

TEST_F(Transport, AnElevatorBelongsToOneBankAtMost) {
    auto const left = elevator("Left");
    auto const right = elevator("Right");
    auto const low = project->CreateElevatorBank("Low");
    auto const high = project->CreateElevatorBank("High");
    low->SetItems({left->GetId(), right->GetId()});
    high->AddItem(left->GetId());
    EXPECT_EQ(strings(low->GetItems()), strings({right->GetId()}));
    EXPECT_EQ(left->GetElevatorBank().GetString(), high->GetId().GetString());
    right->SetElevatorBank(high->GetId());
    EXPECT_THAT(low->GetItems(), IsEmpty());
    left->ClearElevatorBank();
    EXPECT_FALSE(left->HasElevatorBank());
    EXPECT_EQ(strings(high->GetItems()), strings({right->GetId()}));
    expect_refused({{[&] { low->AddItem(lobby); }, "items must be the identifier of an elevator"},
                    {[&] { low->SetAlternateRouteItems({exit}); }, "alternateRouteItems.0 must be the identifier of"}});

    auto both = Json::parse(saved());
    for (auto& object : both["objects"]) {
        if (object["kind"] == "ElevatorBank") object["items"] = {right->GetId().GetString()};
    }
    EXPECT_REFUSED(from_text(both.dump(), object_kinds()), "items must be elevators that are in no other bank");
}

TEST_F(Transport, CarsKnowWhatStandsStill) {
    auto const lift = elevator("Lift");
    lift->SetTwoWayFloors({roof, lobby}, {office});
    lift->SetRestFloor(lobby);
    lift->SetCapacityByAutoArea(0.25);
    auto const bank = project->CreateElevatorBank("Bank");
    bank->AddItem(lift->GetId());
    bank->SetElevatorOperation(std::make_shared<SabbathElevatorOperation>(true));
    auto const controllers = make_controllers(document_of(*project));
    ASSERT_EQ(controllers.size(), 1U);
    auto const car = handle_of(controllers.front()->cars.front());

    std::vector<std::string> names;
    for (auto stop : car->GetAllStops()) names.push_back(stop.GetString());
    EXPECT_THAT(names, ElementsAre("Lobby", "Office", "Roof"));
    EXPECT_EQ(car->GetElevatorOperationTypeId(), ElevatorOperationTypeId::SABBATH);
    EXPECT_EQ(car->GetRestStop().GetString(), "Lobby");
    EXPECT_EQ(car->GetTotalCapacity(), 18);  // 4 m² / (2√3 · 0.25² m²) = 18.5
    auto const ground = car->GetStopForFloor(lobby);
    auto const top = car->GetStopForFloor("Roof");
    EXPECT_EQ(car->GetStopElevation(top), 12);
    EXPECT_EQ(car->GetDirectionOfTrip(top, ground), ElevatorDirection::DOWN);
    EXPECT_NEAR(car->GetTravelTimeInSeconds(ground, top), 12 / 1.6 + 0.8 / 1 + 1.6 / 0.8, 1e-12);
    EXPECT_NEAR(car->GetEffectiveCycleDuration(), 2 * (10.3 + 2 + 5 + 3), 1e-12);

    car->AddTripToServiceList(ground, top);
    car->AddStopToServiceList(ground, ElevatorDirection::UP);
    EXPECT_EQ(car->GetServiceList().size(), 2U);
    EXPECT_EQ(car->GetNextInServiceList().GetString(), "Lobby UP");
    EXPECT_EQ(car->ClearServiceList().size(), 2U);
    EXPECT_FALSE(car->GetNextInServiceList().IsValid());

    EXPECT_TRUE(car->AssumeControl());
    EXPECT_FALSE(car->AssumeControl());
    EXPECT_FALSE(car->GetController()->IsControllingElevatorCar(lift->GetId()));
    EXPECT_TRUE(car->ReleaseControl());
    EXPECT_TRUE(car->GetController()->IsControllingElevatorCar(lift->GetId()));
    EXPECT_EQ(car->GetCostWhenManualAccessDenied(), 1'000'000);
    car->SetManualAccessAgents({}, 50);
    EXPECT_TRUE(car->HasManualAccess());
    EXPECT_EQ(car->GetCostWhenManualAccessDenied(), 50);

    expect_refused({
        {[&] { car->GetElevation(); }, "ElevatorCar 'Lift': its elevation cannot be told, as elevators do not run"},
        {[&] { car->GetController()->GetTripCallsThisFrame(); }, "ElevatorController 'Bank': who calls cannot be told"},
        {[&] { car->IsAtStop(ElevatorStop("Cellar")); }, "the stop must be one of Lobby, Office, Roof, not 'Cellar'"},
        {[&] { car->AddStopToServiceList(ElevatorStop()); }, "the stop must be one of"},
        {[&] { car->SetManualEffectiveCycleDuration(0); }, "the cycle duration"},
        {[&] { car->SetComputerType(ElevatorComputer{5}); }, "the computer must be one of COLLECTIVE (0)"},
    });
    lift->SetTwoWayFloors({office}, {});
    EXPECT_REFUSED(make_controllers(document_of(*project)), "restFloor must be a floor that the elevator serves");
}

TEST_F(Transport, VehiclesRefuseWhatDoesNotFit) {
    auto const train = project->CreateVehicle("Train");
    using Type = VehiclePopulationType;
    train->SetArrivalByScheduleWithAlightingPopulations({0, 300}, {40, 60});
    auto const negative = Distribution::CreateConstant(-1);
    auto const much = Distribution::CreateConstant(101);
    std::vector<std::shared_ptr<AgentTest>> const no_test{nullptr};
    expect_refused({
        {[&] {
             train->SetArrivalBySchedule({0, 60, 30});
         },
         "timeOffsets.2 must be at least the 60 s before it, not 30"},
        {[&] { train->SetArrivalBySchedule({-1}); }, "arrival.timeOffsets.0 must be at least 0 s, not -1"},
        {[&] { train->SetArrivalByHeadway(nullptr); }, "arrival.headway must be"},
        {[&] { train->SetArrivalByHeadway(negative); }, "arrival.headway"},
        {[&] { train->SetArrivalByHeadwayWithFixedCount(0, much); }, "arrival.fixedCount must be at least 1, not 0"},
        {[&] {
             train->SetArrivalByScheduleWithThroughPopulations({0, 60}, {1});
         },
         "Vehicle 'Train': arrivals number 2, through populations 1"},
        {[&] { train->SetArrivalByScheduleWithAlightingPopulations({0}, {-4}); }, "must be at least 0 persons, not -4"},
        {[&] {
             train->SetArrivalByScheduleWithAlightingPopulations({{0, 2.5}});
         },
         "pair 0: the persons must be a whole number, not 2.5"},
        {[&] {
             train->SetLookupTableAlightingAndThroughPopulations({60}, {1}, {1, 2});
         },
         "lookup table intervals number 1, through populations 2"},
        {[&] { train->SetLookupTableAlightingPopulations({0}, {1}); }, "lookupTableIntervals.0 must be at least 1 s"},
        {[&] { train->SetAlightingPopulationByRandomDistribution(nullptr); }, "alighting.count"},
        {[&] { train->SetThroughPopulationByPercentageCapacity(much); }, "through.count"},
        {[&] {
             train->SetAlightingOriginsWeighted({lobby, office}, {1});
         },
         "origins number 2, weights 1"},
        {[&] { train->SetThroughOriginsWeighted({lobby}, {0}); }, "all 0"},
        {[&] { train->SetThroughOrigins({adults}); }, "through.origins.places.0 must be the identifier of a portal"},
        {[&] {
             train->SetAlightingDestinationsWeightedByChance({{exit, -1}});
         },
         "at least 0"},
        {[&] {
             train->SetAlightingDestinationsByChance({exit, exit});
         },
         "must be a list of different objects"},
        {[&] { train->SetBoardingPopulationSource(nullptr); }, "boarding.source must be given, not empty"},
        {[&] { train->SetBoardingAccessOpenIfTestTrue(nullptr); }, "boarding.access.agentTest must be given"},
        {[&] { train->SetCarDoors({lobby}); }, "carDoors.0 must be the identifier of a link"},
        {[&] { train->SetCarFloors({door}); }, "carFloors.0 must be the identifier of a floor"},
        {[&] { train->SetCarFloorCapacityLimit(0); }, "carFloorCapacityLimit must be at least 1 person, not 0"},
        {[&] { train->SetProfile(Type::THROUGH, lobby); },
         "through.traits.profile must be the identifier of a profile"},
        {[&] { train->SetProfile(Type{3}, adults); }, "population must be one of BOARDING (0), ALIGHTING (1), THROUGH"},
        {[&] { train->SetColorSchemeRules(Type::BOARDING, {}, {Color::RED}, Color::RED); },
         "tests number 0, colours 1"},
        {[&] { train->SetColorSchemeRules(Type::BOARDING, no_test, {Color::RED}, Color::RED); },
         "boarding.traits.colorRules.0.agentTest must be given, not empty"},
        {[&] { train->GetColorSchemeRuleColor(Type::BOARDING, 0); },
         "Vehicle 'Train': there is no colour rule 0, it has 0"},
        {[&] { train->GetArrivalByHeadwayDistribution(); }, "Vehicle 'Train' has no arrival.headway"},
        {[&] { train->GetBoardingPopulationSource(); }, "Vehicle 'Train' has no boarding.source"},
        {[&] { train->GetAlightingPopulationRandomDistribution(); }, "Vehicle 'Train' has no alighting.count"},
        {[&] { train->GetAlightingAccessAgentTest(); }, "Vehicle 'Train' has no alighting.access"},
    });
}

TEST_F(Transport, NumbersOfPeopleGoWithTheirSchedule) {
    auto const train = project->CreateVehicle("Train");
    EXPECT_TRUE(train->IsArrivalByHeadway());
    EXPECT_FALSE(train->HasAlightingPopulation());

    train->SetArrivalByScheduleWithAlightingAndThroughPopulations({0, 300}, {40, 60}, {5, 6});
    EXPECT_TRUE(train->IsArrivalBySchedule());
    EXPECT_TRUE(train->IsThroughPopulationBySchedule());
    auto const pairs = train->GetArrivalByScheduleTimeAndThroughPopulationPairs();
    ASSERT_EQ(pairs.size(), 2U);
    EXPECT_EQ(pairs[1].GetDurationInSeconds(), 300);
    EXPECT_EQ(pairs[1].GetValue(), 6);

    train->SetThroughPopulationByFullCapacity();
    train->SetArrivalByScheduleWithAlightingPopulations({{10, 7}});
    EXPECT_THAT(train->GetArrivalByScheduleTimeOffsetsInSeconds(), ElementsAre(10));
    EXPECT_THAT(train->GetArrivalByScheduleAlightingPopulations(), ElementsAre(7));
    EXPECT_TRUE(train->IsThroughPopulationByFullCapacity());

    train->SetLookupTableThroughPopulations({600, 900}, {1, 2});
    EXPECT_TRUE(train->IsAlightingPopulationBySchedule());
    EXPECT_THAT(train->GetLookupTableIntervalDurationsInSeconds(), ElementsAre(600, 900));
    EXPECT_THAT(train->GetLookupTableAlightingPopulations(), IsEmpty());
    expect_round_trip();

    train->SetArrivalByHeadwayWithFixedCount(3, Distribution::CreateConstant(120));
    EXPECT_FALSE(train->HasAlightingPopulation());
    EXPECT_TRUE(train->IsThroughPopulationByLookupTable());
    EXPECT_EQ(train->GetArrivalByHeadwayFixedCount(), 3);
    train->ClearThroughPopulation();
    EXPECT_THAT(train->GetLookupTableIntervalDurationsInSeconds(), IsEmpty());
    expect_round_trip();
}

TEST_F(Transport, EachPopulationOfAVehicleIsItsOwn) {
    auto const train = project->CreateVehicle("Train");
    using Type = VehiclePopulationType;
    train->SetColor(Color::BLACK);
    train->SetColorSchemeLighter(Type::BOARDING);
    train->SetColorSchemeRules(Type::THROUGH, {std::make_shared<AlwaysTrueTest>()}, {Color::RED}, Color::WHITE);
    train->SetProfile(Type::ALIGHTING, adults);
    train->SetInitialAction(Type::ALIGHTING, std::make_shared<DoNothingAction>());
    EXPECT_TRUE(train->GetColorSchemeColor(Type::BOARDING).InternalEquals(Color(0.5, 0.5, 0.5)));
    EXPECT_TRUE(train->GetColorSchemeColor(Type::ALIGHTING).InternalEquals(Color::BLACK));
    EXPECT_TRUE(train->GetColorSchemeColor(Type::THROUGH).InternalEquals(Color::WHITE));
    EXPECT_EQ(train->GetColorSchemeRuleCount(Type::BOARDING), 0);
    EXPECT_EQ(train->GetColorSchemeRuleAgentTest(Type::THROUGH, 0)->GetAgentTestTypeId(),
              std::make_shared<AlwaysTrueTest>()->GetAgentTestTypeId());
    EXPECT_FALSE(train->GetProfile(Type::BOARDING).IsValid());
    EXPECT_TRUE(train->HasInitialAction(Type::ALIGHTING));
    train->SetBoardingPopulationSource(std::make_shared<CountPopulationSource>(std::vector{exit}, 12));
    train->SetAlightingDestinationsWeightedByChance({exit, door}, {1, 3});
    train->SetAlightingAccessOpenIfTestTrue(std::make_shared<AlwaysTrueTest>());
    EXPECT_EQ(train->GetBoardingPopulationSource()->GetTotalPopulationCount(), 12);
    EXPECT_EQ(train->GetAlightingDestinationWeightPairs().size(), 2U);
    EXPECT_FALSE(train->IsAlightingAccessOpenToAlighters());
    expect_round_trip();
    EXPECT_REFUSED(project->RemoveAndDeleteObject(adults), "Vehicle 'Train'");
}

class Timetables : public Transport {
  protected:
    Timetables() : table(project->CreateTimetable("Day")) { project->SetWorkingDirectory(directory.path().string()); }
    void set(TimetableFileType type, std::string const& text, char delimiter = ',') {
        write(directory.file("day.csv"), text);
        table->SetDataFromFile(type, "day.csv", delimiter);
    }

    TemporaryDirectory directory;
    std::shared_ptr<Timetable> table;
};

TEST_F(Timetables, KeepWhatTheirFilesSay) {
    std::filesystem::create_directory(directory.file("data"));
    write(directory.file("data/events.csv"), "time;name\n8:05;Bell\n23:59:30;\"Night; late\"\n");
    table->SetBasePath("data");
    table->SetDefaultProfile(adults);
    EXPECT_THAT(table->GetReferenceEventNames(), IsEmpty());
    table->SetDataFromFile(TimetableFileType::REFERENCE_EVENTS, "events.csv", ';');
    std::filesystem::remove(directory.file("data/events.csv"));
    EXPECT_THAT(table->GetReferenceEventNames(), ElementsAre("Bell", "Night; late"));
    EXPECT_EQ(table->GetFileName(TimetableFileType::REFERENCE_EVENTS), "events.csv");
    EXPECT_THAT(table->GetData(TimetableFileType::REFERENCE_EVENTS), HasSubstr("23:59:30"));
    EXPECT_EQ(table->GetData(TimetableFileType::ACTIVITIES), "");
    table->SetBasePath("");
    EXPECT_FALSE(table->HasBasePath());
    set(TimetableFileType::POPULATIONS, "count,group,origin,note\n12,Class 1,Exit,\n");
    set(TimetableFileType::ACTIVITIES, "group\tevent\toffset\tplace\tduration\nClass 1\tBell\t-300\tLobby\t0\n", '\t');
    expect_round_trip();
}

TEST_F(Timetables, FaultsAreToldWithTheirPlace) {
    set(TimetableFileType::REFERENCE_EVENTS, "name,time\nBell,8:05\n");
    struct {
        TimetableFileType type;
        std::string text, message;
    } const cases[] = {
        {TimetableFileType::REFERENCE_EVENTS, "", "line 1, column 1: the first line must name the columns"},
        {TimetableFileType::REFERENCE_EVENTS, "name,when\n",
         "line 1, column 1: there must be a column 'time', not only"},
        {TimetableFileType::REFERENCE_EVENTS, "name,name,time\n", "line 1, column 6: the column 'name' must be there"},
        {TimetableFileType::REFERENCE_EVENTS, "name,time\nA\n", "line 2, column 1: the line must have 2 fields"},
        {TimetableFileType::REFERENCE_EVENTS, "name,time\nA,8\n", "line 2, column 3: time must be a time of day"},
        {TimetableFileType::REFERENCE_EVENTS, "name,time\nA,8:60\n", "not '8:60'"},
        {TimetableFileType::REFERENCE_EVENTS, "name,time\nA,8:-1\n", "not '8:-1'"},
        {TimetableFileType::REFERENCE_EVENTS, "name,time\nA,8:00\n\nA,9:00\n",
         "line 4, column 1: name must be there once"},
        {TimetableFileType::POPULATIONS, "group,count,origin\nA,-1,Exit\n",
         "column 3: count must be a whole number of"},
        {TimetableFileType::POPULATIONS, "group,count,origin\nA,99999999999,Exit\n", "not '99999999999'"},
        {TimetableFileType::POPULATIONS, "group,count,origin\nA,1,\n", "line 2, column 5: origin must be given"},
        {TimetableFileType::ACTIVITIES, "group,event,offset,place,duration\nA,B,1.5,P,0\n", "offset must be a whole"},
        {TimetableFileType::ACTIVITIES, "group,event,offset,place,duration\nA,\"B,1,P,0\n",
         "column 3: a quotation mark"},
    };
    auto const before = saved();
    for (auto const& [type, text, message] : cases) {
        EXPECT_REFUSED(set(type, text), message);
        EXPECT_REFUSED(set(type, text), "Timetable 'Day': the file 'day.csv'");
        EXPECT_EQ(saved(), before) << message;
    }
    EXPECT_REFUSED(set(TimetableFileType::POPULATIONS, "x", '"'), "delimiter must be a tab or a sign");
    EXPECT_REFUSED(set(TimetableFileType::POPULATIONS, "x", 'a'), "not the byte 97");
    EXPECT_REFUSED(set(TimetableFileType{7}, "x"), "fileType must be one of REFERENCE_EVENTS (0)");
    EXPECT_REFUSED(table->SetDataFromFile(TimetableFileType::POPULATIONS, "none.csv", ','), "none.csv");
}

TEST_F(Transport, TripsAreWholeWhereverTheyComeFrom) {
    Trip stay(lobby, lobby, TripBoundaryMethod::ENTER, TripBoundaryMethod::EXIT);
    EXPECT_EQ(strings(stay.GetNodeGlobalIds()), strings({lobby, lobby}));
    EXPECT_EQ(stay.GetEndNodeType(), TripBoundaryMethod::EXIT);
    using Method = TripBoundaryMethod;
    expect_refused({
        {[&] { Trip({}, Method::ENTER, Method::ENTER); }, "Trip: nodes must have at least one place"},
        {[&] {
             Trip({lobby, GlobalId()}, Method::ENTER, Method::ENTER);
         },
         "Trip: node 1 must be a floor"},
        {[&] { Trip(lobby, exit, Method{4}, Method::ENTER); },
         "startNodeType must be one of ENTER (0), EXIT (1), not 4"},
    });
}

}  // namespace
}  // namespace pedflux::engine
