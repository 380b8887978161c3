#pragma once

#include <pedflux/api.h>
#include <pedflux/color.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>

#include <memory>
#include <string>
#include <vector>

namespace pedflux {

class Viewpoint;

/// A mesh that is only looked at: furniture, facades, the surroundings of a building.
class PEDFLUX_API Visual : public SceneObject {
  public:
    using SceneObject::SceneObject;
};

/// What is seen from behind a billboard.
enum class BillboardBackDisplayType : int {
    BLANK = 0,     ///< the background without text
    SAME = 1,      ///< the same as from the front
    MIRRORED = 2,  ///< the text as if one looked through the billboard
};

/// Whose time a billboard shows.
enum class BillboardClockSource : int {
    PLAYBACK = 0,      ///< the time of day that is shown, shifted
    TALLY_OBJECT = 1,  ///< the value of a tally object, in seconds
    USER_DEFINED = 2,  ///< a time of day that starts as given and runs along with the simulation
};

/// When a billboard takes over new values of tally objects.
enum class BillboardTallyUpdateInterval : int {
    EVERY_FRAME = 0,
    EVERY_SECOND = 1,
    EVERY_MINUTE = 2,
    EVERY_HOUR = 3,
};

enum class TextHorizontalAlign : int {
    LEFT = 0,
    CENTER = 1,
    RIGHT = 2,
};

enum class TextVerticalAlign : int {
    TOP = 0,
    MIDDLE = 1,
    BOTTOM = 2,
};

/// A rectangle with text. What would make another shape of it is refused. The text runs in the direction of the
/// rectangle's length, upright in that of its width, and is read from the side that the normal points to.
///
/// In the text, {clock} stands for the time of the clock source, and {1}, {2} and so on for the values of the tally
/// objects.
class PEDFLUX_API Billboard : public SceneObject {
  public:
    using SceneObject::SceneObject;

    /// Empty unless set.
    std::string GetText();
    /// @param text in UTF-8; "\n" starts a new line
    void SetText(std::string const& text);
    /// Black unless set.
    Color GetTextColor();
    void SetTextColor(Color color);
    /// Centred unless set.
    TextHorizontalAlign GetTextHorizontalAlignment();
    void SetTextHorizontalAlignment(TextHorizontalAlign alignment);
    /// In the middle unless set.
    TextVerticalAlign GetTextVerticalAlignment();
    void SetTextVerticalAlignment(TextVerticalAlign alignment);

    /// Whether the text has a size of its own; otherwise, it is as large as fits.
    bool HasFixedTextSize();
    /// The height of a line in metres. Throws Exception when the text is as large as fits.
    double GetFixedTextSize();
    /// @param size greater than 0 and at most 1000 m
    void SetFixedTextSize(double size);
    /// Makes the text as large as fits, as it is unless set.
    void SetAutoTextSize();
    /// The distance in metres that the text keeps from the edges. 0.05 unless set.
    double GetMarginSize();
    /// @param margin 0 to 1000 m
    void SetMarginSize(double margin);

    /// The object's colour unless set.
    Color GetBackgroundColor();
    void SetBackgroundColor(Color color);
    /// Lets the background follow the object's colour.
    void SetObjectColorAsBackgroundColor();
    /// Blank unless set.
    BillboardBackDisplayType GetBackSideDisplayType();
    void SetBackSideDisplayType(BillboardBackDisplayType type);

    /// The playback without shift unless set.
    BillboardClockSource GetClockSource();
    /// By how many seconds the clock is ahead of the playback. Throws Exception for another clock source.
    int GetClockSourcePlaybackShift();
    /// @param shift in seconds; negative for a clock that is behind
    void SetClockSourceToPlayback(int shift);
    /// Throws Exception for another clock source.
    GlobalId GetClockSourceTallyObject();
    /// @param tally a tally object of the project
    void SetClockSourceToTallyObject(GlobalId const& tally);
    /// What the clock shows as the simulation starts, in seconds after midnight. Throws Exception for another clock
    /// source.
    int GetClockSourceUserDefinedStartTime();
    /// @param startTime in seconds after midnight, 0 or more
    void SetClockSourceToUserDefined(int startTime);

    std::vector<GlobalId> GetTallyObjects();
    /// Replaces the tally objects whose values the text can show, each of them once.
    void SetTallyObjects(std::vector<GlobalId> const& tallies);
    /// In every frame unless set.
    BillboardTallyUpdateInterval GetTallyUpdateIntervalType();
    void SetTallyUpdateIntervalType(BillboardTallyUpdateInterval interval);
    /// Whether values are shown with two decimals instead of rounded to whole numbers; not unless set.
    bool IsShowTallyDecimals();
    void SetShowTallyDecimals(bool show);
};

/// Which objects a bookmark shows.
enum class BookmarkVisibilityControl : int {
    HIDE_LISTED = 0,       ///< all but those in its list
    SHOW_LISTED_ONLY = 1,  ///< those in its list
};

/// How the objects of a scene are drawn.
enum class RenderType : int {
    SOLID = 0,
    TRANSPARENT = 1,  ///< so that what is behind shines through
    WIREFRAME = 2,    ///< the edges of their faces alone
};

/// A remembered view of a project: a viewpoint, a moment, and what is shown and how. Each part is applied to a view
/// only if the bookmark is set to apply it; a new bookmark applies its viewpoint alone.
class PEDFLUX_API Bookmark : public SimObject {
  public:
    using SimObject::SimObject;

