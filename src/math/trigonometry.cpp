#include "math/trigonometry.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "math/angles.h"

namespace {

constexpr double kRightAngleDeg = 90.0;
constexpr double kHalfTurnDeg = 180.0;
constexpr double kRadiansPerDegree = 0.0174532925199433;  // pi / 180, rounded to 16 decimals

/// `x` rounded towards zero; the most negative 32-bit number when the result does not fit into 32
/// bits. The x86 instruction for this conversion gives the same result.
std::int32_t TruncateTo32Bits(double x) noexcept {
    constexpr double kLimit = 2147483648.0;
    const bool fits = x > -kLimit - 1.0 && x < kLimit;
    return fits ? static_cast<std::int32_t>(x) : std::numeric_limits<std::int32_t>::min();
}

constexpr double TurnsToRadians(double turns) noexcept { return turns * 2.0 * kPi; }

}  // namespace

double Frac(double x) noexcept {
    const double rest = x - TruncateTo32Bits(x);
    return rest < 0.0 ? rest + 1.0 : rest;
}

double SinDeg(double degrees) noexcept { return std::sin(TurnsToRadians(degrees / kFullTurnDeg)); }
double CosDeg(double degrees) noexcept { return std::cos(TurnsToRadians(degrees / kFullTurnDeg)); }

double Atan2Deg(double y, double x) noexcept {
    if (x == 0.0 && y == 0.0) return 0.0;
    const double ax = std::abs(x);
    const double ay = std::abs(y);
    // Divide the smaller number by the larger number: the arc tangent is most accurate for
    // quotients up to 1.
    double angle = ax > ay ? std::atan(ay / ax) / kRadiansPerDegree
                           : kRightAngleDeg - std::atan(ax / ay) / kRadiansPerDegree;
    if (x < 0.0) angle = kHalfTurnDeg - angle;
    return y < 0.0 ? -angle : angle;
}

void CartesianToPolar(double x, double y, double z, double& r, double& theta,
                      double& phi) noexcept {
    const double fromAxisSquared = x * x + y * y;
    r = std::sqrt(fromAxisSquared + z * z);
    phi = Atan2Deg(y, x);
    if (phi < 0.0) phi += kFullTurnDeg;
    theta = Atan2Deg(z, std::sqrt(fromAxisSquared));
}

// Rotates the equatorial frame about the east-west axis by the colatitude.
void EquatorialToHorizontal(double dec, double tau, double lat, double& altitude,
                            double& azimuth) noexcept {
    const double x = CosDeg(dec) * SinDeg(lat) * CosDeg(tau) - SinDeg(dec) * CosDeg(lat);
    const double y = CosDeg(dec) * SinDeg(tau);
    const double z = CosDeg(dec) * CosDeg(lat) * CosDeg(tau) + SinDeg(dec) * SinDeg(lat);
    double unusedRadius = 0.0;
    CartesianToPolar(x, y, z, unusedRadius, altitude, azimuth);
}
