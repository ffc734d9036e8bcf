#include "window/status_bar.h"

#include <algorithm>

namespace {

// Pixels at 96 dots per inch.
constexpr int kPadding = 24;  // space beside the text of a part
constexpr int kGrip = 16;     // width of the size grip in the corner
constexpr int kPartCount = 3;

}  // namespace

bool StatusBar::Create(HWND parent) {
    bar_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0,
                           0, 0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    return bar_ != nullptr;
}

void StatusBar::SetScale(const UiScale& scale) {
    SendMessageW(bar_, WM_SETFONT, reinterpret_cast<WPARAM>(scale.Font()), TRUE);
}

int StatusBar::Place(const UiScale& scale) {
    // A status bar moves itself to the lower edge when it gets WM_SIZE; the parameters do not
    // matter.
    SendMessageW(bar_, WM_SIZE, 0, 0);
    LayOutParts(scale);
    RECT area{};
    GetWindowRect(bar_, &area);
    return area.bottom - area.top;
}

void StatusBar::SetTexts(const std::wstring& city, const std::wstring& count,
                         const std::wstring& universalTime, const UiScale& scale) {
    const std::wstring texts[kPartCount] = {city, count, universalTime};
    if (std::equal(texts, texts + kPartCount, texts_)) return;
    std::copy(texts, texts + kPartCount, texts_);
    LayOutParts(scale);
}

void StatusBar::LayOutParts(const UiScale& scale) {
    RECT area{};
    GetClientRect(bar_, &area);
    int ends[kPartCount] = {0, 0, -1};
    int right = static_cast<int>(area.right) - scale.Pixels(kGrip);
    for (int i = kPartCount - 1; i > 0; --i) {
        right -=
            static_cast<int>(scale.Measure(bar_, texts_[i].c_str()).cx) + scale.Pixels(kPadding);
        ends[i - 1] = std::max(0, right);
    }
    SendMessageW(bar_, SB_SETPARTS, kPartCount, reinterpret_cast<LPARAM>(ends));
    for (int i = 0; i < kPartCount; ++i) {
        SendMessageW(bar_, SB_SETTEXTW, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(texts_[i].c_str()));
    }
}
