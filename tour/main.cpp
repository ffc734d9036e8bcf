// Drives the sample host as a user would and saves pictures of it.
// Usage: horivo_tour PART FOLDER [WIDTH HEIGHT]

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "data/data_folder.h"
#include "horivo_host.h"
#include "horivo_map.h"
#include "host_app.h"
#include "tour/attempt.h"
#include "tour/clock_tour.h"
#include "tour/stops.h"

namespace {

constexpr char kUsage[] =
    "horivo_tour globe|june|pointer|sizes|clock FOLDER [WIDTH HEIGHT]\n"
    "FOLDER must exist; WIDTH and HEIGHT are those of the map in pixels\n";
constexpr SIZE kMapSize = {1280, 800};

/// Resizes the host window so that its map gets the size `size`, and moves it to the upper left
/// corner of the screen. Centres a window that is wider than the screen: then a map as wide as the
/// screen is fully visible, and only the frame is outside.
void ResizeMap(const HostWindow& window, SIZE size) {
    RECT map{};
    RECT frame{};
    GetClientRect(window.Map(), &map);
    GetWindowRect(window.Handle(), &frame);
    const int width = frame.right - frame.left + size.cx - map.right;
    const int height = frame.bottom - frame.top + size.cy - map.bottom;
    const int left = std::min(0, (GetSystemMetrics(SM_CXSCREEN) - width) / 2);
    SetWindowPos(window.Handle(), nullptr, left, 0, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

/// Takes and saves the picture of each stop.
/// @param withSize  whether the size of the map is a part of the pictures' names
bool TakeStops(const MapDriver& map, std::span<const Stop> stops, bool withSize,
               const std::wstring& folder) {
    std::wstring ending = L".png";
    if (withSize) {
        ending =
            L'-' + std::to_wstring(map.Width()) + L'x' + std::to_wstring(map.Height()) + ending;
    }
    bool complete = true;
    Picture last;
    for (const Stop& stop : stops) {
        const auto take = [&] {
            stop.act(map);
            Picture picture = (map.*stop.look)();
            if (picture == last) throw std::runtime_error("the same picture as before");
            last = std::move(picture);
            SavePng(last, std::wstring(folder).append(L"\\").append(stop.name).append(ending));
            return true;
        };
        complete = Attempt(stop.name, take) && complete;
    }
    return complete;
}

/// A part of the tour, named on the command line.
struct Part {
    std::wstring_view name;
    std::span<const Stop> stops;  ///< stops of the map alone; empty: the tour of the whole program
};

/// The part of this name; null when there is none.
const Part* FindPart(std::wstring_view name) {
    static const Part kParts[] = {{L"globe", GlobeStops()},
                                  {L"june", JuneStops()},
                                  {L"pointer", PointerStops()},
                                  {L"sizes", SizeStops()},
                                  {L"clock", {}}};
    const Part* const part = std::ranges::find(kParts, name, &Part::name);
    return part != std::end(kParts) ? part : nullptr;
}

/// Takes the tour in the first window of `app`. @return whether every stop or part succeeded
bool TakeTour(HostApp& app, const Part& part, const std::wstring& folder, SIZE mapSize) {
    const GdiplusSession gdiplus;
    const HostWindow& window = *app.windows[0];
    ResizeMap(window, mapSize);
    if (part.stops.empty()) return TakeClockTour(app, folder);
    const MapDriver map(window.Map(), app.data.cities);
    map.Press(VK_HOME);  // the sample host has flown to its start city
    map.LookWhenSettled();
    return TakeStops(map, part.stops, part.name == L"sizes", folder);
}

/// The steps of the sample host, with a tour in place of its message loop.
int RunHost(const Part& part, const std::wstring& folder, SIZE mapSize) {
    const HostServices services;
    if (!part.stops.empty()) adminFlags |= kNoTimeTable;  // shows the map without the city list
    HostApp app;
    app.data.settings = {};  // ignores the settings that an earlier run has stored
    std::vector<CityRecord>& cities = app.data.cities;
    std::uint32_t status = InitMap(cities.data(), static_cast<std::int32_t>(cities.size()));
    // Does not call InstallMapPicture, because nobody would close its message box.
    if (status == HORIVO_OK && CopyFileW((ProgramFolder() + L"map.jpg").c_str(),
                                         (MapFolder() + L"map.jpg").c_str(), TRUE)) {
        status = InstallMap();
    }
    PreparePhotoFolder();
    bool complete = false;
    if (!cities.empty() && status == HORIVO_OK && app.OpenWindow(status)) {
        complete = Attempt(L"tour", [&] { return TakeTour(app, part, folder, mapSize); });
        app.CloseAll();
    } else {
        std::fprintf(stderr, "horivo_tour: no cities or no map, result 0x%08X\n",
                     static_cast<unsigned>(status));
    }
    FreeMap();
    return complete ? 0 : 1;
}

}  // namespace

int wmain(int count, wchar_t** words) {
    const Part* part = count == 3 || count == 5 ? FindPart(words[1]) : nullptr;
    if (part == nullptr) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const SIZE size = count == 5 ? SIZE{_wtoi(words[3]), _wtoi(words[4])} : kMapSize;
    return RunHost(*part, words[2], size);
}
