#include <string>

#include "tour/tour_stops.h"

namespace {

constexpr int kNearNotches = 100;  // as near as the map goes, from anywhere
constexpr DWORD kRestMs = 1000;    // twice what the map waits for before it offers photos
constexpr int kPanelWidth = 108;   // pixels: buttons and photos stand in this column on the right
// Places in that column, pixels from its left edge and from the upper or lower edge of the window.
constexpr int kPlusX = 22;
constexpr int kPlusAbove = 87;
constexpr int kAddPhotoX = 20;
constexpr int kAddPhotoBelow = 46;
constexpr int kPhotoX = 54;
constexpr int kPhotoBelow = 120;
constexpr int kNextPhotoBelow = 200;

constexpr wchar_t kCrowdedInEurope[] = L"Vienna";
constexpr wchar_t kCrowdedIslands[] = L"Marigot";
constexpr wchar_t kHoverCity[] = L"London";
constexpr wchar_t kClickedCity[] = L"Rome";
constexpr wchar_t kCityInItsCountry[] = L"Darwin";
constexpr wchar_t kManyPhotosCity[] = L"Paris";  // more photos than fit on a page

/// @return whether the globe has come to rest with the city in the middle
bool ComeTo(const MapDriver& map, const Cities& cities, const wchar_t* name) {
    const CityRecord* city = FindCity(cities, name);
    return city != nullptr && FlyTo(map, *city) && !map.LookWhenSettled().pixels.empty();
}

void PointAtPanel(const MapDriver& map, int x, int y) {
    map.PointAt(map.Width() - kPanelWidth + x, y);
}

Picture VisitButtons(const MapDriver& map, const Cities&) {
    map.LookWhenSettled();
    map.PointAt(map.Width() / 8, map.Height() / 8);
    return map.LookWhenSettled();
}

Picture VisitPlusButton(const MapDriver& map, const Cities&) {
    PointAtPanel(map, kPlusX, map.Height() - kPlusAbove);
    return map.LookWhenSettled();
}

/// The globe fills the window, so that the buttons stand on the sea.
Picture VisitButtonsOnSea(const MapDriver& map, const Cities& cities) {
    if (!ComeTo(map, cities, L"Azores")) return {};
    map.TurnWheel(-kNearNotches);
    return VisitPlusButton(map, cities);
}

Picture VisitCrowd(const MapDriver& map, const Cities& cities, const wchar_t* name) {
    if (!ComeTo(map, cities, name)) return {};
    map.TurnWheel(-kNearNotches);
    if (map.PointAtCrowd(cities) < 2) return {};
    PumpMessages(kRestMs);
    return map.LookWhenSettled();
}

Picture VisitEurope(const MapDriver& map, const Cities& cities) {
    return VisitCrowd(map, cities, kCrowdedInEurope);
}

Picture VisitIslands(const MapDriver& map, const Cities& cities) {
    return VisitCrowd(map, cities, kCrowdedIslands);
}

Picture VisitCityByHover(const MapDriver& map, const Cities& cities) {
    const CityRecord* city = FindCity(cities, kHoverCity);
    if (city == nullptr || !ComeTo(map, cities, kCrowdedInEurope)) return {};
    map.Press(VK_HOME);
    map.PointAtCity(*city);
    PumpMessages(kRestMs);
    return map.LookWhenSettled();
}

/// A click tells the host, which shows the city in its title, offers photos and flies there.
Picture VisitCityByClick(const MapDriver& map, const Cities& cities) {
    const CityRecord* city = FindCity(cities, kClickedCity);
    if (city == nullptr) return {};
    const POINT point = map.PointAtCity(*city);
    map.Click(point.x, point.y);
    if (map.Title().find(kClickedCity) == std::wstring::npos) return {};
    return map.LookWhenSettled();
}

/// A click on land with no city near: the photos of its country, the nearest city's first.
Picture VisitCountryByClick(const MapDriver& map, const Cities& cities) {
    if (!ComeTo(map, cities, kCityInItsCountry)) return {};
    map.Press(VK_HOME);
    if (!ComeTo(map, cities, kCityInItsCountry)) return {};
    map.Click(map.Width() / 2, map.Height() / 2 + map.Height() / 8);
    return map.LookWhenSettled();
}

Picture VisitCaption(const MapDriver& map, const Cities&) {
    PointAtPanel(map, kPhotoX, kPhotoBelow);
    return map.LookWhenSettled();
}

Picture VisitFirstPage(const MapDriver& map, const Cities& cities) {
    return ComeTo(map, cities, kManyPhotosCity) ? map.LookWhenSettled() : Picture{};
}

/// Over the panel the wheel turns pages.
Picture VisitNextPage(const MapDriver& map, const Cities&) {
    PointAtPanel(map, kPhotoX, kNextPhotoBelow);
    map.TurnWheel(-1);
    return map.LookWhenSettled();
}

Picture VisitLastPage(const MapDriver& map, const Cities&) {
    for (int i = 0; i < 4; ++i) map.Press(VK_NEXT);
    return map.LookWhenSettled();
}

Picture VisitPageBefore(const MapDriver& map, const Cities&) {
    map.Press(VK_PRIOR);
    return map.LookWhenSettled();
}

Picture VisitAddPhoto(const MapDriver& map, const Cities&) {
    PointAtPanel(map, kAddPhotoX, kAddPhotoBelow);
    return map.LookWhenSettled();
}

Picture VisitCityWithCaption(const MapDriver& map, const Cities& cities) {
    return VisitFirstPage(map, cities).pixels.empty() ? Picture{} : VisitCaption(map, cities);
}

Picture VisitCountryWithCaption(const MapDriver& map, const Cities& cities) {
    return VisitCountryByClick(map, cities).pixels.empty() ? Picture{} : VisitCaption(map, cities);
}

/// Every line of the lower left corner at once, and the hint on the right.
Picture VisitAllText(const MapDriver& map, const Cities& cities) {
    VisitAddPhoto(map, cities);
    return map.LookWithInformation();
}

constexpr Stop kPointerStops[] = {
    {L"11-buttons", VisitButtons},
    {L"12-button-plus", VisitPlusButton},
    {L"13-buttons-on-sea", VisitButtonsOnSea},
    {L"14-labels-europe", VisitEurope},
    {L"15-labels-islands", VisitIslands},
    {L"16-city-by-hover", VisitCityByHover},
    {L"17-city-by-click", VisitCityByClick},
    {L"18-country-by-click", VisitCountryByClick},
    {L"19-country-caption", VisitCaption},
    {L"20-first-page", VisitFirstPage},
    {L"21-city-caption", VisitCaption},
    {L"22-next-page", VisitNextPage},
    {L"23-last-page", VisitLastPage},
    {L"24-page-before", VisitPageBefore},
    {L"25-add-photo", VisitAddPhoto},
};

constexpr Stop kSizeStops[] = {
    {L"26-start", VisitButtons},        {L"27-labels", VisitIslands},
    {L"28-city", VisitCityWithCaption}, {L"29-country", VisitCountryWithCaption},
    {L"30-all-text", VisitAllText},
};

}  // namespace

std::span<const Stop> PointerStops() { return kPointerStops; }

std::span<const Stop> SizeStops() { return kSizeStops; }
