#include "engine/behaviour/events/event_states.h"
#include "engine/model/codec.h"
#include "engine/model/document.h"
#include "engine/model/kind.h"
#include "engine/model/saving.h"
#include "engine/scene/scene_states.h"
#include "tests/engine/refusal.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/distributions.h>
#include <pedflux/events.h>
#include <pedflux/exception.h>
#include <pedflux/geometry.h>
#include <pedflux/population_sources.h>
#include <pedflux/time_range.h>
#include <pedflux/time_references.h>
#include <pedflux/triggers.h>
#include <pedflux/wait_styles.h>

#include <functional>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct PlaceState : NetworkObjectState {
    static constexpr ObjectType TYPE = ObjectType::FLOOR;
    static constexpr std::string_view NAME = "Place";
    using Handle = SceneObject;
};

struct PersonState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::PROFILE;
    static constexpr std::string_view NAME = "Person";
    using Handle = SimObject;
};

struct DoorState : NetworkObjectState {
    static constexpr ObjectType TYPE = ObjectType::PORTAL;
    static constexpr std::string_view NAME = "Door";
    using Handle = SceneObject;
};

struct BadgeState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::TOKEN;
    static constexpr std::string_view NAME = "Badge";
    using Handle = SimObject;
};

Kinds event_kinds() {
    static Kind const* const kinds[] = {
        &kind_of<PlaceState>(),     &kind_of<PersonState>(),  &kind_of<DoorState>(),       &kind_of<BadgeState>(),
        &kind_of<ZoneState>(),      &kind_of<JourneyState>(), &kind_of<EvacuationState>(), &kind_of<CirculateState>(),
        &kind_of<BroadcastState>(), &kind_of<DispatchState>()};
    return kinds;
}

struct Events : testing::Test {
    Document document;
    GlobalId hall = document.add<PlaceState>("Hall").id;
    GlobalId street = document.add<PlaceState>("Street").id;
    GlobalId commuter = document.add<PersonState>("Commuter").id;
    GlobalId door = document.add<DoorState>("Door").id;
    GlobalId gate = document.add<DoorState>("Gate").id;
    GlobalId zone = document.add<ZoneState>("Zone").id;
    GlobalId badge = document.add<BadgeState>("Badge").id;
    std::shared_ptr<AgentTest> has_badge = std::make_shared<TokenTest>(badge);

    template <class State>
    std::shared_ptr<typename State::Handle> create(std::string const& name) {
        return std::dynamic_pointer_cast<typename State::Handle>(document.handle_of(document.add<State>(name)));
    }
};

Json written(SimObject& event) {
    auto const& state = *ObjectAccess::state(event);
    Json json = Json::object();
    write_fields(fields_in(state), json);
    return json;
}

std::shared_ptr<Geometry> box(Vec3d const& centre) {
    return std::make_shared<RectangleGeometry>(centre, Vec3d(1, 0, 0), Vec3d(0, 0, 1), 2, 2);
}

TEST_F(Events, BeginAsDocumented) {
    auto const evacuation = create<EvacuationState>("Alarm");
    EXPECT_EQ(evacuation->GetTypeId(), static_cast<int>(ObjectType::EVACUATION));
    EXPECT_EQ(create<JourneyState>("Arrivals")->GetTypeId(), static_cast<int>(ObjectType::JOURNEY));
    auto const source = evacuation->GetPopulationSource();
    EXPECT_EQ(source->GetPopulationSourceTypeId(), static_cast<int>(PopulationSourceTypeId::COUNT));
    EXPECT_EQ(source->GetTotalPopulationCount(), 0);
    EXPECT_FALSE(evacuation->GetProfile().IsValid());
    EXPECT_EQ(evacuation->GetColorSchemeType(), EventColorSchemeType::EVENT_COLOR);
    EXPECT_EQ(evacuation->GetPreMovementWaitDistribution()->GetMax(), 0);
    EXPECT_TRUE(evacuation->GetZones().empty());
    EXPECT_EQ(evacuation->GetPreMovementWaitStyle()->GetWaitStyleTypeId(), WaitStyleTypeId::STAND_STILL);
    EXPECT_EQ(evacuation->GetStartTrigger()->GetTriggerTypeId(), static_cast<int>(TriggerType::SIMULATION_START));
    EXPECT_FALSE(evacuation->HasInitialAction());
    EXPECT_EQ(evacuation->GetInitialActionCopy(), nullptr);
    EXPECT_EQ(create<CirculateState>("Rounds")->GetCirculationCommand(), CirculationCommand::ENTIRE_SIMULATION);

    auto const broadcast = create<BroadcastState>("Call");
    EXPECT_EQ(broadcast->GetTriggerRange()->GetTriggerRangeTypeId(),
              static_cast<int>(TriggerRangeType::ALL_SIMULATION));
    EXPECT_EQ(broadcast->GetAgentAction()->GetAgentActionTypeId(), static_cast<int>(AgentActionTypeId::DO_NOTHING));
    EXPECT_FALSE(broadcast->HasAgentTest());
    EXPECT_FALSE(broadcast->HasZone());
    EXPECT_THAT(refusal_of([&] { broadcast->GetAgentTest(); }), HasSubstr("Broadcast 'Call' has no agentTest"));
    EXPECT_THAT(refusal_of([&] { broadcast->GetZone(); }), HasSubstr("Broadcast 'Call' has no zone"));
}

