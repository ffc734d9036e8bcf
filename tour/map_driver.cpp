#include "tour/map_driver.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

namespace {

// Time between two pictures of LookUntil. A flight takes several steps in this time.
constexpr DWORD kLookMs = 150;
constexpr DWORD kTimeoutMs = 180000;  // longest wait of LookUntil; a busy machine needs a minute
// Number of consecutive pictures that must equal the picture before. One alone would not be enough:
// it may have been taken between loading and splitting.
constexpr int kEqualLooks = 3;
// FlyTo waits until the city is nearer to the middle of the window than this, in x and in y.
constexpr double kArrivedPixels = 3.0;
constexpr int kDragSteps = 12;
constexpr int kCrowdSteps = 24;  // steps of the search in each direction
constexpr int kCrowdPart = 8;    // the search goes an eighth of the height in each direction
// Size of the lower left corner with the status lines, pixels.
constexpr int kStatusWidth = 300;
constexpr int kStatusHeight = 160;
// Loading may be over before the second frame, or may not have begun at the first. So each try
// first waits a little longer than the try before, and then looks several times without a pause.
constexpr int kLoadingTries = 12;
constexpr int kLoadingLooks = 4;
constexpr DWORD kLoadingStepMs = 5;

bool IsRed(std::uint32_t pixel) {
    return (pixel >> 16U) > 0xC0 && (pixel >> 8U & 0xFFU) < 0x30 && (pixel & 0xFFU) < 0x30;
}

/// Whether the red line about loading or splitting shows in the lower left corner.
bool ShowsLoading(const Picture& picture) {
    const int right = std::min(kStatusWidth, picture.width);
    for (int y = std::max(0, picture.height - kStatusHeight); y < picture.height; ++y) {
        for (int x = 0; x < right; ++x) {
            if (IsRed(picture.At(x, y))) return true;
        }
    }
    return false;
}

}  // namespace

void PumpMessages(DWORD ms) {
    const DWORD start = GetTickCount();
    for (DWORD passed = 0; passed < ms; passed = GetTickCount() - start) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, ms - passed, QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
            // Also ends while messages are left: a map that asks for frame after frame always has
            // one in the queue.
            if (GetTickCount() - start >= ms) break;
        }
    }
}

int MapDriver::Width() const {
    RECT area{};
    GetClientRect(map_, &area);
    return area.right;
}

int MapDriver::Height() const {
    RECT area{};
    GetClientRect(map_, &area);
    return area.bottom;
}

const CityRecord& MapDriver::City(const wchar_t* name) const {
    const auto city = std::find_if(cities_.begin(), cities_.end(), [&](const CityRecord& record) {
        return std::wstring_view(record.cityName) == name;
    });
    if (city == cities_.end()) throw std::runtime_error("a city is not in the table");
    return *city;
}

bool MapDriver::TitleNames(const wchar_t* city) const {
    wchar_t title[256] = {};
    GetWindowTextW(GetAncestor(map_, GA_ROOTOWNER), title, 256);
    return std::wstring_view(title).starts_with(city);
}

void MapDriver::SendPointer(UINT message, WPARAM buttons, int x, int y) const {
    SendMessageW(map_, message, buttons, MAKELPARAM(x, y));
}

void MapDriver::Press(int virtualKey) const {
    SendMessageW(map_, WM_KEYDOWN, static_cast<WPARAM>(virtualKey), 1);
}

void MapDriver::PointAt(int x, int y) const {
    POINT point{x, y};
    ClientToScreen(map_, &point);
    SetCursorPos(point.x, point.y);
    SendPointer(WM_MOUSEMOVE, 0, x, y);
}

POINT MapDriver::PointAtCity(const wchar_t* name) const {
    constexpr POINT kSides[] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
    const CityRecord& city = City(name);
    POINT best{Width() / 2, Height() / 2};
    SendPointer(WM_MOUSEMOVE, 0, best.x, best.y);
    double least = city.distanceSq;
    for (int step = Height() / 8; step > 0;) {
        const double before = least;
        const POINT from = best;
        for (const POINT& side : kSides) {
            const POINT point{from.x + side.x * step, from.y + side.y * step};
            SendPointer(WM_MOUSEMOVE, 0, point.x, point.y);
            if (city.distanceSq >= least) continue;
            least = city.distanceSq;
            best = point;
        }
        if (least == before) step /= 2;
    }
    PointAt(best.x, best.y);
    return best;
}

