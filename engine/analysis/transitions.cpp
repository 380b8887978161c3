#include "engine/analysis/transitions.h"

#include "engine/base/checks.h"
#include "engine/behaviour/triggers/transition_program.h"
#include "engine/model/node.h"

#include <algorithm>
#include <string>

namespace pedflux::engine {

namespace {

/// What the crossings of a stored run tell of. Frames tell neither which way agents took from one to the next nor when
/// they came to servers.
class RunObjects final : public TransitionObjects {
  public:
    explicit RunObjects(RunPlaces const& places) : places_(places) {}

    Area area(GlobalId const& object) override { return places_[object].area; }
    CordonLine cordon(NodeState const& transition, GlobalId const&) override { refuse_untold(transition); }
    std::uint32_t server(NodeState const& transition, GlobalId const&) override { refuse_untold(transition); }

  private:
    [[noreturn]] static void refuse_untold(NodeState const& transition) {
        refuse("A stored run does not tell where a " + std::string(transition.kind->name) + " happens");
    }

    RunPlaces const& places_;
};

template <class Counts>
std::vector<RecordedCrossing> crossings_that(RunPlaces const& places, Visits const& visits, Counts const& counts) {
    std::vector<RecordedCrossing> found;
    for (std::uint32_t agent = 0; agent < visits.size(); ++agent) {
        auto const& person = places.reader().agents()[agent];
        follow(places, person, visits[agent], [&](int frame, Crossing const& crossing) {
            if (!counts(person, crossing)) return;
            found.push_back({frame, agent, crossing.from.surface, crossing.to.surface});
        });
    }
    std::ranges::stable_sort(found, {}, &RecordedCrossing::frame);
    return found;
}

}  // namespace

std::vector<RecordedCrossing> crossings_at(Transition const& transition, RunPlaces const& places,
                                           Visits const& visits) {
    RunObjects objects(places);
    auto const program = compile(transition, objects);
    return crossings_that(places, visits,
                          [&](AgentRecord const&, Crossing const& crossing) { return makes(program, crossing); });
}

std::vector<RecordedCrossing> exits_of(RunPlaces const& places, Visits const& visits) {
    return crossings_that(places, visits, [](AgentRecord const& person, Crossing const& crossing) {
        return person.arrived && crossing.to.surface == no_surface;
    });
}

}  // namespace pedflux::engine
