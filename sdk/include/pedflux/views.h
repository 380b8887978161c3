#pragma once

#include <pedflux/api.h>
#include <pedflux/color.h>
#include <pedflux/vectors.h>

#include <memory>
#include <string>

namespace pedflux {

namespace engine {
struct Camera;
struct MovieOptionsAccess;
struct ViewAccess;
struct ViewState;
struct ViewpointAccess;
}  // namespace engine

class Bookmark;
class Project;
class Simulation;

/// Where one looks from, in metres: a camera at the eye point that is turned to the centre point. It sees in
/// perspective.
///
/// A bookmark and a view keep a copy of the viewpoint that they are given.
class PEDFLUX_API Viewpoint {
  public:
    /// @param eye where the camera is
    /// @param center what stands in the middle of the picture, apart from the eye
    /// @param up what points upwards in the picture; any length, not along the line of sight
    Viewpoint(Vec3d const& eye, Vec3d const& center, Vec3d const& up);
    /// Used by the library.
    explicit Viewpoint(engine::Camera const& camera);
    Viewpoint(Viewpoint const& other);
    Viewpoint& operator=(Viewpoint const&) = delete;
    ~Viewpoint();

    Vec3d GetEyePoint();
    Vec3d GetCenterPoint();
    /// As it was given.
    Vec3d GetUpDirection();
    /// Sets the angle between the upper and the lower edge of the picture. 45 degrees unless set.
    /// @param degrees greater than 0 and at most 179
    void SetVerticalFov(double degrees);

  private:
    friend engine::ViewpointAccess;

    std::unique_ptr<engine::Camera> camera_;
};

/// How much a movie is compressed.
enum class MovieQuality : int {
    LOW = 0,     ///< the smallest file
    MEDIUM = 1,  ///< few artefacts
    HIGH = 2,    ///< no artefacts that one sees
};

/// How a movie is recorded.
class PEDFLUX_API MovieOptions {
  public:
    /// 25 pictures per second at the speed of reality, in medium quality.
    MovieOptions();

    /// @param rate pictures per second of the movie, 1 to 240
    void SetFrameRate(int rate);
    /// @param speed how many simulated seconds pass in one second of the movie; greater than 0 and at most 10,000
    void SetPlaybackSpeed(double speed);
    void SetQuality(MovieQuality quality);

  private:
    friend engine::MovieOptionsAccess;

    int frameRate_ = 25;
    double playbackSpeed_ = 1;
    MovieQuality quality_ = MovieQuality::MEDIUM;
};

/// A display of a project or of a running simulation.
///
/// A new view has 1280 x 720 pixels, a white background and black text, and shows all visible objects without a grid
/// from a viewpoint that has them all in sight. A view of a project starts with the project's default bookmark, if
/// there is one.
///
/// This version of the library keeps all of a view's settings, but does not draw: Show, Refresh, CaptureImage and
/// RecordMovie throw Exception. Every operation but Close throws Exception when the view was closed, and a view of a
/// project also when the project was.
class PEDFLUX_API View {
  public:
    /// Used by the library; a view is created from a project or a simulation.
    explicit View(std::unique_ptr<engine::ViewState> state);
    View(View const&) = delete;
    View& operator=(View const&) = delete;
    ~View();

    static std::shared_ptr<View> CreateFrom(std::shared_ptr<Project> project);
    static std::shared_ptr<View> CreateFrom(std::shared_ptr<Simulation> simulation);

    /// Opens a window with the view. Throws Exception: drawing is not available yet.
    void Show();
    /// Closes the window, if there is one; the view keeps its settings.
    void Hide();
    /// Draws again what has changed. Throws Exception: drawing is not available yet.
    void Refresh();
    /// Ends the view; closing again does nothing.
    void Close();

    /// Takes over what the bookmark is set to apply. A bookmark that applies its viewpoint but has none leaves the
    /// view's. A view of a project takes the bookmarks of that project only.
    void ApplyBookmark(std::shared_ptr<Bookmark> const& bookmark);
    /// Looks from a copy of the viewpoint.
    void SetViewpoint(std::shared_ptr<Viewpoint> viewpoint);
    /// The size of the picture in pixels, 1 to 16,384 each.
    void SetResolution(int width, int height);
    /// The moment of a simulation's results that is shown.
    /// @param seconds since the start of the simulation, 0 or more
    void SetPlaybackTime(double seconds);

    /// Colours the floors by a map query of the project, in place of another one.
    /// @param query the name of the map query
    void ShowMap(std::string const& query);
    /// Shows no map. A view shows none from the start.
    void ClearMap();

    void SetBackgroundColor(Color color);
    /// The colour of the texts that lie over the scene.
    void SetTextColor(Color color);
    /// Shows the time in a corner of the picture.
    void ShowTime();
    void HideTime();
    bool IsGridDisplayed();
    void SetGridDisplayed(bool displayed);

    /// Whether agents move their limbs, if their avatars can. The same setting as `SetDrawAnimatedAvatar`.
    void SetAnimatedAvatarsEnabled(bool enabled);
    /// Whether agents look like the avatars of their profiles; otherwise, they all look alike. The same setting as
    /// `SetDrawCustomAvatar`.
    void SetCustomAvatarsEnabled(bool enabled);
    void SetDrawAnimatedAvatar(bool draw);
    void SetDrawCustomAvatar(bool draw);
    /// Whether agents are hidden together with the objects that they walk on.
    void SetHideAgentsOnHiddenFloors(bool hide);
    /// Whether avatars are as wide as their agents' bodies.
    void SetScaleAvatarsByRadius(bool scale);

    /// Writes the picture to a file. Throws Exception: drawing is not available yet.
    /// @param path of a PNG file
    void CaptureImage(std::string const& path);
    /// Writes a movie that begins at the playback time. Throws Exception: drawing is not available yet.
    /// @param path of a file
    /// @param duration of the part of the simulation that the movie shows, in seconds; more than 0
    void RecordMovie(std::string const& path, double duration, MovieOptions const& options);

  private:
    friend engine::ViewAccess;

    std::unique_ptr<engine::ViewState> state_;
};

}  // namespace pedflux
