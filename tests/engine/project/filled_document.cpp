#include "tests/engine/project/filled_document.h"

#include "engine/analysis/graph_query_states.h"
#include "engine/analysis/map_query_states.h"
#include "engine/analysis/table_query_states.h"
#include "engine/behaviour/access/access_rule_states.h"
#include "engine/behaviour/actions/agent_action_states.h"
#include "engine/behaviour/actions/wait_style_states.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/behaviour/tallies/tally_object_states.h"
#include "engine/behaviour/tests/agent_test_states.h"
#include "engine/behaviour/triggers/trigger_states.h"
#include "engine/model/check.h"
#include "engine/project/all_kinds.h"
#include "engine/scene/avatar_state.h"
#include "engine/scene/group_states.h"
#include "engine/scene/network_state.h"
#include "engine/scene/presentation_states.h"
#include "engine/scene/profile_state.h"
#include "engine/scene/scene_states.h"
#include "engine/scene/server_states.h"
#include "engine/scene/simulation_run_state.h"
#include "engine/transport/elevator_states.h"
#include "engine/transport/timetable_states.h"
#include "engine/transport/vehicle_states.h"

#include <pedflux/project.h>

#include <cmath>
#include <type_traits>

namespace pedflux::engine {

namespace {

class Filler {
  public:
    explicit Filler(Document& document) : document_(document) {}

    template <class T>
    requires std::is_enum_v<T>
    void fill(T& value, NoRule) {
        T const before = value;
        for (auto const& named : value_names<T>) {
            if (named.value != before) value = named.value;
        }
    }
    void fill(bool& value, NoRule) { value = !value; }
    void fill(int& value, NoRule) { value = static_cast<int>(next()); }
    void fill(int& value, Range const& range) { value = static_cast<int>(std::lround(within(range))); }
    void fill(unsigned int& value, Range const& range) {
        value = static_cast<unsigned int>(std::lround(within(range)));
    }
    void fill(double& value, NoRule) { value = next() + 0.25; }
    void fill(double& value, Range const& range) { value = within(range); }
    void fill(std::string& value, NoRule) { value = "Text " + std::to_string(static_cast<int>(next())); }
    void fill(Vec3d& value, NoRule) {
        double const number = next();
        value = {number, number + 0.25, -number};
    }
    void fill(Color& value, NoRule) {
        double const shade = std::fmod(next() / 16, 1);
        value = Color(shade, 1 - shade, 0.125, 0.75);
    }
    void fill(GlobalId& value, RefersTo const& rule) {
        for (auto const& object : document_.objects()) {
            if (rule.allows(*object)) {
                value = object->id;
                return;
            }
        }
    }
    void fill(std::shared_ptr<Geometry>& value, GeometryRule const& rule) {
        double const x = next();
        for (std::shared_ptr<Geometry> const& shape : std::vector<std::shared_ptr<Geometry>>{
                 MeshGeometry::CreateRamp({x, 0, 0}, {x + 4, 2, 0}, 1.5),
                 PolylineGeometry::Create({{x, 0, 0}, {x + 3, 0, 0}}),
                 std::make_shared<RectangleGeometry>(Vec3d{x, 0, 0}, Vec3d{1, 0, 0}, Vec3d{0, 0, -1}, 2, 3)}) {
            if (rule.allows(*shape)) value = shape;
        }
    }
    void fill(std::shared_ptr<Distribution>& value, Range const& range) {
        double const least = within(range);
        value = Distribution::CreateUniform(least, within(Range{least, range.most}));
    }
    void fill(std::shared_ptr<AvatarPreset>& value, NoRule) { value = Project::GetAvatarPresets().back(); }
    /// Most ranges are right with triggers only.
    void fill(std::shared_ptr<TriggerRange>& value, Required) {
        value = std::make_shared<OverDurationTriggerRange>(std::make_shared<SimulationStartTrigger>(60), 120);
    }
    /// A period belongs to what adds.
    void fill(TallyCommand& value, NoRule) {
        value.resets = true;
        value.period = static_cast<int>(next());
    }
    /// The numbers of a population belong together.
    void fill(Population& value, NoRule) {
        value = empty_population(PopulationSourceTypeId::OD_MATRIX);
        auto const field_rule = [&](std::string_view wanted, std::vector<GlobalId>& ids) {
            Population::fields(value, [&]<class F>(std::string_view name, F&, auto const&... rule) {
                if constexpr (std::is_same_v<F, std::vector<GlobalId>>) {
                    if (name == wanted) fill(ids, rule...);
                }
            });
        };
        field_rule("origins", value.origins);
        field_rule("destinations", value.destinations);
        value.amounts = {next()};
    }

