#pragma once
// Low-precision solar theory and sidereal time: good to about an arc-minute for decades around
// 2000, which is finer than a pixel of the day/night line.
#include <cstdint>

#include "base/windows_types.h"

/// Day number of a Gregorian date at noon (Fliegel and Van Flandern 1968).
std::int32_t JulianDayNumber(std::int32_t year, std::int32_t month, std::int32_t day) noexcept;

/// Julian date of an instant, days.
double JulianDate(int year, int month, int day, int hour, int minute, int second) noexcept;

/// Julian date - 2400000.5.
double ModifiedJulianDate(int year, int month, int day, int hour, int minute, int second) noexcept;

/// Local mean sidereal time, hours in [0, 24) (IAU 1982).
/// @param longitude  degrees, positive to the west
double SiderealTime(double mjd, double longitude) noexcept;

/// The Sun's place of date by a two-term equation of centre and a fixed obliquity.
/// @param T    Julian centuries since J2000
/// @param ra   out: right ascension, hours in [0, 24)
/// @param dec  out: declination, degrees
void MiniSun(double T, double& ra, double& dec) noexcept;

/// @param utc          weekday and milliseconds are not read
/// @param hourAngle    out: Greenwich hour angle, degrees, not reduced to a range; the Sun stands
///                     over east longitude -hourAngle
/// @param declination  out: degrees; the Sun stands over that latitude
void SunPosition(const SYSTEMTIME& utc, double* hourAngle, double* declination) noexcept;
