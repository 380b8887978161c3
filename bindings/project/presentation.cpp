#include "bindings/table.h"

#include <pedflux/agent_filters.h>
#include <pedflux/color.h>
#include <pedflux/color_functions.h>
#include <pedflux/geometry.h>
#include <pedflux/identifiers.h>
#include <pedflux/presentation.h>
#include <pedflux/time_range.h>
#include <pedflux/vectors.h>
#include <pedflux/views.h>

namespace pedflux::jni {

CLASS(Billboard, SceneObject)
PROPERTY(Billboard, BackSideDisplayType)
PROPERTY(Billboard, BackgroundColor)
GET(Billboard, ClockSource)
GET(Billboard, ClockSourcePlaybackShift)
GET(Billboard, ClockSourceTallyObject)
GET(Billboard, ClockSourceUserDefinedStartTime)
PROPERTY(Billboard, FixedTextSize)
PROPERTY(Billboard, MarginSize)
PROPERTY(Billboard, TallyObjects)
PROPERTY(Billboard, TallyUpdateIntervalType)
PROPERTY(Billboard, Text)
PROPERTY(Billboard, TextColor)
PROPERTY(Billboard, TextHorizontalAlignment)
PROPERTY(Billboard, TextVerticalAlignment)
GET(Billboard, TypeId)
HAS(Billboard, FixedTextSize)
FLAG(Billboard, ShowTallyDecimals)
SET(Billboard, AutoTextSize)
SET(Billboard, ClockSourceToPlayback)
SET(Billboard, ClockSourceToTallyObject)
SET(Billboard, ClockSourceToUserDefined)
SET(Billboard, Geometry)
SET(Billboard, ObjectColorAsBackgroundColor)

CLASS(Visual, SceneObject)
GET(Visual, TypeId)

CLASS(Bookmark, SimObject)
PROPERTY(Bookmark, ApplyAgentAppearance)
PROPERTY(Bookmark, ApplyDecorationAppearance)
PROPERTY(Bookmark, ApplyGeometryAppearance)
PROPERTY(Bookmark, ApplyGrid)
PROPERTY(Bookmark, ApplyObjectAppearance)
PROPERTY(Bookmark, ApplyObjectVisibility)
PROPERTY(Bookmark, ApplyOverlayAppearance)
PROPERTY(Bookmark, ApplySimulationTime)
PROPERTY(Bookmark, ApplyViewpoint)
PROPERTY(Bookmark, BookmarkVisibilityControl)
PROPERTY(Bookmark, DecorationDirectionArrow)
PROPERTY(Bookmark, DecorationGate)
PROPERTY(Bookmark, DecorationGoalLine)
PROPERTY(Bookmark, DecorationPortalStartAngle)
PROPERTY(Bookmark, DecorationPriorityFlow)
PROPERTY(Bookmark, DecorationServerEntryArrow)
PROPERTY(Bookmark, DecorationServerExitArrow)
PROPERTY(Bookmark, DrawAnimatedAvatar)
PROPERTY(Bookmark, DrawCustomAvatar)
PROPERTY(Bookmark, GeometryShowDrawLayerTitles)
PROPERTY(Bookmark, GeometryShowGeometryEdges)
PROPERTY(Bookmark, GeometryShowSelectionHighlights)
PROPERTY(Bookmark, HideAgentsOnHiddenFloors)
GET(Bookmark, ObjectRenderType)
PROPERTY(Bookmark, OverlayCurrentTime)
PROPERTY(Bookmark, OverlayFrameRate)
PROPERTY(Bookmark, OverlayMapLegend)
PROPERTY(Bookmark, OverlayMapTitle)
PROPERTY(Bookmark, OverlayReferenceAxis)
PROPERTY(Bookmark, OverlaySelection)
PROPERTY(Bookmark, OverlayVisiblePopulation)
PROPERTY(Bookmark, ScaleAvatarsByRadius)
PROPERTY(Bookmark, ShowGrid)
PROPERTY(Bookmark, SimulationTime)
GET(Bookmark, TypeId)
PROPERTY(Bookmark, Viewpoint)
PROPERTY(Bookmark, VisibilityObjects)
SET(Bookmark, RenderType)

}  // namespace pedflux::jni
