#include "engine/base/checks.h"
#include "engine/model/enumerations.h"

#include <pedflux/exception.h>
#include <pedflux/views.h>

#include <string>

#include <fmt/format.h>

namespace pedflux {

namespace engine {

PEDFLUX_NAMES(MovieQuality,
              {{MovieQuality::LOW, "LOW"}, {MovieQuality::MEDIUM, "MEDIUM"}, {MovieQuality::HIGH, "HIGH"}});

}  // namespace engine

MovieOptions::MovieOptions() = default;

void MovieOptions::SetFrameRate(int rate) {
    constexpr int most = 240;
    if (rate < 1 || rate > most) {
        throw Exception(
            fmt::format("MovieOptions: the frame rate must be 1 to {} pictures per second, not {}", most, rate));
    }
    frameRate_ = rate;
}

void MovieOptions::SetPlaybackSpeed(double speed) {
    constexpr double most = 10'000;
    if (!(speed > 0 && speed <= most)) {
        throw Exception(fmt::format("MovieOptions: the playback speed must be greater than 0 and at most {}, not {}",
                                    engine::text_of(most), engine::text_of(speed)));
    }
    playbackSpeed_ = speed;
}

void MovieOptions::SetQuality(MovieQuality quality) {
    if (engine::name_of_value(quality).empty()) {
        throw Exception(fmt::format("MovieOptions: the quality must be one of {}, not {}",
                                    engine::names_of<MovieQuality>(), static_cast<int>(quality)));
    }
    quality_ = quality;
}

}  // namespace pedflux
