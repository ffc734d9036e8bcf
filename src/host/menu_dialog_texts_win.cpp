// Texts of menus and dialogs in the current language.

#include "base/windows_types.h"
#include "host/lang_escapes.h"
#include "host/lang_record_win.h"

namespace {

// Maximum lengths, in characters without the terminator.
constexpr std::size_t kDialogNameChars = 62;
constexpr DWORD kDialogCaptionChars = 255;
constexpr DWORD kControlTextChars = 2047;
constexpr DWORD kMenuTextChars = 255;

constexpr UINT kOpensSubmenu = 0xFFFFFFFF;  // GetMenuItemID's result for an item with a submenu
// Identifier of a control that has none: a dialog template stores -1 in 16 bits.
constexpr std::int32_t kNoControlId16 = 0xFFFF;
constexpr int kClassNameCapacity = 32;  // characters; enough for "Button" and "Static"

bool ReadFrom(const wchar_t* path, const wchar_t* section, const wchar_t* key, wchar_t* text,
              DWORD room) noexcept {
    // For an empty path, Windows would read its own "win.ini".
    return *path != L'\0' && GetPrivateProfileStringW(section, key, L"", text, room, path) != 0;
}

/// Reads a text from the language file, or from the file of "en" when the language file lacks it.
/// @return whether one of the two files has the text
bool ReadText(const wchar_t* section, const wchar_t* key, wchar_t* text, DWORD room) noexcept {
    return ReadFrom(LangFile().langFilePath, section, key, text, room) ||
           ReadFrom(LangFile().fallbackFilePath, section, key, text, room);
}

bool IsEmpty(const wchar_t* text) noexcept { return text == nullptr || *text == L'\0'; }

/// Whether LocalizeDialog sets the text of this control.
bool TakesText(HWND control, std::int32_t id) noexcept {
    if (id < 1 || id == kNoControlId16) return false;
    wchar_t className[kClassNameCapacity];
    if (GetClassNameW(control, className, kClassNameCapacity) == 0) return false;
    return lstrcmpiW(className, L"Button") == 0 || lstrcmpiW(className, L"Static") == 0;
}

BOOL CALLBACK LocalizeControl(HWND control, LPARAM parameter) noexcept {
    const auto* section = reinterpret_cast<const wchar_t*>(parameter);
    const auto id = static_cast<std::int32_t>(GetWindowLongPtrW(control, GWLP_ID));
    wchar_t text[kControlTextChars + 1];
    if (TakesText(control, id) &&
        ReadText(section, NumberKey(id).text, text, kControlTextChars + 1)) {
        SetWindowTextW(control, text);
    }
    return TRUE;
}

/// Sets the text of one menu item. @return whether the text was set; false when the language files
/// have no text for `key`
bool LocalizeItem(HMENU menu, UINT position, const wchar_t* key, const wchar_t* section) noexcept {
    wchar_t text[kMenuTextChars + 1];
    if (!ReadText(section, key, text, kMenuTextChars + 1)) return false;
    MENUITEMINFOW item = {};
    item.cbSize = sizeof item;
    item.fMask = MIIM_STRING;
    item.dwTypeData = text;
    return SetMenuItemInfoW(menu, position, TRUE, &item) != FALSE;
}

}  // namespace

bool LocalizeDialog(HWND__* dialog, const HorivoWideChar* dialogName) noexcept {
    if (IsEmpty(dialogName) || *LangFile().langFilePath == L'\0') return false;
    // For a null window, EnumChildWindows would enumerate the windows of all programs.
    if (IsWindow(dialog) == FALSE) return false;
    wchar_t section[kDialogNameChars + 1];
    StoreText(section, dialogName, kDialogNameChars);
    wchar_t caption[kDialogCaptionChars + 1];
    if (ReadText(section, L"Caption", caption, kDialogCaptionChars + 1)) {
        SetWindowTextW(dialog, caption);
    }
    EnumChildWindows(dialog, LocalizeControl, reinterpret_cast<LPARAM>(section));
    return true;
}

bool LocalizeMenu(HMENU__* menu, const HorivoWideChar* section) noexcept {
    if (IsEmpty(section) || *LangFile().langFilePath == L'\0') return false;
    bool changed = false;
    const int count = GetMenuItemCount(menu);
    for (int position = 0; position < count; ++position) {
        const UINT id = GetMenuItemID(menu, position);
        const auto item = static_cast<UINT>(position);
        if (id == kOpensSubmenu) {
            wchar_t key[kMenuKeyChars + 1] = {};
            GetMenuStringW(menu, item, key, kMenuKeyChars + 1, MF_BYPOSITION);
            MenuKey(key);
            const bool inside = LocalizeMenu(GetSubMenu(menu, position), section);
            changed = LocalizeItem(menu, item, key, section) || inside || changed;
        } else {
            const NumberKey key(static_cast<std::int32_t>(id));
            changed = LocalizeItem(menu, item, key.text, section) || changed;
        }
    }
    return changed;
}
