#include "tests/recorded_runs/drawing.h"

namespace pedflux::recorded {

std::shared_ptr<Distribution> constant(double value) { return Distribution::CreateConstant(value); }
std::shared_ptr<Trigger> after(int seconds) { return make<SimulationStartTrigger>(seconds); }
std::shared_ptr<TriggerRange> span(int from, int seconds) {
    return make<OverDurationTriggerRange>(after(from), seconds);
}

Action in_order(std::vector<Action> const& actions) {
    return make<ListAction>(actions, ListActionAssignment::IN_ORDER);
}
Action wait(double seconds) { return make<WaitForDurationAction>(constant(seconds), WaitStyle::StandStill()); }
Action wait_forever(std::shared_ptr<WaitStyle> const& style) { return make<WaitForeverAction>(style); }
Action leave() { return make<ExitSimulationAction>(); }
Action paint(Color color) { return make<SetColorAction>(color); }

Drawing::Drawing() : project(Project::Create()) {}
Drawing::~Drawing() { project->Close(); }

std::string Drawing::numbered(std::string const& name) { return name + " " + std::to_string(++count_); }

GlobalId Drawing::room(std::string const& name, double x1, double z1, double x2, double z2, double y) {
    return project->CreateFloor(name, MeshGeometry::CreateFlatPolygon(y, {{x1, z1}, {x2, z1}, {x2, z2}, {x1, z2}}))
        ->GetId();
}

GlobalId Drawing::portal(std::string const& name, double x1, double z1, double x2, double z2, double y) {
    return project->CreatePortal(name, MeshGeometry::CreateVerticalRectangle({x1, y, z1}, {x2, y + 2, z2}))->GetId();
}

void Drawing::wall(double x1, double z1, double x2, double z2) {
    project->CreateBarrier(numbered("Wall"), MeshGeometry::CreateBox({x1, 0, z1}, {x2, 3, z2}));
}

std::shared_ptr<Link> Drawing::link(std::string const& name, Vec3d const& from, Vec3d const& to, double width) {
    return project->CreateLink(name, MeshGeometry::CreateRamp(from, to, width));
}

GlobalId Drawing::wait_space(std::string const& name, double x1, double z1, double x2, double z2) {
    auto const outline = MeshGeometry::CreateFlatPolygon(0, {{x1, z1}, {x2, z1}, {x2, z2}, {x1, z2}});
    return project->CreateWaitSpace(name, outline)->GetId();
}

GlobalId Drawing::token(std::string const& name) { return project->CreateToken(name)->GetId(); }

std::shared_ptr<Server> Drawing::server(std::string const& name, std::vector<Vec3d> const& line, double contact_time) {
    auto created = project->CreateServer(name, line);
    created->SetContactTime(constant(contact_time));
    return created;
}

std::shared_ptr<Profile> Drawing::profile(std::shared_ptr<Distribution> const& speed) {
    auto created = project->CreateProfile(numbered("Profile"));
    created->SetSpeedDistribution(speed);
    return created;
}

GlobalId Drawing::walkers(double speed) { return profile(constant(speed))->GetId(); }

std::shared_ptr<Journey> Drawing::journey(Source const& source, GlobalId const& profile) {
    auto created = project->CreateJourney(numbered("Journey"));
    created->SetPopulationSource(source);
    if (profile.IsValid()) created->SetProfile(profile);
    return created;
}

std::shared_ptr<Journey> Drawing::journey(GlobalId const& from, GlobalId const& to, double count,
                                          GlobalId const& profile) {
    return journey(make<CountPopulationSource>(Ids{from}, Ids{to}, count), profile);
}

std::shared_ptr<TallyObject> Drawing::tally(std::shared_ptr<Tally> const& count) {
    auto created = project->CreateTallyObject(numbered("Tally"));
    created->SetTallyValueByCount(count);
    return created;
}

std::shared_ptr<TallyObject> Drawing::total(std::shared_ptr<Transition> const& transition) {
    auto created = project->CreateTallyObject(numbered("Total"));
    created->SetTallyValueByAggregateSumOverTime(make<TransitionTally>(transition));
    return created;
}

std::shared_ptr<Broadcast> Drawing::broadcast(std::shared_ptr<TriggerRange> const& range, Action const& action) {
    auto created = project->CreateBroadcast(numbered("Broadcast"));
    created->SetTriggerRange(range);
    created->SetAgentAction(action);
    return created;
}

std::shared_ptr<GateAccess> Drawing::gate_access(GlobalId const& gate, std::shared_ptr<TriggerRange> const& range) {
    auto created = project->CreateGateAccess(numbered("Access"));
    created->SetGatedObjects({gate});
    created->SetTriggerRange(range);
    return created;
}

std::shared_ptr<Dispatch> Drawing::dispatch(Ids const& sources, Ids const& sinks) {
    auto created = project->CreateDispatch(numbered("Dispatch"), {0, 0, 0});
    created->SetSources(sources);
    created->SetSinks(sinks);
    return created;
}

Rooms::Rooms(Drawing& into)
    : drawing(into),
      left(drawing.room("Left", 0, 0, 10, 4)),
      right(drawing.room("Right", 12, 0, 22, 4)),
      west(drawing.portal("West", 0, 1, 0, 3)),
      east(drawing.portal("East", 22, 1, 22, 3)),
      north(drawing.portal("North", 16, 0, 18, 0)),
      steady(drawing.walkers(1)),
      counter(drawing.project->CreateTallyObject("Counter")->GetId()) {
    auto const between = drawing.link("Link", {10, 0, 2}, {12, 0, 2}, 2);
    between->SetGated(true);
    link = between->GetId();
}

std::shared_ptr<Journey> Rooms::walk(int start, Action const& action) const {
    auto created = drawing.journey(west, east, 1, steady);
    created->SetStartTrigger(after(start));
    if (action) created->SetInitialAction(action);
    return created;
}

void Rooms::stay(GlobalId const& where, double count) const {
    drawing.journey(where, east, count)->SetInitialAction(wait_forever());
}

Office::Office(Drawing& into)
    : drawing(into),
      hall(drawing.room("Hall", 0, 0, 30, 12)),
      west(drawing.portal("West", 0, 4, 0, 8)),
      east(drawing.portal("East", 30, 4, 30, 8)),
      gate(drawing.portal("Gate", 26, 0, 28, 0)),
      walker(drawing.walkers(1.3)),
      desk(drawing.server("Desk", {{20, 0, 6}, {13, 0, 6}}, 5)),
      ticket(drawing.server("Ticket", {{12, 0, 3}, {9, 0, 3}, {9, 0, 1}, {6, 0, 1}}, 3)) {}

void Office::visitors(double count, Action const& action) const {
    drawing.journey(west, east, count, walker)->SetInitialAction(action);
}

Action Office::seek(Ids const& servers) { return make<SeekProcessStartAction>(servers, false); }

TwoWays::TwoWays(Drawing& drawing)
    : left(drawing.room("Left", 0, 0, 10, 20)),
      right(drawing.room("Right", 14, 0, 24, 20)),
      far(drawing.link("Far", {10, 0, 16}, {14, 0, 16}, 2)->GetId()),
      west(drawing.portal("West", 0, 1, 0, 9)),
      east(drawing.portal("East", 24, 1, 24, 9)),
      near(drawing.project->CreateRamp("Near", MeshGeometry::CreateRamp({10, 0, 4}, {14, 0, 4}, 2))) {}

}  // namespace pedflux::recorded
