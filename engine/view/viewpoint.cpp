#include "engine/geometry/checks.h"
#include "engine/geometry/vector.h"
#include "engine/scene/presentation_states.h"

#include <pedflux/exception.h>
#include <pedflux/views.h>

#include <string>

#include <fmt/format.h>

namespace pedflux {

using engine::Camera;

namespace engine {

void require_usable(std::string const& what, Camera const& camera) {
    auto const eye = require_point(what + ": the eye point", camera.eye);
    auto const center = require_point(what + ": the centre point", camera.center);
    Vector const upwards = vector_of(camera.up);
    if (eye == center) {
        throw Exception(fmt::format("{}: the centre point must be apart from the eye point, not at the same {}", what,
                                    text_of(eye)));
    }
    // Less than this, about a millionth of a degree, rounding would turn the picture about.
    constexpr double smallest_sine = 1e-8;
    if (!(length(cross(normalized(center - eye), normalized(upwards))) > smallest_sine)) {
        throw Exception(
            fmt::format("{}: the up direction must have a length and not lie along the line of sight, not be {}", what,
                        text_of(upwards)));
    }
    double const fov = camera.vertical_fov;
    if (!(fov > 0 && fov <= Camera::widest_angle)) {
        throw Exception(
            fmt::format("{}: the vertical field of view must be greater than 0 and at most {} degrees, not {}", what,
                        text_of(Camera::widest_angle), text_of(fov)));
    }
}

}  // namespace engine

namespace {

std::unique_ptr<Camera> checked(Camera const& camera) {
    engine::require_usable("Viewpoint", camera);
    return std::make_unique<Camera>(camera);
}

}  // namespace

Viewpoint::Viewpoint(Vec3d const& eye, Vec3d const& center, Vec3d const& up) : camera_(checked({eye, center, up})) {}
Viewpoint::Viewpoint(Camera const& camera) : camera_(std::make_unique<Camera>(camera)) {}
Viewpoint::Viewpoint(Viewpoint const& other) : Viewpoint(*other.camera_) {}
Viewpoint::~Viewpoint() = default;

Vec3d Viewpoint::GetEyePoint() { return camera_->eye; }
Vec3d Viewpoint::GetCenterPoint() { return camera_->center; }
Vec3d Viewpoint::GetUpDirection() { return camera_->up; }
void Viewpoint::SetVerticalFov(double degrees) {
    Camera changed = *camera_;
    changed.vertical_fov = degrees;
    camera_ = checked(changed);
}

}  // namespace pedflux
