// The sample host: a world clock with the map in it. WinMain lists the steps of a host in their
// order; host_app.h has the program's windows, window/map_pane.h the map in its window.

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
    // The library reads the cities until here; `app` frees them afterwards.
    FreeMap();
    return opened ? 0 : 1;
}
