// The sample host open and untouched: rest SECONDS [WIDTH HEIGHT]. Prints a line when it begins to
// rest and, at the end, which messages woke it how often and how long it took to handle them. Then,
// as the baseline, the program only replays the OpenGL calls of such a rest, at the same times.
// bench/rest.py starts it, chooses the detail and reads the processor time.
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

#include "common/result_line.h"
#include "gl_recording_win.h"
#include "host_app.h"
#include "map_host_win.h"
#include "map_picture.h"
#include "support/faked_import_win.h"

namespace {

// Time before the rest: after the load the library measures frames, and the host reads zones.
constexpr DWORD kQuietMs = 5000;
constexpr WPARAM kSunTimer = 4;     // timer of the map window whose tick is a look at the clock
constexpr DWORD kLookMs = 5000;     // period of that timer
constexpr int kLooksPerFrame = 12;  // the host asks for a frame every minute

struct Handled {
    int times = 0;
    double ms = 0.0;
};
/// What woke the program: messages that the host dispatched, by window class, message and timer.
std::map<std::string, Handled> handled;
decltype(&DispatchMessageW) realDispatch = nullptr;

LRESULT WINAPI DispatchAndCount(const MSG* message) {
    char windowClass[64] = "no window";
    GetClassNameA(message->hwnd, windowClass, sizeof windowClass);
    char kind[128];
    std::snprintf(kind, sizeof kind, "%s, message 0x%04X, %u", windowClass, message->message,
                  message->message == WM_TIMER ? static_cast<unsigned>(message->wParam) : 0U);
    LRESULT answer = 0;
    Handled& entry = handled[kind];
    entry.ms += MillisecondsOf([&] { answer = realDispatch(message); });
    ++entry.times;
    return answer;
}

/// Ends the message loop of the thread `main` after a time.
struct Alarm {
    DWORD main;
    DWORD ms;
};
DWORD WINAPI WaitAndEnd(void* parameter) {
    const auto* alarm = static_cast<const Alarm*>(parameter);
    Sleep(alarm->ms);
    PostThreadMessageW(alarm->main, WM_QUIT, 0, 0);
    return 0;
}

/// Executes the OpenGL calls that the library makes in a rest of `seconds`, and nothing else.
void RestBare(HWND map, int seconds) {
    const std::vector<HMODULE> modules = {GetModuleHandleW(L"horivo_map.dll"),
                                          GetModuleHandleW(L"glu32.dll")};
    GlRecording look;
    look.Record(modules, [&] { SendMessageW(map, WM_TIMER, kSunTimer, 0); });
    GlRecording frame;
    frame.Record(modules, [&] {
        InvalidateRect(map, nullptr, FALSE);
        UpdateWindow(map);
    });
    HDC dc = GetDC(map);
    wglMakeCurrent(dc, wglGetCurrentContext());
    PrintValue("bare/begin", "s", seconds);
    const int looks = seconds * 1000 / static_cast<int>(kLookMs);
    for (int i = 1; i <= looks; ++i) {
        Sleep(kLookMs);
        look.Play();
        if (i % kLooksPerFrame == 0) frame.Play(dc);
    }
    PrintValue("bare/end", "s", seconds);
    ReleaseDC(map, dc);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    const HostServices services;
    HostApp app;
    const int seconds = count > 1 ? _wtoi(arguments[1]) : 120;
    const int width = count > 3 ? _wtoi(arguments[2]) : 1280;
    const int height = count > 3 ? _wtoi(arguments[3]) : 800;
    app.data.settings.place = {0, 0, width, height};
    // Moves the pointer out of the map, because the cities near the pointer would get labels.
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
    std::vector<CityRecord>& cities = app.data.cities;
    std::uint32_t status = InitMap(cities.data(), static_cast<std::int32_t>(cities.size()));
    InstallMapPicture();
    if (status != HORIVO_OK || !app.OpenWindow(status)) return 1;
    if (!PumpUntilTextured(app.windows[0]->Map())) return 1;

    Alarm quiet{GetCurrentThreadId(), kQuietMs};
    CreateThread(nullptr, 0, WaitAndEnd, &quiet, 0, nullptr);
    app.Run();
    HideCaret(nullptr);  // Windows stops its blinking after five seconds without input, Wine never
    PrintValue("rest/begin", "s", seconds);
    realDispatch = reinterpret_cast<decltype(realDispatch)>(ReplaceImport(
        GetModuleHandleW(nullptr), "DispatchMessageW", reinterpret_cast<void*>(DispatchAndCount)));
    Alarm end{GetCurrentThreadId(), static_cast<DWORD>(seconds) * 1000};
    CreateThread(nullptr, 0, WaitAndEnd, &end, 0, nullptr);
    app.Run();
    PrintValue("rest/end", "s", seconds);
    for (const auto& [kind, entry] : handled) {
        PrintValue(kind, "times", entry.times);
        PrintValue(kind + "/ms", "ms", entry.ms);
    }
    RestBare(app.windows[0]->Map(), seconds);
    PrintValue("rest/done", "s", seconds);
    Sleep(INFINITE);  // bench/rest.py ends the program
    std::_Exit(0);
}
