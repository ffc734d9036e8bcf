#pragma once
// Local times of the cities: each city's time zone and what the clock shows there.

#include <cstdint>
#include <vector>

#include "horivo_host.h"
#include "window/host_windows.h"

/// The time in one city.
struct LocalTime {
    SYSTEMTIME time;             ///< what the clock shows there
    std::int32_t offsetMinutes;  ///< of that clock ahead of UTC
};

/// Asks Windows for the time zones without keeping the windows waiting: some systems take a good
/// part of a second for them.
class CityTimes {
public:
    CityTimes() = default;
    CityTimes(const CityTimes&) = delete;
    CityTimes& operator=(const CityTimes&) = delete;
    /// Waits for the thread that Begin started.
    ~CityTimes();

    /// Reads the zones on a thread of its own, once; then posts `message` to `window`.
    void Begin(HWND window, UINT message);
    /// To be called when that message has come: puts each city's zone into its record, so that the
    /// map need not look for it again. The records point into this object from then on.
    void Finish(std::vector<CityRecord>& cities);
    /// Whether Finish has run.
    bool Ready() const { return ready_; }

    /// @return whether the city has a zone; `local` is left alone otherwise
    bool At(const CityRecord& city, const SYSTEMTIME& utc, LocalTime& local);
    /// The time of this computer's own zone.
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

/// Minutes from `b` to `a`, both of the same calendar.
std::int32_t MinutesBetween(const SYSTEMTIME& a, const SYSTEMTIME& b);
