// The sample host from its start to the first frame with the whole map: world_clock [WIDTH HEIGHT],
// the size of its window. bench/table.py runs it in turns with bare_map.
#include <cstdlib>

#include "host_app.h"
#include "map_host_win.h"
#include "map_picture.h"
#include "shown_line_win.h"

int wmain(int count, wchar_t** arguments) {
    const HostServices services;
    HostApp app;
    const int width = count > 2 ? _wtoi(arguments[1]) : 1920;
    const int height = count > 2 ? _wtoi(arguments[2]) : 1080;
    app.data.settings.place = {0, 0, width, height};
    std::vector<CityRecord>& cities = app.data.cities;
    std::uint32_t status = InitMap(cities.data(), static_cast<std::int32_t>(cities.size()));
    InstallMapPicture();
    if (status != HORIVO_OK || !app.OpenWindow(status)) return 1;
    if (!PumpUntilTextured(app.windows[0]->Map())) return 1;
    PrintShown();
    std::_Exit(0);  // work after the first picture is not measured
}
