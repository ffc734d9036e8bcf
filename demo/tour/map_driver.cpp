#include "tour/map_driver.h"

#include <algorithm>

namespace {

constexpr DWORD kLookMs = 150;         // between two looks: several steps of a flight
constexpr DWORD kPatienceMs = 180000;  // a machine with ten other things to do needs one minute
constexpr int kEqualLooks = 3;  // between loading and splitting the line is gone for a moment
constexpr int kDragSteps = 12;
constexpr int kCrowdSteps = 24;     // of the search to each side
constexpr int kCrowdPart = 8;       // of the height: how far to each side
constexpr int kStatusWidth = 300;   // pixels from the left edge
constexpr int kStatusHeight = 160;  // pixels from the lower edge

bool IsRed(std::uint32_t pixel) {
    return (pixel >> 16U) > 0xC0 && (pixel >> 8U & 0xFFU) < 0x30 && (pixel & 0xFFU) < 0x30;
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
            // A map that keeps asking for frames must not keep the tour from its next step.
            if (GetTickCount() - start >= ms) break;
        }
    }
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

POINT MapDriver::PointAtCity(const CityRecord& city) const {
    constexpr POINT kSides[] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
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

int MapDriver::PointAtCrowd(const std::vector<CityRecord>& cities) const {
    const int reach = Height() / kCrowdPart;
    POINT best{Width() / 2, Height() / 2};
    std::ptrdiff_t most = 0;
    for (int row = -kCrowdSteps; row <= kCrowdSteps; ++row) {
        for (int column = -kCrowdSteps; column <= kCrowdSteps; ++column) {
            const POINT point{Width() / 2 + reach * column / kCrowdSteps,
                              Height() / 2 + reach * row / kCrowdSteps};
            SendPointer(WM_MOUSEMOVE, 0, point.x, point.y);
            const std::ptrdiff_t count =
                std::count_if(cities.begin(), cities.end(),
                              [](const CityRecord& city) { return city.inRange != 0; });
            if (count <= most) continue;
            most = count;
            best = point;
        }
    }
    PointAt(best.x, best.y);
    return static_cast<int>(most);
}

void MapDriver::Click(int x, int y) const {
    PointAt(x, y);
    SendPointer(WM_LBUTTONDOWN, MK_LBUTTON, x, y);
    SendPointer(WM_LBUTTONUP, 0, x, y);
}

void MapDriver::Drag(int fromX, int fromY, int toX, int toY) const {
    SendPointer(WM_MOUSEMOVE, 0, fromX, fromY);
    SendPointer(WM_LBUTTONDOWN, MK_LBUTTON, fromX, fromY);
    for (int step = 1; step <= kDragSteps; ++step) {
        SendPointer(WM_MOUSEMOVE, MK_LBUTTON, fromX + (toX - fromX) * step / kDragSteps,
                    fromY + (toY - fromY) * step / kDragSteps);
        PumpMessages(1);
    }
    SendPointer(WM_LBUTTONUP, 0, toX, toY);
}

void MapDriver::TurnWheel(int notches) const {
    const int direction = notches > 0 ? WHEEL_DELTA : -WHEEL_DELTA;
    POINT cursor{};
    GetCursorPos(&cursor);
    for (int i = 0; i < std::abs(notches); ++i) {
        SendMessageW(map_, WM_MOUSEWHEEL, MAKEWPARAM(0, direction), MAKELPARAM(cursor.x, cursor.y));
    }
}

void MapDriver::ShowCity(const CityRecord& city) const {
    SendMessageW(map_, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&city));
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

Picture MapDriver::Look() const {
    RedrawWindow(map_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    return TakePicture(map_);
}

Picture MapDriver::LookWithInformation() const {
    Press('I');
    Press('F');
    // The frame rate never settles; a true one shows from the second look on.
    Look();
    Picture picture = Look();
    Press('I');
    Press('F');
    return picture;
}

Picture MapDriver::LookUntil(const std::function<bool(const Picture&)>& seen) const {
    const DWORD start = GetTickCount();
    do {
        Picture picture = Look();
        if (seen(picture)) return picture;
        PumpMessages(kLookMs);
    } while (IsWindow(map_) && GetTickCount() - start < kPatienceMs);
    return {};
}

Picture MapDriver::LookOften(int looks, const std::function<bool(const Picture&)>& seen) const {
    for (int look = 0; look < looks; ++look) {
        Picture picture = Look();
        if (seen(picture)) return picture;
    }
    return {};
}

Picture MapDriver::LookWhenSettled() const {
    Picture before;
    int equalLooks = 0;
    return LookUntil([&](const Picture& now) {
        const bool quiet = !now.pixels.empty() && !ShowsLoading(now) && now == before;
        equalLooks = quiet ? equalLooks + 1 : 0;
        before = now;
        return equalLooks == kEqualLooks;
    });
}

std::wstring MapDriver::Title() const {
    wchar_t title[256] = {};
    GetWindowTextW(GetAncestor(map_, GA_ROOTOWNER), title, 256);
    return title;
}

bool ShowsLoading(const Picture& picture) {
    const int right = std::min(kStatusWidth, picture.width);
    for (int y = std::max(0, picture.height - kStatusHeight); y < picture.height; ++y) {
        for (int x = 0; x < right; ++x) {
            if (IsRed(picture.At(x, y))) return true;
        }
    }
    return false;
}
