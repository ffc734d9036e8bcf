#include "host_app.h"

#include <algorithm>

#include "data/city_file.h"
#include "data/data_folder.h"
#include "data/photo_tree.h"
#include "horivo_host.h"
#include "resource_ids.h"
#include "texts.h"
#include "window/host_window.h"

namespace {

constexpr UINT kZonesRead = WM_APP;  // to the hidden window
constexpr UINT_PTR kPhotoTimer = 1;  // of the hidden window
constexpr UINT kPhotoMs = 60000;

constexpr struct {
    std::uint32_t code;
    std::uint32_t textId;
} kResultTexts[] = {
    {HORIVO_OK, IDS_MAP_WINDOW_REFUSED},
    {HORIVO_BAD_PICTURE, IDS_MAP_PICTURE_BAD},
    {HORIVO_UNFIT_PICTURE, IDS_MAP_PICTURE_UNFIT},
    {HORIVO_COPY_FAILED, IDS_MAP_COPY_FAILED},
    {HORIVO_CLASS_FAILED, IDS_MAP_CLASS_FAILED},
    {HORIVO_NO_PIXEL_FORMAT, IDS_MAP_NO_FORMAT},
    {HORIVO_PIXEL_FORMAT_REFUSED, IDS_MAP_FORMAT_REFUSED},
    {HORIVO_CONTEXT_FAILED, IDS_MAP_CONTEXT_FAILED},
};

/// The host window that a message belongs to: its map, its controls or itself.
HWND TopWindowOf(HWND window) {
    return window != nullptr ? GetAncestor(window, GA_ROOTOWNER) : nullptr;
}

}  // namespace

void TellUser(HWND owner, std::uint32_t textId) {
    LocalMessageBox(owner, TextModule(), textId, IDS_TITLE);
}

std::uint32_t ResultTextId(std::uint32_t code) {
    for (const auto& entry : kResultTexts) {
        if (entry.code == code) return entry.textId;
    }
    return IDS_MAP_UNKNOWN_FAILURE;
}

HostApp::HostApp() : settings(ReadSettings()) {
    // The user's own needs no search through all languages that Windows knows.
    SetLanguage(settings.language.empty() ? nullptr : ChosenLanguage().abbreviation);
    accelerators_ = LoadAcceleratorsW(TextModule(), MAKEINTRESOURCEW(IDR_ACCELERATORS));
    cities = ReadCities(ReadWholeFile(ProgramFolder() + L"cities.tsv"));
    MakeHiddenWindow();
}

HostApp::~HostApp() {
    if (hidden_ != nullptr) DestroyWindow(hidden_);
    WriteSettings(settings);
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
    times.Begin(hidden_, kZonesRead);
}

LRESULT CALLBACK HostApp::HiddenProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* app = reinterpret_cast<HostApp*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (app == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    switch (message) {
        case HORIVO_MSG_MAY_SHOW_PHOTOS:
            return IsFeatureEnabled(kNoPhotos) &&
                           MayShowPhotos(app->cities, static_cast<std::int32_t>(wParam))
                       ? 1
                       : 0;
        case kZonesRead:
            app->FinishStart();
            return 0;
        case WM_TIMER:
            if (app->watch_ != nullptr) app->watch_->LookAgain();
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

void HostApp::FinishStart() {
    times.Finish(cities);
    for (HostWindow* window : windows) window->ShowTimes();
    if (IsFeatureEnabled(kNoPhotos)) {
        watch_ = std::make_unique<FolderWatch>(
            PhotoFolder(), cities,
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
    auto window = std::make_unique<HostWindow>(*this);
    if (!window->Open(mapSize, withList, status)) return nullptr;
    // From here on it belongs to its window handle, which calls Forget when it goes.
    windows.push_back(window.release());
    return windows.back();
}

void HostApp::Forget(HostWindow* window) {
    const auto at = std::find(windows.begin(), windows.end(), window);
    if (at == windows.end()) return;  // one that was refused while it opened
    windows.erase(at);
    if (windows.empty()) PostQuitMessage(0);
}

void HostApp::ChooseLanguage(const Language& language) {
    settings.language = language.abbreviation;
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
