// The sample host: a world clock with the map in it. WinMain lists the steps of a host in their
// order; host_app.h has the program's windows, window/map_pane.h the map in its window.

#include <cstdio>
#include <vector>

#include "data/data_folder.h"
#include "horivo_host.h"
#include "horivo_map.h"
#include "host_app.h"
#include "resource_ids.h"
#include "texts.h"

namespace {

/// Writes a failure to the log and shows it in a message box.
void Report(std::uint32_t textId) {
    WriteLogW(LocalText(textId).c_str());
    TellUser(nullptr, textId);
}

/// Reports a result code of the library; the log also gets the code and the system error.
void ReportResult(std::uint32_t code) {
    char numbers[64] = {};
    std::snprintf(numbers, sizeof numbers, "map result 0x%08X, system error %u",
                  static_cast<unsigned>(code), static_cast<unsigned>(GetLastSysError()));
    WriteLog(numbers);
    Report(ResultTextId(code));
}

/// Copies the map picture into the library's data folder if there is none, and has the library
/// check the copy. After a failure the map still shows a globe, without its surface.
void InstallPicture() {
    const MapPicture picture = PrepareMapPicture(ProgramFolder() + L"map.jpg");
    if (picture == MapPicture::Failed) Report(IDS_PICTURE_NOT_INSTALLED);
    if (picture != MapPicture::Copied) return;
    if (const std::uint32_t code = InstallMap(); code != HORIVO_OK) ReportResult(code);
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const HostServices services;
    HostApp app;
    std::vector<CityRecord>& cities = app.data.cities;
    if (cities.empty()) Report(IDS_NO_CITIES);
    std::uint32_t status = InitMap(cities.data(), static_cast<std::int32_t>(cities.size()));
    if (status != HORIVO_OK) {
        ReportResult(status);
        return 1;
    }
    InstallPicture();
    const bool opened = app.OpenWindow(status);
    if (opened) {
        app.Run();
    } else {
        ReportResult(status);
    }
    // The library reads the cities until here; `app` frees them afterwards.
    FreeMap();
    return opened ? 0 : 1;
}
