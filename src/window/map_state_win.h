#pragma once

#include <memory>

#include "cities/city_clock_win.h"
#include "horivo_host.h"
#include "image/gdiplus_session_win.h"
#include "window/button_repeat_win.h"
#include "window/call_results.h"
#include "window/fit_new_picture_win.h"
#include "window/flight_win.h"
#include "window/gl_resources_win.h"
#include "window/host_data.h"
#include "window/hover_win.h"
#include "window/level_of_detail.h"
#include "window/live_windows_win.h"
#include "window/loader_win.h"
#include "window/map_settings.h"
#include "window/overlay_win.h"
#include "window/pointer_state.h"
#include "window/shared_picture_win.h"
#include "window/view_state.h"

/// All mutable data of the map that exists once per process. Message handlers and exported
/// functions get the MapState from Map(); the functions that they call get parts of the MapState as
/// parameters. A function that needs several parts may have MapState as a parameter; its comment
/// then names the parts.
///
/// The comment on each member names the thread or the lock that guards the member. The window
/// thread is the thread that owns the map windows.
///
/// Three mutable statics are not in MapState: the path of the common application data folder and
/// the administrative switches, which belong to the host services, and the number of users of GDI+,
/// which belongs to GdiplusSession. The data of the C++ runtime is in stack_guard_win.cpp and
/// exception_memory_win.cpp.
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
    SharedPicture textures;                   ///< its mutex guards the picture; see SharedPicture
    MapLoader loader{textures, host};         ///< window thread; its workers use only `textures`
    GlResources gl{results.SysErrorSlot()};   ///< window thread; GL needs the current context
    Overlay overlay{host, gl, windows};       ///< window thread; GL needs the current context
    TimeZoneTable zones;                      ///< window thread; city records point to its entries
    SystemCityClock cityClock{zones};         ///< window thread
    std::unique_ptr<GdiplusSession> gdiplus;  ///< window thread; null before InitMap, after FreeMap
    bool errorBoxShown = false;  ///< window thread; "Can not load textures." is on screen
};

/// Returns the MapState of the process. The first call creates it.
MapState& Map();

/// Destroys the state. DllMain calls it when the library is unloaded before the end of the process;
/// GL and GDI+ must not be called at that time. If the state still uses GL or GDI+, frees only the
/// picture.
void DestroyMapState() noexcept;
