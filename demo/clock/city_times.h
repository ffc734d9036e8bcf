#pragma once
// Local times of the cities, from the time zones that Windows knows.

#include <cstdint>
#include <vector>

#include "horivo_host.h"
#include "windows_api.h"

/// The time in one city.
struct LocalTime {
    SYSTEMTIME time;             ///< local date and time
    std::int32_t offsetMinutes;  ///< local time minus UTC
};

/// Reads the time zones and computes local times. A separate thread reads the time zones, because
/// this lasts up to half a second on some systems.
class CityTimes {
public:
    CityTimes() = default;
    CityTimes(const CityTimes&) = delete;
    CityTimes& operator=(const CityTimes&) = delete;
    /// Waits for the thread that Begin started.
    ~CityTimes();

    /// Starts the thread that reads the zones and then posts `message` to `window`. Only the first
    /// call does anything.
    void Begin(HWND window, UINT message);
    /// Stores the zone of each city in its record, so that the map need not look zones up. Call
    /// this function when the message of Begin has arrived. The records then point into this
    /// object.
    void Finish(std::vector<CityRecord>& cities);

    /// Computes the local time of a city.
    /// @return false, and `local` unchanged, before Finish, for a city without a zone, and when
    ///         Windows rejects the zone or the time
    bool At(const CityRecord& city, const SYSTEMTIME& utc, LocalTime& local);
    /// The local time of this computer's own zone.
    static LocalTime Here(const SYSTEMTIME& utc);

private:
    static DWORD WINAPI ReadZones(void* self);

    TimeZoneTable zones_;
    ZoneRuleCache rules_;
    HANDLE thread_ = nullptr;
    HWND window_ = nullptr;
    UINT message_ = 0;
    bool ready_ = false;
};

/// Whole minutes by which `a` is later than `b`; negative when it is earlier.
std::int32_t MinutesBetween(const SYSTEMTIME& a, const SYSTEMTIME& b);