void MapDriver::PointAtCrowd() const {
    const int reach = Height() / kCrowdPart;
    POINT best{};
    std::ptrdiff_t most = 1;
    for (int row = -kCrowdSteps; row <= kCrowdSteps; ++row) {
        for (int column = -kCrowdSteps; column <= kCrowdSteps; ++column) {
            const POINT point{Width() / 2 + reach * column / kCrowdSteps,
                              Height() / 2 + reach * row / kCrowdSteps};
            SendPointer(WM_MOUSEMOVE, 0, point.x, point.y);
            const std::ptrdiff_t count = std::ranges::count_if(
                cities_, [](const CityRecord& city) { return city.inRange != 0; });
            if (count <= most) continue;
            most = count;
            best = point;
        }
    }
    if (most == 1) throw std::runtime_error("nowhere are two cities near the pointer");
    PointAt(best.x, best.y);
}

void MapDriver::Click(int x, int y) const {
    PointAt(x, y);
    SendPointer(WM_LBUTTONDOWN, MK_LBUTTON, x, y);
    SendPointer(WM_LBUTTONUP, 0, x, y);
}

void MapDriver::Drag() const {
    const POINT from{Width() / 2, Height() / 2};
    const POINT way{Height() / 5, Height() / 10};
    SendPointer(WM_MOUSEMOVE, 0, from.x, from.y);
    SendPointer(WM_LBUTTONDOWN, MK_LBUTTON, from.x, from.y);
    for (int step = 1; step <= kDragSteps; ++step) {
        SendPointer(WM_MOUSEMOVE, MK_LBUTTON, from.x + way.x * step / kDragSteps,
                    from.y + way.y * step / kDragSteps);
        PumpMessages(1);
    }
    SendPointer(WM_LBUTTONUP, 0, from.x + way.x, from.y + way.y);
}

void MapDriver::TurnWheel(int notches) const {
    const int direction = notches > 0 ? WHEEL_DELTA : -WHEEL_DELTA;
    POINT cursor{};
    GetCursorPos(&cursor);
    for (int i = 0; i < std::abs(notches); ++i) {
        SendMessageW(map_, WM_MOUSEWHEEL, MAKEWPARAM(0, direction), MAKELPARAM(cursor.x, cursor.y));
    }
}

void MapDriver::FlyTo(const CityRecord& city) const {
    SendMessageW(map_, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&city));
    // The map writes the position at which it has drawn the city into windowPoint.
    LookUntil([&](const Picture& now) {
        return std::fabs(city.windowPoint[0] - now.width / 2.0) < kArrivedPixels &&
               std::fabs(city.windowPoint[1] - now.height / 2.0) < kArrivedPixels;
    });
    LookWhenSettled();
}

Picture MapDriver::Look() const {
    RedrawWindow(map_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    return CaptureClient(map_);
}

Picture MapDriver::LookUntil(const std::function<bool(const Picture&)>& isWanted) const {
    const DWORD start = GetTickCount();
    do {
        Picture picture = Look();
        if (isWanted(picture)) return picture;
        PumpMessages(kLookMs);
    } while (GetTickCount() - start < kTimeoutMs);
    throw std::runtime_error("the map did not show in time what it should");
}

Picture MapDriver::LookWhenSettled() const {
    Picture before;
    int equalLooks = 0;
    return LookUntil([&](const Picture& now) {
        equalLooks = now == before && !ShowsLoading(now) ? equalLooks + 1 : 0;
        before = now;
        return equalLooks == kEqualLooks;
    });
}

Picture MapDriver::LookWithInformation() const {
    LookWhenSettled();
    Press('I');
    Press('F');
    // Does not wait for a settled picture, because the frame rate changes with each look. Looks
    // twice, because a frame shows the rate of the frame before: only the second picture shows the
    // rate of a frame with these lines.
    Look();
    Picture picture = Look();
    Press('I');
    Press('F');
    return picture;
}

Picture MapDriver::LookWhileLoading() const {
    for (int attempt = 0; attempt < kLoadingTries; ++attempt) {
        Press('H');
        Sleep(static_cast<DWORD>(attempt) * kLoadingStepMs);
        Picture loading = Look();
        for (int look = 1; look < kLoadingLooks && !ShowsLoading(loading); ++look) loading = Look();
        LookWhenSettled();
        Press('L');
        LookWhenSettled();
        if (ShowsLoading(loading)) return loading;
    }
    throw std::runtime_error("no picture shows that the map is loading");
}
