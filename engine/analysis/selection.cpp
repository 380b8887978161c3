#include "engine/analysis/selection.h"

#include "engine/analysis/proximity.h"
#include "engine/analysis/transitions.h"
#include "engine/analysis/trips.h"
#include "engine/base/checks.h"
#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/model/document.h"
#include "engine/model/properties.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace pedflux::engine {

namespace {

using Test = Selection::Test;
using View = Selection::View;

/// Makes tests out of filters.
class Compiler {
  public:
    Compiler(Document const& document, RunReader& reader)
        : document_(document), reader_(reader), places_(document, reader) {}

    Test test(AgentFilter const& filter) {
        NodeState const& node = node_of(filter);
        switch (static_cast<AgentFilterType>(node.kind->type)) {
            case AgentFilterType::ALL_AGENTS:
                return [](View const&, std::size_t) { return true; };
            case AgentFilterType::NAMED:
                return named(state_of<NamedFilterState>(filter).value);
            case AgentFilterType::NOT:
                return [inner = test(*state_of<NotFilterState>(filter).value)](View const& view, std::size_t i) {
                    return !inner(view, i);
                };
            case AgentFilterType::COMPOUND: {
                auto const& state = state_of<CompoundFilterState>(filter);
                return combined({state.first, state.second}, state.combination == BooleanOperator::AND);
            }
            case AgentFilterType::ALL_OF:
                return combined(children_of(filter), true);
            case AgentFilterType::ANY_OF:
                return combined(children_of(filter), false);
            case AgentFilterType::NONE_OF:
                return [any = combined(children_of(filter), false)](View const& view, std::size_t i) {
                    return !any(view, i);
                };
            case AgentFilterType::IS_EVER:
                return ever(test(*state_of<IsEverFilterState>(filter).value));
            case AgentFilterType::PROFILE:
                return of_person([id = state_of<ProfileFilterState>(filter).value](AgentRecord const& person) {
                    return person.profile.InternalEquals(id);
                });
            case AgentFilterType::ENTERED_AT:
                return of_person([id = state_of<EnteredAtFilterState>(filter).value](AgentRecord const& person) {
                    return person.origin.InternalEquals(id);
                });
            case AgentFilterType::EXITED_AT:
                return of_person([id = state_of<ExitedAtFilterState>(filter).value](AgentRecord const& person) {
                    return person.arrived && person.destination.InternalEquals(id);
                });
            case AgentFilterType::END_STATE:
                return of_person([this, end = state_of<EndStateFilterState>(filter).value](AgentRecord const& person) {
                    return end_state(person) == end;
                });
            case AgentFilterType::IN_AREA:
                return [area = places_[state_of<InAreaFilterState>(filter).value].area](
                           View const& view, std::size_t i) { return area.has(view.persons[i].surface); };
            case AgentFilterType::LOCAL_DENSITY:
                return in_range(state_of<LocalDensityFilterState>(filter), &AgentFrame::density);
            case AgentFilterType::SPEED:
                return in_range(state_of<SpeedFilterState>(filter), &AgentFrame::speed);
            case AgentFilterType::PROXIMITY:
                return close(state_of<ProximityFilterState>(filter));
            case AgentFilterType::IN_TRIP:
                return on_trip(*state_of<InTripFilterState>(filter).value);
            case AgentFilterType::AT_TRANSITION:
                return at_transition(*state_of<AtTransitionFilterState>(filter).value);
            case AgentFilterType::CREATED_BY:
                require_doings(reader_, "which events its agents come from");
                return of_person([id = state_of<CreatedByFilterState>(filter).value](AgentRecord const& person) {
                    return person.event.InternalEquals(id);
                });
            case AgentFilterType::ACTIVITY:
                require_doings(reader_, "what its agents were doing");
                return [activity = state_of<ActivityFilterState>(filter).value](View const& view, std::size_t i) {
                    return view.persons[i].activity == static_cast<std::uint8_t>(activity);
                };
            case AgentFilterType::TOKEN:
                return in_episode(EpisodeKind::HELD_TOKEN, state_of<TokenFilterState>(filter).value);
            case AgentFilterType::AT_SERVER:
                return in_episode(EpisodeKind::AT_SERVER, state_of<AtServerFilterState>(filter).value);
        }
        refuse("A stored run does not tell whom a " + std::string(node.kind->name) + " selects");
    }

  private:
    Test named(GlobalId const& id) {
        auto const* const object = document_.find<AgentFilterObjectState>(id);
        if (!object) refuse("A filter names an agent filter object that the project does not have");
        // Objects can name each other in a circle.
        if (++depth_ > deepest_node) refuse(title_of(*object) + " leads back to itself");
        Test found = test(*object->filter);
        --depth_;
        return found;
    }

    Test combined(std::vector<std::shared_ptr<AgentFilter>> const& filters, bool all) {
        std::vector<Test> tests;
        for (auto const& filter : filters) tests.push_back(test(*filter));
        return [tests, all](View const& view, std::size_t i) {
            auto const holds = [&](Test const& one) { return one(view, i); };
            return all ? std::ranges::all_of(tests, holds) : std::ranges::any_of(tests, holds);
        };
    }

