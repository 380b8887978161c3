#pragma once

#include "engine/model/document.h"
#include "engine/scene/presentation_states.h"

#include <pedflux/color.h>
#include <pedflux/identifiers.h>
#include <pedflux/views.h>

#include <memory>
#include <optional>

namespace pedflux {
class Project;
class Simulation;
}  // namespace pedflux

namespace pedflux::engine {

/// What a view shows and how.
struct ViewState {
    // One of the two.
    std::shared_ptr<Project> project;
    std::shared_ptr<Simulation> simulation;
    bool closed = false;

    std::optional<Camera> camera;  ///< has everything in sight when there is none
    Display display;
    double playback_time = 0;     ///< seconds since the start of the simulation
    std::optional<GlobalId> map;  ///< the map query that is shown
    int width = 1280;             ///< pixels
    int height = 720;             ///< pixels
    Color background = Color::WHITE;
    Color text = Color::BLACK;
};

/// Replaces the parts of a view that the bookmark applies.
void apply(BookmarkState const& bookmark, ViewState& view);

struct ViewAccess {
    static ViewState const& state(View const& view) { return *view.state_; }
};

struct MovieOptionsAccess {
    static int frame_rate(MovieOptions const& options) { return options.frameRate_; }
    static double playback_speed(MovieOptions const& options) { return options.playbackSpeed_; }
    static MovieQuality quality(MovieOptions const& options) { return options.quality_; }
};

}  // namespace pedflux::engine
