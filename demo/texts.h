#pragma once
// The program's own texts in the language that the user has chosen.

#include <cstdint>
#include <string>

#include "window/host_windows.h"

/// Where the program's strings, menu and dialogs come from: res_en.dll once the services have
/// loaded it, else the program itself.
HINSTANCE TextModule();

/// A string of resource_ids.h; empty when neither language file nor module has it.
std::wstring LocalText(std::uint32_t id);

/// The same with "%1" and "%2" replaced.
std::wstring LocalText(std::uint32_t id, const std::wstring& first,
                       const std::wstring& second = {});
