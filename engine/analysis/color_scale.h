#pragma once

#include <pedflux/color.h>
#include <pedflux/color_functions.h>
#include <pedflux/level_of_service.h>

#include <memory>
#include <vector>

namespace pedflux::engine {

/// The colours of a colour function at ascending values.
struct ColorScale {
    std::vector<double> values;
    std::vector<Color> colors;
    ColorTransition transition = ColorTransition::STEPS;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("values", self.values);
        field("colors", self.colors);
        field("transition", self.transition);
    }
};

struct ColorFunctionAccess {
    static ColorScale const& scale(ColorFunction const& function) { return *function.scale_; }
};

/// Throws Exception unless there is one colour for each of the values, which are finite and ascend.
void validate(ColorScale const& scale);

/// The colour of a value; NaN gets the first one.
Color color_at(ColorScale const& scale, double value);

std::shared_ptr<ColorFunction> level_of_service_colors(LevelOfServiceStandard standard, ColorTransition transition);

}  // namespace pedflux::engine
