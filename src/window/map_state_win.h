#pragma once

#include <memory>

#include "horivo_host.h"
#include "image/gdiplus_session_win.h"
#include "window/button_repeat_win.h"
#include "window/call_results.h"
#include "window/flight_win.h"
#include "window/gl_resources_win.h"
#include "window/host_data.h"
#include "window/hover_win.h"
#include "window/install_self_test_win.h"
#include "window/level_of_detail.h"
#include "window/loader_win.h"
#include "window/map_settings.h"
#include "window/map_window_win.h"
#include "window/near_cities_win.h"
#include "window/overlay_win.h"
#include "window/pointer_state.h"
#include "window/shared_picture_win.h"
#include "window/view_state.h"

/// All mutable data of the map that exists once per process. Message handlers and exported
/// functions reach it through Map(); what they call gets its parts as parameters. A function that
/// needs four parts or more may take the whole state, and says so.
///
/// Three statics are not part of it: the common folder and the switches, which belong to the host
/// services, and the number of users of GDI+, which outlive the map. What the C++ runtime needs is
/// in stack_guard and exception_memory.
struct MapState {
    HostData host;                            ///< window thread
    CallResults results;                      ///< window thread
    InstallTest installTest;                  ///< window thread
    MapSettings settings;                     ///< window thread
    ViewState view;                           ///< window thread
    PointerState pointer;                     ///< window thread
    LevelOfDetail detail;                     ///< window thread
    Flight flight;                            ///< window thread
    Hover hover;                              ///< window thread
    ButtonRepeat repeat;                      ///< window thread
    LiveWindows windows;                      ///< window thread
    SharedPicture textures;                   ///< picture: its own mutex; the rest: see there
    MapLoader loader{textures, host};         ///< window thread; its workers use `textures` alone
    GlResources gl{results.SysErrorSlot()};   ///< window thread, context current
    Overlay overlay{host, gl, windows};       ///< window thread, textures with the context current
    TimeZoneTable zones;                      ///< window thread; city records point into it
    NearCities nearCities{zones};             ///< window thread
    std::unique_ptr<GdiplusSession> gdiplus;  ///< window thread; between InitMap and FreeMap
    bool errorBoxShown = false;  ///< window thread; "Can not load textures." is on screen
};

/// The one state, made at its first use.
MapState& Map();

/// Destroys the state when the library is unloaded while the process lives on. Calling GL or GDI+
/// is forbidden then; after the last window and FreeMap the state holds nothing of either.
void DestroyMapState() noexcept;
