#include "engine/analysis/transitions.h"

#include "engine/base/checks.h"
#include "engine/behaviour/triggers/transition_states.h"
#include "engine/model/document.h"
#include "engine/model/properties.h"

#include <algorithm>
#include <functional>
#include <tuple>

namespace pedflux::engine {

namespace {

using Happens = std::function<bool(Passage const&)>;

/// What transitions are looked up in.
struct Run {
    Document const& document;
    RunReader const& reader;

    AgentRecord const& person(Passage const& passage) const { return reader.agents()[passage.agent]; }
    RunPlace place(GlobalId const& id) const { return place_of(document, reader, id); }
};

/// Whether a passage leads out of a place, or into it: one of its surfaces, or the portal that the person uses.
bool leads_from(Run const& run, Passage const& passage, RunPlace const& place) {
    return passage.from ? place.has(*passage.from) : run.person(passage).origin.InternalEquals(place.id);
}
bool leads_to(Run const& run, Passage const& passage, RunPlace const& place) {
    if (passage.to) return place.has(*passage.to);
    return run.person(passage).arrived && run.person(passage).destination.InternalEquals(place.id);
}
bool is_in(std::optional<std::uint16_t> surface, RunPlace const& place) { return surface && place.has(*surface); }

Happens test_of(Run const& run, Transition const& transition) {
    NodeState const& node = node_of(transition);
    switch (static_cast<TransitionType>(node.kind->type)) {
        case TransitionType::ANY_OF: {
            std::vector<Happens> tests;
            for (auto const& child : state_of<AnyOfTransitionState>(transition).children) {
                tests.push_back(test_of(run, *child));
            }
            return [tests](Passage const& passage) {
                return std::ranges::any_of(tests, [&](Happens const& test) { return test(passage); });
            };
        }
        case TransitionType::AT_PORTAL:
            return [run, portal = state_of<AtPortalTransitionState>(transition).portal](Passage const& passage) {
                auto const& person = run.person(passage);
                return (!passage.from && person.origin.InternalEquals(portal)) ||
                       (!passage.to && person.arrived && person.destination.InternalEquals(portal));
            };
        case TransitionType::BETWEEN_OBJECTS: {
            auto const& state = state_of<BetweenObjectsTransitionState>(transition);
            return [run, from = run.place(state.from), to = run.place(state.to)](Passage const& passage) {
                return leads_from(run, passage, from) && leads_to(run, passage, to);
            };
        }
        case TransitionType::ENTER_AREA:
            return [area = run.place(state_of<EnterAreaTransitionState>(transition).area)](Passage const& passage) {
                return is_in(passage.to, area) && !is_in(passage.from, area);
            };
        case TransitionType::EXIT_AREA:
            return [area = run.place(state_of<ExitAreaTransitionState>(transition).area)](Passage const& passage) {
                return is_in(passage.from, area) && !is_in(passage.to, area);
            };
        case TransitionType::ENTER_SIMULATION:
            return [run, object = state_of<EnterSimulationTransitionState>(transition).object](Passage const& passage) {
                return !passage.from && run.person(passage).origin.InternalEquals(object);
            };
        case TransitionType::EXIT_SIMULATION:
            return [run, object = state_of<ExitSimulationTransitionState>(transition).object](Passage const& passage) {
                auto const& person = run.person(passage);
                return !passage.to && person.arrived && person.destination.InternalEquals(object);
            };
        case TransitionType::CORDON:
        case TransitionType::ENTER_SERVER:
        case TransitionType::EXIT_SERVER:
            break;
    }
    refuse("A stored run does not tell where a " + std::string(node.kind->name) + " happens");
}

}  // namespace

std::vector<Passage> passages_of(RunReader const& reader, Visits const& visits) {
    std::vector<Passage> passages;
    for (std::uint32_t agent = 0; agent < visits.size(); ++agent) {
        auto const& person = reader.agents()[agent];
        std::optional<std::uint16_t> from;
        for (auto const& visit : visits[agent]) {
            passages.push_back({visit.first, agent, from, visit.surface});
            from = visit.surface;
        }
        if (auto const departure = departure_of(reader, person)) {
            passages.push_back({*departure, agent, from, std::nullopt});
        }
    }
    std::ranges::stable_sort(passages, {}, [](Passage const& passage) { return passage.frame; });
    return passages;
}

std::vector<Passage> passages_at(Transition const& transition, Document const& document, RunReader const& reader,
                                 std::vector<Passage> const& passages) {
    auto const happens = test_of({document, reader}, transition);
    std::vector<Passage> found;
    std::ranges::copy_if(passages, std::back_inserter(found), happens);
    return found;
}

}  // namespace pedflux::engine
