#include "engine/behaviour/triggers/transition_program.h"

#include "engine/base/checks.h"
#include "engine/base/identifiers.h"
#include "engine/model/node.h"
#include "engine/scene/scene_states.h"

#include <pedflux/exception.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

constexpr SurfaceIndex left_floor = 0;
constexpr SurfaceIndex right_floor = 1;
constexpr SurfaceIndex upper_floor = 2;
constexpr SurfaceIndex link_between = 3;
constexpr std::uint32_t west_number = 4;
constexpr std::uint32_t east_number = 5;
constexpr std::uint32_t desk_number = 6;

/// Three floors, a link from each to the right one, two portals, a volume above the left floor and a server.
struct Building final : TransitionObjects {
    GlobalId left = GlobalId::Generate();
    GlobalId right = GlobalId::Generate();
    GlobalId link = GlobalId::Generate();
    GlobalId west = GlobalId::Generate();
    GlobalId east = GlobalId::Generate();
    GlobalId zone = GlobalId::Generate();
    GlobalId volume = GlobalId::Generate();
    GlobalId disabled = GlobalId::Generate();
    GlobalId line = GlobalId::Generate();
    GlobalId desk = GlobalId::Generate();

    Area area(GlobalId const& object) override {
        std::map<GlobalId, Area, GlobalIdLess> const areas{{left, {.surfaces = {true, false, false, false}}},
                                                           {right, {.surfaces = {false, true, false, false}}},
                                                           {link, {.surfaces = {false, false, false, true}}},
                                                           {zone, {.surfaces = {true, false, false, true}}},
                                                           {west, {.portal = west_number}},
                                                           {east, {.portal = east_number}},
                                                           {volume, {.volume = 0}},
                                                           {disabled, {}}};
        return areas.at(object);
    }
    /// From (5, 0) to (5, 4), both ways.
    CordonLine cordon(NodeState const&, GlobalId const&) override { return {{{5, 0}, {5, 4}}, 0, 2, {true, true}}; }
    std::uint32_t server(NodeState const& transition, GlobalId const& object) override {
        if (!object.InternalEquals(desk)) refuse(std::string(transition.kind->name) + " of an unknown server");
        return desk_number;
    }
};

Whereabouts on(SurfaceIndex surface) { return {.surface = surface, .on_connection = surface == link_between}; }
Whereabouts on_left(double x, bool in_volume) {
    return {.surface = left_floor, .position = {x, 2}, .volumes = {in_volume}};
}

/// The names of the crossings that make a transition.
std::string makers(Building& building, std::shared_ptr<Transition> const& transition) {
    struct Named {
        char name;
        SurfaceIndex before;
        Whereabouts from;
        Whereabouts to;
        std::optional<std::uint32_t> portal{};
    };
    std::vector<Named> const crossings{
        {'A', no_surface, {}, on(left_floor), west_number},     {'B', no_surface, on(left_floor), on(link_between)},
        {'C', left_floor, on(link_between), on(right_floor)},   {'D', left_floor, on(link_between), on(left_floor)},
        {'E', link_between, on(right_floor), {}, east_number},  {'F', link_between, on(right_floor), {}},
        {'G', no_surface, on_left(4, false), on_left(6, true)}, {'H', upper_floor, on(link_between), on(right_floor)},
        {'I', no_surface, on(right_floor), on(link_between)},   {'J', link_between, on_left(6, true), {}},
    };
    auto const program = compile(*transition, building);
    std::string names;
    for (auto const& [name, before, from, to, portal] : crossings) {
        if (makes(program, Crossing{before, from, to, portal})) names += name;
    }
    if (makes(program, ServerCrossing{desk_number, true})) names += 'S';
    if (makes(program, ServerCrossing{desk_number, false})) names += 'T';
    if (makes(program, ServerCrossing{desk_number + 1, true})) names += '?';
    return names;
}