    template <class Holds>
    Test of_person(Holds const& holds) {
        std::vector<bool> known;
        for (auto const& person : reader_.agents()) known.push_back(holds(person));
        return [known](View const& view, std::size_t i) { return known[view.persons[i].agent]; };
    }

    AgentStateAtSimulationEnd end_state(AgentRecord const& person) const {
        if (person.arrived) return AgentStateAtSimulationEnd::EXITED;
        return person.last_frame == reader_.last_frame() ? AgentStateAtSimulationEnd::INSIDE
                                                         : AgentStateAtSimulationEnd::FAILED;
    }

    Test in_episode(EpisodeKind kind, GlobalId const& object) {
        require_doings(reader_, "the tokens and servers of its agents");
        std::vector<std::vector<std::pair<int, int>>> frames(reader_.agents().size());
        for (auto const& episode : reader_.episodes()) {
            if (episode.kind != kind || !episode.object.InternalEquals(object)) continue;
            frames[episode.agent].emplace_back(episode.first_frame, episode.last_frame);
        }
        return [frames](View const& view, std::size_t i) {
            return std::ranges::any_of(frames[view.persons[i].agent], [&](auto const& range) {
                return range.first <= view.number && view.number <= range.second;
            });
        };
    }

    static Test in_range(FilterRangeState const& range, float AgentFrame::*value) {
        return [min = range.min, max = range.max, value](View const& view, std::size_t i) {
            double const found = static_cast<double>(view.persons[i].*value);
            return (!min || found >= *min) && (!max || found <= *max);
        };
    }

    Test close(ProximityFilterState const& state) {
        auto const proximity = std::make_shared<Proximity>(reader_, state.distance, state.ignore_barriers);
        auto const counts = std::make_shared<std::vector<int>>();
        auto const counted = std::make_shared<int>(first_frame - 1);
        return [=](View const& view, std::size_t i) {
            if (*counted != view.number) {
                *counts = proximity->counts(view.persons);
                *counted = view.number;
            }
            return (*counts)[i] > 0;
        };
    }

    /// What ever holds for a person holds from the start.
    Test ever(Test const& inner) {
        std::vector<bool> holds(reader_.agents().size());
        for (int frame = first_frame; frame <= reader_.last_frame(); ++frame) {
            auto const persons = reader_.frame(frame);
            for (std::size_t i = 0; i < persons.size(); ++i) {
                auto const agent = persons[i].agent;
                holds[agent] = holds[agent] || inner({frame, persons}, i);
            }
        }
        return [holds](View const& view, std::size_t i) { return holds[view.persons[i].agent]; };
    }

    Test on_trip(Trip const& trip) {
        std::vector<std::vector<TripMade>> trips(reader_.agents().size());
        for (auto const& made : trips_of(TripAccess::path(trip), places_, visits())) {
            trips[made.agent].push_back(made);
        }
        return [trips](View const& view, std::size_t i) {
            return std::ranges::any_of(trips[view.persons[i].agent], [&](TripMade const& made) {
                return made.start <= view.number && view.number < made.end;
            });
        };
    }

    Test at_transition(Transition const& transition) {
        std::set<std::pair<int, std::uint32_t>> moments;
        for (auto const& crossing : crossings_at(transition, places_, visits())) {
            // Who leaves the simulation is seen for the last time in the frame before.
            moments.emplace(crossing.to == no_surface ? crossing.frame - 1 : crossing.frame, crossing.agent);
        }
        return [moments](View const& view, std::size_t i) {
            return moments.contains({view.number, view.persons[i].agent});
        };
    }

    Visits const& visits() {
        if (!stays_) stays_ = visits_of(reader_);
        return *stays_;
    }

    Document const& document_;
    RunReader& reader_;
    RunPlaces places_;
    std::optional<Visits> stays_;
    int depth_ = 0;
};

}  // namespace

Selection::Selection(std::shared_ptr<AgentFilter> const& filter, Document const& document, RunReader& reader)
    : reader_(reader) {
    if (filter) test_ = Compiler(document, reader).test(*filter);
}

std::vector<bool> Selection::among(int frame, std::vector<AgentFrame> const& persons) const {
    std::vector<bool> selected(persons.size(), true);
    if (!test_) return selected;
    View const view{frame, persons};
    for (std::size_t i = 0; i < persons.size(); ++i) selected[i] = test_(view, i);
    return selected;
}

std::vector<AgentFrame> Selection::frame(int number) const {
    auto persons = reader_.frame(number);
    if (!test_) return persons;
    auto const selected = among(number, persons);
    std::vector<AgentFrame> found;
    for (std::size_t i = 0; i < persons.size(); ++i) {
        if (selected[i]) found.push_back(persons[i]);
    }
    return found;
}

std::vector<bool> ever_selected(Selection const& selection, RunReader const& reader, int first, int last) {
    std::vector<bool> found(reader.agents().size());
    for (int frame = first; frame <= last; ++frame) {
        for (auto const& person : selection.frame(frame)) found[person.agent] = true;
    }
    return found;
}

}  // namespace pedflux::engine
