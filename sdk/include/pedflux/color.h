#pragma once

#include <pedflux/api.h>

namespace pedflux {

/// A colour: red, green and blue in the sRGB colour space and alpha, the opacity; each from 0 to 1.
class PEDFLUX_API Color {
  public:
    /// #FFBF00
    static Color const AMBER;
    /// #00FFFF
    static Color const AQUA;
    /// #007FFF
    static Color const AZURE;
    /// #F5F5DC
    static Color const BEIGE;
    /// #000000
    static Color const BLACK;
    /// #0000FF
    static Color const BLUE;
    /// #964B00
    static Color const BROWN;
    /// #7FFF00
    static Color const CHARTREUSE;
    /// Black that is fully transparent.
    static Color const CLEAR;
    /// #00008B
    static Color const DARK_BLUE;
    /// #404040
    static Color const DARK_GRAY;
    /// #006400
    static Color const DARK_GREEN;
    /// #8B0000
    static Color const DARK_RED;
    /// #808080
    static Color const GRAY;
    /// #00FF00
    static Color const GREEN;
    /// #FFFFF0
    static Color const IVORY;
    /// #C0C0C0
    static Color const LIGHT_GRAY;
    /// #FF00FF
    static Color const MAGENTA;
    /// #98FF98
    static Color const MINT;
    /// #000080
    static Color const NAVY;
    /// #808000
    static Color const OLIVE;
    /// #FF7F00
    static Color const ORANGE;
    /// #FFC0CB
    static Color const PINK;
    /// #800080
    static Color const PURPLE;
    /// #FF0000
    static Color const RED;
    /// #FF007F
    static Color const ROSE;
    /// #FA8072
    static Color const SALMON;
    /// #008080
    static Color const TEAL;
    /// #40E0D0
    static Color const TURQUOISE;
    /// #E34234
    static Color const VERMILION;
    /// #7F00FF
    static Color const VIOLET;
    /// #F5DEB3
    static Color const WHEAT;
    /// #FFFFFF
    static Color const WHITE;
    /// #FFFF00
    static Color const YELLOW;

    /// Opaque black.
    constexpr Color() = default;
    /// An opaque colour. Throws Exception when a component is not in [0, 1].
    constexpr Color(double red, double green, double blue) : Color(red, green, blue, 1) {}
    /// Throws Exception when a component is not in [0, 1].
    constexpr Color(double red, double green, double blue, double alpha)
        : red_(red), green_(green), blue_(blue), alpha_(alpha) {
        if (!IsComponent(red) || !IsComponent(green) || !IsComponent(blue) || !IsComponent(alpha)) Refuse();
    }

    double GetRed();
    double GetGreen();
    double GetBlue();
    double GetAlpha();

    /// Exact equality of all four components.
    bool InternalEquals(Color const& other);
    int InternalHashCode();

  private:
    static constexpr bool IsComponent(double value) { return value >= 0 && value <= 1; }
    [[noreturn]] void Refuse() const;

    double red_ = 0;
    double green_ = 0;
    double blue_ = 0;
    double alpha_ = 1;
};

}  // namespace pedflux
