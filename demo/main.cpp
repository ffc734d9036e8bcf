// The sample host: a world clock with the map in it. WinMain lists the steps of a host in their
// order. See host_app.h for the program's windows and window/map_pane.h for the map in a window.

#include <vector>

#include "data/data_folder.h"
#include "horivo_map.h"
#include "host_app.h"
#include "map_picture.h"
#include "resource_ids.h"
#include "texts.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const HostServices services;
    HostApp app;
    std::vector<CityRecord>& cities = app.data.cities;
    if (cities.empty()) TellUser(nullptr, IDS_NO_CITIES);
    std::uint32_t status = InitMap(cities.data(), static_cast<std::int32_t>(cities.size()));
    if (status != HORIVO_OK) {
        TellResult(nullptr, status);
        return 1;
    }
    InstallMapPicture();
    PreparePhotoFolder();
    const bool opened = app.OpenWindow(status);
    if (opened) {
        app.Run();
    } else {
        TellResult(nullptr, status);
    }
    // Call FreeMap before `app` frees the cities: the library may read the cities until FreeMap
    // returns.
    FreeMap();
    return opened ? 0 : 1;
}
