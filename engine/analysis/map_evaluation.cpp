#include "engine/analysis/map_evaluation.h"

#include "engine/analysis/density.h"
#include "engine/analysis/frames.h"
#include "engine/analysis/pixel_line.h"
#include "engine/analysis/proximity.h"
#include "engine/analysis/selection.h"
#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/results/agent_data.h"
#include "engine/results/run_files.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <unordered_set>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

using Maps = std::vector<std::shared_ptr<Map>>;

constexpr float no_value = std::numeric_limits<float>::quiet_NaN();

/// A part of the query; null if the query does not have it.
template <class Part>
Part const* part_of(MapQueryState const& query) {
    return dynamic_cast<Part const*>(&query);
}

/// A display object with the values of its map.
struct Shown {
    GlobalId object;
    std::uint16_t surface;
    std::shared_ptr<Raster const> raster;
    std::vector<float> values;  ///< one for each pixel
};

/// The run of a map query with its time range, its agent filter and a grid for each display object.
class Evaluation {
  public:
    Evaluation(Document const& project, MapQueryState const& evaluated)
        : document(project),
          query(evaluated),
          reader_(results_of(document, or_none(query.run))),
          selection_(part_of<Filtered>(query) ? part_of<Filtered>(query)->filter : nullptr, document, *reader_) {
        for (auto const& object : query.display_objects) {
            auto const surface = reader_->surface_of(object);
            if (!surface) {
                auto const* const found = document.find(object);
                refuse(fmt::format("{} did not take part in the run '{}'",
                                   found ? title_of(*found) : "The display object", reader_->path()));
            }
            auto raster = raster_of(reader_->surfaces()[*surface]);
            std::vector<float> values(raster->size());
            shown.push_back({object, *surface, std::move(raster), std::move(values)});
        }
    }

    RunReader& reader() { return *reader_; }
    Selection const& selection() const { return selection_; }

    /// The frames of the time range, or the last frame of the run for a query without a time range.
    FrameRange range() {
        if (auto const* const timed = part_of<Timed>(query)) return frames_in(reader(), timed->time);
        return {std::max(first_frame, reader().last_frame()), reader().last_frame()};
    }
    float seconds(int frames) { return static_cast<float>(frames) / static_cast<float>(reader().info().frame_rate); }

    /// Calls visit(display object, person) for the persons on display objects.
    template <class Visit>
    void for_each_shown(std::vector<AgentFrame> const& persons, Visit const& visit) {
        for (auto const& person : persons) {
            auto const found = std::ranges::find(shown, person.surface, &Shown::surface);
            if (found != shown.end()) visit(*found, person);
        }
    }
    /// Calls visit(display object, person, pixel) for the persons on pixels of display objects.
    template <class Visit>
    void for_each_pixel(std::vector<AgentFrame> const& persons, Visit const& visit) {
        for_each_shown(persons, [&](Shown& on, AgentFrame const& person) {
            if (auto const pixel = pixel_of(*on.raster, {static_cast<double>(person.x), static_cast<double>(person.z)}))
                visit(on, person, *pixel);
        });
    }
    /// Calls visit(frame, display object, person, pixel) for the selected persons in all frames of the range.
    template <class Visit>
    void for_each_frame(Visit const& visit) {
        auto const [first, last] = range();
        for (int frame = first; frame <= last; ++frame) {
            for_each_pixel(selection_.frame(frame), [&](Shown& on, AgentFrame const& person, std::size_t pixel) {
                visit(frame, on, person, pixel);
            });
        }
    }

    /// The maps of the values in the query's colours.
    Maps maps() {
        Maps found;
        for (auto& on : shown) {
            for (std::size_t pixel = 0; pixel < on.values.size(); ++pixel) {
                if (!on.raster->has(pixel)) on.values[pixel] = no_value;
            }
            auto colors = colors_of(on);
            found.push_back(std::make_shared<ValueMap2d>(on.raster, std::move(on.values), std::move(colors)));
        }
        return found;
    }