    /// A table that every type of file takes.
    void fill(TimetableFile& value, NoRule) {
        value.name = "day.csv";
        value.delimiter = ";";
        value.data = "name;time;group;count;origin;event;offset;place;duration\nBell;8:05;A;1;Hall;Bell;0;Hall;60\n";
    }
    void fill(PeopleDestinations& value, NoRule) {
        fill(value.places.emplace_back(), A_PLACE);
        value.weights = {next()};
        value.assignment = DestinationAssignment::WEIGHTED_BY_CHANCE;
    }

    template <class T, class Rule>
    void fill(T& value, Rule const& rule) {
        if constexpr (is_optional<T>) {
            fill(value.emplace(), rule);
        } else if constexpr (is_list<T>) {
            value.assign(1, {});
            fill(value.front(), rule);
        } else if constexpr (is_variant<T>) {
            value.template emplace<1>();
            std::visit([&](auto& held) { fill(held, NoRule{}); }, value);
        } else if constexpr (is_node_pointer<T>) {
            fill_node(value);
        } else if constexpr (is_shared_value<T>) {
            using Shared = SharedValue<typename T::element_type>;
            typename Shared::Value inner{};
            fill(inner, NoRule{});
            value = Shared::make(inner);
        } else {
            T::fields(value, [&](std::string_view, auto& field, auto const&... field_rule) {
                if constexpr (sizeof...(field_rule) == 0) {
                    fill(field, NoRule{});
                } else {
                    fill(field, field_rule...);
                }
            });
        }
    }

  private:
    double next() { return next_++; }

    double within(Range const& range) {
        if (!std::isfinite(range.least)) return std::min(next(), range.most);
        if (!std::isfinite(range.most)) return range.least + next();
        double const share = std::fmod(next(), 7) / 8 + 0.0625;
        return range.least + share * (range.most - range.least);
    }

    /// One of a kind that is right by default and is not the one that is there.
    template <class Base>
    void fill_node(std::shared_ptr<Base>& node) {
        for (auto const* const kind : kinds_of<Base>()) {
            if (node && node_of(*node).kind == kind) continue;
            auto state = kind->make();
            try {
                check_node({nullptr, &document_}, "", *state);
            } catch (Exception const&) {
                continue;
            }
            node = kind->handle(std::move(state));
            return;
        }
    }

    Document& document_;
    double next_ = 1;
};

}  // namespace

std::unique_ptr<Document> filled_document() {
    auto document = std::make_unique<Document>();
#define ADD(Name, ...) document->add<Name##State>("A " #Name);
    PEDFLUX_KINDS(ADD)
    Filler filler(*document);
    filler.fill(document->settings, NoRule{});
#define FILL(Name, ...)                                                            \
    for (auto* const state : document->objects<Name##State>()) {                   \
        if (state->kind->name == Name##State::NAME) filler.fill(*state, NoRule{}); \
    }
    PEDFLUX_KINDS(FILL)
    return document;
}

std::map<std::string, std::vector<std::string>> fields_of_kinds() {
    std::map<std::string, std::vector<std::string>> kinds;
#define LIST(Name, ...)                                                                                        \
    {                                                                                                          \
        Name##State state;                                                                                     \
        auto& fields = kinds[std::string(Name##State::NAME)];                                                  \
        Name##State::fields(state, [&](std::string_view name, auto const&...) { fields.emplace_back(name); }); \
    }
    PEDFLUX_KINDS(LIST)
    return kinds;
}

}  // namespace pedflux::engine
