#pragma once
// The program's own texts in the language that the user has chosen, and its message boxes.

#include <cstdint>
#include <string>

#include "windows_api.h"

/// The module with the program's strings, menu and dialogs: res_en.dll when StartHostServices
/// could load it, else the program itself.
HINSTANCE TextModule();

/// A string of resource_ids.h; empty when neither the language file nor the module has it.
std::wstring LocalText(std::uint32_t id);

/// The string `id` with "%1" replaced by `first` and "%2" by `second`.
std::wstring LocalText(std::uint32_t id, const std::wstring& first,
                       const std::wstring& second = {});

/// Writes a text to the log and shows it in a message box; `owner` may be null. "%1" in the text is
/// replaced by the library's data folder.
void TellUser(HWND owner, std::uint32_t textId);

/// Calls TellUser with the text for a result code of the library. Also writes the code and the
/// system error to the log.
void TellResult(HWND owner, std::uint32_t code);
