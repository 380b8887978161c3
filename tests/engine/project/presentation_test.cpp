#include "engine/base/checks.h"
#include "engine/geometry/vector.h"
#include "engine/model/codec.h"
#include "engine/model/saving.h"
#include "engine/project/kinds.h"
#include "engine/scene/avatar_state.h"
#include "engine/scene/presentation_states.h"
#include "engine/view/view_state.h"
#include "tests/engine/project/building.h"

#include <pedflux/avatars.h>
#include <pedflux/presentation.h>
#include <pedflux/tallies.h>
#include <pedflux/views.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <set>
#include <string>
#include <vector>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double ENDLESS = std::numeric_limits<double>::infinity();

std::shared_ptr<RectangleGeometry> panel() {
    return std::make_shared<RectangleGeometry>(Vec3d(0, 2, 0), Vec3d::X_DIRECTION, Vec3d::Y_DIRECTION, 4, 1);
}

class Presentation : public ::testing::Test {
  protected:
    Presentation() : project(Project::Create()) {}
    ~Presentation() override { project->Close(); }

    /// The project as it is after it was saved and opened.
    std::shared_ptr<Project> opened() const {
        return std::make_shared<Project>(from_text(to_text(document_of(*project)), object_kinds()));
    }

    std::shared_ptr<Project> project;
    Viewpoint const aslant{{10, 20, 30}, {0, 1, 0}, {0, 2, 0}};
};

struct Refusal {
    std::function<void()> set;
    std::string message;
};

TEST_F(Presentation, ValuesThatMakeNoSenseAreRefused) {
    auto const sign = project->CreateBillboard("Sign", panel());
    auto const bookmark = project->CreateBookmark("Hall");
    auto const avatar = project->CreateAvatar("Robot", MeshGeometry::CreateBox({0, 0, 0}, {1, 1, 1}));
    auto const before = to_text(document_of(*project));
    auto const someone = GlobalId::Generate();
    Refusal const refusals[] = {
        {[&] { sign->SetGeometry(nullptr); }, "Billboard 'Sign': geometry must be a rectangle, not empty"},
        {[&] { sign->SetGeometry(slab(0, 0, 1, 1)); }, "geometry must be a rectangle, not another kind"},
        {[&] {
             sign->ScaleAlong(Axis3d({0, 0, 0}, {1, 1, 0}), 2);
         },
         "geometry must be a rectangle"},
        {[&] { sign->SetText("\xff"); }, "Billboard 'Sign': text must be text in UTF-8"},
        {[&] { sign->SetFixedTextSize(0); }, "fixedTextSize must be greater than 0 and at most 1000 m, not 0"},
        {[&] { sign->SetMarginSize(-0.1); }, "marginSize must be at least 0 and at most 1000 m, not -0.1"},
        {[&] { sign->SetMarginSize(NOT_A_NUMBER); }, "not nan"},
        {[&] { sign->SetTextHorizontalAlignment(static_cast<TextHorizontalAlign>(3)); },
         "must be one of LEFT (0), CENTER (1), RIGHT (2), not 3"},
        {[&] { sign->SetTextVerticalAlignment(static_cast<TextVerticalAlign>(-1)); }, "TOP (0)"},
        {[&] { sign->SetBackSideDisplayType(static_cast<BillboardBackDisplayType>(9)); }, "BLANK (0)"},
        {[&] { sign->SetTallyUpdateIntervalType(static_cast<BillboardTallyUpdateInterval>(4)); }, "EVERY_FRAME (0)"},
        {[&] { sign->SetTallyObjects({avatar->GetId()}); },
         "tallyObjects.0 must be the identifier of a tally object, not that of Avatar 'Robot'"},
        {[&] { sign->SetClockSourceToTallyObject(someone); }, "clockSource.tallyObject must be the identifier of"},
        {[&] { sign->SetClockSourceToUserDefined(-1); }, "clockSource.startTime must be at least 0 s, not -1"},
        {[&] { bookmark->SetSimulationTime(-5); }, "Bookmark 'Hall': simulationTime must be at least 0 s, not -5"},
        {[&] { bookmark->SetRenderType(static_cast<RenderType>(5)); }, "SOLID (0), TRANSPARENT (1), WIREFRAME (2)"},
        {[&] { bookmark->SetBookmarkVisibilityControl(static_cast<BookmarkVisibilityControl>(2)); },
         "HIDE_LISTED (0), SHOW_LISTED_ONLY (1), not 2"},
        {[&] {
             bookmark->SetVisibilityObjects({sign->GetId(), sign->GetId()});
         },
         "a list of different objects"},
        {[&] { bookmark->SetVisibilityObjects({someone}); }, "which no object of the project has"},
        {[&] { avatar->SetGeometry(nullptr); }, "Avatar 'Robot': look.geometry must be a mesh, not empty"},
        {[&] { project->CreateAvatar("Ghost", nullptr); }, "Avatar 'Ghost': look.geometry must be a mesh, not empty"},
        {[&] { project->CreateAvatarFromPreset("Ghost", nullptr); },
         "Avatar 'Ghost': the preset must be given, not empty"},
        {[&] { project->CreateBillboard("Ghost", nullptr); }, "geometry must be a rectangle, not empty"},
    };
    for (auto const& [set, message] : refusals) EXPECT_REFUSED(set(), message);
    EXPECT_EQ(to_text(document_of(*project)), before);
}

