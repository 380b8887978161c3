#pragma once

#include "engine/analysis/raster.h"

#include <limits>
#include <memory>
#include <vector>

namespace pedflux::engine {

/// The density on one surface, accumulated frame by frame; `DensityMapQuery` defines it.
class DensityField {
  public:
    /// @param threshold persons per square metre, see `OverTime::frames_above`
    explicit DensityField(std::shared_ptr<Raster const> raster,
                          double threshold = std::numeric_limits<double>::infinity());

    /// Adds a person of the current frame at a place in the plan.
    void add_person(double x, double z);
    /// Ends the frame and updates the statistics of each pixel over the frames.
    void end_frame();

    struct OverTime {
        double sum = 0;
        double sum_of_squares = 0;
        double greatest = 0;
        double last = 0;
        int frames_with_persons = 0;
        int frames_above = 0;  ///< in which the density was above the threshold
    };
    int frames() const { return frames_; }
    OverTime const& at(std::size_t pixel) const { return over_time_[pixel]; }

  private:
    void find_area_around();

    std::shared_ptr<Raster const> raster_;
    double threshold_;
    int reach_;                    ///< pixels to each side that a person counts for
    std::vector<float> persons_;   ///< weighted number around each pixel in the current frame
    std::vector<float> per_area_;  ///< one over the weighted walkable area around each pixel
    std::vector<OverTime> over_time_;
    std::vector<float> weights_x_;
    std::vector<float> weights_z_;
    int frames_ = 0;
};

}  // namespace pedflux::engine
