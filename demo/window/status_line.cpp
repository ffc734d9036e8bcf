#include "window/status_line.h"

#include <algorithm>

namespace {

constexpr int kPadding = 24;  // pixels at 96 dots per inch beside a part's text
constexpr int kGrip = 16;     // the same, of the corner that sizes the window
constexpr int kParts = 3;

}  // namespace

bool StatusLine::Create(HWND parent) {
    bar_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0,
                           0, 0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    return bar_ != nullptr;
}

void StatusLine::SetLook(const ScaledLook& look) {
    SendMessageW(bar_, WM_SETFONT, reinterpret_cast<WPARAM>(look.Font()), TRUE);
}

int StatusLine::Place(const ScaledLook& look) {
    // It finds its place by itself.
    SendMessageW(bar_, WM_SIZE, 0, 0);
    Divide(look);
    RECT area{};
    GetWindowRect(bar_, &area);
    return area.bottom - area.top;
}

void StatusLine::SetTexts(const std::wstring& city, const std::wstring& count,
                          const std::wstring& universalTime, const ScaledLook& look) {
    const std::wstring texts[kParts] = {city, count, universalTime};
    if (std::equal(texts, texts + kParts, parts_)) return;
    std::copy(texts, texts + kParts, parts_);
    Divide(look);
}

void StatusLine::Divide(const ScaledLook& look) {
    RECT area{};
    GetClientRect(bar_, &area);
    int ends[kParts] = {0, 0, -1};
    int right = static_cast<int>(area.right) - look.Pixels(kGrip);
    for (int i = kParts - 1; i > 0; --i) {
        right -= static_cast<int>(look.Measure(bar_, parts_[i].c_str()).cx) + look.Pixels(kPadding);
        ends[i - 1] = std::max(0, right);
    }
    SendMessageW(bar_, SB_SETPARTS, kParts, reinterpret_cast<LPARAM>(ends));
    for (int i = 0; i < kParts; ++i) {
        SendMessageW(bar_, SB_SETTEXTW, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(parts_[i].c_str()));
    }
}
