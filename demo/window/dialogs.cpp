#include "window/dialogs.h"

#include "horivo_host.h"
#include "horivo_map.h"
#include "resource_ids.h"
#include "texts.h"

namespace {

/// The name of the program and the version of the map library, which is also the program's.
std::wstring NameAndVersion() {
    return LocalText(IDS_TITLE) + L' ' + std::to_wstring(HORIVO_MAP_VERSION_MAJOR) + L'.' +
           std::to_wstring(HORIVO_MAP_VERSION_MINOR) + L'.' +
           std::to_wstring(HORIVO_MAP_VERSION_PATCH);
}

/// Parameter of TextDialogProc.
struct TextDialog {
    const wchar_t* section;  ///< the dialog's section in the language files
    HFONT font;
};

BOOL CALLBACK SetControlFont(HWND control, LPARAM font) {
    SendMessageW(control, WM_SETFONT, static_cast<WPARAM>(font), FALSE);
    return TRUE;
}

/// Moves the dialog to the middle of its owner; Windows has opened it in the middle of the screen.
void CenterOverOwner(HWND dialog) {
    RECT owner{};
    RECT own{};
    if (!GetWindowRect(GetWindow(dialog, GW_OWNER), &owner) || !GetWindowRect(dialog, &own)) return;
    const int x = (owner.left + owner.right - (own.right - own.left)) / 2;
    const int y = (owner.top + owner.bottom - (own.bottom - own.top)) / 2;
    SetWindowPos(dialog, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

/// Dialog procedure: sets the texts in the user's language and ends the dialog on any button and on
/// Escape. The parameter of WM_INITDIALOG points to a TextDialog.
INT_PTR CALLBACK TextDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        const auto& text = *reinterpret_cast<const TextDialog*>(lParam);
        LocalizeDialog(dialog, text.section);
        SetDlgItemTextW(dialog, IDC_ABOUT_NAME, NameAndVersion().c_str());
        // Replaces the font of the template by the user's font: every Windows has the font of the
        // template, but that font may lack the letters of the language.
        EnumChildWindows(dialog, SetControlFont, reinterpret_cast<LPARAM>(text.font));
        CenterOverOwner(dialog);
        return TRUE;
    }
    if (message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
        EndDialog(dialog, LOWORD(wParam));
        return TRUE;
    }
    return FALSE;
}

void ShowDialog(HWND owner, int id, const TextDialog& text) {
    DialogBoxParamW(TextModule(), MAKEINTRESOURCEW(id), owner, TextDialogProc,
                    reinterpret_cast<LPARAM>(&text));
}

}  // namespace

void ShowAbout(HWND owner, HFONT font) { ShowDialog(owner, IDD_ABOUT, {ABOUT_SECTION, font}); }

void ShowKeys(HWND owner, HFONT font) { ShowDialog(owner, IDD_KEYS, {KEYS_SECTION, font}); }
