#pragma once
// The settings of the program, stored in a profile file.

#include <string>

#include "windows_api.h"

struct HostSettings {
    std::wstring language;  ///< Windows abbreviation ("DEU"); empty: the language of Windows
    std::wstring city;      ///< English name of the city that was chosen last; empty: none yet
    std::wstring country;   ///< English name of the country of `city`
    RECT place{};  ///< place of the window when not maximized, screen pixels; empty: none yet
    bool maximized = false;
    int sortColumn = 0;  ///< number of a CityColumn
    bool sortDescending = false;
    bool alwaysOnTop = false;
};

/// Reads the user's settings, or "default.ini" beside the program when the switch "no_preferences"
/// is set (ReadAdminFlags must have been called). A setting that is missing or invalid keeps its
/// initial value.
HostSettings ReadSettings();

/// Writes the settings to the file that ReadSettings reads. Reports no failure.
void WriteSettings(const HostSettings& settings);

/// Moves and shrinks `place` into the work area of the nearest monitor, so that a window never
/// opens where the user cannot reach it.
/// @return false when `place` is empty or too small for a window
bool FitToScreen(RECT& place);