TEST_F(Events, KeepCopiesOfSourcesAndDistributions) {
    auto const evacuation = create<EvacuationState>("Alarm");
    auto const source = std::make_shared<CountPopulationSource>(std::vector{hall}, std::vector{street}, 5);
    evacuation->SetPopulationSource(source);
    source->SetPopulationCount(6);
    std::dynamic_pointer_cast<CountPopulationSource>(evacuation->GetPopulationSource())->SetPopulationCount(7);
    EXPECT_EQ(evacuation->GetPopulationSource()->GetTotalPopulationCount(), 5);

    auto const wait = Distribution::CreateUniform(10, 20);
    evacuation->SetPreMovementWaitDistribution(wait);
    wait->SetMax(30);
    EXPECT_EQ(evacuation->GetPreMovementWaitDistribution()->GetMax(), 20);

    auto const trigger = std::make_shared<SimulationStartTrigger>(60);
    auto const action = std::make_shared<SetColorAction>(Color::RED);
    evacuation->SetStartTrigger(trigger);
    evacuation->SetInitialAction(action);
    trigger->SetOffsetInSeconds(61);
    action->SetColor(Color::BLUE);
    auto const kept = std::dynamic_pointer_cast<SimulationStartTrigger>(evacuation->GetStartTrigger());
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->GetOffsetInSeconds(), 60);
    auto const initial = [&] { return std::dynamic_pointer_cast<SetColorAction>(evacuation->GetInitialActionCopy()); };
    initial()->SetColor(Color::BLACK);
    EXPECT_TRUE(initial()->GetColor().InternalEquals(Color::RED));
    evacuation->SetInitialAction(nullptr);
    EXPECT_FALSE(evacuation->HasInitialAction());
}

TEST_F(Events, SurviveCopyingAndFiles) {
    auto const evacuation = create<EvacuationState>("Alarm");
    auto const source = std::make_shared<CountPopulationSource>(std::vector{hall}, std::vector{street}, 5);
    source->SetPopulationArrival(PopulationArrival::CreateRandomDistribution(Distribution::CreateUniform(1, 2)));
    evacuation->SetPopulationSource(source);
    evacuation->SetProfile(commuter);
    evacuation->SetZones({hall});
    evacuation->SetPreMovementWaitDistribution(Distribution::CreateLogNormal(3, 0.5, 0, 120));
    evacuation->SetColorSchemeSpecified(Color(0.25, 0.5, 0.75));
    auto const json = written(*evacuation);

    auto const& kind = kind_of<EvacuationState>();
    auto const opened = kind.make();
    opened->document = &document;
    std::vector<Issue> warnings;
    Reading reading{warnings, ""};
    read_object_fields(*opened, Json::parse(json.dump()), reading);
    check_object(*opened);
    Json again = Json::object();
    write_fields(fields_in(*opened), again);
    EXPECT_EQ(again, json);
    EXPECT_TRUE(warnings.empty());

    // The places know who comes from them and goes to them.
    auto const to_hall = document.references_to(hall);
    ASSERT_EQ(to_hall.size(), 2U);
    EXPECT_EQ(to_hall[0].role, Role::ORIGIN);
    ASSERT_EQ(document.references_to(street).size(), 1U);
    EXPECT_EQ(document.references_to(street)[0].role, Role::DESTINATION);
}