TEST_F(Presentation, WhatABillboardReadsFromTheClockBelongsToItsSource) {
    auto const sign = project->CreateBillboard("Sign", panel());
    auto const tally = project->CreateTallyObject("Seconds");
    auto const shift = [&] { return sign->GetClockSourcePlaybackShift(); };
    auto const counted = [&] { return sign->GetClockSourceTallyObject(); };
    auto const start = [&] { return sign->GetClockSourceUserDefinedStartTime(); };

    EXPECT_EQ(sign->GetClockSource(), BillboardClockSource::PLAYBACK);
    sign->SetClockSourceToPlayback(-90);
    EXPECT_EQ(shift(), -90);
    EXPECT_REFUSED(counted(), "Billboard 'Sign' has no clockSourceTallyObject");
    EXPECT_REFUSED(start(), "Billboard 'Sign' has no clockSourceUserDefinedStartTime");
    sign->SetClockSourceToTallyObject(tally->GetId());
    EXPECT_EQ(sign->GetClockSource(), BillboardClockSource::TALLY_OBJECT);
    EXPECT_TRUE(counted().InternalEquals(tally->GetId()));
    EXPECT_REFUSED(shift(), "Billboard 'Sign' has no clockSourcePlaybackShift");
    EXPECT_REFUSED(project->RemoveAndDeleteObject("Seconds"), "Billboard 'Sign'");
    sign->SetClockSourceToUserDefined(3600);
    EXPECT_EQ(sign->GetClockSource(), BillboardClockSource::USER_DEFINED);
    EXPECT_EQ(start(), 3600);
    sign->SetTallyObjects({tally->GetId()});
    EXPECT_REFUSED(project->RemoveAndDeleteObject("Seconds"), "Billboard 'Sign'");
    sign->SetTallyObjects({});
    project->RemoveAndDeleteObject("Seconds");
}

TEST_F(Presentation, BillboardsFallBackToTheirColourAndToTheLargestText) {
    auto const sign = project->CreateBillboard("Sign", panel());
    sign->SetColor(Color::TEAL);
    EXPECT_TRUE(sign->GetBackgroundColor().InternalEquals(Color::TEAL));
    sign->SetBackgroundColor(Color::CLEAR);
    EXPECT_TRUE(sign->GetBackgroundColor().InternalEquals(Color::CLEAR));
    sign->SetObjectColorAsBackgroundColor();
    EXPECT_TRUE(sign->GetBackgroundColor().InternalEquals(Color::TEAL));

    EXPECT_REFUSED(sign->GetFixedTextSize(), "Billboard 'Sign' has no fixedTextSize");
    sign->SetFixedTextSize(0.25);
    EXPECT_EQ(sign->GetFixedTextSize(), 0.25);
    sign->SetAutoTextSize();
    EXPECT_FALSE(sign->HasFixedTextSize());

    sign->RotateAbout(Axis3d({0, 0, 0}, Vec3d::UP_DIRECTION), 30);
    EXPECT_TRUE(sign->GetGeometry()->AsRectangleGeometry());
}

/// What one can ask a viewpoint for, and the field of view.
std::vector<double> numbers_of(Viewpoint const& viewpoint) {
    Camera const& camera = ViewpointAccess::camera(viewpoint);
    std::vector<double> numbers{camera.vertical_fov};
    for (Vec3d const& vector : {camera.eye, camera.center, camera.up}) {
        numbers.insert(numbers.end(), {vector.GetX(), vector.GetY(), vector.GetZ()});
    }
    return numbers;
}

