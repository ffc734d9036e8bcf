#pragma once
// What the program remembers from one start to the next.

#include <string>

#include "window/host_windows.h"

struct HostSettings {
    std::wstring language;  ///< Windows abbreviation ("DEU"); empty: the user's own
    RECT place{};           ///< of the window at rest, pixels of the screen; empty: none yet
    bool maximized = false;
    int sortColumn = 0;
    bool sortDescending = false;
};

/// Reads the settings of this user; where the administrator allows no preferences, those in
/// "default.ini" beside the program. What is missing or makes no sense keeps its initial value.
/// The administrative switches must have been read.
HostSettings ReadSettings();

/// Writes them where they are read from. A folder that cannot be written loses them silently.
void WriteSettings(const HostSettings& settings);

/// The place cut to what a screen shows, so that a window never opens where nobody can reach it.
/// @return false when the place is empty or too small to be one
bool FitToScreen(RECT& place);