    Document const& document;
    MapQueryState const& query;
    std::vector<Shown> shown;

  private:
    std::shared_ptr<ColorFunction> colors_of(Shown const& on) const {
        if (auto const* const density = dynamic_cast<DensityMapQueryState const*>(&query)) {
            return density_colors(document, *density, on.object);
        }
        if (auto const* const colored = part_of<Colored>(query); colored && colored->colors) return colored->colors;
        float least = std::numeric_limits<float>::infinity();
        float greatest = -least;
        for (float const value : on.values) {
            if (std::isnan(value)) continue;
            least = std::min(least, value);
            greatest = std::max(greatest, value);
        }
        if (!(least <= greatest)) least = greatest = 0;
        if (least == greatest) greatest = least + 1;
        return ColorFunction::CreateCustom({static_cast<double>(least), static_cast<double>(greatest)},
                                           {Color::BLUE, Color::RED}, ColorTransition::GRADUAL);
    }

    std::shared_ptr<RunReader> reader_;
    Selection selection_;
};

/// A statistic of the density at a pixel over a range of frames.
using DensityMeasure = double (*)(DensityField::OverTime const& density, int frames, int frame_rate);

double ratio(double part, double whole) { return whole > 0 ? part / whole : 0; }
double average_density(DensityField::OverTime const& density, int frames, int) { return ratio(density.sum, frames); }
double average_density_while_near(DensityField::OverTime const& density, int, int) {
    return ratio(density.sum, density.frames_with_persons);
}
double experienced_density(DensityField::OverTime const& density, int, int) {
    return ratio(density.sum_of_squares, density.sum);
}
double greatest_density(DensityField::OverTime const& density, int, int) { return density.greatest; }
double last_density(DensityField::OverTime const& density, int, int) { return density.last; }
double seconds_above_density(DensityField::OverTime const& density, int, int frame_rate) {
    return ratio(density.frames_above, frame_rate);
}

template <DensityMeasure measure>
Maps density_maps(Evaluation evaluation) {
    auto const* const above = part_of<AboveDensity>(evaluation.query);
    std::vector<DensityField> fields;
    for (auto const& on : evaluation.shown) {
        fields.emplace_back(on.raster, above ? above->threshold : std::numeric_limits<double>::infinity());
    }
    auto const range = evaluation.range();
    for (int frame = range.first; frame <= range.last; ++frame) {
        evaluation.for_each_shown(evaluation.reader().frame(frame), [&](Shown& on, AgentFrame const& person) {
            fields[static_cast<std::size_t>(&on - evaluation.shown.data())].add_person(static_cast<double>(person.x),
                                                                                       static_cast<double>(person.z));
        });
        for (auto& field : fields) field.end_frame();
    }
    int const frame_rate = evaluation.reader().info().frame_rate;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        auto& values = evaluation.shown[i].values;
        for (std::size_t pixel = 0; pixel < values.size(); ++pixel) {
            values[pixel] = static_cast<float>(measure(fields[i].at(pixel), fields[i].frames(), frame_rate));
        }
    }
    return evaluation.maps();
}

Maps count_maps(Evaluation evaluation) {
    std::vector<std::unordered_set<std::uint64_t>> seen(evaluation.shown.size());
    evaluation.for_each_frame([&](int, Shown& on, AgentFrame const& person, std::size_t pixel) {
        auto& known = seen[static_cast<std::size_t>(&on - evaluation.shown.data())];
        if (known.insert((static_cast<std::uint64_t>(pixel) << 32) | person.agent).second) on.values[pixel] += 1;
    });
    return evaluation.maps();
}

/// Calls visit(frame, display object, pixel) once for each frame in which a pixel is occupied.
template <class Visit>
void for_each_occupied(Evaluation& evaluation, Visit const& visit) {
    std::vector<std::vector<int>> latest;
    for (auto const& on : evaluation.shown) latest.emplace_back(on.values.size(), first_frame - 1);
    evaluation.for_each_frame([&](int frame, Shown& on, AgentFrame const&, std::size_t pixel) {
        auto& seen = latest[static_cast<std::size_t>(&on - evaluation.shown.data())][pixel];
        if (seen != frame) visit(frame, on, pixel);
        seen = frame;
    });
}