TEST_F(Events, AreSavedAndOpenedEqual) {
    for (auto* const object : document.objects<SceneState>()) object->geometry = box({});
    auto const count = Distribution::CreateUniform(1, 3);
    auto const noon = TimeReference::Absolute(43200);
    std::vector<std::function<void(Circulate&)>> const commands{
        [](Circulate& circulate) { circulate.CirculateEntireSimulation(); },
        [&](Circulate& circulate) { circulate.CirculateForCount(count); },
        [&](Circulate& circulate) { circulate.CirculateForDuration(Distribution::CreateConstant(600)); },
        [&](Circulate& circulate) {
            circulate.CirculateForCountOrDuration(count, Distribution::CreateConstant(600), true);
        },
        [&](Circulate& circulate) { circulate.CirculateUntilTime(noon); },
        [&](Circulate& circulate) { circulate.CirculateUntilTimeOrCount(noon, count, true); }};
    for (std::size_t command = 0; command < commands.size(); ++command) {
        auto const circulate = create<CirculateState>("Rounds " + std::to_string(command));
        circulate->SetCirculatePortals({door, gate});
        commands[command](*circulate);
        EXPECT_EQ(circulate->GetCirculationCommand(), static_cast<CirculationCommand>(command));
        circulate->SetStartTrigger(std::make_shared<SimulationStartTrigger>(30));
        circulate->SetInitialAction(std::make_shared<AddTokensAction>(badge));
        circulate->SetColorSchemeRules({has_badge}, {Color::RED}, Color::BLUE);
    }
    auto const broadcast = create<BroadcastState>("Call");
    broadcast->SetTriggerRange(
        std::make_shared<OverDurationTriggerRange>(std::make_shared<SimulationStartTrigger>(5), 60));
    broadcast->SetAgentAction(std::make_shared<ClearTokensAction>(badge));
    broadcast->SetAgentTest(has_badge);
    broadcast->SetZone(zone);
    auto const dispatch = create<DispatchState>("Foyer");
    dispatch->SetSource(door);
    dispatch->SetSinks({hall, zone});
    dispatch->SetPosition(Vec3d(1, 2, 3));
    create<EvacuationState>("Alarm")->SetPreMovementWaitStyle(WaitStyle::SpreadOut());

    auto const opened = from_text(to_text(document), event_kinds());
    EXPECT_THAT(differences(document, *opened), IsEmpty());
    EXPECT_THAT(opened->open_warnings, IsEmpty());
    EXPECT_TRUE(
        std::get<ForCountOrDuration>(opened->find<CirculateState>(std::string("Rounds 3"))->circulation).until_both);
    EXPECT_THAT(refusal_of([&] { document.remove(*document.find(badge)); }), HasSubstr("Call"));
    EXPECT_THAT(refusal_of([&] { document.remove(*document.find(gate)); }), HasSubstr("Rounds"));
    EXPECT_EQ(refusal_of([&] { document.remove(*document.find(street)); }), NOTHING_REFUSED);
}

