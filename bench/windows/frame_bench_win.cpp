// One frame of the map. Baseline: the recorded OpenGL commands of the same frame.
// frame_bench [WIDTH HEIGHT [LABELS [CITIES [BUDGET_MS]]]]
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "common/result_line.h"
#include "common/spread_cities.h"
#include "gl_recording_win.h"
#include "map_host_win.h"
#include "peak_memory_win.h"
#include "support/faked_import_win.h"

namespace {

constexpr DWORD kQuietMs = 2000;  // after a load the library measures frames, and may load again
constexpr int kFrameBudgetMs = 8000;
constexpr int kFewPairs = 3;  // pairs when BUDGET_MS is given: a plot has many points
// The time outside OpenGL is measured in so many turns, because one frame takes microseconds. In a
// turn, each of the two windows paints kOwnFrames frames in a row.
constexpr int kOwnTurns = 10;
constexpr int kOwnFrames = 50;
constexpr int kUncountedFrames = 5;  // the first frames also do work left from showing the window
constexpr DWORD kTurnMs = 50;        // time without messages before the frames of a turn

// A place just below the middle of a new window, and the distance between the cities there.
constexpr double kMiddleLatitude = 39.8;
constexpr double kMiddleLongitude = 0.05;
constexpr double kCityStepDeg = 0.01;
constexpr int kCitiesInRow = 8;

/// Makes `labels` cities near the middle of the window and the others all over the globe. The
/// nearest cities are the highest on the screen, because a column of labels that begins above the
/// window is not drawn.
std::vector<CityRecord> MakeCities(int count, int labels) {
    std::vector<CityRecord> cities = SpreadCities(count);
    for (int i = 0; i < labels; ++i) {
        CityRecord& city = cities[static_cast<std::size_t>(i)];
        std::swprintf(city.cityName, 64, L"Springfield %d", i);
        const int row = i / kCitiesInRow;
        const int column = i % kCitiesInRow - kCitiesInRow / 2;
        city.latitude = kMiddleLatitude - kCityStepDeg * row;
        city.longitude = kMiddleLongitude + kCityStepDeg * column;
    }
    return cities;
}

// ---- Heap -----------------------------------------------------------------------------------

int allocations = 0;

decltype(&std::malloc) realMalloc = nullptr;
decltype(&std::calloc) realCalloc = nullptr;
decltype(&std::realloc) realRealloc = nullptr;

void* CountedMalloc(std::size_t bytes) {
    ++allocations;
    return realMalloc(bytes);
}
void* CountedCalloc(std::size_t count, std::size_t bytes) {
    ++allocations;
    return realCalloc(count, bytes);
}
void* CountedRealloc(void* block, std::size_t bytes) {
    ++allocations;
    return realRealloc(block, bytes);
}

template <class Function>
void Hook(HMODULE module, const char* name, Function* replacement, Function*& real) {
    real = reinterpret_cast<Function*>(
        ReplaceImport(module, name, reinterpret_cast<void*>(replacement)));
}

/// Number of allocations of the library in `frames` frames; -1 when the imports of the library
/// cannot be replaced.
int CountAllocations(const BenchHost& host, HMODULE library, int frames) {
    Hook(library, "malloc", CountedMalloc, realMalloc);
    Hook(library, "calloc", CountedCalloc, realCalloc);
    Hook(library, "realloc", CountedRealloc, realRealloc);
    if (realMalloc == nullptr || realCalloc == nullptr || realRealloc == nullptr) return -1;
    for (int i = 0; i < frames; ++i) host.Paint();
    ReplaceImport(library, "malloc", reinterpret_cast<void*>(realMalloc));
    ReplaceImport(library, "calloc", reinterpret_cast<void*>(realCalloc));
    ReplaceImport(library, "realloc", reinterpret_cast<void*>(realRealloc));
    return allocations;
}

// ---- Without OpenGL -------------------------------------------------------------------------

std::intptr_t Nothing() { return 0; }
std::intptr_t Done() { return 1; }

/// Names of the functions that `module` imports from `library` ("OPENGL32.dll"), by name.
std::vector<std::string> ImportedNames(HMODULE module, std::string_view library) {
    std::vector<std::string> names;
    for (const auto* import = FirstImport(module); import->Name != 0; ++import) {
        if (library != InImage<char>(module, import->Name)) continue;
        const auto* entry = InImage<IMAGE_THUNK_DATA64>(module, import->OriginalFirstThunk);
        for (; entry->u1.AddressOfData != 0; ++entry) {
            if (IMAGE_SNAP_BY_ORDINAL64(entry->u1.Ordinal)) continue;
            const auto at = static_cast<DWORD>(entry->u1.AddressOfData);
            names.emplace_back(InImage<IMAGE_IMPORT_BY_NAME>(module, at)->Name);
        }
    }
    return names;
}

/// Puts empty functions in place of all of OpenGL that the library calls.
void TakeOpenGlAway(HMODULE library) {
    for (const char* name : {"OPENGL32.dll", "GLU32.dll"}) {
        for (const std::string& function : ImportedNames(library, name)) {
            const bool succeeds = function == "wglMakeCurrent";
            ReplaceImport(library, function, reinterpret_cast<void*>(succeeds ? Done : Nothing));
        }
    }
    ReplaceImport(library, "SwapBuffers", reinterpret_cast<void*>(Done));
}

LRESULT CALLBACK BareProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_PAINT) return DefWindowProcW(window, message, wParam, lParam);
    PAINTSTRUCT paint;
    BeginPaint(window, &paint);
    RECT client;
    GetClientRect(window, &client);
    EndPaint(window, &paint);
    return 0;
}

