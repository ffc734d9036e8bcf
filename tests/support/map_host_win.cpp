#include "support/map_host_win.h"

#include <shlobj.h>

#include <fstream>

#include "support/faked_import_win.h"
#include "support/gdiplus_pictures_win.h"
#include "support/gl_spy_win.h"
#include "support/worker_watch_win.h"

namespace {

constexpr wchar_t kHostClass[] = L"horivo test host";
constexpr int kJpegQuality = 100;

void WINAPI TellFixedTime(SYSTEMTIME* time) { *time = FixedClock(); }

DWORD WINAPI TellNextTick() {
    static DWORD tick = 0;
    return ++tick;
}

template <class Function>
void Resolve(HMODULE module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace

void MapLibrary::Load() {
    module = LoadLibraryW(L"horivo_map.dll");
    Resolve(module, "InitMap", InitMap);
    Resolve(module, "SetLocalString", SetLocalString);
    Resolve(module, "CreateMapWindow", CreateMapWindow);
    Resolve(module, "InstallMap", InstallMap);
    Resolve(module, "FreeMap", FreeMap);
    Resolve(module, "GetLastSysError", GetLastSysError);
}

void MapLibrary::Unload() {
    if (module != nullptr) FreeLibrary(module);
    module = nullptr;
}

SYSTEMTIME& FixedClock() {
    static SYSTEMTIME time = {2026, 3, 5, 20, 12, 0, 0, 0};
    return time;
}

MapHostTest::MapHostTest() {
    SpiedGl() = {};
    EmptyDataFolder();
    Watch();
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = HostProc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kHostClass;
    RegisterClassW(&windowClass);
    // Wine: without a window manager a window that one would frame, or an active one, takes two
    // seconds to go.
    host = CreateWindowW(kHostClass, L"host", WS_POPUP, 20, 20, 900, 700, nullptr, nullptr,
                         windowClass.hInstance, this);
    ShowWindow(host, SW_SHOWNA);
}

void MapHostTest::Watch() const {
    SpyOnGl(library.module);
    ReplaceImport(library.module, "GetSystemTime", reinterpret_cast<void*>(&TellFixedTime));
    ReplaceImport(library.module, "GetTickCount", reinterpret_cast<void*>(&TellNextTick));
}

MapHostTest::~MapHostTest() {
    if (host != nullptr) DestroyWindow(host);
    if (library.module != nullptr) library.FreeMap();
    UnregisterClassW(kHostClass, GetModuleHandleW(nullptr));
}

LRESULT CALLBACK MapHostTest::HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* test = reinterpret_cast<MapHostTest*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (test != nullptr && message == HORIVO_MSG_CITY)
        test->messages.push_back({message, wParam, lParam});
    return DefWindowProcW(window, message, wParam, lParam);
}

std::filesystem::path MapHostTest::DataFolder() {
    wchar_t folder[MAX_PATH] = {};
    SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, 0, folder);
    return std::filesystem::path(folder) / L"Zelmo" / L"Horivo";
}

void MapHostTest::EmptyDataFolder() {
    std::filesystem::create_directories(DataFolder());
    for (const auto& file : std::filesystem::directory_iterator(DataFolder()))
        SetFileAttributesW(file.path().c_str(), FILE_ATTRIBUTE_NORMAL);
    std::filesystem::remove_all(DataFolder());
    std::filesystem::create_directories(DataFolder());
}

void MapHostTest::PutAssetMap() {
    std::filesystem::copy_file(std::filesystem::path(HORIVO_ASSETS) / "map.jpg", MapPath(),
                               std::filesystem::copy_options::overwrite_existing);
    SetFileAttributesW(MapPath().c_str(), FILE_ATTRIBUTE_NORMAL);
}

void MapHostTest::PutPatternMap(int width, int height) {
    SavePatternJpeg(MapPath(), width, height, kJpegQuality);
}

void MapHostTest::PutSettings(const std::string& text) {
    std::ofstream(DataFolder() / "horivo.ini") << "[map]\r\n" << text;
}

std::uint32_t MapHostTest::Init() {
    return library.InitMap(cities.data(), static_cast<std::int32_t>(cities.size()));
}

HWND MapHostTest::CreateMap(int width, int height) {
    return library.CreateMapWindow(host, 0, 0, width, height, &status);
}

HWND MapHostTest::CreateTexturedMap(int pictureWidth) {
    PutPatternMap(pictureWidth, pictureWidth / 2);
    Init();
    const HWND map = CreateMap();
    // The compile that follows the last upload belongs to the same message.
    EXPECT_TRUE(WaitForTiles());
    return map;
}

bool MapHostTest::PumpUntil(const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!done()) {
        if (std::chrono::steady_clock::now() > end) return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        PumpPending();
    }
    return true;
}

void MapHostTest::PumpPending() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

bool MapHostTest::WaitForTiles(std::size_t uploads) {
    return PumpUntil([=] { return SpiedGl().uploads.size() >= uploads; });
}

bool MapHostTest::Settle(const WorkerWatch& workers) {
    int started = -1;
    while (started != workers.Started()) {
        started = workers.Started();
        if (!PumpUntil([&] { return workers.HaveAllLeft(); })) return false;
        PumpPending();
    }
    return true;
}

void MapHostTest::Paint(HWND window) {
    InvalidateRect(window, nullptr, FALSE);
    UpdateWindow(window);
}

void MapHostTest::Key(HWND window, int key) {
    SendMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
}
