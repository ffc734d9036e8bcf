#include <stdexcept>

#include "tour/stops.h"

namespace {

constexpr int kNearNotches = 100;  // notches of the wheel; more than the map zooms in
constexpr DWORD kRestMs = 1000;    // the map offers photos when the pointer has rested half as long
constexpr int kPages = 4;          // more pages than the photos of a city fill

// Buttons and photos are in a column at the right edge of the window. Below are the width of the
// column and positions in it, pixels. x counts from the left edge of the column, y from the upper
// edge of the window or, below 0, from the lower edge.
constexpr int kColumnWidth = 108;
constexpr POINT kPlusButton = {22, -87};
constexpr POINT kAddPhotoHint = {20, 46};
constexpr POINT kFirstPhoto = {54, 120};
constexpr POINT kSecondPhoto = {54, 200};

constexpr wchar_t kCrowdedInEurope[] = L"Vienna";
constexpr wchar_t kCrowdedIslands[] = L"Marigot";
constexpr wchar_t kManyPhotosCity[] = L"Paris";  // more photos than fit on a page

/// Moves the pointer to a position in the column of buttons and photos.
/// @param position  measured like the constants above
void PointAtColumn(const MapDriver& map, POINT position) {
    map.PointAt(map.Width() - kColumnWidth + position.x,
                position.y < 0 ? map.Height() + position.y : position.y);
}

void PointAtSpace(const MapDriver& map) { map.PointAt(map.Width() / 8, map.Height() / 8); }

void PointAtPlus(const MapDriver& map) { PointAtColumn(map, kPlusButton); }

void PointAtPhoto(const MapDriver& map) { PointAtColumn(map, kFirstPhoto); }

void PointAtHint(const MapDriver& map) { PointAtColumn(map, kAddPhotoHint); }

/// Enlarges the globe until it fills the window, so that the button is over the sea.
void PointAtPlusOverSea(const MapDriver& map) {
    map.FlyTo(L"Azores");
    map.TurnWheel(-kNearNotches);
    PointAtPlus(map);
}

void RestOnCrowd(const MapDriver& map, const wchar_t* city) {
    map.FlyTo(city);
    map.TurnWheel(-kNearNotches);
    map.PointAtCrowd();
    PumpMessages(kRestMs);
}

void RestOnEurope(const MapDriver& map) { RestOnCrowd(map, kCrowdedInEurope); }

void RestOnIslands(const MapDriver& map) { RestOnCrowd(map, kCrowdedIslands); }

void RestOnCity(const MapDriver& map) {
    map.FlyTo(kCrowdedInEurope);
    map.Press(VK_HOME);
    map.PointAtCity(L"London");
    PumpMessages(kRestMs);
}

/// Clicks a city: the host's title names it, and the map shows its photos and flies to it.
void ClickCity(const MapDriver& map) {
    const POINT point = map.PointAtCity(L"Rome");
    map.Click(point.x, point.y);
    if (!map.TitleNames(L"Rome")) throw std::runtime_error("the title does not name the city");
}

/// Clicks land without a city nearby: the map shows the photos of the country, those of the nearest
/// city first.
void ClickCountry(const MapDriver& map) {
    map.FlyTo(L"Darwin");
    map.Press(VK_HOME);
    map.FlyTo(L"Darwin");
    map.Click(map.Width() / 2, map.Height() / 2 + map.Height() / 8);
}

void ShowFirstPage(const MapDriver& map) { map.FlyTo(kManyPhotosCity); }

/// Turns the wheel over the photos, which shows the next page.
void TurnPage(const MapDriver& map) {
    PointAtColumn(map, kSecondPhoto);
    map.TurnWheel(-1);
}

void TurnToLastPage(const MapDriver& map) {
    for (int i = 0; i < kPages; ++i) map.Press(VK_NEXT);
}

void TurnPageBack(const MapDriver& map) { map.Press(VK_PRIOR); }

void ShowCityCaption(const MapDriver& map) {
    ShowFirstPage(map);
    PointAtPhoto(map);
}

void ShowCountryCaption(const MapDriver& map) {
    ClickCountry(map);
    map.LookWhenSettled();
    PointAtPhoto(map);
}

constexpr Stop kPointerStops[] = {
    {L"11-buttons", PointAtSpace},
    {L"12-button-plus", PointAtPlus},
    {L"13-buttons-on-sea", PointAtPlusOverSea},
    {L"14-labels-europe", RestOnEurope},
    {L"15-labels-islands", RestOnIslands},
    {L"16-city-by-hover", RestOnCity},
    {L"17-city-by-click", ClickCity},
    {L"18-country-by-click", ClickCountry},
    {L"19-country-caption", PointAtPhoto},
    {L"20-first-page", ShowFirstPage},
    {L"21-city-caption", PointAtPhoto},
    {L"22-next-page", TurnPage},
    {L"23-last-page", TurnToLastPage},
    {L"24-page-before", TurnPageBack},
    {L"25-add-photo", PointAtHint},
};

// The last stop shows all lines of the lower left corner and the hint on the right at once.
constexpr Stop kSizeStops[] = {
    {L"26-start", PointAtSpace},
    {L"27-labels", RestOnIslands},
    {L"28-city", ShowCityCaption},
    {L"29-country", ShowCountryCaption},
    {L"30-all-text", PointAtHint, &MapDriver::LookWithInformation},
};

}  // namespace

std::span<const Stop> PointerStops() { return kPointerStops; }

std::span<const Stop> SizeStops() { return kSizeStops; }