/// A child window that paints nothing, of the map's size.
HWND MakeBareWindow(HWND map) {
    WNDCLASSW windowClass = {};
    windowClass.style = CS_OWNDC;
    windowClass.lpfnWndProc = BareProc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"horivo bench bare";
    RegisterClassW(&windowClass);
    RECT client;
    GetClientRect(map, &client);
    return CreateWindowExW(0, windowClass.lpszClassName, L"", WS_CHILD | WS_VISIBLE, 0, 0,
                           client.right, client.bottom, GetParent(map), nullptr,
                           windowClass.hInstance, nullptr);
}

/// Paints kOwnFrames frames in a row. @return ms of each
std::vector<double> PaintInARow(HWND window) {
    BenchHost::PumpUntilQuiet(kTurnMs);
    std::vector<double> times;
    for (int i = -kUncountedFrames; i < kOwnFrames; ++i) {
        InvalidateRect(window, nullptr, FALSE);
        const double ms = MillisecondsOf([&] { UpdateWindow(window); });
        if (i >= 0) times.push_back(ms);
    }
    return times;
}

/// Compares frames whose OpenGL calls cost nothing with paintings of an empty window. The
/// difference is the library's own work.
Pairs MeasureOwnWork(HWND map, HMODULE library) {
    TakeOpenGlAway(library);
    HWND bare = MakeBareWindow(map);
    Pairs pairs;
    for (int turn = 0; turn < kOwnTurns; ++turn) {
        ShowWindow(bare, SW_SHOWNA);
        const std::vector<double> bareMs = PaintInARow(bare);
        ShowWindow(bare, SW_HIDE);
        const std::vector<double> mapMs = PaintInARow(map);
        for (std::size_t i = 0; i < mapMs.size(); ++i) pairs.Add(bareMs[i], mapMs[i]);
    }
    return pairs;
}

// ---- With OpenGL ----------------------------------------------------------------------------

/// Compares frames of the library with replays of the OpenGL calls of one frame, in turns on the
/// same window.
Pairs MeasureFrames(const BenchHost& host, HMODULE library, PairBudget budget) {
    GlRecording recording;
    recording.Record({library, GetModuleHandleW(L"glu32.dll")}, [&] { host.Paint(); });
    PrintValue("frame/commands", "calls", static_cast<double>(recording.Size()));
    HGLRC context = wglGetCurrentContext();
    HDC dc = GetDC(host.Map());
    Pairs pairs = MeasurePairs(
        [&] {
            wglMakeCurrent(dc, context);
            return MillisecondsOf([&] { recording.Play(dc); });
        },
        [&] { return MillisecondsOf([&] { host.Paint(); }); }, budget);
    ReleaseDC(host.Map(), dc);
    return pairs;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    const auto argument = [&](int i, int standard) {
        return count > i ? _wtoi(arguments[i]) : standard;
    };
    const int width = argument(1, 800);
    const int height = argument(2, 600);
    const int labels = argument(3, 64);
    std::vector<CityRecord> cities = MakeCities(argument(4, 417), labels);
    HMODULE library = GetModuleHandleW(L"horivo_map.dll");
    BenchHost host(cities, width, height);
    if (!PumpUntilTextured(host.Map())) return 1;
    BenchHost::PumpUntilQuiet(kQuietMs);
    SendMessageW(host.Map(), WM_MOUSEMOVE, 0, MAKELPARAM(width / 2, height / 2));
    host.Paint();
    const auto shown = std::count_if(cities.begin(), cities.end(),
                                     [](const CityRecord& city) { return city.inRange != 0; });
    PrintValue("frame/labels", "labels", static_cast<double>(shown));

    const bool isForPlot = count > 5;
    const PairBudget budget{isForPlot ? kFewPairs : kBenchPairs,
                            static_cast<double>(argument(5, kFrameBudgetMs))};
    PrintPairs("frame", MeasureFrames(host, library, budget));
    PrintValue("frame/peak", "MiB", PeakMiB());
    PrintValue("frame/allocations", "blocks", CountAllocations(host, library, 20));
    const Pairs own = MeasureOwnWork(host.Map(), library);
    PrintPairs("frame_outside_gl", own);
    PrintValue("frame_outside_gl/own", "ms", own.MeasuredMs() - own.BaselineMs());
    PrintValue("frame_outside_gl/own_best", "ms", own.BestMeasuredMs() - own.BestBaselineMs());
    std::_Exit(0);  // no normal end, because OpenGL was replaced by empty functions
}
