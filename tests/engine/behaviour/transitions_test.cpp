#include "tests/engine/behaviour/time_rules.h"
#include "tests/engine/refusal.h"

#include <pedflux/transitions.h>
#include <pedflux/triggers.h>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using TransitionPointer = NodePointerOf<Transition>;
using TransitionList = NodeList<Transition>;

struct Transitions : TimeRules {
    TransitionList one_of_each() const {
        auto const in = Transition::SimEnter(portal);
        return {std::make_shared<AnyOfTransition>(in, Transition::SimExit(portal)),
                Transition::AtPortal(portal),
                Transition::ChannelTransition(link, portal),
                std::make_shared<CordonTransition>(cordon),
                Transition::AreaEnter(volume),
                Transition::AreaExit(volume),
                Transition::ServerEnter(server),
                Transition::ServerExit(server),
                in,
                Transition::SimExit(link)};
    }
    /// An object of the project that takes a transition.
    void keep(TransitionPointer const& transition) {
        auto const object = create<TriggerObjectState>(document.next_unique_name("Count"));
        object->SetTrigger(std::make_shared<TransitionCountTrigger>(std::make_shared<SimulationStartTrigger>(0),
                                                                    transition, 1, false));
    }
};

TEST_F(Transitions, ComeInAllKindsAndAreCopiedWhole) {
    expect_distinct_numbers<Transition>();
    expect_one_of_each_kind(one_of_each());
    expect_clones(one_of_each());
    for (auto const& transition : one_of_each()) keep(transition);
    reopened();
}

TEST_F(Transitions, NameObjectsOfTheRightKindOnceAProjectTakesThem) {
    struct {
        TransitionPointer transition;
        char const* expected;
    } const cases[] = {
        {Transition::AtPortal(link), "portal must be the identifier of a portal"},
        {std::make_shared<CordonTransition>(portal), "cordon must be the identifier of a cordon"},
        {Transition::AreaEnter(cordon), "area must be the identifier of"},
        {Transition::AreaExit(server), "area must be the identifier of"},
        {Transition::ServerEnter(link), "server must be the identifier of a server"},
        {Transition::SimExit(server), "object must be the identifier of"},
        {Transition::AnyOf({Transition::AtPortal(portal), Transition::AtPortal(GlobalId::Generate())}),
         "transition.childTransitions.1.portal must be the identifier of a portal"},
        {Transition::ChannelTransition(portal, server), "toObject must be the identifier of"},
        {Transition::ChannelTransition(portal, portal), "toObject must be another object than fromObject"},
    };
    for (auto const& [transition, expected] : cases) {
        EXPECT_THAT(refusal_of([&, &transition = transition] { keep(transition); }), HasSubstr(expected));
    }
    for (auto const& made : {&Transition::AtPortal, &Transition::AreaEnter, &Transition::ServerExit}) {
        EXPECT_THAT(refusal_of([&] { made(GlobalId::INVALID); }), HasSubstr("not the invalid identifier"));
    }
}

TEST_F(Transitions, ListsOfTransitionsChangeAsAskedOrNotAtAll) {
    auto const in = Transition::SimEnter(portal);
    auto const out = Transition::SimExit(portal);
    auto const any = std::make_shared<AnyOfTransition>(TransitionList{});
    EXPECT_THAT(any->GetChildTransitions(), IsEmpty());
    any->SetChildTransitions({in, out});
    any->AddChildTransition(in);
    any->SetChildTransition(0, out);
    EXPECT_THAT(any->GetChildTransitions(), ElementsAre(out, out, in));

    auto const outer = std::make_shared<AnyOfTransition>(TransitionList{any});
    struct {
        std::function<void()> action;
        char const* message;
    } const refused[] = {
        {[&] { any->AddChildTransition(nullptr); }, "childTransitions.3 must be given"},
        {[&] { AnyOfTransition made(in, nullptr); }, "childTransitions.1 must be given"},
        {[&] { any->SetChildTransition(3, in); }, "there is no child 3, it has 3"},
        {[&] { any->GetChildTransition(-1); }, "there is no child -1"},
        {[&] { any->AddChildTransition(outer); }, "must not be or hold"},
    };
    for (auto const& [action, message] : refused) EXPECT_THAT(refusal_of(action), HasSubstr(message));
    EXPECT_EQ(any->GetChildTransitionCount(), 3);
    EXPECT_EQ(in->GetChildTransitionCount(), 0);

    EXPECT_TRUE(outer->IsValidChild(in));
    EXPECT_FALSE(any->IsValidChild(outer));
    EXPECT_FALSE(any->IsValidChild(nullptr));
    EXPECT_FALSE(in->IsValidChild(out));
}

}  // namespace
}  // namespace pedflux::engine
