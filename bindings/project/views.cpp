#include "bindings/table.h"

#include <pedflux/color.h>
#include <pedflux/identifiers.h>
#include <pedflux/project.h>
#include <pedflux/simulation.h>
#include <pedflux/vectors.h>
#include <pedflux/views.h>

namespace pedflux::jni {

CLASS(View)
METHOD(View, applyBookmark, ApplyBookmark)
METHOD(View, captureImage, CaptureImage)
CLEAR(View, Map)
METHOD(View, close, Close)
OVERLOAD(View, createFrom, 0, CreateFrom, std::shared_ptr<Project>)
OVERLOAD(View, createFrom, 1, CreateFrom, std::shared_ptr<Simulation>)
METHOD(View, hide, Hide)
METHOD(View, hideTime, HideTime)
FLAG(View, GridDisplayed)
METHOD(View, recordMovie, RecordMovie)
METHOD(View, refresh, Refresh)
SET(View, AnimatedAvatarsEnabled)
SET(View, BackgroundColor)
SET(View, CustomAvatarsEnabled)
SET(View, DrawAnimatedAvatar)
SET(View, DrawCustomAvatar)
SET(View, HideAgentsOnHiddenFloors)
SET(View, PlaybackTime)
SET(View, Resolution)
SET(View, ScaleAvatarsByRadius)
SET(View, TextColor)
SET(View, Viewpoint)
METHOD(View, show, Show)
METHOD(View, showMap, ShowMap)
METHOD(View, showTime, ShowTime)

CLASS(Viewpoint)
COPY_CONSTRUCTOR(Viewpoint, 0)
CONSTRUCTOR_OVERLOAD(Viewpoint, 1, Vec3d const&, Vec3d const&, Vec3d const&)
GET(Viewpoint, CenterPoint)
GET(Viewpoint, EyePoint)
GET(Viewpoint, UpDirection)
SET(Viewpoint, VerticalFov)

CLASS(MovieOptions)
CONSTRUCTOR(MovieOptions)
SET(MovieOptions, FrameRate)
SET(MovieOptions, PlaybackSpeed)
SET(MovieOptions, Quality)

}  // namespace pedflux::jni
