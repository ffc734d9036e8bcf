#pragma once
// Trigonometry in degrees, as almanacs use it.

/// Fractional part in [0, 1); rounding gives 1 for a negative x next to 0. Arguments beyond the
/// 32-bit integer range are not supported.
double Frac(double x) noexcept;

double SinDeg(double degrees) noexcept;
double CosDeg(double degrees) noexcept;

/// Angle of the point (x, y), degrees in (-180, 180]; 0 for the origin.
double Atan2Deg(double y, double x) noexcept;

/// Radius, elevation `theta` and azimuth `phi` in [0, 360), degrees.
void CartesianToPolar(double x, double y, double z, double& r, double& theta, double& phi) noexcept;

/// Altitude and azimuth (from south over west) of a body; all angles in degrees.
/// @param dec declination  @param tau hour angle  @param lat observer's latitude
void EquatorialToHorizontal(double dec, double tau, double lat, double& altitude,
                            double& azimuth) noexcept;
