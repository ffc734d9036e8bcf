#include <algorithm>
#include <cmath>
#include <string_view>

#include "tour/sun_side.h"
#include "tour/tour_stops.h"

namespace {

constexpr int kZoomNotches = 45;
constexpr int kFarNotches = 100;
constexpr double kArrivedPixels = 3.0;
constexpr int kLoadingTries = 12;
constexpr int kLoadingLooks = 4;
constexpr DWORD kLoadingStepMs = 5;
constexpr wchar_t kJuneCity[] = L"London";  // sunset over Europe at eight in the evening, UTC

Picture VisitStart(const MapDriver& map, const Cities&) { return map.LookWhenSettled(); }

Picture VisitDrag(const MapDriver& map, const Cities&) {
    const int x = map.Width() / 2;
    const int y = map.Height() / 2;
    map.Drag(x, y, x + map.Height() / 5, y + map.Height() / 10);
    return map.LookWhenSettled();
}

Picture VisitNear(const MapDriver& map, const Cities&) {
    map.TurnWheel(-kZoomNotches);
    return map.LookWhenSettled();
}

Picture VisitFar(const MapDriver& map, const Cities&) {
    map.TurnWheel(kFarNotches);
    return map.LookWhenSettled();
}

Picture VisitFlight(const MapDriver& map, const Cities&) {
    map.Press(VK_HOME);
    map.Click(map.Width() / 2 + map.Height() / 6, map.Height() / 2 + map.Height() / 8);
    const Picture before = map.Look();
    map.LookUntil([&](const Picture& now) { return now != before; });
    return map.LookWhenSettled();
}

Picture VisitInformation(const MapDriver& map, const Cities&) { return map.LookWithInformation(); }

// A fast machine has read the picture again before the second frame is drawn, and its worker may
// not yet have begun at the first: so each try waits a little longer, then looks without a pause.
Picture VisitLoading(const MapDriver& map, const Cities&) {
    Picture loading;
    for (int attempt = 0; attempt < kLoadingTries && loading.pixels.empty(); ++attempt) {
        map.Press('H');
        Sleep(static_cast<DWORD>(attempt) * kLoadingStepMs);
        loading = map.LookOften(kLoadingLooks, ShowsLoading);
        map.LookWhenSettled();
        map.Press('L');
        map.LookWhenSettled();
    }
    return loading;
}

Picture PictureOf(const MapDriver& map, const CityRecord& city) {
    return FlyTo(map, city) ? map.LookWhenSettled() : Picture{};
}

Picture VisitSunSide(const MapDriver& map, const Cities& cities, bool night) {
    SYSTEMTIME utc{};
    GetSystemTime(&utc);
    const CityRecord* city = CityUnderSun(cities, utc, night);
    if (city == nullptr) return {};
    return PictureOf(map, *city);
}

Picture VisitDay(const MapDriver& map, const Cities& cities) {
    return VisitSunSide(map, cities, false);
}

Picture VisitNight(const MapDriver& map, const Cities& cities) {
    return VisitSunSide(map, cities, true);
}

Picture VisitJuneEvening(const MapDriver& map, const Cities& cities) {
    map.LookWhenSettled();
    const CityRecord* city = FindCity(cities, kJuneCity);
    if (city == nullptr) return {};
    return PictureOf(map, *city);
}

constexpr Stop kGlobeStops[] = {
    {L"01-start", VisitStart},      {L"02-drag", VisitDrag},
    {L"03-near", VisitNear},        {L"04-far", VisitFar},
    {L"05-fly-to", VisitFlight},    {L"06-information", VisitInformation},
    {L"07-loading", VisitLoading},  {L"08-day-side", VisitDay},
    {L"09-night-side", VisitNight},
};

constexpr Stop kJuneStops[] = {{L"10-june-evening", VisitJuneEvening}};

}  // namespace

std::span<const Stop> GlobeStops() { return kGlobeStops; }

std::span<const Stop> JuneStops() { return kJuneStops; }

bool FlyTo(const MapDriver& map, const CityRecord& city) {
    map.ShowCity(city);
    // Arrived is when the library has projected the city to the middle of the window.
    const Picture there = map.LookUntil([&](const Picture& now) {
        return std::fabs(city.windowPoint[0] - now.width / 2.0) < kArrivedPixels &&
               std::fabs(city.windowPoint[1] - now.height / 2.0) < kArrivedPixels;
    });
    return !there.pixels.empty();
}

const CityRecord* FindCity(const Cities& cities, std::wstring_view name) {
    const auto city = std::find_if(cities.begin(), cities.end(), [&](const CityRecord& record) {
        return std::wstring_view(record.cityName) == name;
    });
    return city != cities.end() ? &*city : nullptr;
}
