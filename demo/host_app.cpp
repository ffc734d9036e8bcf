#include "host_app.h"

#include <algorithm>

#include "data/city_file.h"
#include "data/data_folder.h"
#include "data/photo_tree.h"
#include "horivo_host.h"
#include "resource_ids.h"
#include "texts.h"
#include "user_messages.h"

namespace {

constexpr UINT kZonesRead = WM_APP;  // to the hidden window
// Timers of the hidden window.
constexpr UINT_PTR kZoneTimer = 1;
constexpr UINT_PTR kPhotoTimer = 2;
// Reading the zones takes some systems longer than the first picture, which should not wait.
constexpr UINT kZoneMs = 500;
constexpr UINT kPhotoMs = 60000;

/// The host window that a message belongs to: its map, its controls or itself.
HWND TopWindowOf(HWND window) {
    return window != nullptr ? GetAncestor(window, GA_ROOTOWNER) : nullptr;
}

}  // namespace

HostApp::HostApp() : data{{}, {}, ReadSettings()} {
    // The user's own needs no search through all languages that Windows knows.
    SetLanguage(data.settings.language.empty() ? nullptr
                                               : FindLanguage(data.settings.language).abbreviation);
    accelerators_ = LoadAcceleratorsW(TextModule(), MAKEINTRESOURCEW(IDR_ACCELERATORS));
    data.cities = ReadCities(ReadWholeFile(ProgramFolder() + L"cities.tsv"));
    MakeHiddenWindow();
}

HostApp::~HostApp() {
    if (hidden_ != nullptr) DestroyWindow(hidden_);
    WriteSettings(data.settings);
}

void HostApp::MakeHiddenWindow() {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = HiddenProc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = HORIVO_HOST_WINDOW_CLASS;
    RegisterClassExW(&windowClass);
    hidden_ = CreateWindowExW(0, HORIVO_HOST_WINDOW_CLASS, LocalText(IDS_TITLE).c_str(), WS_POPUP,
                              0, 0, 0, 0, nullptr, nullptr, windowClass.hInstance, nullptr);
    if (hidden_ == nullptr) return;
    SetWindowLongPtrW(hidden_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetTimer(hidden_, kZoneTimer, kZoneMs, nullptr);
}

void HostApp::Ring(UINT_PTR timer) {
    if (timer == kZoneTimer) {
        KillTimer(hidden_, kZoneTimer);
        data.times.Begin(hidden_, kZonesRead);
    } else if (watch_ != nullptr) {
        watch_->LookAgain();
    }
}

LRESULT CALLBACK HostApp::HiddenProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* app = reinterpret_cast<HostApp*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (app == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    switch (message) {
        case HORIVO_MSG_MAY_SHOW_PHOTOS:
            return IsFeatureEnabled(kNoPhotos) &&
                           MayShowPhotos(app->data.cities, static_cast<std::int32_t>(wParam))
                       ? 1
                       : 0;
        case kZonesRead:
            app->FinishStart();
            return 0;
        case WM_TIMER:
            app->Ring(wParam);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

void HostApp::FinishStart() {
    data.times.Finish(data.cities);
    for (HostWindow* window : windows) window->ShowTimes();
    if (IsFeatureEnabled(kNoPhotos)) {
        watch_ = std::make_unique<FolderWatch>(
            PhotoFolder(), data.cities,
            [this](std::int32_t index, std::int32_t photos) { TellOfPhotos(index, photos); });
        SetTimer(hidden_, kPhotoTimer, kPhotoMs, nullptr);
    }
    WriteLog("started");
}

void HostApp::TellOfPhotos(std::int32_t signedIndex, std::int32_t newPhotos) {
    for (HostWindow* window : windows) {
        if (HWND map = window->Map(); map != nullptr) {
            SendMessageW(map, HORIVO_MSG_PHOTOS_CHANGED, static_cast<WPARAM>(signedIndex),
                         newPhotos);
        }
    }
}

HostWindow* HostApp::OpenWindow(SIZE mapSize, bool withList, std::uint32_t& status) {
    auto window = std::make_unique<HostWindow>(data, *this);
    if (!window->Open({mapSize, withList, windows.empty()}, status)) return nullptr;
    // From here on it belongs to its window handle, which calls Forget when it goes.
    windows.push_back(window.release());
    return windows.back();
}

void HostApp::OpenAnother(HWND asker, bool withList) {
    std::uint32_t status = HORIVO_OK;
    if (OpenWindow({0, 0}, withList, status) == nullptr) TellUser(asker, ResultTextId(status));
}

void HostApp::CloseAll() {
    // A copy: each window that closes leaves the list.
    for (HostWindow* window : std::vector<HostWindow*>(windows)) {
        SendMessageW(window->Handle(), WM_CLOSE, 0, 0);
    }
}

void HostApp::Forget(HostWindow* window) {
    const auto at = std::find(windows.begin(), windows.end(), window);
    if (at == windows.end()) return;  // one that was refused while it opened
    windows.erase(at);
    if (windows.empty()) PostQuitMessage(0);
}

void HostApp::ChooseLanguage(const Language& language) {
    data.settings.language = language.abbreviation;
    SetLanguage(language.abbreviation);
    SetLocalString(HORIVO_TEXT_ADD_PHOTO, LocalText(IDS_ADD_PHOTO).c_str());
    SetWindowTextW(hidden_, LocalText(IDS_TITLE).c_str());
    for (HostWindow* window : windows) window->ApplyLanguage();
}

void HostApp::Dispatch(MSG& message) {
    HWND top = TopWindowOf(message.hwnd);
    const auto at = std::find_if(windows.begin(), windows.end(),
                                 [&](HostWindow* window) { return window->Handle() == top; });
    if (at != windows.end()) {
        if ((*at)->TakeFocusKey(message)) return;
        if (TranslateAcceleratorW(top, accelerators_, &message)) return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void HostApp::Run() {
    for (;;) {
        HANDLE event = watch_ != nullptr ? watch_->Event() : nullptr;
        const DWORD events = event != nullptr ? 1 : 0;
        const DWORD woken =
            MsgWaitForMultipleObjectsEx(events, &event, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        if (events == 1 && woken == WAIT_OBJECT_0) watch_->Collect();
        // One message a round: a map that paints without end must not hide the event.
        MSG message;
        if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) continue;
        if (message.message == WM_QUIT) return;
        Dispatch(message);
    }
}