TEST_F(Presentation, ViewpointsFromWhichNothingIsSeenAreRefused) {
    Vec3d const eye{1, 2, 3};
    Vec3d const center{4, 2, 3};
    struct {
        Vec3d eye, center, up;
        std::string message;
    } const cases[] = {
        {{1, NOT_A_NUMBER, 3}, center, Vec3d::UP_DIRECTION, "Viewpoint: the eye point"},
        {eye, {ENDLESS, 0, 0}, Vec3d::UP_DIRECTION, "Viewpoint: the centre point"},
        {eye, {2e9, 0, 0}, Vec3d::UP_DIRECTION, "Viewpoint: the centre point"},
        {eye, eye, Vec3d::UP_DIRECTION, "must be apart from the eye point, not at the same (1, 2, 3)"},
        {eye, center, Vec3d::ZERO, "not be (0, 0, 0)"},
        {eye, center, Vec3d::INVALID, "the up direction must have a length"},
        {eye, center, {-7, 0, 0}, "not lie along the line of sight, not be (-7, 0, 0)"},
    };
    for (auto const& [from, to, upwards, message] : cases) EXPECT_REFUSED(Viewpoint(from, to, upwards), message);

    Viewpoint viewpoint(eye, center, Vec3d::UP_DIRECTION);
    for (double const angle : {0.0, -1.0, 179.5, NOT_A_NUMBER, ENDLESS}) {
        EXPECT_REFUSED(viewpoint.SetVerticalFov(angle), "must be greater than 0 and at most 179 degrees");
    }
    EXPECT_THAT(numbers_of(viewpoint), ElementsAre(45, 1, 2, 3, 4, 2, 3, 0, 1, 0));
}

TEST_F(Presentation, BookmarksKeepAndGiveCopiesOfTheirViewpoint) {
    auto const bookmark = project->CreateBookmark("Hall");
    EXPECT_FALSE(bookmark->GetViewpoint());
    auto const viewpoint = std::make_shared<Viewpoint>(aslant);
    viewpoint->SetVerticalFov(60);
    bookmark->SetViewpoint(viewpoint);
    viewpoint->SetVerticalFov(30);
    bookmark->GetViewpoint()->SetVerticalFov(20);
    std::vector<double> const expected{60, 10, 20, 30, 0, 1, 0, 0, 2, 0};
    EXPECT_EQ(numbers_of(*bookmark->GetViewpoint()), expected);
    EXPECT_NE(bookmark->GetViewpoint(), bookmark->GetViewpoint());
    EXPECT_EQ(numbers_of(*opened()->GetBookmark("Hall")->GetViewpoint()), expected);
    bookmark->SetViewpoint(nullptr);
    EXPECT_FALSE(bookmark->GetViewpoint());
}