TEST_F(Events, RefuseWhatIsNotThereAndStayAsTheyAre) {
    auto const evacuation = create<EvacuationState>("Alarm");
    auto const before = written(*evacuation);
    auto const source_from = [](GlobalId const& place) {
        return std::make_shared<CountPopulationSource>(std::vector{place}, 5);
    };
    EXPECT_THROW(evacuation->SetPopulationSource(nullptr), Exception);
    EXPECT_THROW(evacuation->SetPopulationSource(source_from(GlobalId::Generate())), Exception);
    EXPECT_THROW(evacuation->SetPopulationSource(source_from(commuter)), Exception);
    EXPECT_THROW(evacuation->SetProfile(hall), Exception);
    EXPECT_THROW(evacuation->SetZones({hall, hall}), Exception);
    EXPECT_THROW(evacuation->SetZones({GlobalId::INVALID}), Exception);
    EXPECT_THROW(evacuation->SetPreMovementWaitDistribution(nullptr), Exception);
    EXPECT_THROW(evacuation->SetPreMovementWaitDistribution(Distribution::CreateUniform(-1, 5)), Exception);
    EXPECT_THROW(evacuation->SetPreMovementWaitDistribution(Distribution::CreateUniform(5, 1)), Exception);
    EXPECT_EQ(written(*evacuation), before);

    auto const circulate = create<CirculateState>("Rounds");
    auto const broadcast = create<BroadcastState>("Call");
    auto const dispatch = create<DispatchState>("Foyer");
    auto const all_written = [&] {
        return std::vector{written(*evacuation), written(*circulate), written(*broadcast), written(*dispatch)};
    };
    auto const all_before = all_written();
    auto const count = Distribution::CreateConstant(1);
    auto const time = TimeReference::AfterEventStart(hall, 5);
    struct {
        std::function<void()> action;
        char const* message;
    } const cases[] = {
        {[&] { evacuation->SetPreMovementWaitStyle(nullptr); }, "preMovementWaitStyle must be given, not empty"},
        {[&] { evacuation->SetStartTrigger(nullptr); }, "Evacuation 'Alarm': startTrigger must be given, not empty"},
        {[&] { evacuation->SetInitialAction(std::make_shared<AddTokensAction>(hall)); }, "initialAction.tokens.0"},
        {[&] {
             evacuation->SetColorSchemeRules({has_badge, has_badge}, {Color::RED}, Color::BLUE);
         },
         "Evacuation 'Alarm': tests number 2, colours 1"},
        {[&] { evacuation->SetColorSchemeRules({nullptr}, {Color::RED}, Color::BLUE); }, "agentTest must be given"},
        {[&] { evacuation->SetColorSchemeRules({std::make_shared<TokenTest>(hall)}, {Color::RED}, Color::BLUE); },
         "the identifier of a token"},
        {[&] { circulate->SetCirculatePortals({hall}); }, "the identifier of a portal, not that of Place 'Hall'"},
        {[&] {
             circulate->SetCirculatePortals({door, door});
         },
         "a list of different objects"},
        {[&] { circulate->CirculateForCount(nullptr); }, "circulation.count must be given, not empty"},
        {[&] { circulate->CirculateForCount(Distribution::CreateConstant(-1)); }, "at least 0"},
        {[&] { circulate->CirculateForDuration(Distribution::CreateUniform(2, 1)); }, "must be a valid distribution"},
        {[&] { circulate->CirculateForCountOrDuration(count, nullptr, true); }, "circulation.duration must be given"},
        {[&] { circulate->CirculateUntilTime(nullptr); }, "circulation.time must be given, not empty"},
        {[&] { circulate->CirculateUntilTimeOrCount(time, count, false); }, "the identifier of an event"},
        {[&] { broadcast->SetTriggerRange(nullptr); }, "triggerRange must be given, not empty"},
        {[&] { broadcast->SetAgentAction(nullptr); }, "agentAction must be given, not empty"},
        {[&] { broadcast->SetAgentTest(nullptr); }, "agentTest must be given, not empty"},
        {[&] { broadcast->SetZone(hall); }, "the identifier of a zone, not that of Place 'Hall'"},
        {[&] { broadcast->SetZone(GlobalId::INVALID); }, "the identifier of a zone, not the invalid identifier"},
        {[&] { dispatch->SetSource(badge); }, "the identifier of a server, portal, floor, connection or zone"},
        {[&] {
             dispatch->SetSinks({door, door});
         },
         "a list of different objects"},
        {[&] { dispatch->SetPosition(Vec3d(0, std::numeric_limits<double>::quiet_NaN(), 0)); }, "finite components"},
    };
    for (auto const& [action, message] : cases) {
        EXPECT_THAT(refusal_of(action), HasSubstr(message));
        EXPECT_EQ(all_written(), all_before) << message;
    }
}

