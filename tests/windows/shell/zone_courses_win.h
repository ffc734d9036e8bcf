#pragma once
// The sample cities and what the tz database says about their time.

#include <chrono>
#include <map>
#include <string>
#include <vector>

#include "base/windows_types.h"

using UtcMinutes = std::chrono::sys_time<std::chrono::minutes>;

struct SampleCity {
    std::string name;
    std::string windowsKey;
    std::string tzName;
};

/// Offsets from UTC over time: each holds from its instant to the next, in minutes.
using ZoneCourse = std::map<UtcMinutes, int>;

std::vector<SampleCity> LoadSampleCities();
/// The course of each tz zone, from 2014-12-31 to the end of 2030.
std::map<std::string, ZoneCourse> LoadZoneCourses();

int OffsetAt(const ZoneCourse& course, UtcMinutes instant);

/// "2015-03-29T01:00"
std::string InstantText(UtcMinutes instant);
UtcMinutes ParseInstant(const std::string& text);

SYSTEMTIME ToSystemTime(UtcMinutes instant);
UtcMinutes FromSystemTime(const SYSTEMTIME& time);

/// The lines of a tab-separated file below the repository, without comments.
std::vector<std::vector<std::string>> LoadTable(const std::string& path);