Maps occupied_maps(Evaluation evaluation) {
    for_each_occupied(evaluation, [](int, Shown& on, std::size_t pixel) { on.values[pixel] += 1; });
    auto const rate = static_cast<float>(evaluation.reader().info().frame_rate);
    for (auto& on : evaluation.shown) {
        for (auto& value : on.values) value /= rate;
    }
    return evaluation.maps();
}

Maps clear_maps(Evaluation evaluation) {
    auto const start = second_of(evaluation.reader(), part_of<Timed>(evaluation.query)->time.start);
    for_each_occupied(evaluation, [&](int frame, Shown& on, std::size_t pixel) {
        on.values[pixel] = evaluation.seconds(frame) - static_cast<float>(start);
    });
    return evaluation.maps();
}

Maps exit_maps(Evaluation evaluation) {
    std::vector<std::vector<int>> persons;
    for (auto const& on : evaluation.shown) persons.emplace_back(on.values.size());
    evaluation.for_each_frame([&](int frame, Shown& on, AgentFrame const& person, std::size_t pixel) {
        auto const& record = evaluation.reader().agents()[person.agent];
        if (!record.arrived) return;
        on.values[pixel] += evaluation.seconds(record.last_frame + 1 - frame);
        ++persons[static_cast<std::size_t>(&on - evaluation.shown.data())][pixel];
    });
    for (std::size_t i = 0; i < persons.size(); ++i) {
        auto& values = evaluation.shown[i].values;
        for (std::size_t pixel = 0; pixel < values.size(); ++pixel) {
            int const count = persons[i][pixel];
            values[pixel] = count > 0 ? values[pixel] / static_cast<float>(count) : no_value;
        }
    }
    return evaluation.maps();
}

Maps path_maps(Evaluation evaluation) {
    std::vector<std::vector<Color>> colors;
    for (auto const& on : evaluation.shown) colors.emplace_back(on.values.size(), Color::CLEAR);
    std::vector<std::optional<AgentFrame>> before(evaluation.reader().agents().size());
    auto const [first, last] = evaluation.range();
    for (int frame = first; frame <= last; ++frame) {
        std::vector<std::optional<AgentFrame>> now(before.size());
        evaluation.for_each_shown(evaluation.selection().frame(frame), [&](Shown& on, AgentFrame const& person) {
            auto const& from = before[person.agent];
            bool const goes_on = from && from->surface == person.surface;
            auto const [x, z] = goes_on ? std::pair(from->x, from->z) : std::pair(person.x, person.z);
            for_each_pixel_between(
                *on.raster, {static_cast<double>(x), static_cast<double>(z)},
                {static_cast<double>(person.x), static_cast<double>(person.z)}, [&](std::size_t pixel) {
                    if (!on.raster->has(pixel)) return;
                    colors[static_cast<std::size_t>(&on - evaluation.shown.data())][pixel] = color_of(person.color);
                });
            now[person.agent] = person;
        });
        before = std::move(now);
    }
    Maps maps;
    for (std::size_t i = 0; i < colors.size(); ++i) {
        maps.push_back(std::make_shared<ColorMap2d>(evaluation.shown[i].raster, std::move(colors[i])));
    }
    return maps;
}

/// Calls visit(display object, pixel, number of others close by) for the selected persons of a frame.
template <class Visit>
void for_each_counted(Evaluation& evaluation, Proximity const& proximity, int frame, Visit const& visit) {
    auto const persons = evaluation.reader().frame(frame);
    auto const selected = evaluation.selection().among(frame, persons);
    auto const counts = proximity.counts(persons);
    for (std::size_t i = 0; i < persons.size(); ++i) {
        if (!selected[i]) continue;
        evaluation.for_each_pixel(
            {persons[i]}, [&](Shown& on, AgentFrame const&, std::size_t pixel) { visit(on, pixel, counts[i]); });
    }
}

