#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/model/properties.h"
#include "engine/view/view_state.h"

#include <pedflux/exception.h>
#include <pedflux/presentation.h>
#include <pedflux/project.h>
#include <pedflux/views.h>

#include <string>
#include <utility>

#include <fmt/format.h>

namespace pedflux {

using engine::BookmarkState;
using engine::Document;
using engine::document_of;
using engine::ViewState;

namespace engine {

void apply(BookmarkState const& bookmark, ViewState& view) {
    auto const& applied = bookmark.applied;
    if (applied.viewpoint && bookmark.viewpoint) view.camera = ViewpointAccess::camera(*bookmark.viewpoint);
    if (applied.simulation_time) view.playback_time = bookmark.simulation_time;
    if (applied.visibility) view.display.visibility = bookmark.display.visibility;
    if (applied.render_type) view.display.render_type = bookmark.display.render_type;
    if (applied.agents) view.display.agents = bookmark.display.agents;
    if (applied.decorations) view.display.decorations = bookmark.display.decorations;
    if (applied.geometry) view.display.geometry = bookmark.display.geometry;
    if (applied.overlays) view.display.overlays = bookmark.display.overlays;
    if (applied.grid) view.display.grid = bookmark.display.grid;
}

}  // namespace engine

namespace {

/// The state of a view that can be used.
ViewState& open(ViewState& state) {
    if (state.closed) throw Exception("the view is closed");
    if (state.project) document_of(*state.project);
    return state;
}

[[noreturn]] void refuse_to_draw(std::string const& what) {
    throw Exception(fmt::format("{}: drawing is not available yet in this version of the library", what));
}

void require_path(std::string const& path) {
    if (path.empty()) throw Exception("View: the path of the file must be given, not empty");
}

}  // namespace

View::View(std::unique_ptr<ViewState> state) : state_(std::move(state)) {}
View::~View() = default;

std::shared_ptr<View> View::CreateFrom(std::shared_ptr<Project> project) {
    if (!project) throw Exception("View: there is no project to show: the pointer is empty");
    Document const& document = document_of(*project);
    auto state = std::make_unique<ViewState>();
    state->project = std::move(project);
    if (auto const& bookmark = document.settings.default_bookmark) {
        if (auto const* const found = document.find<BookmarkState>(*bookmark)) engine::apply(*found, *state);
    }
    return std::make_shared<View>(std::move(state));
}

std::shared_ptr<View> View::CreateFrom(std::shared_ptr<Simulation> simulation) {
    if (!simulation) throw Exception("View: there is no simulation to show: the pointer is empty");
    auto state = std::make_unique<ViewState>();
    state->simulation = std::move(simulation);
    return std::make_shared<View>(std::move(state));
}

void View::Show() {
    open(*state_);
    refuse_to_draw("the view cannot be shown");
}
void View::Hide() { open(*state_); }
void View::Refresh() {
    open(*state_);
    refuse_to_draw("the view cannot be drawn again");
}
void View::Close() {
    state_->closed = true;
    state_->project.reset();
    state_->simulation.reset();
}

void View::ApplyBookmark(std::shared_ptr<Bookmark> const& bookmark) {
    auto& state = open(*state_);
    if (!bookmark) throw Exception("View: there is no bookmark to apply: the pointer is empty");
    auto const& found = engine::state_of<BookmarkState>(*bookmark);
    if (state.project && found.document != &document_of(*state.project)) {
        throw Exception(fmt::format("{} is not an object of the project that the view shows", title_of(found)));
    }
    engine::apply(found, state);
}

void View::SetViewpoint(std::shared_ptr<Viewpoint> viewpoint) {
    auto& state = open(*state_);
    if (!viewpoint) throw Exception("View: there is no viewpoint to look from: the pointer is empty");
    state.camera = engine::ViewpointAccess::camera(*viewpoint);
}

void View::SetResolution(int width, int height) {
    auto& state = open(*state_);
    constexpr int most = 16'384;
    if (width < 1 || width > most || height < 1 || height > most) {
        throw Exception(
            fmt::format("View: the resolution must be 1 to {} pixels each way, not {} x {}", most, width, height));
    }
    state.width = width;
    state.height = height;
}

void View::SetPlaybackTime(double seconds) {
    open(*state_).playback_time = engine::require_not_negative("View: the playback time", seconds);
}

void View::ShowMap(std::string const& query) {
    auto& state = open(*state_);
    if (!state.project) throw Exception("View: a view of a simulation has no map queries to show");
    auto const* const object = document_of(*state.project).find(query);
    if (object == nullptr || object->kind->type != ObjectType::MAP_QUERY) {
        throw Exception(
            fmt::format("View: the map must be given by the name of a map query of the project, not by '{}'{}", query,
                        object == nullptr ? "" : ", the name of a " + std::string(object->kind->name)));
    }
    state.map = object->id;
}
void View::ClearMap() { open(*state_).map.reset(); }

void View::SetBackgroundColor(Color color) { open(*state_).background = color; }
void View::SetTextColor(Color color) { open(*state_).text = color; }
void View::ShowTime() { open(*state_).display.overlays.current_time = true; }
void View::HideTime() { open(*state_).display.overlays.current_time = false; }
bool View::IsGridDisplayed() { return open(*state_).display.grid; }
void View::SetGridDisplayed(bool displayed) { open(*state_).display.grid = displayed; }

void View::SetAnimatedAvatarsEnabled(bool enabled) { SetDrawAnimatedAvatar(enabled); }
void View::SetCustomAvatarsEnabled(bool enabled) { SetDrawCustomAvatar(enabled); }
void View::SetDrawAnimatedAvatar(bool draw) { open(*state_).display.agents.animated_avatars = draw; }
void View::SetDrawCustomAvatar(bool draw) { open(*state_).display.agents.custom_avatars = draw; }
void View::SetHideAgentsOnHiddenFloors(bool hide) { open(*state_).display.agents.hidden_on_hidden_floors = hide; }
void View::SetScaleAvatarsByRadius(bool scale) { open(*state_).display.agents.scaled_by_radius = scale; }

void View::CaptureImage(std::string const& path) {
    open(*state_);
    require_path(path);
    refuse_to_draw("the picture '" + path + "' cannot be written");
}

void View::RecordMovie(std::string const& path, double duration, MovieOptions const&) {
    open(*state_);
    require_path(path);
    engine::require_positive("View: the duration of the movie", duration);
    refuse_to_draw("the movie '" + path + "' cannot be recorded");
}

}  // namespace pedflux
