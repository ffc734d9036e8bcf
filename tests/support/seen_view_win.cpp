#include "support/seen_view_win.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "support/gl_spy_win.h"

namespace {

constexpr double kGlobeRadius = 3.0;

double Radians(double degrees) { return degrees * std::numbers::pi / 180.0; }

/// Turns the plane of `a` and `b` from a towards b.
void Turn(double& a, double& b, double degrees) {
    const double cosine = std::cos(Radians(degrees));
    const double sine = std::sin(Radians(degrees));
    const double turned = a * cosine - b * sine;
    b = a * sine + b * cosine;
    a = turned;
}

}  // namespace

SeenView ViewOfPicture(const std::vector<std::string>& calls) {
    SeenView view;
    const auto clear = std::find_if(calls.rbegin(), calls.rend(), [](const std::string& call) {
                           return call.starts_with("glClear ");
                       }).base();
    for (auto call = calls.begin(); call != clear; ++call) {
        const std::vector<double> numbers = SpiedNumbers(*call);
        if (call->starts_with("gluPerspective ")) view.fovY = numbers[0];
        if (call->starts_with("glViewport ")) {
            view.width = static_cast<int>(numbers[2]);
            view.height = static_cast<int>(numbers[3]);
        }
    }
    // The camera's transform comes first; a turn by nothing is left out.
    auto camera = std::find_if(clear, calls.end(), [](const std::string& call) {
        return call.starts_with("glTranslatef ");
    });
    if (camera != calls.end()) view.distance = SpiedNumbers(*camera++)[2];
    for (; camera != calls.end() && camera->starts_with("glRotated "); ++camera) {
        const std::vector<double> numbers = SpiedNumbers(*camera);
        (numbers[1] != 0.0 ? view.tilt : view.spin) = numbers[0];
    }
    return view;
}

std::optional<GlobeDirection> PlaceUnder(const SeenView& view, int x, int y) {
    const double halfHeight = std::tan(Radians(view.fovY / 2.0));
    const double right = (2.0 * x - view.width) / view.height * halfHeight;
    const double up = (2.0 * (view.height - 1 - y) / view.height - 1.0) * halfHeight;
    // From the eye along (right, up, -1) to the sphere about (0, 0, distance).
    const double square = right * right + up * up + 1.0;
    const double towards = -view.distance;
    const double root =
        towards * towards - square * (towards * towards - kGlobeRadius * kGlobeRadius);
    if (root < 0.0) return std::nullopt;
    const double t = (towards - std::sqrt(root)) / square;
    GlobeDirection place{t * right / kGlobeRadius, t * up / kGlobeRadius,
                         (towards - t) / kGlobeRadius};
    Turn(place.y, place.z, -view.tilt);
    Turn(place.z, place.x, -view.spin);
    return place;
}

POINT PixelOfPlace(const SeenView& view, double latitudeDeg, double longitudeDeg) {
    const double level = kGlobeRadius * std::cos(Radians(latitudeDeg));
    double x = level * std::sin(Radians(longitudeDeg));
    double y = kGlobeRadius * std::sin(Radians(latitudeDeg));
    double z = level * std::cos(Radians(longitudeDeg));
    Turn(z, x, view.spin);
    Turn(y, z, view.tilt);
    const double scale = view.height / 2.0 / std::tan(Radians(view.fovY / 2.0));
    const double depth = -(view.distance + z);
    const double right = view.width / 2.0 + x / depth * scale;
    const double up = view.height / 2.0 + y / depth * scale;
    return {std::lround(right), view.height - 1 - std::lround(up)};
}

double AngleBetween(const GlobeDirection& a, const GlobeDirection& b) {
    const double dot = a.x * b.x + a.y * b.y + a.z * b.z;
    return std::acos(std::clamp(dot, -1.0, 1.0)) * 180.0 / std::numbers::pi;
}
