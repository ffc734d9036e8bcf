#include "window/globe_pick.h"

#include <array>
#include <cmath>

#include "base/gl.h"
#include "math/angles.h"
#include "render/sphere.h"

namespace {

// Deliberate: the near end of the ray has depth -1, in front of the near plane (depth 0); only the
// direction of the ray matters.
constexpr double kNearDepth = -1.0;
constexpr double kFarDepth = 1.0;

struct Ray {
    CVector4 start;
    CVector4 direction;  // of length 1
};

std::optional<CVector4> Unproject(const CScene& scene, const std::array<double, 16>& model,
                                  const std::array<double, 16>& projection, double x, double y,
                                  double depth) noexcept {
    const GLint viewport[4] = {0, 0, scene.width, scene.height};
    CVector4 point;
    const GLint ok = gluUnProject(x, y, depth, model.data(), projection.data(), viewport, &point.x,
                                  &point.y, &point.z);
    if (ok != GL_TRUE) return std::nullopt;
    return point;
}

std::optional<Ray> RayThrough(const CScene& scene, double x, double y, bool withRotation) noexcept {
    std::array<double, 16> model{};
    std::array<double, 16> projection{};
    scene.GetModelMatrix(model, withRotation);
    scene.GetProjectionMatrix(projection);
    const auto nearEnd = Unproject(scene, model, projection, x, y, kNearDepth);
    const auto farEnd = Unproject(scene, model, projection, x, y, kFarDepth);
    if (!nearEnd || !farEnd) return std::nullopt;
    CVector4 direction(farEnd->x - nearEnd->x, farEnd->y - nearEnd->y, farEnd->z - nearEnd->z, 1.0);
    direction.Normalize();
    return Ray{*nearEnd, direction};
}

CVector4 Along(const CVector4& start, const CVector4& direction, double t) noexcept {
    return {start.x + t * direction.x, start.y + t * direction.y, start.z + t * direction.z, 1.0};
}

}  // namespace

std::optional<CVector4> PickGlobe(const CScene& scene, const CSphere& sphere, double x, double y,
                                  bool withRotation) noexcept {
    const auto ray = RayThrough(scene, x, y, withRotation);
    if (!ray) return std::nullopt;
    const CVector4 centre(sphere.position.x, sphere.position.y, sphere.position.z, 1.0);
    const double t = Dot(ray->direction, centre) - Dot(ray->direction, ray->start);
    const CVector4 closest = Along(ray->start, ray->direction, t);
    const CVector4 offset(closest.x - centre.x, closest.y - centre.y, closest.z - centre.z, 1.0);
    const double distance = Length(offset);
    const double radius = sphere.radius;
    // The test is not `distance > radius`, because a NaN must count as beside the globe.
    if (!(distance <= radius)) return std::nullopt;
    return Along(closest, ray->direction, -std::sqrt(Square(radius) - Square(distance)));
}

bool RepickAt(CGeoPoint& geoPoint, const CScene& scene, const CSphere& sphere, std::int32_t x,
              std::int32_t y) noexcept {
    geoPoint.mouseX = x;
    geoPoint.mouseY = y;
    const auto hit = PickGlobe(scene, sphere, x, y, true);
    if (hit) geoPoint.globePoint = *hit;
    UpdateGeoPoint(geoPoint, scene);
    return hit.has_value();
}
