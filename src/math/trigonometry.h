#pragma once
// Trigonometry in degrees, for formulas of astronomy.

/// `x` minus the largest integer that is not above `x`, in [0, 1). A tiny negative `x` gives 1,
/// because the difference is rounded. `x` must be in the range of 32-bit integers.
double Frac(double x) noexcept;

double SinDeg(double degrees) noexcept;
double CosDeg(double degrees) noexcept;

/// Angle of the point (x, y), degrees in (-180, 180]; 0 for the origin.
double Atan2Deg(double y, double x) noexcept;

/// Converts a point to its distance `r` from the origin, its elevation `theta` above the x-y plane
/// and its azimuth `phi`, which counts from the x axis towards the y axis in [0, 360). Angles are
/// in degrees.
void CartesianToPolar(double x, double y, double z, double& r, double& theta, double& phi) noexcept;

/// Altitude and azimuth of a celestial body. All angles are in degrees; the azimuth counts from
/// south towards west.
/// @param dec declination  @param tau hour angle  @param lat observer's latitude
void EquatorialToHorizontal(double dec, double tau, double lat, double& altitude,
                            double& azimuth) noexcept;