struct Switch {
    char const* name;
    bool (Bookmark::*get)();
    void (Bookmark::*set)(bool);
};
#define SWITCH(Name) \
    Switch { #Name, &Bookmark::Get##Name, &Bookmark::Set##Name }

Switch const SWITCHES[] = {
    SWITCH(ApplyViewpoint),
    SWITCH(ApplySimulationTime),
    SWITCH(ApplyObjectVisibility),
    SWITCH(ApplyObjectAppearance),
    SWITCH(ApplyAgentAppearance),
    SWITCH(ApplyDecorationAppearance),
    SWITCH(ApplyGeometryAppearance),
    SWITCH(ApplyGrid),
    SWITCH(ApplyOverlayAppearance),
    SWITCH(DrawAnimatedAvatar),
    SWITCH(DrawCustomAvatar),
    SWITCH(HideAgentsOnHiddenFloors),
    SWITCH(ScaleAvatarsByRadius),
    SWITCH(DecorationDirectionArrow),
    SWITCH(DecorationGate),
    SWITCH(DecorationGoalLine),
    SWITCH(DecorationPortalStartAngle),
    SWITCH(DecorationPriorityFlow),
    SWITCH(DecorationServerEntryArrow),
    SWITCH(DecorationServerExitArrow),
    SWITCH(GeometryShowDrawLayerTitles),
    SWITCH(GeometryShowGeometryEdges),
    SWITCH(GeometryShowSelectionHighlights),
    SWITCH(ShowGrid),
    SWITCH(OverlayCurrentTime),
    SWITCH(OverlayFrameRate),
    SWITCH(OverlayMapLegend),
    SWITCH(OverlayMapTitle),
    SWITCH(OverlayReferenceAxis),
    SWITCH(OverlaySelection),
    SWITCH(OverlayVisiblePopulation),
};
constexpr std::size_t APPLY_SWITCHES = 9;

std::vector<bool> switches_of(Bookmark& bookmark) {
    std::vector<bool> values;
    for (auto const& one : SWITCHES) values.push_back((bookmark.*one.get)());
    return values;
}

TEST_F(Presentation, EachSwitchOfABookmarkStandsForItself) {
    auto const bookmark = project->CreateBookmark("Hall");
    auto const fresh = switches_of(*bookmark);
    EXPECT_TRUE(std::all_of(fresh.begin() + 1, fresh.begin() + APPLY_SWITCHES, [](bool on) { return !on; }) && fresh[0])
        << "a new bookmark applies its viewpoint alone";
    for (std::size_t i = 0; i < std::size(SWITCHES); ++i) {
        (*bookmark.*SWITCHES[i].set)(!fresh[i]);
        auto expected = fresh;
        expected[i] = !fresh[i];
        EXPECT_EQ(switches_of(*bookmark), expected) << SWITCHES[i].name;
        EXPECT_EQ(switches_of(*opened()->GetBookmark("Hall")), expected) << SWITCHES[i].name;
        (*bookmark.*SWITCHES[i].set)(fresh[i]);
    }
}

/// A bookmark of which nothing is as in a new view.
std::shared_ptr<Bookmark> unlike_a_new_view(Project& project, Viewpoint const& viewpoint) {
    auto const bookmark = project.CreateBookmark("Other");
    for (auto const& one : SWITCHES) (*bookmark.*one.set)(!(*bookmark.*one.get)());
    for (std::size_t i = 0; i < APPLY_SWITCHES; ++i) (*bookmark.*SWITCHES[i].set)(false);
    bookmark->SetViewpoint(std::make_shared<Viewpoint>(viewpoint));
    bookmark->SetSimulationTime(75);
    bookmark->SetBookmarkVisibilityControl(BookmarkVisibilityControl::SHOW_LISTED_ONLY);
    bookmark->SetVisibilityObjects({bookmark->GetId()});
    bookmark->SetRenderType(RenderType::WIREFRAME);
    return bookmark;
}

/// The settings of a view that bookmarks apply, by the parts that they belong to.
Json parts_of(View const& view) {
    ViewState const& state = ViewAccess::state(view);
    auto const& display = state.display;
    return {{"ApplyViewpoint", json_of(state.camera)},
            {"ApplySimulationTime", json_of(state.playback_time)},
            {"ApplyObjectVisibility", json_of(display.visibility)},
            {"ApplyObjectAppearance", json_of(display.render_type)},
            {"ApplyAgentAppearance", json_of(display.agents)},
            {"ApplyDecorationAppearance", json_of(display.decorations)},
            {"ApplyGeometryAppearance", json_of(display.geometry)},
            {"ApplyGrid", json_of(display.grid)},
            {"ApplyOverlayAppearance", json_of(display.overlays)}};
}

TEST_F(Presentation, ViewsTakeFromBookmarksWhatTheyApply) {
    auto const bookmark = unlike_a_new_view(*project, aslant);
    auto const fresh = parts_of(*View::CreateFrom(project));
    for (std::size_t i = 0; i < APPLY_SWITCHES; ++i) {
        auto const view = View::CreateFrom(project);
        (*bookmark.*SWITCHES[i].set)(true);
        view->ApplyBookmark(bookmark);
        (*bookmark.*SWITCHES[i].set)(false);
        auto const parts = parts_of(*view);
        for (auto const& [part, value] : parts.items()) {
            EXPECT_EQ(value != fresh[part], part == SWITCHES[i].name)
                << SWITCHES[i].name << ": " << part << " is " << value;
        }
    }
}

TEST_F(Presentation, ViewsStartWithTheDefaultBookmarkAndKeepAViewpointWithoutAnother) {
    auto const bookmark = unlike_a_new_view(*project, aslant);
    bookmark->SetApplyViewpoint(true);
    bookmark->SetApplyGrid(true);
    project->SetDefaultBookmark(bookmark->GetId());
    auto const view = View::CreateFrom(project);
    EXPECT_TRUE(view->IsGridDisplayed());
    auto const eye = [&] { return ViewAccess::state(*view).camera->eye.GetX(); };
    EXPECT_EQ(eye(), 10);

    auto const other = project->CreateBookmark("Without viewpoint");
    view->ApplyBookmark(other);
    EXPECT_EQ(eye(), 10);
    auto const viewpoint = std::make_shared<Viewpoint>(Vec3d(5, 5, 5), Vec3d(0, 0, 0), Vec3d::UP_DIRECTION);
    view->SetViewpoint(viewpoint);
    viewpoint->SetVerticalFov(100);
    EXPECT_EQ(eye(), 5);
    EXPECT_EQ(ViewAccess::state(*view).camera->vertical_fov, 45);
}

TEST_F(Presentation, ViewsKeepTheirSettings) {
    auto const run = project->CreateSimulationRun("Run");
    auto const query = project->CreateMaxDensityMapQuery("Densest", run->GetId());
    auto const view = View::CreateFrom(project);
    ViewState const& state = ViewAccess::state(*view);
    view->SetResolution(1920, 1);
    EXPECT_THAT((std::vector{state.width, state.height}), ElementsAre(1920, 1));
    view->SetPlaybackTime(12.5);
    EXPECT_EQ(state.playback_time, 12.5);
    view->SetBackgroundColor(Color::NAVY);
    view->SetTextColor(Color::IVORY);
    EXPECT_TRUE(Color(state.background).InternalEquals(Color::NAVY));
    EXPECT_TRUE(Color(state.text).InternalEquals(Color::IVORY));
    view->ShowMap("Densest");
    ASSERT_TRUE(state.map);
    EXPECT_TRUE(state.map->InternalEquals(query->GetId()));
    view->ClearMap();
    EXPECT_FALSE(state.map);

    struct {
        std::function<void(bool)> set;
        bool const& value;
    } const switches[] = {
        {[&](bool on) { on ? view->ShowTime() : view->HideTime(); }, state.display.overlays.current_time},
        {[&](bool on) { view->SetGridDisplayed(on); }, state.display.grid},
        {[&](bool on) { view->SetAnimatedAvatarsEnabled(on); }, state.display.agents.animated_avatars},
        {[&](bool on) { view->SetDrawAnimatedAvatar(on); }, state.display.agents.animated_avatars},
        {[&](bool on) { view->SetCustomAvatarsEnabled(on); }, state.display.agents.custom_avatars},
        {[&](bool on) { view->SetDrawCustomAvatar(on); }, state.display.agents.custom_avatars},
        {[&](bool on) { view->SetHideAgentsOnHiddenFloors(on); }, state.display.agents.hidden_on_hidden_floors},
        {[&](bool on) { view->SetScaleAvatarsByRadius(on); }, state.display.agents.scaled_by_radius},
    };
    for (auto const& [set, value] : switches) {
        for (bool const on : {true, false, true}) {
            set(on);
            EXPECT_EQ(value, on);
        }
    }
}

TEST_F(Presentation, ViewsSayWhatTheyCannotDo) {
    auto const view = View::CreateFrom(project);
    auto const stranger = Project::Create();
    auto const foreign = stranger->CreateBookmark("Foreign");
    auto const removed = project->CreateBookmark("Removed");
    project->RemoveAndDeleteObject("Removed");
    project->CreateBookmark("Hall");
    MovieOptions options;
    constexpr auto NOT_AVAILABLE = "drawing is not available yet";
    Refusal const refusals[] = {
        {[&] { View::CreateFrom(std::shared_ptr<Project>()); }, "there is no project to show"},
        {[&] { View::CreateFrom(std::shared_ptr<Simulation>()); }, "there is no simulation to show"},
        {[&] { view->Show(); }, NOT_AVAILABLE},
        {[&] { view->Refresh(); }, NOT_AVAILABLE},
        {[&] { view->CaptureImage("a.png"); }, "the picture 'a.png' cannot be written: drawing is not available yet"},
        {[&] { view->CaptureImage(""); }, "the path of the file must be given"},
        {[&] { view->RecordMovie("a.mp4", 10, options); }, "the movie 'a.mp4' cannot be recorded: drawing is not"},
        {[&] { view->RecordMovie("", 10, options); }, "the path of the file must be given"},
        {[&] { view->RecordMovie("a.mp4", 0, options); }, "View: the duration of the movie"},
        {[&] { view->SetViewpoint(nullptr); }, "there is no viewpoint to look from"},
        {[&] { view->ApplyBookmark(nullptr); }, "there is no bookmark to apply"},
        {[&] { view->ApplyBookmark(foreign); }, "Bookmark 'Foreign' is not an object of the project"},
        {[&] { view->ApplyBookmark(removed); }, "Bookmark 'Removed' is not an object of the project"},
        {[&] { view->SetResolution(0, 100); }, "must be 1 to 16384 pixels each way, not 0 x 100"},
        {[&] { view->SetResolution(100, 20'000); }, "not 100 x 20000"},
        {[&] { view->SetPlaybackTime(-1); }, "View: the playback time"},
        {[&] { view->SetPlaybackTime(NOT_A_NUMBER); }, "View: the playback time"},
        {[&] { view->ShowMap("Nothing"); }, "the name of a map query of the project, not by 'Nothing'"},
        {[&] { view->ShowMap("Hall"); }, "not by 'Hall', the name of a Bookmark"},
        {[&] { options.SetFrameRate(0); }, "1 to 240 pictures per second, not 0"},
        {[&] { options.SetPlaybackSpeed(NOT_A_NUMBER); }, "at most 10000, not nan"},
        {[&] { options.SetQuality(static_cast<MovieQuality>(7)); }, "LOW (0), MEDIUM (1), HIGH (2), not 7"},
    };
    for (auto const& [act, message] : refusals) EXPECT_REFUSED(act(), message);
    EXPECT_EQ(MovieOptionsAccess::frame_rate(options), 25);
    stranger->Close();
}

TEST_F(Presentation, ClosedViewsAndViewsOfClosedProjectsRefuseEverything) {
    auto const view = View::CreateFrom(project);
    view->Hide();
    view->Close();
    view->Close();
    EXPECT_REFUSED(view->Hide(), "the view is closed");
    EXPECT_REFUSED(view->SetGridDisplayed(true), "the view is closed");
    EXPECT_REFUSED(view->CaptureImage("a.png"), "the view is closed");

    auto const other = View::CreateFrom(project);
    project->Close();
    EXPECT_REFUSED(other->IsGridDisplayed(), "the project is closed");
    other->Close();
}

TEST_F(Presentation, PresetsAreFiguresThatStandOnTheGroundAndLookForward) {
    auto const presets = Project::GetAvatarPresets();
    EXPECT_EQ(presets, Project::GetAvatarPresets());
    struct {
        std::string name;
        double height;
        double reach;  ///< in the plan, from the zero point
    } const expected[] = {{"Adult", 1.75, 0.3},
                          {"Child", 1.2, 0.2},
                          {"Adult with trolley case", 1.75, 0.75},
                          {"Wheelchair user", 1.38, 0.75}};
    ASSERT_EQ(presets.size(), std::size(expected));
    std::set<std::string> ids;
    for (std::size_t i = 0; i < presets.size(); ++i) {
        auto const& [name, height, reach] = expected[i];
        SCOPED_TRACE(name);
        EXPECT_EQ(presets[i]->GetName(), name);
        EXPECT_THAT(presets[i]->GetDescription(), HasSubstr(text_of(height) + " m"));
        EXPECT_FALSE(presets[i]->IsAnimated());
        ids.insert(presets[i]->GetId().GetString());

        auto const mesh = project->CreateAvatarFromPreset(name, presets[i])->GetGeometry();
        double lowest = ENDLESS;
        double highest = -ENDLESS;
        for (auto const& vertex : mesh->GetVertices()) {
            lowest = std::min(lowest, vertex.GetY());
            highest = std::max(highest, vertex.GetY());
            EXPECT_LE(std::hypot(vertex.GetX(), vertex.GetZ()), reach);
        }
        EXPECT_NEAR(lowest, 0, 1e-9);
        EXPECT_NEAR(highest, height, 1e-9);

        // Closed, with faces that look outwards: the volume of a body of this size.
        double volume = 0;
        for (int edge = 0; edge < mesh->GetEdgeCount(); ++edge) {
            EXPECT_EQ(mesh->GetFaceIndicesForEdge(edge).size() % 2, 0U) << edge;
        }
        for (auto face : mesh->GetFaces()) {
            auto const a = vector_of(face.GetFirstVertex());
            volume += dot(a, cross(vector_of(face.GetSecondVertex()), vector_of(face.GetThirdVertex()))) / 6;
        }
        EXPECT_GT(volume, 0.02);
        EXPECT_LT(volume, 0.3);
    }
    EXPECT_EQ(ids.size(), presets.size());
}

TEST_F(Presentation, AvatarsKnowThePresetThatTheyLookLike) {
    auto const child = Project::GetAvatarPresets()[1];
    auto const avatar = project->CreateAvatarFromPreset("Small", child);
    auto const own = project->CreateAvatar("Robot", MeshGeometry::CreateBox({0, 0, 0}, {1, 1, 1}));
    EXPECT_FALSE(own->HasSourcePreset());
    EXPECT_FALSE(own->GetSourcePreset());
    EXPECT_EQ(own->GetGeometry()->GetFaceCount(), 12);
    EXPECT_EQ(avatar->GetSourcePreset(), child);

    auto const twin = opened();
    EXPECT_EQ(twin->GetAvatar("Small")->GetSourcePreset(), child);
    EXPECT_EQ(twin->GetAvatar("Small")->GetGeometry(), avatar->GetGeometry());
    EXPECT_EQ(twin->GetAvatar("Robot")->GetGeometry()->GetFaceCount(), 12);

    avatar->SetGeometry(own->GetGeometry());
    EXPECT_FALSE(avatar->HasSourcePreset());
    EXPECT_EQ(avatar->GetGeometry()->GetFaceCount(), 12);
}

TEST_F(Presentation, SpoiledFilesAreRefusedWithTheReason) {
    auto const bookmark = project->CreateBookmark("Hall");
    bookmark->SetViewpoint(std::make_shared<Viewpoint>(aslant));
    project->CreateBillboard("Sign", panel());
    project->CreateAvatarFromPreset("Small", Project::GetAvatarPresets()[1]);
    Json const file = Json::parse(to_text(document_of(*project)));
    struct {
        std::function<void(Json& bookmark, Json& sign, Json& avatar)> spoil;
        std::string message;
    } const cases[] = {
        {[](Json& b, Json&, Json&) { b["viewpoint"]["centerPoint"] = b["viewpoint"]["eyePoint"]; },
         "Bookmark 'Hall': viewpoint: the centre point must be apart from the eye point"},
        {[](Json& b, Json&, Json&) { b["viewpoint"].erase("upDirection"); }, "viewpoint: the up direction"},
        {[](Json& b, Json&, Json&) { b["viewpoint"]["verticalFov"] = 180; },
         "verticalFov must be greater than 0 and at most 179 degrees, not 180"},
        {[](Json& b, Json&, Json&) { b["simulationTime"] = -1; }, "simulationTime must be at least 0 s"},
        {[](Json& b, Json&, Json&) { b["showGrid"] = 1; }, "showGrid must be true or false"},
        {[](Json&, Json& s, Json&) { s["clockSource"]["kind"] = "SUNDIAL"; },
         "clockSource must be an object whose kind is one of PLAYBACK, TALLY_OBJECT, USER_DEFINED"},
        {[](Json&, Json& s, Json&) { s["clockSource"]["kind"] = "TALLY_OBJECT"; },
         "clockSource.tallyObject must be the identifier of a tally object, not the invalid identifier"},
        {[](Json&, Json& s, Json&) { s["geometry"] = json_of<std::shared_ptr<Geometry>>(slab(0, 0, 1, 1)); },
         "geometry must be a rectangle, not another kind of geometry"},
        {[](Json&, Json&, Json& a) { a["look"]["preset"] = GlobalId::Generate().GetString(); },
         "Avatar 'Small'.look.preset must be the identifier of an avatar preset"},
        {[](Json&, Json&, Json& a) { a["look"].erase("preset"); }, "look.preset must be given, not empty"},
        {[](Json&, Json&, Json& a) { a["look"]["kind"] = "mesh"; }, "look.geometry must be a mesh, not empty"},
        {[](Json&, Json&, Json& a) { a.erase("look"); }, "look.geometry must be a mesh, not empty"},
    };
    for (auto const& [spoil, message] : cases) {
        Json spoiled = file;
        auto& objects = spoiled["objects"];
        spoil(objects[0], objects[1], objects[2]);
        EXPECT_REFUSED(from_text(spoiled.dump(), object_kinds()), message);
    }
}

}  // namespace
}  // namespace pedflux::engine
