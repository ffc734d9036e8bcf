#pragma once
// Position of the Sun and sidereal time, accurate to about an arc-minute for some decades around
// 2000. An arc-minute is less than a pixel at the day/night line.
//
// Sources: the series of MiniSun is the series of the low-precision formulas for the Sun in The
// Astronomical Almanac (mean elements and a two-term equation of centre). The constants here have
// more digits. Rounded, they equal the constants of the almanac, except that the mean longitude is
// 0.008 degrees larger. Longitude, right ascension and declination differ from the results of the
// almanac's formulas by less than 0.7 arc-minutes from 1950 to 2050. The sidereal time is the IAU
// 1982 expression: S. Aoki et al., "The new definition of universal time", Astronomy and
// Astrophysics 105 (1982), 359. The formula of the day number is from H. F. Fliegel and T. C. Van
// Flandern, Communications of the ACM 11 (1968), 657.
#include <cstdint>

#include "base/windows_types.h"

/// Returns the Julian day number of a Gregorian date: the Julian date at noon of this day.
std::int32_t JulianDayNumber(std::int32_t year, std::int32_t month, std::int32_t day) noexcept;

/// Returns the Julian date of an instant in UTC, days.
double JulianDate(int year, int month, int day, int hour, int minute, int second) noexcept;

/// Returns the modified Julian date (Julian date - 2400000.5) of an instant in UTC, days.
double ModifiedJulianDate(int year, int month, int day, int hour, int minute, int second) noexcept;

/// Returns the local mean sidereal time, hours in [0, 24).
/// @param mjd        modified Julian date of an instant in UT
/// @param longitude  degrees, positive to the west
double SiderealTime(double mjd, double longitude) noexcept;

/// Computes the position of the Sun, referred to the equinox of date, with the obliquity of J2000.
/// @param T    Julian centuries since J2000
/// @param ra   out: right ascension, hours in [0, 24)
/// @param dec  out: declination, degrees
void MiniSun(double T, double& ra, double& dec) noexcept;

/// Computes the place where the Sun is in the zenith: its latitude is `declination`, its east
/// longitude is -`hourAngle`.
/// @param utc          weekday and milliseconds are not read
/// @param hourAngle    out: Greenwich hour angle, degrees, not reduced to one turn
/// @param declination  out: degrees
void SunPosition(const SYSTEMTIME& utc, double* hourAngle, double* declination) noexcept;
