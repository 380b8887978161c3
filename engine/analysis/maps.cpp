#include "engine/analysis/color_scale.h"
#include "engine/analysis/raster.h"
#include "engine/geometry/checks.h"

#include <pedflux/maps.h>

#include <cmath>
#include <limits>
#include <string>

#include <fmt/format.h>

namespace pedflux {

namespace {

using engine::Raster;

std::size_t require_pixel(Raster const& raster, int x, int y) {
    if (x < 0 || y < 0 || x >= raster.columns || y >= raster.rows) {
        engine::refuse(fmt::format("Pixel ({}, {}) does not belong to the map of {} by {} pixels", x, y, raster.columns,
                                   raster.rows));
    }
    return raster.index(x, y);
}

/// The pixel along one axis; -1 outside the grid.
int pixel_along(double coordinate, double least, double pixel_size, int count) {
    double const pixel = std::floor((coordinate - least) / pixel_size);
    return pixel >= 0 && pixel < count ? static_cast<int>(pixel) : -1;
}

int column_at(Raster const& raster, Vec3d const& position) {
    return pixel_along(engine::require_point("A position", position).x, raster.min_x, raster.pixel_size,
                       raster.columns);
}

int row_at(Raster const& raster, Vec3d const& position) {
    return pixel_along(engine::require_point("A position", position).z, raster.min_z, raster.pixel_size, raster.rows);
}

std::size_t require_pixel_at(Raster const& raster, Vec3d const& position) {
    int const x = column_at(raster, position);
    int const y = row_at(raster, position);
    if (x < 0 || y < 0) {
        engine::refuse(fmt::format("The position {} does not lie on the map",
                                   engine::text_of(engine::require_point("A position", position))));
    }
    return raster.index(x, y);
}

/// Calls visit(x, y, index) for the pixels that the map has.
template <class Visit>
void for_each_pixel(Raster const& raster, Visit const& visit) {
    for (int y = 0; y < raster.rows; ++y) {
        for (int x = 0; x < raster.columns; ++x) {
            if (auto const index = raster.index(x, y); raster.has(index)) visit(x, y, index);
        }
    }
}

}  // namespace

Map::~Map() = default;
Map2d::~Map2d() = default;

Map2d::Map2d(std::shared_ptr<engine::Raster const> raster) : raster_(std::move(raster)) {}

double Map2d::GetPixelSize() { return raster_->pixel_size; }
GlobalId Map2d::GetSurfaceId() { return raster_->surface; }
std::shared_ptr<Map2d> Map2d::AsMap2d() { return shared_from_this(); }
bool Map2d::HasPixel(int x, int y) { return IsValidPixel(x, y) && raster_->has(raster_->index(x, y)); }
bool Map2d::HasPixelAtIndex(int index) {
    return IsValidPixelAtIndex(index) && raster_->has(static_cast<std::size_t>(index));
}
bool Map2d::HasPixelAtPosition(Vec3d const& position) {
    return HasPixel(column_at(*raster_, position), row_at(*raster_, position));
}
bool Map2d::IsValidPixel(int x, int y) { return x >= 0 && y >= 0 && x < raster_->columns && y < raster_->rows; }
bool Map2d::IsValidPixelAtIndex(int index) { return index >= 0 && static_cast<std::size_t>(index) < raster_->size(); }
bool Map2d::IsValidPixelAtPosition(Vec3d const& position) {
    return column_at(*raster_, position) >= 0 && row_at(*raster_, position) >= 0;
}
int Map2d::GetPixelXIndexAtPosition(Vec3d const& position) { return column_at(*raster_, position); }
int Map2d::GetPixelYIndexAtPosition(Vec3d const& position) { return row_at(*raster_, position); }
int Map2d::GetPixelCount() { return static_cast<int>(raster_->size()); }
int Map2d::GetXPixelCount() { return raster_->columns; }
int Map2d::GetYPixelCount() { return raster_->rows; }
Vec3d Map2d::GetCenterOfPixel(int x, int y) {
    auto const index = require_pixel(*raster_, x, y);
    double const height = raster_->has(index) ? static_cast<double>(raster_->heights[index]) : raster_->lowest;
    return {raster_->center_x(x), height, raster_->center_z(y)};
}
double Map2d::GetXSize() { return raster_->columns * raster_->pixel_size; }
double Map2d::GetYSize() { return raster_->rows * raster_->pixel_size; }
std::shared_ptr<ValueMap2d> Map2d::AsValueMap2d() { return nullptr; }
std::shared_ptr<ColorMap2d> Map2d::AsColorMap2d() { return nullptr; }

int PixelColor::GetX() { return x_; }
int PixelColor::GetY() { return y_; }
Color PixelColor::GetColor() { return color_; }

PixelValue::~PixelValue() = default;
int PixelValue::GetX() { return x_; }
int PixelValue::GetY() { return y_; }
double PixelValue::GetValue() { return value_; }

ColorMap2d::ColorMap2d(std::shared_ptr<engine::Raster const> raster, std::vector<Color> colors)
    : Map2d(std::move(raster)), colors_(std::move(colors)) {}

int ColorMap2d::GetMapTypeId() { return static_cast<int>(MapType::COLORS); }
std::shared_ptr<ColorMap2d> ColorMap2d::AsColorMap2d() {
    return std::static_pointer_cast<ColorMap2d>(shared_from_this());
}
Color ColorMap2d::GetColorAtIndex(int index) { return colors_[engine::require_index("pixel", index, colors_.size())]; }
Color ColorMap2d::GetColorAtPixel(int x, int y) { return colors_[require_pixel(*raster_, x, y)]; }
Color ColorMap2d::GetColorAtPosition(Vec3d const& position) { return colors_[require_pixel_at(*raster_, position)]; }
std::vector<PixelColor> ColorMap2d::GetPixelColors() {
    std::vector<PixelColor> pixels;
    for_each_pixel(*raster_, [&](int x, int y, std::size_t index) { pixels.emplace_back(x, y, colors_[index]); });
    return pixels;
}

ValueMap2d::ValueMap2d(std::shared_ptr<engine::Raster const> raster, std::vector<float> values,
                       std::shared_ptr<ColorFunction> colorFunction)
    : Map2d(std::move(raster)), values_(std::move(values)), colorFunction_(std::move(colorFunction)) {}

int ValueMap2d::GetMapTypeId() { return static_cast<int>(MapType::VALUES); }
std::shared_ptr<ValueMap2d> ValueMap2d::AsValueMap2d() {
    return std::static_pointer_cast<ValueMap2d>(shared_from_this());
}
std::shared_ptr<ColorMap2d> ValueMap2d::AsColorMap2d() {
    if (!colorFunction_) return nullptr;
    auto const& scale = engine::ColorFunctionAccess::scale(*colorFunction_);
    std::vector<Color> colors(values_.size(), Color::CLEAR);
    for_each_pixel(*raster_, [&](int, int, std::size_t index) {
        auto const value = static_cast<double>(values_[index]);
        if (!std::isnan(value)) colors[index] = engine::color_at(scale, value);
    });
    return std::make_shared<ColorMap2d>(raster_, std::move(colors));
}
double ValueMap2d::GetValueAtIndex(int index) const {
    return static_cast<double>(values_[engine::require_index("pixel", index, values_.size())]);
}
double ValueMap2d::GetValueAtPixel(int x, int y) const {
    return static_cast<double>(values_[require_pixel(*raster_, x, y)]);
}
double ValueMap2d::GetValueAtPosition(Vec3d const& position) const {
    return static_cast<double>(values_[require_pixel_at(*raster_, position)]);
}
std::vector<PixelValue> ValueMap2d::GetPixelValues() {
    std::vector<PixelValue> pixels;
    for_each_pixel(*raster_, [&](int x, int y, std::size_t index) {
        pixels.emplace_back(x, y, static_cast<double>(values_[index]));
    });
    return pixels;
}

}  // namespace pedflux
