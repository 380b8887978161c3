#pragma once

#include "engine/model/enumerations.h"
#include "engine/model/field_type.h"
#include "engine/model/rules.h"
#include "engine/model/state.h"
#include "engine/scene/scene_states.h"

#include <pedflux/color.h>
#include <pedflux/geometry.h>
#include <pedflux/objects.h>
#include <pedflux/presentation.h>
#include <pedflux/vectors.h>
#include <pedflux/views.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// The states of views, bookmarks, billboards and other objects of presentation.
namespace pedflux::engine {

PEDFLUX_NAMES(BillboardBackDisplayType, {{BillboardBackDisplayType::BLANK, "BLANK"},
                                         {BillboardBackDisplayType::SAME, "SAME"},
                                         {BillboardBackDisplayType::MIRRORED, "MIRRORED"}});
PEDFLUX_NAMES(BillboardClockSource, {{BillboardClockSource::PLAYBACK, "PLAYBACK"},
                                     {BillboardClockSource::TALLY_OBJECT, "TALLY_OBJECT"},
                                     {BillboardClockSource::USER_DEFINED, "USER_DEFINED"}});
PEDFLUX_NAMES(BillboardTallyUpdateInterval, {{BillboardTallyUpdateInterval::EVERY_FRAME, "EVERY_FRAME"},
                                             {BillboardTallyUpdateInterval::EVERY_SECOND, "EVERY_SECOND"},
                                             {BillboardTallyUpdateInterval::EVERY_MINUTE, "EVERY_MINUTE"},
                                             {BillboardTallyUpdateInterval::EVERY_HOUR, "EVERY_HOUR"}});
PEDFLUX_NAMES(TextHorizontalAlign, {{TextHorizontalAlign::LEFT, "LEFT"},
                                    {TextHorizontalAlign::CENTER, "CENTER"},
                                    {TextHorizontalAlign::RIGHT, "RIGHT"}});
PEDFLUX_NAMES(TextVerticalAlign, {{TextVerticalAlign::TOP, "TOP"},
                                  {TextVerticalAlign::MIDDLE, "MIDDLE"},
                                  {TextVerticalAlign::BOTTOM, "BOTTOM"}});
PEDFLUX_NAMES(BookmarkVisibilityControl, {{BookmarkVisibilityControl::HIDE_LISTED, "HIDE_LISTED"},
                                          {BookmarkVisibilityControl::SHOW_LISTED_ONLY, "SHOW_LISTED_ONLY"}});
PEDFLUX_NAMES(RenderType, {{RenderType::SOLID, "SOLID"},
                           {RenderType::TRANSPARENT, "TRANSPARENT"},
                           {RenderType::WIREFRAME, "WIREFRAME"}});

struct VisualState : SceneState {
    static constexpr ObjectType TYPE = ObjectType::VISUAL;
    static constexpr std::string_view NAME = "Visual";
    using Handle = Visual;
};

inline constexpr GeometryRule rectangle_rule{
    "a rectangle", [](Geometry& geometry) { return geometry.AsRectangleGeometry() != nullptr; }};

// The clock sources are in the order of BillboardClockSource.

struct PlaybackClock {
    static constexpr std::string_view NAME = "PLAYBACK";

    int shift = 0;  ///< seconds

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("shift", self.shift);
    }
};

inline constexpr RefersTo tallies_rule = refers_to_kind<ObjectType::TALLY_OBJECT>("a tally object");

struct TallyClock {
    static constexpr std::string_view NAME = "TALLY_OBJECT";

    GlobalId tally;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("tallyObject", self.tally, tallies_rule);
    }
};

struct UserDefinedClock {
    static constexpr std::string_view NAME = "USER_DEFINED";

    int start_time = 0;  ///< seconds after midnight

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("startTime", self.start_time, Range{0, unlimited, "s"});
    }
};

using ClockSource = std::variant<PlaybackClock, TallyClock, UserDefinedClock>;

struct BillboardState : SceneState {
    static constexpr ObjectType TYPE = ObjectType::BILLBOARD;
    static constexpr std::string_view NAME = "Billboard";
    using Handle = Billboard;

    GeometryRule geometry_rule() const override { return rectangle_rule; }

    std::string text;
    Color text_color = Color::BLACK;
    TextHorizontalAlign horizontal_alignment = TextHorizontalAlign::CENTER;
    TextVerticalAlign vertical_alignment = TextVerticalAlign::MIDDLE;
    std::optional<double> text_size;  ///< metres; fitted to the billboard if not set
    double margin = 0.05;             ///< metres
    std::optional<Color> background;  ///< the object's colour if not set
    BillboardBackDisplayType back_side = BillboardBackDisplayType::BLANK;
    ClockSource clock;
    std::vector<GlobalId> tallies;
    BillboardTallyUpdateInterval tally_interval = BillboardTallyUpdateInterval::EVERY_FRAME;
    bool tally_decimals = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        constexpr double largest = 1000;
        SceneState::fields(self, field);
        field("text", self.text);
        field("textColor", self.text_color);
        field("textHorizontalAlignment", self.horizontal_alignment);
        field("textVerticalAlignment", self.vertical_alignment);
        field("fixedTextSize", self.text_size, Range{0, largest, "m", true});
        field("marginSize", self.margin, Range{0, largest, "m"});
        field("backgroundColor", self.background);
        field("backSideDisplayType", self.back_side);
        field("clockSource", self.clock);
        field("tallyObjects", self.tallies, tallies_rule);
        field("tallyUpdateIntervalType", self.tally_interval);
        field("showTallyDecimals", self.tally_decimals);
    }
};

