// The sample host: a window with the map in it, made with the public header alone.

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "city_file.h"
#include "data_folder.h"
#include "horivo_map.h"
#include "host_window.h"
#include "host_windows.h"
#include "options.h"
#include "tour.h"

namespace {

constexpr wchar_t kTitle[] = L"Horivo Map";

/// What a result code of the library means to the user.
const wchar_t* ResultText(std::uint32_t code) {
    switch (code) {
        case HORIVO_OK:
            return L"Windows refused the map window.";
        case HORIVO_BAD_PICTURE:
            return L"The map picture cannot be read, or it is too large for this machine.";
        case HORIVO_UNFIT_PICTURE:
            return L"The map picture is too small, or it has no colours.";
        case HORIVO_COPY_FAILED:
            return L"The map picture's backup copy could not be made or put back.";
        case HORIVO_CLASS_FAILED:
            return L"The map's window class or its test window could not be made.";
        case HORIVO_NO_PIXEL_FORMAT:
            return L"OpenGL has no pixel format for the map.";
        case HORIVO_PIXEL_FORMAT_REFUSED:
            return L"Windows refused OpenGL's pixel format for the map.";
        case HORIVO_CONTEXT_FAILED:
            return L"OpenGL could not be started for the map.";
        default:
            return L"The map library reported an unknown failure.";
    }
}

/// Tells the user; on a tour, where nobody could answer a box, the one who started it.
void Report(const Options& options, const std::wstring& text) {
    if (options.tourFolder.empty()) {
        MessageBoxW(nullptr, text.c_str(), kTitle, MB_ICONERROR);
    } else {
        std::fwprintf(stderr, L"horivo_demo: %ls\n", text.c_str());
    }
}

void ReportResult(const Options& options, std::uint32_t code) {
    wchar_t numbers[64] = {};
    std::swprintf(numbers, 64, L" (0x%08X, system error %u)", static_cast<unsigned>(code),
                  static_cast<unsigned>(GetLastSysError()));
    Report(options, ResultText(code) + std::wstring(numbers));
}

void PumpUntilQuit() {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

/// @return whether every picture was written
bool TakeTourAndReport(HWND host, const std::vector<CityRecord>& cities, const Options& options) {
    const std::vector<std::wstring> failures =
        TakeTour(MapOf(host), cities, options.tourPart, options.tourFolder);
    for (const std::wstring& failure : failures) Report(options, failure);
    return failures.empty();
}

/// The map's life between InitMap and FreeMap.
bool ShowMap(std::vector<CityRecord>& cities, const Options& options) {
    const MapPicture picture = PrepareMapPicture(ProgramFolder() + L"map.jpg");
    if (picture == MapPicture::CouldNot) Report(options, L"The map picture cannot be installed.");
    if (picture == MapPicture::NewlyPut) {
        if (const std::uint32_t code = InstallMap(); code != HORIVO_OK) ReportResult(options, code);
    }
    std::uint32_t status = HORIVO_OK;
    HWND host = MakeHostWindow(options.width, options.height, status);
    if (host == nullptr) {
        ReportResult(options, status);
        return false;
    }
    if (options.tourFolder.empty()) {
        PumpUntilQuit();
        return true;
    }
    const bool complete = TakeTourAndReport(host, cities, options);
    DestroyWindow(host);
    return complete;
}

int RunHost(const Options& options) {
    std::vector<CityRecord> cities = ReadCities(ReadWholeFile(ProgramFolder() + L"cities.tsv"));
    if (cities.empty()) Report(options, L"There are no cities in cities.tsv beside the program.");
    if (const std::uint32_t code = InitMap(cities.data(), static_cast<std::int32_t>(cities.size()));
        code != HORIVO_OK) {
        ReportResult(options, code);
        return 1;
    }
    SetLocalString(HORIVO_TEXT_ADD_PHOTO, L"Add your photo");
    HWND hidden = MakeHiddenWindow(cities);
    const bool complete = ShowMap(cities, options);
    if (hidden != nullptr) DestroyWindow(hidden);
    // The city table must outlive this call.
    FreeMap();
    return complete ? 0 : 1;
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    Options options;
    if (!ReadOptions(options)) {
        Report(options, kUsage);
        return 2;
    }
    return RunHost(options);
}
