#include "tests/engine/behaviour/time_rules.h"
#include "tests/engine/refusal.h"

#include <pedflux/access_rules.h>
#include <pedflux/agent_tests.h>
#include <pedflux/time_references.h>

namespace pedflux::engine {
namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;

struct AccessRules : TimeRules {
    std::shared_ptr<GateAccess> gates = create<GateAccessState>("Gates");
    std::shared_ptr<ServerAccess> servers = create<ServerAccessState>("Servers");
};

TEST_F(AccessRules, BeginAsDocumented) {
    EXPECT_EQ(gates->GetTypeId(), static_cast<int>(ObjectType::GATE_ACCESS));
    EXPECT_EQ(servers->GetTypeId(), static_cast<int>(ObjectType::SERVER_ACCESS));
    EXPECT_EQ(create<TokenState>("Ticket")->GetTypeId(), static_cast<int>(ObjectType::TOKEN));
    EXPECT_TRUE(gates->IsCommandToOpen());
    EXPECT_EQ(gates->GetCommandDirection(), ConnectionObjectDirection::BOTH_WAYS);
    EXPECT_FALSE(gates->HasAgentTest());
    EXPECT_THAT(refusal_of([&] { gates->GetAgentTest(); }), HasSubstr("GateAccess 'Gates' has no agentTest"));
    EXPECT_TRUE(servers->IsCommandToOpen());
    EXPECT_EQ(servers->GetCommandAccessPoint(), ServerAccessPoint::ENTRANCE_AND_EXIT);
    EXPECT_EQ(servers->GetTriggerRange()->GetTriggerRangeTypeId(), static_cast<int>(TriggerRangeType::ALL_SIMULATION));
}

TEST_F(AccessRules, CommandOneThing) {
    gates->SetCommandToClose(ConnectionObjectDirection::BALL_TO_BOX);
    EXPECT_TRUE(gates->IsCommandToClose());
    EXPECT_FALSE(gates->IsCommandToOpen());
    EXPECT_THAT(refusal_of([&] { gates->SetCommandToOpen(static_cast<ConnectionObjectDirection>(9)); }),
                HasSubstr("commandDirection must be one of"));
    EXPECT_TRUE(gates->IsCommandToClose());
    EXPECT_EQ(gates->GetCommandDirection(), ConnectionObjectDirection::BALL_TO_BOX);

    servers->SetCommandToClose(ServerAccessPoint::EXIT);
    servers->SetCommandToOpen(ServerAccessPoint::ENTRANCE);
    EXPECT_FALSE(servers->IsCommandToClose());
    EXPECT_EQ(servers->GetCommandAccessPoint(), ServerAccessPoint::ENTRANCE);
}

template <class Access>
void expect_cycles(Access& access) {
    EXPECT_FALSE(access.HasCycle());
    EXPECT_THAT(refusal_of([&] { access.GetCycleOnDurationInSeconds(); }), HasSubstr("has no cycle"));
    EXPECT_THAT(refusal_of([&] { access.SetCycleOffDurationInSeconds(0); }),
                HasSubstr("offDurationInSeconds must be at least 1 s, not 0"));
    EXPECT_FALSE(access.HasCycle());
    access.SetCycleOffDurationInSeconds(20);
    EXPECT_TRUE(access.HasCycle());
    EXPECT_EQ(access.GetCycleOnDurationInSeconds(), 20);
    access.SetCycleOnDurationInSeconds(30);
    EXPECT_EQ(access.GetCycleOnDurationInSeconds(), 30);
    EXPECT_EQ(access.GetCycleOffDurationInSeconds(), 20);
    access.ClearCycle();
    EXPECT_FALSE(access.HasCycle());
    EXPECT_THAT(refusal_of([&] { access.GetCycleOffDurationInSeconds(); }), HasSubstr("has no cycle"));
}

TEST_F(AccessRules, CycleOnceEitherPartIsSet) {
    expect_cycles(*gates);
    expect_cycles(*servers);
}

TEST_F(AccessRules, ConcernObjectsOfOneKind) {
    gates->SetGatedObjects({link});
    servers->SetServers({server});
    struct {
        std::function<void()> action;
        char const* message;
    } const refused[] = {
        {[&] {
             gates->SetGatedObjects({link, server});
         },
         "gatedObjects.1 must be the identifier of a connection"},
        {[&] {
             gates->SetGatedObjects({link, link});
         },
         "twice"},
        {[&] { servers->SetServers({link}); }, "servers.0 must be the identifier of a server"},
        {[&] { servers->SetServers({GlobalId::INVALID}); }, "not the invalid identifier"},
        {[&] { gates->SetAgentTest(nullptr); }, "agentTest"},
        {[&] { servers->SetTriggerRange(nullptr); }, "triggerRange must be given"},
        {[&] { document.remove(*document.find(link)); }, "Gates"},
        {[&] { document.remove(*document.find(server)); }, "Servers"},
    };
    for (auto const& [action, message] : refused) EXPECT_THAT(refusal_of(action), HasSubstr(message));
    EXPECT_THAT(gates->GetGatedObjects(), SizeIs(1));
    EXPECT_THAT(servers->GetServers(), SizeIs(1));
}

TEST_F(AccessRules, AreSavedAndOpenedEqual) {
    gates->SetGatedObjects({link});
    gates->SetCommandToClose(ConnectionObjectDirection::BOX_TO_BALL);
    gates->SetCycleOnDurationInSeconds(5);
    gates->SetTriggerRange(std::make_shared<OverDurationTriggerRange>(std::make_shared<SimulationStartTrigger>(1), 2));
    gates->SetAgentTest(std::make_shared<RandomChanceTest>(0.5));
    EXPECT_TRUE(gates->HasAgentTest());
    servers->SetServers({server});
    servers->SetCommandToClose(ServerAccessPoint::EXIT);
    create<TokenState>("Ticket");
    auto const opened = reopened();
    EXPECT_FALSE(opened->find<GateAccessState>(std::string("Gates"))->opens);
    gates->ClearAgentTest();
    EXPECT_FALSE(gates->HasAgentTest());
}

TEST_F(AccessRules, TimesKeepTheirFrame) {
    using enum TimeReferenceFrame;
    auto const object = create<TimeObjectState>("Noon");
    EXPECT_EQ(object->GetTimeReference()->GetTimeReferenceFrame(), ABSOLUTE);
    struct {
        std::shared_ptr<TimeReference> time;
        TimeReferenceFrame frame;
    } const cases[] = {
        {TimeReference::AfterSimulationStart(60), AFTER_SIMULATION_START},
        {TimeReference::BeforeSimulationEnd(0), BEFORE_SIMULATION_END},
        {TimeReference::AfterEventStart(journey, 60), AFTER_EVENT_START},
        {TimeReference::Absolute(100'000), ABSOLUTE},
    };
    for (auto const& [time, frame] : cases) {
        object->SetTimeReference(time);
        EXPECT_EQ(object->GetTimeReference()->GetTimeReferenceFrame(), frame);
        auto const opened = reopened();
        auto const kept = SharedValue<TimeReference>::value(*opened->find<TimeObjectState>(std::string("Noon"))->time);
        EXPECT_EQ(kept.frame, frame);
        EXPECT_EQ(kept.seconds, SharedValue<TimeReference>::value(*time).seconds);
    }
    object->SetAbsoluteTime(43'200);
    struct {
        std::function<void()> action;
        char const* message;
    } const refused[] = {
        {[&] { object->SetAbsoluteTime(-1); }, "-1 s; it must be at least 0"},
        {[&] { object->SetTimeReference(nullptr); }, "TimeObject 'Noon': time must be given"},
        {[&] { object->SetTimeReference(TimeReference::AfterEventStart(link, 1)); }, "time.event must be the"},
        {[&] { TimeReference::AfterEventStart(GlobalId::INVALID, 1); }, "needs the identifier of an event"},
        {[&] { TimeReference::BeforeSimulationEnd(-2); }, "-2 s"},
    };
    for (auto const& [action, message] : refused) EXPECT_THAT(refusal_of(action), HasSubstr(message));
    EXPECT_EQ(SharedValue<TimeReference>::value(*object->GetTimeReference()).seconds, 43'200);
}

}  // namespace
}  // namespace pedflux::engine
