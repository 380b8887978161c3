#include "engine/analysis/color_scale.h"

#include "engine/analysis/map_query_states.h"
#include "engine/base/checks.h"
#include "engine/results/level_of_service.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

Color mixed(Color first, Color second, double share) {
    auto const mix = [share](double a, double b) { return std::clamp(a + share * (b - a), 0.0, 1.0); };
    return {mix(first.GetRed(), second.GetRed()), mix(first.GetGreen(), second.GetGreen()),
            mix(first.GetBlue(), second.GetBlue()), mix(first.GetAlpha(), second.GetAlpha())};
}

}  // namespace

void validate(ColorScale const& scale) {
    auto const& values = scale.values;
    if (values.size() != scale.colors.size()) {
        refuse(fmt::format("A colour function needs one colour for each value, not {} colours for {} values",
                           scale.colors.size(), values.size()));
    }
    if (values.empty()) refuse("A colour function needs at least one value with its colour");
    for (std::size_t i = 0; i < values.size(); ++i) {
        require_finite("Value " + std::to_string(i) + " of a colour function", values[i]);
        if (i > 0 && values[i] <= values[i - 1]) {
            refuse(fmt::format("Value {} of a colour function must be greater than the one before, {}, not {}", i,
                               text_of(values[i - 1]), text_of(values[i])));
        }
    }
    if (scale.transition != ColorTransition::STEPS && scale.transition != ColorTransition::GRADUAL) {
        refuse(fmt::format("A colour transition must be STEPS (0) or GRADUAL (1), not {}",
                           static_cast<int>(scale.transition)));
    }
}

Color color_at(ColorScale const& scale, double value) {
    auto const next = std::ranges::upper_bound(scale.values, value);
    if (next == scale.values.begin() || std::isnan(value)) return scale.colors.front();
    if (next == scale.values.end()) return scale.colors.back();
    auto const after = static_cast<std::size_t>(next - scale.values.begin());
    if (scale.transition == ColorTransition::STEPS) return scale.colors[after - 1];
    double const from = scale.values[after - 1];
    return mixed(scale.colors[after - 1], scale.colors[after], (value - from) / (scale.values[after] - from));
}

std::shared_ptr<ColorFunction> SharedValue<ColorFunction>::make(ColorScale const& scale) {
    return ColorFunction::CreateCustom(scale.values, scale.colors, scale.transition);
}

std::shared_ptr<ColorFunction> level_of_service_colors(LevelOfServiceStandard standard, ColorTransition transition) {
    auto const& bounds = bounds_of(standard);
    std::vector<double> values{0};
    values.insert(values.end(), bounds.begin(), bounds.end());
    return ColorFunction::CreateCustom(
        values, {Color::BLUE, Color::AQUA, Color::GREEN, Color::YELLOW, Color::ORANGE, Color::RED}, transition);
}

}  // namespace pedflux::engine

namespace pedflux {

using engine::level_of_service_colors;

ColorFunction::ColorFunction(std::shared_ptr<engine::ColorScale const> scale) : scale_(std::move(scale)) {}

std::shared_ptr<ColorFunction> ColorFunction::CreateCustom(std::vector<double> const& values,
                                                           std::vector<Color> const& colors,
                                                           ColorTransition transition) {
    auto scale = std::make_shared<engine::ColorScale>(engine::ColorScale{values, colors, transition});
    validate(*scale);
    return std::make_shared<ColorFunction>(std::move(scale));
}

std::shared_ptr<ColorFunction> ColorFunction::CreateFruinWalkway(ColorTransition transition) {
    return level_of_service_colors(LevelOfServiceStandard::FRUIN_WALKWAY, transition);
}

std::shared_ptr<ColorFunction> ColorFunction::CreateFruinStairway(ColorTransition transition) {
    return level_of_service_colors(LevelOfServiceStandard::FRUIN_STAIRWAY, transition);
}

std::shared_ptr<ColorFunction> ColorFunction::CreateFruinPlatform(ColorTransition transition) {
    return level_of_service_colors(LevelOfServiceStandard::FRUIN_PLATFORM, transition);
}

std::shared_ptr<ColorFunction> ColorFunction::CreateIATAWaitCirculate(ColorTransition transition) {
    return level_of_service_colors(LevelOfServiceStandard::IATA_WAIT_CIRCULATE, transition);
}

ColorTransition ColorFunction::GetColorTransition() { return scale_->transition; }
double ColorFunction::GetMinValue() const { return scale_->values.front(); }
double ColorFunction::GetMaxValue() const { return scale_->values.back(); }

}  // namespace pedflux