TEST(TransitionPrograms, AreMadeByTheCrossingsThatTheyDescribe) {
    Building there;
    struct Case {
        std::shared_ptr<Transition> transition;
        char const* makers;
    };
    std::vector<Case> const cases{
        {Transition::AtPortal(there.west), "A"},
        {Transition::AtPortal(there.east), "E"},
        {Transition::AreaEnter(there.left), "AD"},
        {Transition::AreaEnter(there.link), "BI"},
        {Transition::AreaEnter(there.zone), "AI"},
        {Transition::AreaEnter(there.west), "A"},
        {Transition::AreaEnter(there.volume), "G"},
        {Transition::AreaEnter(there.disabled), ""},
        {Transition::AreaExit(there.left), "BJ"},
        {Transition::AreaExit(there.right), "EFI"},
        {Transition::AreaExit(there.zone), "CHJ"},
        {Transition::AreaExit(there.east), "E"},
        {Transition::AreaExit(there.volume), "J"},
        {Transition::SimEnter(there.left), "A"},
        {Transition::SimEnter(there.west), "A"},
        {Transition::SimEnter(there.zone), "A"},
        {Transition::SimEnter(there.east), ""},
        {Transition::SimExit(there.right), "EF"},
        {Transition::SimExit(there.east), "E"},
        {Transition::SimExit(there.zone), "J"},
        {Transition::SimExit(there.disabled), ""},
        {Transition::ChannelTransition(there.left, there.link), "B"},
        {Transition::ChannelTransition(there.left, there.right), "C"},
        {Transition::ChannelTransition(there.link, there.right), "CH"},
        {Transition::ChannelTransition(there.link, there.left), "D"},
        {Transition::ChannelTransition(there.right, there.left), ""},
        {Transition::ChannelTransition(there.zone, there.right), "CH"},
        {Transition::ChannelTransition(there.west, there.left), "A"},
        {Transition::ChannelTransition(there.right, there.east), "E"},
        {Transition::ChannelTransition(there.west, there.right), ""},
        {std::make_shared<CordonTransition>(there.line), "G"},
        {Transition::ServerEnter(there.desk), "S"},
        {Transition::ServerExit(there.desk), "T"},
        {Transition::AnyOf({Transition::SimEnter(there.west), Transition::AreaEnter(there.left)}), "AD"},
        {Transition::AnyOf({Transition::AnyOf({Transition::ServerEnter(there.desk)}), Transition::SimExit(there.east)}),
         "ES"},
        {Transition::AnyOf(std::vector<std::shared_ptr<Transition>>{}), ""},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(makers(there, cases[i].transition), cases[i].makers) << "case " << i;
    }
    EXPECT_THROW(compile(*Transition::ServerExit(there.left), there), Exception);
}

TEST(TransitionPrograms, AskForNoMoreThanTheyNeed) {
    Building there;
    auto const asked = [&](std::shared_ptr<Transition> const& transition) {
        auto const program = compile(*transition, there);
        return std::pair(asks_for_position(program), asks_for_volumes(program));
    };
    auto const enters_left = Transition::AreaEnter(there.left);
    EXPECT_EQ(asked(enters_left), std::pair(false, false));
    EXPECT_EQ(asked(Transition::AnyOf({enters_left, std::make_shared<CordonTransition>(there.line)})),
              std::pair(true, false));
    EXPECT_EQ(asked(Transition::AnyOf({enters_left, Transition::AreaExit(there.volume)})), std::pair(true, true));
}

TEST(Trails, TellWhereAnAgentWasBefore) {
    std::string told;
    auto const tell = [&](Crossing const& crossing) {
        for (auto const surface : {crossing.before, crossing.from.surface, crossing.to.surface}) {
            told += surface == no_surface ? "-" : std::to_string(surface);
        }
        told += crossing.portal ? "p " : " ";
    };
    Trail trail;
    trail.enter(on(left_floor), west_number, tell);
    for (auto const surface : {link_between, link_between, right_floor, link_between}) trail.move(on(surface), tell);
    trail.leave(std::nullopt, tell);
    EXPECT_EQ(told, "--0p -03 033 031 313 13- ");
}

TEST(Zones, HaveTheirMembersAndWhatJoinsThem) {
    SurfaceTable table;
    for (int i = 0; i < 7; ++i) table.ids.push_back(GlobalId::Generate());
    // Connection 3 joins the floors 0 and 1, 4 joins 1 and 2, 5 has both ends at floor 0, 6 joins all three.
    table.joins = {{3, 0}, {3, 1}, {4, 1}, {4, 2}, {5, 0}, {5, 0}, {6, 2}, {6, 1}, {6, 0}};
    ZoneState zone;
    zone.base_members = {table.ids[0], table.ids[1], table.ids[4], GlobalId::Generate()};
    EXPECT_THAT(surfaces_of(zone, table), testing::ElementsAre(true, true, false, false, true, false, false));
    zone.membership = ZoneMembershipStrategy::BASE_MEMBERS_AND_CONNECTIONS;
    EXPECT_THAT(surfaces_of(zone, table), testing::ElementsAre(true, true, false, true, true, false, true));
}

}  // namespace
}  // namespace pedflux::engine
