// A world clock with the map in it: the sample host.

#include <cstdio>
#include <string>

#include "data/data_folder.h"
#include "horivo_host.h"
#include "horivo_map.h"
#include "host_app.h"
#include "options.h"
#include "resource_ids.h"
#include "texts.h"
#include "tour/clock_tour.h"
#include "tour/start_watch.h"
#include "tour/tour.h"
#include "user_messages.h"

namespace {

/// Tells the user; on a tour, where nobody could answer a box, the one who started it.
void Report(const Options& options, std::uint32_t textId) {
    const std::wstring text = LocalText(textId);
    WriteLogW(text.c_str());
    if (options.tourFolder.empty()) {
        TellUser(nullptr, textId);
    } else {
        std::fwprintf(stderr, L"horivo_demo: %ls\n", text.c_str());
    }
}

void ReportResult(const Options& options, std::uint32_t code) {
    char numbers[64] = {};
    std::snprintf(numbers, sizeof numbers, "map result 0x%08X, system error %u",
                  static_cast<unsigned>(code), static_cast<unsigned>(GetLastSysError()));
    WriteLog(numbers);
    Report(options, ResultTextId(code));
}

/// Puts a map picture where there is none; only a new one has to be checked.
void PreparePicture(const Options& options) {
    const MapPicture picture = PrepareMapPicture(ProgramFolder() + L"map.jpg");
    if (picture == MapPicture::CouldNot) Report(options, IDS_PICTURE_NOT_INSTALLED);
    if (picture != MapPicture::NewlyPut) return;
    if (const std::uint32_t code = InstallMap(); code != HORIVO_OK) ReportResult(options, code);
}

/// @return whether every picture was written
bool TakeTourAndReport(HostApp& app, HostWindow& window, const Options& options) {
    if (options.tourPart == TourPart::Start) return WatchStart(window.Map());
    const std::vector<std::wstring> failures =
        options.tourPart == TourPart::Clock
            ? TakeClockTour(app, window, options.tourFolder)
            : TakeTour(window.Map(), app.data.cities, options.tourPart, options.tourFolder);
    for (const std::wstring& failure : failures) {
        std::fwprintf(stderr, L"horivo_demo: %ls\n", failure.c_str());
    }
    return failures.empty();
}

/// The map's life between InitMap and FreeMap.
bool ShowMap(HostApp& app, const Options& options) {
    PreparePicture(options);
    std::uint32_t status = HORIVO_OK;
    const bool withList = IsFeatureEnabled(kNoTimeTable) && !ShowsMapAlone(options);
    HostWindow* window = app.OpenWindow({options.width, options.height}, withList, status);
    if (window == nullptr) {
        ReportResult(options, status);
        return false;
    }
    if (options.tourFolder.empty()) {
        app.Run();
        return true;
    }
    const bool complete = TakeTourAndReport(app, *window, options);
    SendMessageW(window->Handle(), WM_CLOSE, 0, 0);
    return complete;
}

int RunHost(const Options& options) {
    HostApp app;
    if (app.data.cities.empty()) Report(options, IDS_NO_CITIES);
    if (const std::uint32_t code =
            InitMap(app.data.cities.data(), static_cast<std::int32_t>(app.data.cities.size()));
        code != HORIVO_OK) {
        ReportResult(options, code);
        return 1;
    }
    SetLocalString(HORIVO_TEXT_ADD_PHOTO, LocalText(IDS_ADD_PHOTO).c_str());
    const bool complete = ShowMap(app, options);
    // The cities, which the app owns, must outlive this call.
    FreeMap();
    return complete ? 0 : 1;
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    Options options;
    if (!ReadOptions(options)) {
        std::fwprintf(stderr, L"%ls\n", kUsage);
        MessageBoxW(nullptr, kUsage, nullptr, MB_ICONERROR);
        return 2;
    }
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&controls);
    CreateLogMutex();
    ReadAdminFlags();
    StartHostServices();
    const int result = RunHost(options);
    CloseLogMutex();
    return result;
}
