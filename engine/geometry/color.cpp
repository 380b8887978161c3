#include "engine/base/checks.h"
#include "engine/base/hashing.h"

#include <pedflux/color.h>

#include <fmt/format.h>

namespace pedflux {

namespace {

/// The colour of a six-digit hexadecimal code, as in style sheets.
consteval Color code(unsigned rgb) {
    auto const component = [rgb](int shift) { return static_cast<double>((rgb >> shift) & 0xFFU) / 255; };
    return {component(16), component(8), component(0)};
}

}  // namespace

constinit Color const Color::AMBER = code(0xFFBF00);
constinit Color const Color::AQUA = code(0x00FFFF);
constinit Color const Color::AZURE = code(0x007FFF);
constinit Color const Color::BEIGE = code(0xF5F5DC);
constinit Color const Color::BLACK = code(0x000000);
constinit Color const Color::BLUE = code(0x0000FF);
constinit Color const Color::BROWN = code(0x964B00);
constinit Color const Color::CHARTREUSE = code(0x7FFF00);
constinit Color const Color::CLEAR = {0, 0, 0, 0};
constinit Color const Color::DARK_BLUE = code(0x00008B);
constinit Color const Color::DARK_GRAY = code(0x404040);
constinit Color const Color::DARK_GREEN = code(0x006400);
constinit Color const Color::DARK_RED = code(0x8B0000);
constinit Color const Color::GRAY = code(0x808080);
constinit Color const Color::GREEN = code(0x00FF00);
constinit Color const Color::IVORY = code(0xFFFFF0);
constinit Color const Color::LIGHT_GRAY = code(0xC0C0C0);
constinit Color const Color::MAGENTA = code(0xFF00FF);
constinit Color const Color::MINT = code(0x98FF98);
constinit Color const Color::NAVY = code(0x000080);
constinit Color const Color::OLIVE = code(0x808000);
constinit Color const Color::ORANGE = code(0xFF7F00);
constinit Color const Color::PINK = code(0xFFC0CB);
constinit Color const Color::PURPLE = code(0x800080);
constinit Color const Color::RED = code(0xFF0000);
constinit Color const Color::ROSE = code(0xFF007F);
constinit Color const Color::SALMON = code(0xFA8072);
constinit Color const Color::TEAL = code(0x008080);
constinit Color const Color::TURQUOISE = code(0x40E0D0);
constinit Color const Color::VERMILION = code(0xE34234);
constinit Color const Color::VIOLET = code(0x7F00FF);
constinit Color const Color::WHEAT = code(0xF5DEB3);
constinit Color const Color::WHITE = code(0xFFFFFF);
constinit Color const Color::YELLOW = code(0xFFFF00);

double Color::GetRed() { return red_; }
double Color::GetGreen() { return green_; }
double Color::GetBlue() { return blue_; }
double Color::GetAlpha() { return alpha_; }

bool Color::InternalEquals(Color const& other) {
    return red_ == other.red_ && green_ == other.green_ && blue_ == other.blue_ && alpha_ == other.alpha_;
}

int Color::InternalHashCode() {
    using engine::hashed_bits;
    return engine::hash_of_words({hashed_bits(red_), hashed_bits(green_), hashed_bits(blue_), hashed_bits(alpha_)});
}

void Color::Refuse() const {
    using engine::text_of;
    engine::refuse(fmt::format("color has red {}, green {}, blue {}, alpha {}; each must be from 0 to 1", text_of(red_),
                               text_of(green_), text_of(blue_), text_of(alpha_)));
}

}  // namespace pedflux
