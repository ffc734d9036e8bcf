// The commands of the menu of a host window.

#include "window/host_window.h"

#include <shellapi.h>

#include "data/data_folder.h"
#include "map_picture.h"
#include "resource_ids.h"
#include "texts.h"
#include "window/dialogs.h"
#include "window/host_menu.h"

bool HostWindow::IsOnTop() const {
    return (GetWindowLongPtrW(handle_, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

void HostWindow::SetOnTop(bool onTop) {
    data_.settings.alwaysOnTop = onTop;
    map_.SetHostOnTop(onTop);
}

void HostWindow::OpenPhotoFolder() {
    PreparePhotoFolder();
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteW(handle_, L"open", PhotoFolder().c_str(), nullptr, nullptr, SW_SHOWNORMAL));
    constexpr INT_PTR kFirstSuccess = 33;  // ShellExecute: lower values are errors
    if (result < kFirstSuccess) TellUser(handle_, IDS_FOLDER_FAILED);
}

void HostWindow::OnMenuCommand(std::uint32_t command) {
    for (const Language& language : Languages()) {
        if (language.command == command) program_.ChooseLanguage(language);
    }
    PressMapKeys(map_.Window(), command);
    switch (command) {
        case IDM_NEW_WINDOW:
            program_.OpenAnother(handle_);
            break;
        case IDM_CLOSE_WINDOW:
            SendMessageW(handle_, WM_CLOSE, 0, 0);
            break;
        case IDM_OPEN_PHOTO_FOLDER:
            OpenPhotoFolder();
            break;
        case IDM_EXIT:
            program_.CloseAll();
            break;
        case IDM_SEARCH:
            SetFocus(list_.Field());
            SendMessageW(list_.Field(), EM_SETSEL, 0, -1);
            break;
        case IDM_FLY_TO_CITY:
            FlyToSelected();
            break;
        case IDM_REPAIR_PICTURE:
            RepairMapPicture(handle_);
            break;
        case IDM_COPY_TIME:
            CopyTime();
            break;
        case IDM_ALWAYS_ON_TOP:
            SetOnTop(!IsOnTop());
            break;
        case IDM_KEYS:
            ShowKeys(handle_, scale_->Font());
            break;
        case IDM_ABOUT:
            ShowAbout(handle_, scale_->Font());
            break;
        default:
            break;
    }
}
