#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "base/handles_win.h"
#include "base/window_timer_win.h"
#include "cities/city_clock_win.h"
#include "cities/city_pick.h"
#include "globe/planet.h"
#include "horivo_host.h"
#include "image/gdiplus_session_win.h"
#include "photos/map_buttons.h"
#include "photos/photo_panel.h"
#include "render/extension_flags.h"
#include "render/gl_context_win.h"
#include "render/gl_font.h"
#include "render/lamp.h"
#include "render/scene.h"
#include "window/flight_path.h"
#include "window/host_data.h"
#include "window/level_of_detail.h"
#include "window/map_settings.h"
#include "window/map_window_win.h"
#include "window/pointer_state.h"
#include "window/shared_picture_win.h"
#include "window/view_state.h"

/// A flight under way. Window thread.
struct FlightState {
    FlightPath path;
    WindowTimer timer;  ///< drives it; runs as long as the flight
};

/// The pointer resting on a city. Window thread.
struct HoverState {
    std::int32_t signedIndex = 0;  ///< of the city; negative when it is only the nearest
    std::int32_t x = 0;            ///< window pixels
    std::int32_t y = 0;            ///< from the bottom
    WindowTimer timer;             ///< runs while the rest is waited for
};

/// Buttons, photos and labels over the globe. Window thread; textures as in DrawingState.
struct OverlayState {
    MapButtons buttons;
    PhotoPanel panel;
    bool hostAccepted = false;  ///< the host's last answer; shows the add-photo button
    /// Cities within reach of the pointed place, of the frame under way.
    std::array<CityRecord*, kMaxCitiesNear> nearCities = {};
    TimeZoneTable zones;  ///< lives until unload: city records point into it
    SystemCityClock clock{zones};
};

/// The context and what is drawn with it. Window thread; empty between the last WM_DESTROY and the
/// next WM_CREATE, but for the scene's own view and the sizes.
struct DrawingState {
    ExtensionFlags extensions;
    CGLContext context;
    CGLFont font;
    CScene scene;
    CLamp* lamp = nullptr;      ///< owned by the scene
    CPlanet* planet = nullptr;  ///< owned by the scene
    GlobeMeasure globe;
    SYSTEMTIME sceneTime = {};  ///< UTC instant of the Sun
    UniqueCursor handCursor;    ///< loaded and released with the windows; no step shows it

    explicit DrawingState(std::uint32_t& lastSysError) noexcept
        : context(extensions, lastSysError) {}
};

/// All mutable data of the map that exists once per process. Exports and window code reach it
/// through Map(); what they call gets its part as a parameter. Three statics stand by themselves:
/// the common folder and the switches, which host services share, and the count of GDI+'s users,
/// which outlive the map. The C++ runtime's own are in stack_guard and exception_memory.
struct MapState {
    HostData host;                            ///< window thread
    ViewState view;                           ///< window thread
    PointerState pointer;                     ///< window thread
    DetailState detail;                       ///< window thread
    MapSettings settings;                     ///< window thread
    FlightState flight;                       ///< window thread
    HoverState hover;                         ///< window thread
    OverlayState overlay;                     ///< window thread
    WindowTimer repeat;                       ///< of a held overlay button; window thread
    SharedPicture textures;                   ///< see its members
    DrawingState drawing{host.lastSysError};  ///< window thread
    LiveWindows windows;                      ///< window thread
    std::unique_ptr<GdiplusSession> gdiplus;  ///< between InitMap and FreeMap; window thread
    bool errorBoxShown = false;  ///< "Can not load textures." is on screen; window thread
};

/// The one state, made at its first use.
MapState& Map();

/// Gives the state back when the library is unloaded while the process lives on. Calls neither GL
/// nor GDI+: both must not be called from there, and both are empty after the last window and
/// FreeMap.
void DestroyMapState() noexcept;

/// The module that this code is in.
HMODULE LibraryModule() noexcept;
