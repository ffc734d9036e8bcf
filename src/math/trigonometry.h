#pragma once
// Trigonometry in degrees, for formulas of astronomy.

/// Fractional part of `x` in [0, 1); a tiny negative `x` gives 1 because of rounding. `x` must be
/// in the 32-bit integer range.
double Frac(double x) noexcept;

double SinDeg(double degrees) noexcept;
double CosDeg(double degrees) noexcept;

/// Angle of the point (x, y), degrees in (-180, 180]; 0 for the origin.
double Atan2Deg(double y, double x) noexcept;

/// Converts a point to its radius `r`, elevation `theta` and azimuth `phi` in [0, 360), degrees.
void CartesianToPolar(double x, double y, double z, double& r, double& theta, double& phi) noexcept;

/// Altitude and azimuth of a celestial body. All angles are in degrees; the azimuth counts from
/// south towards west.
/// @param dec declination  @param tau hour angle  @param lat observer's latitude
void EquatorialToHorizontal(double dec, double tau, double lat, double& altitude,
                            double& azimuth) noexcept;
