#include "clock/city_times.h"

namespace {

constexpr std::int64_t kTicksPerMinute = 600'000'000;  // a tick of FILETIME has 100 ns

std::int64_t Ticks(const SYSTEMTIME& time) {
    FILETIME file{};
    SystemTimeToFileTime(&time, &file);
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(file.dwHighDateTime) << 32U |
                                     file.dwLowDateTime);
}

}  // namespace

std::int32_t MinutesBetween(const SYSTEMTIME& a, const SYSTEMTIME& b) {
    return static_cast<std::int32_t>((Ticks(a) - Ticks(b)) / kTicksPerMinute);
}

CityTimes::~CityTimes() {
    if (thread_ == nullptr) return;
    WaitForSingleObject(thread_, INFINITE);
    CloseHandle(thread_);
}

DWORD WINAPI CityTimes::ReadZones(void* self) {
    auto* times = static_cast<CityTimes*>(self);
    times->zones_.Prepare();
    PostMessageW(times->window_, times->message_, 0, 0);
    return 0;
}

void CityTimes::Begin(HWND window, UINT message) {
    if (thread_ != nullptr) return;
    window_ = window;
    message_ = message;
    thread_ = CreateThread(nullptr, 0, ReadZones, this, 0, nullptr);
    // Posts the message at once when no thread could be started. The first lookup in Finish then
    // reads the zones.
    if (thread_ == nullptr) PostMessageW(window, message, 0, 0);
}

void CityTimes::Finish(std::vector<CityRecord>& cities) {
    if (thread_ != nullptr) WaitForSingleObject(thread_, INFINITE);
    for (CityRecord& city : cities) {
        if (city.timeZone == nullptr) city.timeZone = zones_.Find(city.timeZoneId);
    }
    ready_ = true;
}

bool CityTimes::At(const CityRecord& city, const SYSTEMTIME& utc, LocalTime& local) {
    if (!ready_ || city.timeZone == nullptr) return false;
    SYSTEMTIME time{};
    if (!UtcToZoneTime(utc, *city.timeZone, rules_, time)) return false;
    local = {time, MinutesBetween(time, utc)};
    return true;
}

LocalTime CityTimes::Here(const SYSTEMTIME& utc) {
    SYSTEMTIME time{};
    if (!SystemTimeToTzSpecificLocalTime(nullptr, &utc, &time)) time = utc;
    return {time, MinutesBetween(time, utc)};
}
