#include "tour/tour.h"

#include <span>

#include "tour/map_driver.h"
#include "tour/tour_stops.h"

namespace {

std::span<const Stop> StopsOf(TourPart part) {
    switch (part) {
        case TourPart::JuneEvening:
            return JuneStops();
        case TourPart::Pointer:
            return PointerStops();
        case TourPart::Sizes:
            return SizeStops();
        default:
            return GlobeStops();
    }
}

/// The file of a picture; one tour may be taken in windows of several sizes.
std::wstring FileName(const Stop& stop, TourPart part, const Picture& picture) {
    std::wstring name = stop.name;
    if (part == TourPart::Sizes) {
        name += L'-' + std::to_wstring(picture.width) + L'x' + std::to_wstring(picture.height);
    }
    return name + L".png";
}

/// @return what went wrong at this stop; empty when its picture was written
std::wstring TakeStop(const MapDriver& map, const Cities& cities, const Stop& stop, TourPart part,
                      const std::wstring& folder, Picture& last) {
    Picture picture = stop.visit(map, cities);
    if (picture.pixels.empty()) return L"the map did not show in time what it should";
    if (picture == last) return L"the same picture as before";
    last = std::move(picture);
    const std::wstring path = folder + L'\\' + FileName(stop, part, last);
    return SavePng(last, path) ? std::wstring() : L"could not be written";
}

}  // namespace

std::vector<std::wstring> TakeTour(HWND map, const std::vector<CityRecord>& cities, TourPart part,
                                   const std::wstring& folder) {
    const GdiplusSession gdiplus;
    const MapDriver driver(map);
    std::vector<std::wstring> failures;
    Picture last;
    for (const Stop& stop : StopsOf(part)) {
        const std::wstring failure = TakeStop(driver, cities, stop, part, folder, last);
        if (!failure.empty()) failures.push_back(std::wstring(stop.name) + L": " + failure);
    }
    return failures;
}
