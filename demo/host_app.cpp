#include "host_app.h"

#include <algorithm>

#include "data/city_file.h"
#include "data/data_folder.h"
#include "data/photo_tree.h"
#include "horivo_host.h"
#include "resource_ids.h"
#include "texts.h"

namespace {

// Message and timers of the hidden window.
constexpr UINT kZonesRead = WM_APP;
constexpr UINT_PTR kZoneTimer = 1;
constexpr UINT_PTR kPhotoTimer = 2;
// Time before the program reads the time zones, so that the map shows its first picture earlier: on
// some systems, to read the zones lasts longer than to show that picture.
constexpr UINT kZoneDelayMs = 500;
// Period of FolderWatch::CheckAll, which finds new photos on file systems that report no changes.
constexpr UINT kPhotoCheckMs = 60000;

/// Returns the host window that `window` belongs to: a host window itself, the window around a
/// control, or the owner of a dialog (under Wine also of the map). Null for null.
HWND TopWindowOf(HWND window) {
    return window != nullptr ? GetAncestor(window, GA_ROOTOWNER) : nullptr;
}

bool IsForTopWindow(UINT message) {
    return message == WM_SYSCOMMAND || (message >= WM_SYSKEYDOWN && message <= WM_SYSDEADCHAR);
}

}  // namespace

HostServices::HostServices() {
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&controls);
    CreateLogMutex();
    ReadAdminFlags();
    StartHostServices();
    // Names the language files independently of the program file, which a user may rename.
    SetBaseName(L"horivo_demo");
}

HostServices::~HostServices() { CloseLogMutex(); }

HostApp::HostApp() {
    data.settings = ReadSettings();
    data.cities = ReadCities(ReadTextFile(ProgramFolder() + L"cities.tsv"));
    UseLanguage();
    accelerators_ = LoadAcceleratorsW(TextModule(), MAKEINTRESOURCEW(IDR_ACCELERATORS));
    CreateHiddenWindow();
}

void HostApp::UseLanguage() {
    const Language& language = LanguageOfTexts(FindLanguage(data.settings.language));
    SetTextLanguage(language);
    data.names = ReadCityNames(ReadTextFile(ProgramFolder() + L"city_names.tsv"), data.cities,
                               language.code);
}

HostApp::~HostApp() {
    if (hidden_ != nullptr) DestroyWindow(hidden_);
    WriteSettings(data.settings);
}

void HostApp::CreateHiddenWindow() {
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
    SetTimer(hidden_, kZoneTimer, kZoneDelayMs, nullptr);
}

void HostApp::OnTimer(UINT_PTR timer) {
    if (timer == kZoneTimer) {
        KillTimer(hidden_, kZoneTimer);
        data.times.Begin(hidden_, kZonesRead);
    } else if (watch_ != nullptr) {
        watch_->CheckAll();
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
            app->OnZonesRead();
            return 0;
        case WM_TIMER:
            app->OnTimer(wParam);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

void HostApp::OnZonesRead() {
    data.times.Finish(data.cities);
    for (const auto& window : windows) {
        window->ShowTimes();
        window->FlyToSelected();
    }
    if (IsFeatureEnabled(kNoPhotos)) {
        watch_ = std::make_unique<FolderWatch>(
            PhotoFolder(), data.cities,
            [this](std::int32_t index, std::int32_t photos) { SendPhotosChanged(index, photos); });
        SetTimer(hidden_, kPhotoTimer, kPhotoCheckMs, nullptr);
    }
    WriteLog("started");
}

void HostApp::SendPhotosChanged(std::int32_t signedIndex, std::int32_t newPhotos) {
    for (const auto& window : windows) {
        if (HWND map = window->Map(); map != nullptr) {
            SendMessageW(map, HORIVO_MSG_PHOTOS_CHANGED, static_cast<WPARAM>(signedIndex),
                         newPhotos);
        }
    }
}

bool HostApp::OpenWindow(std::uint32_t& status) {
    auto window = std::make_unique<HostWindow>(data, *this);
    const bool opened = window->Open(windows.empty(), status);
    if (opened) windows.push_back(std::move(window));
    return opened;
}

void HostApp::OpenAnother(HWND asker) {
    std::uint32_t status = HORIVO_OK;
    if (!OpenWindow(status)) TellResult(asker, status);
}

void HostApp::CloseAll() {
    // Each window that closes removes itself from the list.
    while (!windows.empty()) SendMessageW(windows.back()->Handle(), WM_CLOSE, 0, 0);
}

void HostApp::Forget(HostWindow* window) {
    // A window that failed to open is not in the list; the message loop must not end with it.
    const auto isIt = [&](const auto& entry) { return entry.get() == window; };
    if (std::erase_if(windows, isIt) > 0 && windows.empty()) PostQuitMessage(0);
}

void HostApp::ChooseLanguage(const Language& choice) {
    data.settings.language = choice.abbreviation;
    UseLanguage();
    SetWindowTextW(hidden_, LocalText(IDS_TITLE).c_str());
    for (const auto& window : windows) window->ApplyLanguage();
}

void HostApp::Dispatch(MSG& message) {
    HWND top = TopWindowOf(message.hwnd);
    const auto at = std::find_if(windows.begin(), windows.end(),
                                 [&](const auto& window) { return window->Handle() == top; });
    if (at != windows.end()) {
        // Wine sends messages for the top window (Alt+F4, Alt and the letter of a menu, the window
        // manager's close) to the window with the focus. When the map has the focus (see MapPane),
        // this code passes these messages to the top window.
        if (IsForTopWindow(message.message) && message.hwnd == (*at)->Map()) message.hwnd = top;
        if ((*at)->TakeKey(message)) return;
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
        if (events == 1 && woken == WAIT_OBJECT_0) watch_->ReadChanges();
        // Handles only one message before it checks the event again: while a map asks for frame
        // after frame, the message queue is never empty.
        MSG message;
        if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) continue;
        if (message.message == WM_QUIT) return;
        Dispatch(message);
    }
}
