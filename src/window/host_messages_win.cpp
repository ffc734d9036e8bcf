#include "window/host_messages_win.h"

#include <cstddef>

#include "cities/city_lookup.h"
#include "cities/city_pick.h"
#include "math/geographic.h"
#include "window/flight_win.h"
#include "window/host_notice_win.h"
#include "window/hover_win.h"
#include "window/overlay_win.h"
#include "window/pick_win.h"

namespace {

constexpr std::size_t kLongestName = 63;  // characters

/// The two names of a record that the host points at.
struct AskedCity {
    wchar_t cityName[kLongestName + 1] = {};
    wchar_t countryName[kLongestName + 1] = {};
};

/// Anyone who can post to the window chooses the address: what cannot be read is no city.
bool ReadAskedCity(LPARAM address, AskedCity& city) noexcept {
    const auto* record = reinterpret_cast<const std::byte*>(address);
    const HANDLE self = GetCurrentProcess();
    constexpr SIZE_T kBytes = kLongestName * sizeof(wchar_t);
    return record != nullptr &&
           ReadProcessMemory(self, record + offsetof(CityRecord, cityName), city.cityName, kBytes,
                             nullptr) &&
           ReadProcessMemory(self, record + offsetof(CityRecord, countryName), city.countryName,
                             kBytes, nullptr);
}

/// Makes a point of the globe the pointed one, as if the pointer were there.
void PointAt(MapState& map, HWND window, const CVector4& place) {
    UseSizeOf(map, window);
    map.pointer.geoPoint.globePoint = place;
    UpdateGeoPoint(map.pointer.geoPoint, map.drawing.scene);
    PickCity(map.host.cities, map.pointer.geoPoint.globePoint);
}

/// Whether the panel shows what a signed index means: a country without a city when it is negative.
bool PanelShows(const PhotoPanel& panel, const CityRecord& city, std::int32_t signedIndex) {
    const WideString country(CountryNameOf(city));
    if (lstrcmpW(panel.GetPlaceName().c_str(), country.c_str()) != 0) return false;
    if (signedIndex < 0) return panel.GetHeading().empty();
    return lstrcmpW(panel.GetHeading().c_str(), WideString(CityNameOf(city)).c_str()) == 0;
}

}  // namespace

LRESULT OnShowCity(HWND window, WPARAM, LPARAM lParam) {
    MapState& map = Map();
    AskedCity asked;
    if (!map.windows.IsLive(window) || !ReadAskedCity(lParam, asked)) return 0;
    const std::int32_t index = FindCity(map.host.cities, asked.countryName, asked.cityName);
    if (index < 0) return 0;
    const CityRecord& city = map.host.cities.Records()[static_cast<std::size_t>(index)];
    if (!HasCoordinates(city)) return 0;
    const CVector4 place = LatLonToPoint(city.latitude, city.longitude, kPlanetRadius);
    // A NaN is a position, yet none to point a light at; so is a number that is too large for the
    // arithmetic of angles.
    if (IsFinite(place)) {
        StartFlight(map, window, ViewOfPlace(city.latitude, city.longitude));
        PointAt(map, window, place);
    }
    OfferPhotos(map, window, index, PhotosOf::City);
    if (map.windows.IsLive(window)) InvalidateRect(window, nullptr, FALSE);
    return 0;
}

LRESULT OnPhotosChanged(HWND window, WPARAM wParam, LPARAM lParam) {
    MapState& map = Map();
    const auto signedIndex = static_cast<std::int32_t>(static_cast<std::uint32_t>(wParam));
    if (!map.windows.IsLive(window) || !IsSignedIndexIn(signedIndex, map.host.cities.count) ||
        lParam < 1) {
        return 0;
    }
    if (map.hover.timer.Runs() && map.hover.signedIndex == signedIndex) CancelHover(map);
    const auto place = static_cast<std::size_t>(IndexOfSigned(signedIndex));
    const auto records = map.host.cities.Records();
    if (place >= records.size()) return 0;
    if (!PanelShows(map.overlay.panel, records[place], signedIndex)) return 0;
    if (NotifyHost(map, window, signedIndex) && map.windows.IsLive(window))
        TakeNewPhotos(map, window);
    if (map.windows.IsLive(window)) InvalidateRect(window, nullptr, FALSE);
    return 0;
}
