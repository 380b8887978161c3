#pragma once

#include <pedflux/api.h>
#include <pedflux/color.h>

#include <memory>
#include <vector>

namespace pedflux {

namespace engine {
struct ColorFunctionAccess;
struct ColorScale;
}  // namespace engine

/// How colours follow each other.
enum class ColorTransition : int {
    STEPS = 0,    ///< each colour from its value up to the next one
    GRADUAL = 1,  ///< each colour at its value, mixed in between
};

/// Turns a number, such as a density, into a colour. Values below the first get the first colour, values above the last
/// the last one.
///
/// The scales of levels of service give the levels A to F blue, aqua, green, yellow, orange and red, each from the
/// density on at which the level begins (persons per square metre). They follow:
/// - Fruin, "Pedestrian Planning and Design" (1971), in square feet per person: walkways 35, 25, 15, 10, 5; stairways
///   20, 15, 10, 7, 4; queuing areas, among them platforms, 13, 10, 7, 3, 2;
/// - IATA, "Airport Development Reference Manual" (9th edition, 2004), waiting and circulating, in square metres per
///   person: 2.7, 2.3, 1.9, 1.5, 1.0.
class PEDFLUX_API ColorFunction {
  public:
    /// Used by the library.
    explicit ColorFunction(std::shared_ptr<engine::ColorScale const> scale);

    /// @param values finite, each greater than the one before, at least one
    /// @param colors one for each value
    static std::shared_ptr<ColorFunction> CreateCustom(std::vector<double> const& values,
                                                       std::vector<Color> const& colors, ColorTransition transition);
    static std::shared_ptr<ColorFunction> CreateFruinWalkway(ColorTransition transition);
    static std::shared_ptr<ColorFunction> CreateFruinStairway(ColorTransition transition);
    static std::shared_ptr<ColorFunction> CreateFruinPlatform(ColorTransition transition);
    static std::shared_ptr<ColorFunction> CreateIATAWaitCirculate(ColorTransition transition);

    ColorTransition GetColorTransition();
    /// The value of the first colour.
    double GetMinValue() const;
    /// The value of the last colour.
    double GetMaxValue() const;

  private:
    friend struct engine::ColorFunctionAccess;

    std::shared_ptr<engine::ColorScale const> scale_;
};

}  // namespace pedflux