Proximity proximity_of(Evaluation& evaluation) {
    auto const& close = *part_of<CloseTogether>(evaluation.query);
    return {evaluation.reader(), close.distance, close.ignore_barriers};
}

Maps time_in_proximity_maps(Evaluation evaluation) {
    auto const proximity = proximity_of(evaluation);
    auto const [first, last] = evaluation.range();
    float const length = evaluation.seconds(1);
    for (int frame = first; frame <= last; ++frame) {
        for_each_counted(evaluation, proximity, frame, [&](Shown& on, std::size_t pixel, int others) {
            if (others > 0) on.values[pixel] += length;
        });
    }
    return evaluation.maps();
}

/// The greatest number over every `frames_per_sample`th frame.
Maps greatest_proximity_maps(Evaluation evaluation, std::int64_t frames_per_sample) {
    for (auto& on : evaluation.shown) std::ranges::fill(on.values, no_value);
    auto const proximity = proximity_of(evaluation);
    auto const [first, last] = evaluation.range();
    for (std::int64_t frame = first; frame <= last; frame += frames_per_sample) {
        for_each_counted(evaluation, proximity, static_cast<int>(frame), [](Shown& on, std::size_t pixel, int others) {
            auto const number = static_cast<float>(others);
            on.values[pixel] = std::isnan(on.values[pixel]) ? number : std::max(on.values[pixel], number);
        });
    }
    return evaluation.maps();
}

Maps instantaneous_proximity_maps(Evaluation evaluation) { return greatest_proximity_maps(std::move(evaluation), 1); }

Maps maximum_proximity_maps(Evaluation evaluation) {
    std::int64_t const frame_rate = evaluation.reader().info().frame_rate;
    auto const period = part_of<SampledSometimes>(evaluation.query)->period * frame_rate;
    return greatest_proximity_maps(std::move(evaluation), period);
}

using Evaluate = Maps (*)(Evaluation evaluation);

Evaluate evaluation_of(MapQueryType type) {
#define CASE(Query, Queries, TYPE, made, evaluation, ...) \
    case MapQueryType::TYPE:                              \
        return evaluation;
    switch (type) { PEDFLUX_MAP_QUERIES(CASE) }
#undef CASE
    return nullptr;
}

LevelOfServiceStandard standard_of(LevelOfServiceColorFunctionTypeId scale, bool is_stair) {
    using Scale = LevelOfServiceColorFunctionTypeId;
    switch (scale) {
        case Scale::FRUIN_WALKWAY:
            return LevelOfServiceStandard::FRUIN_WALKWAY;
        case Scale::FRUIN_STAIRWAY:
            return LevelOfServiceStandard::FRUIN_STAIRWAY;
        case Scale::FRUIN_PLATFORM:
            return LevelOfServiceStandard::FRUIN_PLATFORM;
        case Scale::IATA_WAIT_CIRCULATE:
            return LevelOfServiceStandard::IATA_WAIT_CIRCULATE;
        case Scale::FRUIN_BY_OBJECT:
            break;
    }
    return engine::standard_of(is_stair ? SurfaceKind::STAIR : SurfaceKind::LEVEL);
}

}  // namespace

std::vector<std::shared_ptr<Map>> maps_of(Document const& document, MapQueryState const& query, MapQueryType type) {
    auto const evaluate = evaluation_of(type);
    if (!evaluate) refuse_unevaluated(query);
    return evaluate({document, query});
}

std::shared_ptr<ColorFunction> density_colors(Document const& document, DensityMapQueryState const& query,
                                              GlobalId const& object) {
    auto const* const walkable = document.find<WalkableState>(object);
    if (!walkable) refuse(fmt::format("'{}' is no walkable object of the project", GlobalId(object).GetString()));
    if (query.custom_colors) return query.custom_colors;
    bool const is_stair = dynamic_cast<StairState const*>(walkable) != nullptr;
    return level_of_service_colors(standard_of(query.scale, is_stair), query.transition);
}

}  // namespace pedflux::engine
