#include <algorithm>
#include <cmath>
#include <numbers>

#include "tour/stops.h"

namespace {

constexpr int kNearNotches = 45;  // notches of the wheel; the globe is then larger than the window
constexpr int kFarNotches = 100;  // notches of the wheel; more than the map zooms out
constexpr double kObliquityDeg = 23.44;
constexpr double kDaysPerYear = 365.25;
constexpr double kDaysPerMonth = kDaysPerYear / 12.0;
constexpr double kSolsticeDays = 10.0;  // days from the December solstice to the new year
constexpr double kDegreesPerHour = 15.0;

/// The city nearest to the point where the Sun is overhead now or, with `night`, to the opposite
/// point. Uses a circular orbit, so the point is wrong by up to 1 degree of latitude and 4 of
/// longitude.
const CityRecord& CityUnderSun(const MapDriver& map, bool night) {
    SYSTEMTIME utc{};
    GetSystemTime(&utc);
    const double days = (utc.wMonth - 1) * kDaysPerMonth + utc.wDay + kSolsticeDays;
    const double declination =
        -kObliquityDeg * std::cos(2.0 * std::numbers::pi * days / kDaysPerYear);
    const double noon = (12.0 - utc.wHour - utc.wMinute / 60.0) * kDegreesPerHour;
    const double latitude = night ? -declination : declination;
    const double longitude = night ? noon + 180.0 : noon;
    return *std::ranges::min_element(map.Cities(), {}, [&](const CityRecord& city) {
        return std::hypot(city.latitude - latitude,
                          std::remainder(city.longitude - longitude, 360.0));
    });
}

void Stay(const MapDriver&) {}

void FlyByClick(const MapDriver& map) {
    map.Press(VK_HOME);
    map.Click(map.Width() / 2 + map.Height() / 6, map.Height() / 2 + map.Height() / 8);
    // Waits until the picture changes, because then the flight has begun.
    const Picture before = map.Look();
    map.LookUntil([&](const Picture& now) { return now != before; });
}

constexpr Stop kGlobeStops[] = {
    {L"01-start", Stay},
    {L"02-drag", [](const MapDriver& map) { map.Drag(); }},
    {L"03-near", [](const MapDriver& map) { map.TurnWheel(-kNearNotches); }},
    {L"04-far", [](const MapDriver& map) { map.TurnWheel(kFarNotches); }},
    {L"05-fly-to", FlyByClick},
    {L"06-information", Stay, &MapDriver::LookWithInformation},
    {L"07-loading", Stay, &MapDriver::LookWhileLoading},
    {L"08-day-side", [](const MapDriver& map) { map.FlyTo(CityUnderSun(map, false)); }},
    {L"09-night-side", [](const MapDriver& map) { map.FlyTo(CityUnderSun(map, true)); }},
};

constexpr Stop kJuneStops[] = {
    {L"10-june-evening", [](const MapDriver& map) { map.FlyTo(L"London"); }},
};

}  // namespace

std::span<const Stop> GlobeStops() { return kGlobeStops; }

std::span<const Stop> JuneStops() { return kJuneStops; }