    bool GetApplyViewpoint();
    void SetApplyViewpoint(bool apply);
    /// A copy of the viewpoint; empty unless set.
    std::shared_ptr<Viewpoint> GetViewpoint();
    /// Keeps a copy of the viewpoint; an empty one takes it away.
    void SetViewpoint(std::shared_ptr<Viewpoint> viewpoint);

    bool GetApplySimulationTime();
    void SetApplySimulationTime(bool apply);
    /// The moment that is shown, in seconds since the start of the simulation. 0 unless set.
    int GetSimulationTime();
    /// @param time in seconds, 0 or more
    void SetSimulationTime(int time);

    /// Whether the visibility of objects is applied: the control and its list.
    bool GetApplyObjectVisibility();
    void SetApplyObjectVisibility(bool apply);
    /// All but those in the list, which hides none, unless set.
    BookmarkVisibilityControl GetBookmarkVisibilityControl();
    void SetBookmarkVisibilityControl(BookmarkVisibilityControl control);
    std::vector<GlobalId> GetVisibilityObjects();
    /// Replaces the list of the visibility control: any objects of the project, each of them once.
    void SetVisibilityObjects(std::vector<GlobalId> const& objects);

    /// Whether the way in which objects are drawn is applied.
    bool GetApplyObjectAppearance();
    void SetApplyObjectAppearance(bool apply);
    /// Solid unless set.
    RenderType GetObjectRenderType();
    void SetRenderType(RenderType type);

    /// Whether the next four settings are applied.
    bool GetApplyAgentAppearance();
    void SetApplyAgentAppearance(bool apply);
    /// Whether agents move their limbs, if their avatars can; they do unless set.
    bool GetDrawAnimatedAvatar();
    void SetDrawAnimatedAvatar(bool draw);
    /// Whether agents look like the avatars of their profiles; they do unless set. Otherwise, they all look alike.
    bool GetDrawCustomAvatar();
    void SetDrawCustomAvatar(bool draw);
    /// Whether agents are hidden together with the objects that they walk on; they are unless set.
    bool GetHideAgentsOnHiddenFloors();
    void SetHideAgentsOnHiddenFloors(bool hide);
    /// Whether avatars are as wide as their agents' bodies; not unless set.
    bool GetScaleAvatarsByRadius();
    void SetScaleAvatarsByRadius(bool scale);

    /// Whether the next seven settings are applied: what is drawn to explain the objects. All of it is unless set.
    bool GetApplyDecorationAppearance();
    void SetApplyDecorationAppearance(bool apply);
    /// Arrows on connections with one direction.
    bool GetDecorationDirectionArrow();
    void SetDecorationDirectionArrow(bool show);
    /// The state of gates.
    bool GetDecorationGate();
    void SetDecorationGate(bool show);
    /// The goal lines of portals and connections.
    bool GetDecorationGoalLine();
    void SetDecorationGoalLine(bool show);
    /// The directions in which agents come out of portals.
    bool GetDecorationPortalStartAngle();
    void SetDecorationPortalStartAngle(bool show);
    /// Which flow through a connection goes first.
    bool GetDecorationPriorityFlow();
    void SetDecorationPriorityFlow(bool show);
    bool GetDecorationServerEntryArrow();
    void SetDecorationServerEntryArrow(bool show);
    bool GetDecorationServerExitArrow();
    void SetDecorationServerExitArrow(bool show);

    /// Whether the next three settings are applied.
    bool GetApplyGeometryAppearance();
    void SetApplyGeometryAppearance(bool apply);
    /// The titles of drawing layers; not shown unless set.
    bool GetGeometryShowDrawLayerTitles();
    void SetGeometryShowDrawLayerTitles(bool show);
    /// The edges between faces; shown unless set.
    bool GetGeometryShowGeometryEdges();
    void SetGeometryShowGeometryEdges(bool show);
    /// What is selected in another colour; shown unless set.
    bool GetGeometryShowSelectionHighlights();
    void SetGeometryShowSelectionHighlights(bool show);

    /// Whether the grid is applied.
    bool GetApplyGrid();
    void SetApplyGrid(bool apply);
    /// A grid on the plane y = 0; not shown unless set.
    bool GetShowGrid();
    void SetShowGrid(bool show);

    /// Whether the next seven settings are applied: what lies over the picture. None of it does unless set.
    bool GetApplyOverlayAppearance();
    void SetApplyOverlayAppearance(bool apply);
    bool GetOverlayCurrentTime();
    void SetOverlayCurrentTime(bool show);
    /// How many pictures are drawn per second.
    bool GetOverlayFrameRate();
    void SetOverlayFrameRate(bool show);
    /// What the colours of a map mean.
    bool GetOverlayMapLegend();
    void SetOverlayMapLegend(bool show);
    bool GetOverlayMapTitle();
    void SetOverlayMapTitle(bool show);
    /// The directions of x, y and z.
    bool GetOverlayReferenceAxis();
    void SetOverlayReferenceAxis(bool show);
    /// The names of what is selected.
    bool GetOverlaySelection();
    void SetOverlaySelection(bool show);
    /// How many agents are shown.
    bool GetOverlayVisiblePopulation();
    void SetOverlayVisiblePopulation(bool show);
};

}  // namespace pedflux
