// A new size of the map window, and dragging its border: resize_bench [BUDGET_MS [PAIRS]].
//   new_size      a WM_SIZE against a tick of the day/night timer ("look"): both record the display
//                 lists that depend on the Sun
//   border_drag   a size, its WM_SIZE and its frame against the same size and the recorded OpenGL
//                 calls of that frame, with the library switched off
#include <cstdlib>
#include <memory>
#include <vector>

#include "common/result_line.h"
#include "common/spread_cities.h"
#include "gl_recording_win.h"
#include "map_host_win.h"
#include "support/faked_import_win.h"

namespace {

constexpr int kCities = 417;
constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr int kSizes = 100;      // of the dragged border, each a pixel wider than the one before
constexpr DWORD kQuietMs = 500;  // when no message comes for so long, the load has ended
constexpr WPARAM kClockTimer = 4;
constexpr int kSizeBudgetMs = 3000;

WNDPROC mapProc = nullptr;

/// Takes the place of the library's window procedure.
LRESULT CALLBACK IdleProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PAINT) ValidateRect(window, nullptr);
    return DefWindowProcW(window, message, wParam, lParam);
}

/// The map window with its right border at one of kSizes places.
class DraggedMap {
public:
    DraggedMap(const BenchHost& host, HMODULE library) : host_(host), dc_(GetDC(host.Map())) {
        mapProc = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(host.Map(), GWLP_WNDPROC));
        for (int i = 0; i < kSizes; ++i) {
            Drag();
            auto frame = std::make_unique<GlRecording>();
            frame->Record({library, GetModuleHandleW(L"glu32.dll")}, [&] { host_.Paint(); });
            frames_.push_back(std::move(frame));
        }
        context_ = wglGetCurrentContext();
    }
    DraggedMap(const DraggedMap&) = delete;
    DraggedMap& operator=(const DraggedMap&) = delete;
    ~DraggedMap() { ReleaseDC(host_.Map(), dc_); }

    double LibraryMs() {
        return MillisecondsOf([&] {
            Drag();
            host_.Paint();
        });
    }
    double BareMs() {
        SetProc(IdleProc);
        const double ms = MillisecondsOf([&] {
            Drag();
            wglMakeCurrent(dc_, context_);
            frames_[static_cast<std::size_t>(place_)]->Play(dc_);
        });
        SetProc(mapProc);
        return ms;
    }

private:
    void SetProc(WNDPROC proc) const {
        SetWindowLongPtrW(host_.Map(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(proc));
    }
    void Drag() {
        place_ = (place_ + 1) % kSizes;
        MoveWindow(host_.Map(), 0, 0, kWidth + place_, kHeight, FALSE);
    }

    const BenchHost& host_;
    HDC dc_;
    HGLRC context_ = nullptr;
    int place_ = -1;
    std::vector<std::unique_ptr<GlRecording>>
        frames_;  ///< the OpenGL calls of a frame at each place
};

/// A clock by which every frame seems to take a millisecond. With the real clock, the library would
/// lower the detail on a busy machine.
DWORD WINAPI FastClock() {
    static DWORD now = 0;
    return ++now;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    const double budgetMs = count > 1 ? _wtoi(arguments[1]) : kSizeBudgetMs;
    // A pair has two bare frames and two of the library. So after this number of pairs, each kind
    // has had every size.
    const int dragPairs = count > 2 ? _wtoi(arguments[2]) : kSizes / 2;
    std::vector<CityRecord> cities = SpreadCities(kCities);
    HMODULE library = GetModuleHandleW(L"horivo_map.dll");
    ReplaceImport(library, "GetTickCount", reinterpret_cast<void*>(FastClock));
    BenchHost host(cities, kWidth + kSizes, kHeight);
    if (!PumpUntilTextured(host.Map())) return 1;
    BenchHost::PumpUntilQuiet(kQuietMs);

    const auto look = [&] { SendMessageW(host.Map(), WM_TIMER, kClockTimer, 0); };
    int width = kWidth;
    const auto size = [&] {
        width = width == kWidth ? kWidth + 1 : kWidth;
        SendMessageW(host.Map(), WM_SIZE, SIZE_RESTORED, MAKELPARAM(width, kHeight));
    };
    PrintPairs("new_size",
               MeasurePairs([&] { return MillisecondsOf(look); },
                            [&] { return MillisecondsOf(size); }, {kBenchPairs, budgetMs}));
    DraggedMap map(host, library);
    PrintPairs("border_drag", MeasurePairs([&] { return map.BareMs(); },
                                           [&] { return map.LibraryMs(); }, {dragPairs, budgetMs}));
    std::_Exit(0);
}