/// The camera of a Viewpoint.
struct Camera {
    static constexpr double widest_angle = 179;  ///< degrees

    Vec3d eye;
    Vec3d center;
    Vec3d up;
    double vertical_fov = 45;  ///< degrees

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("eyePoint", self.eye);
        field("centerPoint", self.center);
        field("upDirection", self.up);
        field("verticalFov", self.vertical_fov, Range{0, widest_angle, "degrees", true});
    }
};

/// Throws Exception when the camera is degenerate: "<what>: the centre point must ...".
void require_usable(std::string const& what, Camera const& camera);

struct ViewpointAccess {
    static Camera const& camera(Viewpoint const& viewpoint) { return *viewpoint.camera_; }
};

template <>
struct SharedValue<Viewpoint> {
    using Value = Camera;
    static Camera const& value(Viewpoint const& viewpoint) { return ViewpointAccess::camera(viewpoint); }
    static std::shared_ptr<Viewpoint> make(Camera const& camera) { return std::make_shared<Viewpoint>(camera); }
};

// The settings of a view, in the groups that a bookmark can apply. In files their fields stand directly in the
// bookmark.

struct Visibility {
    BookmarkVisibilityControl control = BookmarkVisibilityControl::HIDE_LISTED;
    std::vector<GlobalId> objects;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("visibilityControl", self.control);
        field("visibilityObjects", self.objects, refers_to_any("an object of the project"));
    }
};

struct AgentAppearance {
    bool animated_avatars = true;
    bool custom_avatars = true;
    bool hidden_on_hidden_floors = true;
    bool scaled_by_radius = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("drawAnimatedAvatar", self.animated_avatars);
        field("drawCustomAvatar", self.custom_avatars);
        field("hideAgentsOnHiddenFloors", self.hidden_on_hidden_floors);
        field("scaleAvatarsByRadius", self.scaled_by_radius);
    }
};

struct DecorationAppearance {
    bool direction_arrow = true;
    bool gate = true;
    bool goal_line = true;
    bool portal_start_angle = true;
    bool priority_flow = true;
    bool server_entry_arrow = true;
    bool server_exit_arrow = true;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("decorationDirectionArrow", self.direction_arrow);
        field("decorationGate", self.gate);
        field("decorationGoalLine", self.goal_line);
        field("decorationPortalStartAngle", self.portal_start_angle);
        field("decorationPriorityFlow", self.priority_flow);
        field("decorationServerEntryArrow", self.server_entry_arrow);
        field("decorationServerExitArrow", self.server_exit_arrow);
    }
};

struct GeometryAppearance {
    bool draw_layer_titles = false;
    bool edges = true;
    bool selection_highlights = true;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("showDrawLayerTitles", self.draw_layer_titles);
        field("showGeometryEdges", self.edges);
        field("showSelectionHighlights", self.selection_highlights);
    }
};

struct OverlayAppearance {
    bool current_time = false;
    bool frame_rate = false;
    bool map_legend = false;
    bool map_title = false;
    bool reference_axis = false;
    bool selection = false;
    bool visible_population = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("overlayCurrentTime", self.current_time);
        field("overlayFrameRate", self.frame_rate);
        field("overlayMapLegend", self.map_legend);
        field("overlayMapTitle", self.map_title);
        field("overlayReferenceAxis", self.reference_axis);
        field("overlaySelection", self.selection);
        field("overlayVisiblePopulation", self.visible_population);
    }
};

struct Display {
    Visibility visibility;
    RenderType render_type = RenderType::SOLID;
    AgentAppearance agents;
    DecorationAppearance decorations;
    GeometryAppearance geometry;
    OverlayAppearance overlays;
    bool grid = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        Visibility::fields(self.visibility, field);
        field("renderType", self.render_type);
        AgentAppearance::fields(self.agents, field);
        DecorationAppearance::fields(self.decorations, field);
        GeometryAppearance::fields(self.geometry, field);
        OverlayAppearance::fields(self.overlays, field);
        field("showGrid", self.grid);
    }
};

/// The groups of settings that a bookmark applies to a view.
struct Applied {
    bool viewpoint = true;
    bool simulation_time = false;
    bool visibility = false;
    bool render_type = false;
    bool agents = false;
    bool decorations = false;
    bool geometry = false;
    bool overlays = false;
    bool grid = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("applyViewpoint", self.viewpoint);
        field("applySimulationTime", self.simulation_time);
        field("applyObjectVisibility", self.visibility);
        field("applyObjectAppearance", self.render_type);
        field("applyAgentAppearance", self.agents);
        field("applyDecorationAppearance", self.decorations);
        field("applyGeometryAppearance", self.geometry);
        field("applyOverlayAppearance", self.overlays);
        field("applyGrid", self.grid);
    }
};

struct BookmarkState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::BOOKMARK;
    static constexpr std::string_view NAME = "Bookmark";
    using Handle = Bookmark;

    Applied applied;
    std::shared_ptr<Viewpoint> viewpoint;  ///< replaced, never changed
    int simulation_time = 0;               ///< seconds
    Display display;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        Applied::fields(self.applied, field);
        field("viewpoint", self.viewpoint);
        field("simulationTime", self.simulation_time, Range{0, unlimited, "s"});
        Display::fields(self.display, field);
    }
    static void check(BookmarkState const& self);
};

}  // namespace pedflux::engine
