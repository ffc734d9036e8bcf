#pragma once
// Small functions on angles and numbers.

/// Half a turn in radians.
inline constexpr double kPi = 3.141592653589793;

inline constexpr double kFullTurnDeg = 360.0;

/// Degrees to radians.
constexpr double DegToRad(double degrees) noexcept { return kPi * degrees / 180.0; }

/// Radians to degrees.
constexpr double RadiansToDegrees(double radians) noexcept { return 180.0 * radians / kPi; }

/// `value` limited to [low, high]; when `low` is above `high`, values below `low` give `low`.
template <class Number>
constexpr Number Clamp(Number value, Number low, Number high) noexcept {
    if (value < low) return low;
    return value > high ? high : value;
}

/// x times x.
template <class Number>
constexpr Number Square(Number x) noexcept {
    return x * x;
}

/// Brings an angle back into [0, 360). The angle must lie less than one turn outside this range.
/// Deliberate: the function corrects the angle by one turn only, so 725 becomes 365. One turn is
/// enough, because angles change by small steps.
template <class Number>
constexpr Number WrapDegrees(Number angle) noexcept {
    constexpr auto kTurn = static_cast<Number>(kFullTurnDeg);
    if (angle < 0) return angle + kTurn;
    return angle >= kTurn ? angle - kTurn : angle;
}

/// Adds `delta` to `angle` and brings the sum back into [0, 360) with the function above.
template <class Number>
constexpr void WrapDegrees(Number& angle, Number delta) noexcept {
    angle = WrapDegrees(angle + delta);
}
