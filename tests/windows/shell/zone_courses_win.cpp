#include "zone_courses_win.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>

namespace {

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
    return parts;
}

/// "60 2015-03-29T01:00=120 ..."
ZoneCourse ParseCourse(const std::string& text) {
    ZoneCourse course;
    for (const std::string& part : Split(text, ' ')) {
        const std::size_t equals = part.find('=');
        if (equals == std::string::npos) {
            course[ParseInstant("2014-12-31T00:00")] = std::stoi(part);
        } else {
            course[ParseInstant(part)] = std::stoi(part.substr(equals + 1));
        }
    }
    return course;
}

}  // namespace

std::vector<std::vector<std::string>> LoadTable(const std::string& path) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream file(std::string(HORIVO_ASSETS) + "/../" + path, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty() && line.front() != '#') rows.push_back(Split(line, '\t'));
    }
    return rows;
}

std::vector<SampleCity> LoadSampleCities() {
    std::vector<SampleCity> cities;
    for (const auto& row : LoadTable("assets/cities.tsv")) {
        cities.push_back({row.at(0), row.at(4), row.at(5)});
    }
    return cities;
}

std::map<std::string, ZoneCourse> LoadZoneCourses() {
    std::map<std::string, ZoneCourse> courses;
    for (const auto& row : LoadTable("tests/data/zone_offsets.tsv")) {
        const ZoneCourse course = ParseCourse(row.at(0));
        for (const std::string& name : Split(row.at(1), ' ')) courses[name] = course;
    }
    return courses;
}

int OffsetAt(const ZoneCourse& course, UtcMinutes instant) {
    return std::prev(course.upper_bound(instant))->second;
}

std::string InstantText(UtcMinutes instant) {
    const SYSTEMTIME t = ToSystemTime(instant);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d", t.wYear, t.wMonth, t.wDay, t.wHour,
                  t.wMinute);
    return text;
}

UtcMinutes ParseInstant(const std::string& text) {
    SYSTEMTIME t = {};
    std::sscanf(text.c_str(), "%4hu-%2hu-%2huT%2hu:%2hu", &t.wYear, &t.wMonth, &t.wDay, &t.wHour,
                &t.wMinute);
    return FromSystemTime(t);
}

SYSTEMTIME ToSystemTime(UtcMinutes instant) {
    const auto day = std::chrono::floor<std::chrono::days>(instant);
    const std::chrono::year_month_day date(day);
    const auto minutes = (instant - day).count();
    SYSTEMTIME t = {};
    t.wYear = static_cast<WORD>(static_cast<int>(date.year()));
    t.wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
    t.wDay = static_cast<WORD>(static_cast<unsigned>(date.day()));
    t.wHour = static_cast<WORD>(minutes / 60);
    t.wMinute = static_cast<WORD>(minutes % 60);
    return t;
}

UtcMinutes FromSystemTime(const SYSTEMTIME& time) {
    using namespace std::chrono;
    const year_month_day date(year(time.wYear), month(time.wMonth), day(time.wDay));
    return sys_days(date) + hours(time.wHour) + minutes(time.wMinute);
}
