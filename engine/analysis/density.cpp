#include "engine/analysis/density.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine {

namespace {

/// The R of the weights exp(-r^2/R^2), and how far along each axis they are taken into account; metres.
constexpr double kernel_radius = 1;
constexpr double kernel_reach = 2;

double weight(double distance) {
    return std::abs(distance) <= kernel_reach ? std::exp(-distance * distance / (kernel_radius * kernel_radius)) : 0;
}

/// The pixels along one axis in reach of a coordinate, and their weights.
struct Reached {
    int first;
    int last;
};
Reached reached(double coordinate, double least, double pixel_size, int count, std::vector<float>& weights) {
    double const place = (coordinate - least) / pixel_size - 0.5;
    double const reach = kernel_reach / pixel_size;
    auto const pixel = [count](double position) { return static_cast<int>(std::clamp(position, -1.0, count + 0.0)); };
    Reached const range{std::max(0, pixel(std::ceil(place - reach))),
                        std::min(count - 1, pixel(std::floor(place + reach)))};
    weights.clear();
    for (int i = range.first; i <= range.last; ++i) {
        weights.push_back(static_cast<float>(weight((i - place) * pixel_size)));
    }
    return range;
}

}  // namespace

DensityField::DensityField(std::shared_ptr<Raster const> raster, double threshold)
    : raster_(std::move(raster)),
      threshold_(threshold),
      reach_(static_cast<int>(kernel_reach / raster_->pixel_size)),
      persons_(raster_->size()),
      per_area_(raster_->size()),
      over_time_(raster_->size()) {
    find_area_around();
}

void DensityField::find_area_around() {
    std::vector<float> weights;
    for (int i = -reach_; i <= reach_; ++i) weights.push_back(static_cast<float>(weight(i * raster_->pixel_size)));
    std::vector<float> along_rows(raster_->size());
    auto const pixel_area = static_cast<float>(raster_->pixel_size * raster_->pixel_size);
    auto const sum = [&](int center, int count, auto const& value) {
        float total = 0;
        for (int i = std::max(0, center - reach_); i <= std::min(count - 1, center + reach_); ++i) {
            int const offset = i - center + reach_;
            total += weights[static_cast<std::size_t>(offset)] * value(i);
        }
        return total;
    };
    for (int y = 0; y < raster_->rows; ++y) {
        for (int x = 0; x < raster_->columns; ++x) {
            along_rows[raster_->index(x, y)] =
                sum(x, raster_->columns, [&](int i) { return raster_->has(raster_->index(i, y)) ? pixel_area : 0.F; });
        }
    }
    for (int y = 0; y < raster_->rows; ++y) {
        for (int x = 0; x < raster_->columns; ++x) {
            float const area = sum(y, raster_->rows, [&](int i) { return along_rows[raster_->index(x, i)]; });
            per_area_[raster_->index(x, y)] = area > 0 ? 1 / area : 0;
        }
    }
}

void DensityField::add_person(double x, double z) {
    auto const columns = reached(x, raster_->min_x, raster_->pixel_size, raster_->columns, weights_x_);
    auto const rows = reached(z, raster_->min_z, raster_->pixel_size, raster_->rows, weights_z_);
    for (int row = rows.first; row <= rows.last; ++row) {
        float const row_weight = weights_z_[static_cast<std::size_t>(row - rows.first)];
        if (columns.first > columns.last) return;
        float* const pixel = persons_.data() + raster_->index(columns.first, row);
        for (std::size_t i = 0; i < weights_x_.size(); ++i) pixel[i] += row_weight * weights_x_[i];
    }
}

void DensityField::end_frame() {
    ++frames_;
    for (std::size_t pixel = 0; pixel < persons_.size(); ++pixel) {
        auto& over_time = over_time_[pixel];
        double const density = static_cast<double>(persons_[pixel] * per_area_[pixel]);
        over_time.last = density;
        if (density > threshold_) ++over_time.frames_above;
        if (density == 0) continue;
        over_time.sum += density;
        over_time.sum_of_squares += density * density;
        over_time.greatest = std::max(over_time.greatest, density);
        ++over_time.frames_with_persons;
        persons_[pixel] = 0;
    }
}

}  // namespace pedflux::engine
