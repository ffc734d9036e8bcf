#include "support/seen_view_win.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace {

constexpr double kGlobeRadius = 3.0;

double Radians(double degrees) { return degrees * std::numbers::pi / 180.0; }

/// Turns the plane of `a` and `b` from a towards b.
void Turn(double& a, double& b, double degrees) {
    const auto turned = std::complex(a, b) * std::polar(1.0, Radians(degrees));
    a = turned.real();
    b = turned.imag();
}

}  // namespace

SeenView ViewOfPicture(const std::vector<GlCall>& calls) {
    SeenView view;
    auto call = calls.begin();
    const auto clear = std::ranges::find(calls.rbegin(), calls.rend(), "glClear", &GlCall::name);
    for (; call != clear.base(); ++call) {
        if (call->name == "gluPerspective") view.fovY = call->numbers[0];
        if (call->name != "glViewport") continue;
        view.width = call->numbers[2];
        view.height = call->numbers[3];
    }
    // The camera's transform comes first; a turn by nothing is left out.
    call = std::ranges::find(call, calls.end(), "glTranslatef", &GlCall::name);
    if (call != calls.end()) view.distance = call++->numbers[2];
    for (; call != calls.end() && call->name == "glRotated"; ++call)
        (call->numbers[1] != 0.0 ? view.tilt : view.spin) = call->numbers[0];
    return view;
}

POINT PixelOfPlace(const SeenView& view, double latitudeDeg, double longitudeDeg) {
    double x = 0.0;
    double y = 0.0;
    double z = kGlobeRadius;
    Turn(z, y, latitudeDeg);
    Turn(z, x, longitudeDeg + view.spin);
    Turn(y, z, view.tilt);
    const double scale = view.height / 2.0 / std::tan(Radians(view.fovY / 2.0));
    const double depth = -(view.distance + z);
    const double right = view.width / 2.0 + x / depth * scale;
    const double up = view.height / 2.0 + y / depth * scale;
    return {std::lround(right), std::lround(view.height) - 1 - std::lround(up)};
}
