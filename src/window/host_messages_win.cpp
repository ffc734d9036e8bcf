#include "window/host_messages_win.h"

#include <cstddef>

#include "cities/city_lookup.h"
#include "cities/city_pick.h"
#include "math/geographic.h"
#include "window/map_state_win.h"

namespace {

constexpr std::size_t kMaxName = 63;  // characters

/// Names of a city and its country, copied from the record that a message of the host refers to.
struct AskedCity {
    wchar_t cityName[kMaxName + 1] = {};
    wchar_t countryName[kMaxName + 1] = {};
};

/// Reads the names of the record at `address`. The address is not trusted, because any program may
/// have posted the message. @return false when the memory at the address cannot be read
bool ReadAskedCity(LPARAM address, AskedCity& city) noexcept {
    const auto* record = reinterpret_cast<const std::byte*>(address);
    const HANDLE self = GetCurrentProcess();
    constexpr SIZE_T kBytes = kMaxName * sizeof(wchar_t);
    return record != nullptr &&
           ReadProcessMemory(self, record + offsetof(CityRecord, cityName), city.cityName, kBytes,
                             nullptr) &&
           ReadProcessMemory(self, record + offsetof(CityRecord, countryName), city.countryName,
                             kBytes, nullptr);
}

/// Whether the panel shows the photos of `city`, or of its country when `signedIndex` is negative.
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
    const std::int32_t index = FindCity(map.host.Cities(), asked.countryName, asked.cityName);
    if (index < 0) return 0;
    const CityRecord& city = map.host.Cities().Records()[static_cast<std::size_t>(index)];
    if (!HasCoordinates(city)) return 0;
    const CVector4 place = LatLonToPoint(city.latitude, city.longitude, kPlanetRadius);
    // Do not fly to a place that is not finite: HasCoordinates also accepts NaN and numbers that
    // are too large for the arithmetic of angles.
    if (IsFinite(place)) {
        map.flight.Start(window, map.view.Angles(), ViewOfPlace(city.latitude, city.longitude));
        map.gl.UseSizeOf(window);
        map.pointer.PointAt(place, map.gl.Scene());
        PickCity(map.host.Cities(), place);  // updates the distances in the records
    }
    map.overlay.OfferPhotos(window, index, PhotosOf::City);
    if (map.windows.IsLive(window)) InvalidateRect(window, nullptr, FALSE);
    return 0;
}

LRESULT OnPhotosChanged(HWND window, WPARAM wParam, LPARAM lParam) {
    MapState& map = Map();
    const auto signedIndex = static_cast<std::int32_t>(static_cast<std::uint32_t>(wParam));
    if (!map.windows.IsLive(window) || !IsSignedIndexIn(signedIndex, map.host.Cities().count) ||
        lParam < 1) {
        return 0;
    }
    map.hover.CancelForCity(signedIndex);
    const auto place = static_cast<std::size_t>(IndexOfSigned(signedIndex));
    const auto records = map.host.Cities().Records();
    if (place >= records.size()) return 0;
    if (!PanelShows(map.overlay.Panel(), records[place], signedIndex)) return 0;
    if (map.overlay.AskHost(window, signedIndex) && map.windows.IsLive(window))
        map.overlay.OnNewPhotos(window);
    if (map.windows.IsLive(window)) InvalidateRect(window, nullptr, FALSE);
    return 0;
}
