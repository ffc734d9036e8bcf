#pragma once

#include "window/map_state_win.h"

/// Loads, cuts and uploads the picture at once, halving the size limit until the tiles fit, and
/// writes the picture back when it had to be shrunk. The only picture work on the window's thread;
/// it runs while InstallMap, which holds the scene mutex, creates its hidden window.
void RunInstallSelfTest(MapState& map);