TEST_F(Events, ColourByRulesUntilAnotherSchemeIsSet) {
    auto const journey = create<JourneyState>("Arrivals");
    journey->SetColorSchemeRules({has_badge, std::make_shared<AlwaysTrueTest>()}, {Color::RED, Color::GREEN},
                                 Color::BLUE);
    EXPECT_EQ(journey->GetColorSchemeType(), EventColorSchemeType::RULES);
    EXPECT_TRUE(journey->GetColorSchemeColor().InternalEquals(Color::BLUE));
    ASSERT_EQ(journey->GetColorSchemeRuleCount(), 2);
    EXPECT_EQ(journey->GetColorSchemeRuleAgentTest(0)->GetAgentTestTypeId(), static_cast<int>(AgentTestType::TOKEN));
    EXPECT_TRUE(journey->GetColorSchemeRuleColor(1).InternalEquals(Color::GREEN));
    EXPECT_NE(journey->GetColorSchemeRuleAgentTest(0), journey->GetColorSchemeRuleAgentTest(0));
    EXPECT_THAT(refusal_of([&] { journey->GetColorSchemeRuleColor(2); }),
                HasSubstr("Journey 'Arrivals': there is no colour rule 2, it has 2"));
    EXPECT_THAT(refusal_of([&] { journey->GetColorSchemeRuleAgentTest(-1); }), HasSubstr("no colour rule -1"));
    EXPECT_THAT(refusal_of([&] { document.remove(*document.find(badge)); }),
                HasSubstr("cannot be removed while others refer to it: Journey 'Arrivals'"));
    journey->SetColorSchemeDarker();
    EXPECT_EQ(journey->GetColorSchemeRuleCount(), 0);
    EXPECT_EQ(refusal_of([&] { document.remove(*document.find(badge)); }), NOTHING_REFUSED);
}

TEST_F(Events, DispatchesStandAmongTheirStations) {
    auto const dispatch = create<DispatchState>("Foyer");
    auto const place = [&](GlobalId const& id, Vec3d const& centre) {
        document.find<SceneState>(id)->geometry = box(centre);
    };
    auto const stands_at = [&] { return state_of<DispatchState>(*dispatch).position; };
    dispatch->SetPosition(Vec3d(9, 9, 9));
    dispatch->Reposition();
    EXPECT_TRUE(stands_at().InternalEquals(Vec3d(9, 9, 9)));

    place(door, {0, 0, 0});
    place(gate, {6, 3, 0});
    place(hall, {0, 0, 12});
    place(street, {0, 0, 0});
    document.find<ZoneState>(zone)->base_members = {hall};
    dispatch->SetSource(door);
    dispatch->SetSinks({gate, zone});
    dispatch->Reposition();
    EXPECT_TRUE(stands_at().InternalEquals(Vec3d(2, 1, 4)));
}

TEST_F(Events, ColourTheirAgents) {
    auto const journey = create<JourneyState>("Arrivals");
    journey->SetColor(Color(0.5, 0, 1, 0.5));
    EXPECT_TRUE(journey->GetColorSchemeColor().InternalEquals(Color(0.5, 0, 1, 0.5)));
    journey->SetColorSchemeLighter();
    EXPECT_TRUE(journey->GetColorSchemeColor().InternalEquals(Color(0.75, 0.5, 1, 0.5)));
    journey->SetColorSchemeDarker();
    EXPECT_TRUE(journey->GetColorSchemeColor().InternalEquals(Color(0.25, 0, 0.5, 0.5)));
    journey->SetColorSchemeSpecified(Color::RED);
    EXPECT_TRUE(journey->GetColorSchemeColor().InternalEquals(Color::RED));
    EXPECT_EQ(journey->GetColorSchemeType(), EventColorSchemeType::SPECIFIED);
    journey->SetColorSchemeEventColor();
    EXPECT_TRUE(journey->GetColorSchemeColor().InternalEquals(Color(0.5, 0, 1, 0.5)));
}

TEST(TimeRange, HoldsAllTimesOrTheOnesGiven) {
    TimeRange all;
    EXPECT_EQ(all.GetStartTimeInSeconds(), 0);
    EXPECT_EQ(all.GetEndTimeInSeconds(), std::numeric_limits<int>::max());
    TimeRange minute(60, 120);
    EXPECT_EQ(minute.GetStartTimeInSeconds(), 60);
    EXPECT_EQ(minute.GetEndTimeInSeconds(), 120);
    EXPECT_NO_THROW(TimeRange(60, 60));
    EXPECT_THROW(TimeRange(-1, 5), Exception);
    EXPECT_THROW(TimeRange(6, 5), Exception);
}

}  // namespace
}  // namespace pedflux::engine
