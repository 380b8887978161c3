#include "engine/model/accessors.h"
#include "engine/model/check.h"
#include "engine/scene/presentation_states.h"

#include <pedflux/presentation.h>

#include <string_view>
#include <variant>

namespace pedflux {

using engine::BillboardState;
using engine::BookmarkState;
using engine::get;
using engine::set;
using engine::state_of;

VALUE_PROPERTY(Billboard, Color, TextColor, text_color)
VALUE_PROPERTY(Billboard, TextHorizontalAlign, TextHorizontalAlignment, horizontal_alignment)
VALUE_PROPERTY(Billboard, TextVerticalAlign, TextVerticalAlignment, vertical_alignment)
VALUE_PROPERTY(Billboard, double, FixedTextSize, text_size)
VALUE_PROPERTY(Billboard, double, MarginSize, margin)
VALUE_PROPERTY(Billboard, BillboardBackDisplayType, BackSideDisplayType, back_side)
VALUE_PROPERTY(Billboard, BillboardTallyUpdateInterval, TallyUpdateIntervalType, tally_interval)

std::string Billboard::GetText() { return get(*this, &BillboardState::text); }
void Billboard::SetText(std::string const& text) { set(*this, &BillboardState::text, text); }

bool Billboard::HasFixedTextSize() { return engine::has(*this, &BillboardState::text_size); }
void Billboard::SetAutoTextSize() { engine::clear(*this, &BillboardState::text_size); }

Color Billboard::GetBackgroundColor() { return state_of<BillboardState>(*this).background.value_or(GetColor()); }
void Billboard::SetBackgroundColor(Color color) { set(*this, &BillboardState::background, color); }
void Billboard::SetObjectColorAsBackgroundColor() { engine::clear(*this, &BillboardState::background); }

std::vector<GlobalId> Billboard::GetTallyObjects() { return get(*this, &BillboardState::tallies); }
void Billboard::SetTallyObjects(std::vector<GlobalId> const& tallies) { set(*this, &BillboardState::tallies, tallies); }
bool Billboard::IsShowTallyDecimals() { return get(*this, &BillboardState::tally_decimals); }
void Billboard::SetShowTallyDecimals(bool show) { set(*this, &BillboardState::tally_decimals, show); }

namespace {

template <class Clock>
Clock const& clock_of(Billboard& billboard, std::string_view property) {
    auto const& state = state_of<BillboardState>(billboard);
    auto const* const clock = std::get_if<Clock>(&state.clock);
    if (clock == nullptr) engine::refuse_unset(owner_of(state), property);
    return *clock;
}

}  // namespace

BillboardClockSource Billboard::GetClockSource() {
    return static_cast<BillboardClockSource>(get(*this, &BillboardState::clock).index());
}
int Billboard::GetClockSourcePlaybackShift() {
    return clock_of<engine::PlaybackClock>(*this, "clockSourcePlaybackShift").shift;
}
void Billboard::SetClockSourceToPlayback(int shift) {
    set(*this, &BillboardState::clock, engine::PlaybackClock{shift});
}
GlobalId Billboard::GetClockSourceTallyObject() {
    return clock_of<engine::TallyClock>(*this, "clockSourceTallyObject").tally;
}
void Billboard::SetClockSourceToTallyObject(GlobalId const& tally) {
    set(*this, &BillboardState::clock, engine::TallyClock{tally});
}
int Billboard::GetClockSourceUserDefinedStartTime() {
    return clock_of<engine::UserDefinedClock>(*this, "clockSourceUserDefinedStartTime").start_time;
}
void Billboard::SetClockSourceToUserDefined(int startTime) {
    set(*this, &BillboardState::clock, engine::UserDefinedClock{startTime});
}

namespace engine {

void BookmarkState::check(BookmarkState const& self) {
    if (self.viewpoint) require_usable(title_of(self) + ": viewpoint", ViewpointAccess::camera(*self.viewpoint));
}

}  // namespace engine

std::shared_ptr<Viewpoint> Bookmark::GetViewpoint() { return engine::copy_of(get(*this, &BookmarkState::viewpoint)); }
void Bookmark::SetViewpoint(std::shared_ptr<Viewpoint> viewpoint) {
    set(*this, &BookmarkState::viewpoint, engine::copy_of(viewpoint));
}

int Bookmark::GetSimulationTime() { return get(*this, &BookmarkState::simulation_time); }
void Bookmark::SetSimulationTime(int time) { set(*this, &BookmarkState::simulation_time, time); }

namespace {

/// Sets a field of a part of the bookmark's display settings.
template <class Part, class Member>
void set_shown(Bookmark& bookmark, Part engine::Display::*part, Member Part::*member, Member const& value) {
    auto& state = state_of<BookmarkState>(bookmark);
    engine::set_field(owner_of(state), state.display.*part, member, value);
}

}  // namespace

BookmarkVisibilityControl Bookmark::GetBookmarkVisibilityControl() {
    return state_of<BookmarkState>(*this).display.visibility.control;
}
void Bookmark::SetBookmarkVisibilityControl(BookmarkVisibilityControl control) {
    set_shown(*this, &engine::Display::visibility, &engine::Visibility::control, control);
}
std::vector<GlobalId> Bookmark::GetVisibilityObjects() {
    return state_of<BookmarkState>(*this).display.visibility.objects;
}
void Bookmark::SetVisibilityObjects(std::vector<GlobalId> const& objects) {
    set_shown(*this, &engine::Display::visibility, &engine::Visibility::objects, objects);
}
RenderType Bookmark::GetObjectRenderType() { return state_of<BookmarkState>(*this).display.render_type; }
void Bookmark::SetRenderType(RenderType type) {
    auto& state = state_of<BookmarkState>(*this);
    engine::set_field(owner_of(state), state.display, &engine::Display::render_type, type);
}

#define SWITCH(Name, field)                                                     \
    bool Bookmark::Get##Name() { return state_of<BookmarkState>(*this).field; } \
    void Bookmark::Set##Name(bool value) { state_of<BookmarkState>(*this).field = value; }

SWITCH(ApplyViewpoint, applied.viewpoint)
SWITCH(ApplySimulationTime, applied.simulation_time)
SWITCH(ApplyObjectVisibility, applied.visibility)
SWITCH(ApplyObjectAppearance, applied.render_type)
SWITCH(ApplyAgentAppearance, applied.agents)
SWITCH(ApplyDecorationAppearance, applied.decorations)
SWITCH(ApplyGeometryAppearance, applied.geometry)
SWITCH(ApplyGrid, applied.grid)
SWITCH(ApplyOverlayAppearance, applied.overlays)

SWITCH(DrawAnimatedAvatar, display.agents.animated_avatars)
SWITCH(DrawCustomAvatar, display.agents.custom_avatars)
SWITCH(HideAgentsOnHiddenFloors, display.agents.hidden_on_hidden_floors)
SWITCH(ScaleAvatarsByRadius, display.agents.scaled_by_radius)

SWITCH(DecorationDirectionArrow, display.decorations.direction_arrow)
SWITCH(DecorationGate, display.decorations.gate)
SWITCH(DecorationGoalLine, display.decorations.goal_line)
SWITCH(DecorationPortalStartAngle, display.decorations.portal_start_angle)
SWITCH(DecorationPriorityFlow, display.decorations.priority_flow)
SWITCH(DecorationServerEntryArrow, display.decorations.server_entry_arrow)
SWITCH(DecorationServerExitArrow, display.decorations.server_exit_arrow)

SWITCH(GeometryShowDrawLayerTitles, display.geometry.draw_layer_titles)
SWITCH(GeometryShowGeometryEdges, display.geometry.edges)
SWITCH(GeometryShowSelectionHighlights, display.geometry.selection_highlights)
SWITCH(ShowGrid, display.grid)

SWITCH(OverlayCurrentTime, display.overlays.current_time)
SWITCH(OverlayFrameRate, display.overlays.frame_rate)
SWITCH(OverlayMapLegend, display.overlays.map_legend)
SWITCH(OverlayMapTitle, display.overlays.map_title)
SWITCH(OverlayReferenceAxis, display.overlays.reference_axis)
SWITCH(OverlaySelection, display.overlays.selection)
SWITCH(OverlayVisiblePopulation, display.overlays.visible_population)

}  // namespace pedflux
