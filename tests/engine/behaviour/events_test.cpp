#include "engine/behaviour/event_states.h"
#include "engine/model/document.h"
#include "engine/model/kind.h"
#include "engine/model/scene_states.h"

#include <pedflux/distributions.h>
#include <pedflux/events.h>
#include <pedflux/exception.h>
#include <pedflux/population_sources.h>
#include <pedflux/time_range.h>

#include <limits>

#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

struct PlaceState : NetworkState {
    static constexpr ObjectType TYPE = ObjectType::FLOOR;
    static constexpr std::string_view NAME = "Place";
    using Face = SceneObject;
};

struct PersonState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::PROFILE;
    static constexpr std::string_view NAME = "Person";
    using Face = SimObject;
};

struct Events : testing::Test {
    Document document;
    GlobalId hall = document.add<PlaceState>("Hall").id;
    GlobalId street = document.add<PlaceState>("Street").id;
    GlobalId commuter = document.add<PersonState>("Commuter").id;

    template <class State>
    std::shared_ptr<typename State::Face> create(std::string const& name) {
        return std::dynamic_pointer_cast<typename State::Face>(document.face_of(document.add<State>(name)));
    }
};

Json written(SimObject& event) {
    auto const& state = *ObjectAccess::state(event);
    Json json = Json::object();
    state.kind->write(state, json);
    return json;
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
    kind.read(*opened, Json::parse(json.dump()), reading);
    kind.check(*opened);
    Json again = Json::object();
    kind.write(*opened, again);
    EXPECT_EQ(again, json);
    EXPECT_TRUE(warnings.empty());

    // The places know who comes from them and goes to them.
    auto const to_hall = document.references_to(hall);
    ASSERT_EQ(to_hall.size(), 2U);
    EXPECT_EQ(to_hall[0].role, Role::ORIGIN);
    ASSERT_EQ(document.references_to(street).size(), 1U);
    EXPECT_EQ(document.references_to(street)[0].role, Role::DESTINATION);
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
