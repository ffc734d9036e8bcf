#pragma once
// The one OpenGL context of all map windows and everything in it.

#include <cstdint>

#include "base/handles_win.h"
#include "cities/city_table.h"
#include "globe/planet.h"
#include "render/extension_flags.h"
#include "render/gl_context_win.h"
#include "render/gl_font.h"
#include "render/lamp.h"
#include "render/scene.h"
#include "window/map_window_win.h"
#include "window/shared_picture_win.h"
#include "window/view_state.h"

/// The OpenGL context and its contents: font, scene, lamp and planet. The contents are made for a
/// window and are released before the context is destroyed. Without a live window, the context and
/// its contents are empty; only the transform and the size of the scene are kept.
class GlResources {
public:
    /// @param lastSysError  out: the Windows error when the creation of the context fails; must
    ///                      outlive this object
    explicit GlResources(std::uint32_t& lastSysError) noexcept
        : context_(extensions_, lastSysError) {}

    /// Creates the context for the DC of the window, makes the lists of the font, and stores the
    /// texture limit of OpenGL in `picture`. @return HORIVO_OK or an OpenGL set-up code of
    /// horivo_map.h
    std::uint32_t CreateContext(const MapWindow& entry, SharedPicture& picture);
    void DestroyContext() noexcept { context_.Destroy(); }
    CGLContext& Context() noexcept { return context_; }
    const CGLContext& Context() const noexcept { return context_; }
    /// Makes the context current on `dc`. When that fails, makes no context current. Call this
    /// function before something in the context is deleted. Otherwise OpenGL could delete objects
    /// with the same names in the context of another part of the program.
    void MakeCurrentOrNone(HDC dc) noexcept;

    /// Adds the lamp and the planet to the scene. Throws std::bad_alloc. All arguments must outlive
    /// the planet, which reads them again at each Compile.
    void Populate(const MeshDetail& mesh, const std::int32_t& texCompression,
                  const CityTable& cities);
    /// Sets the GL state that stays the same for all frames. Call this function after Populate.
    void InitScene() { scene_.Init(); }
    /// Deletes lamp and planet with their textures and lists. The context should be current.
    /// Without a current context, textures and lists are freed when the context is destroyed.
    void ReleaseScene() noexcept;
    void ReleaseFont() noexcept { font_.Release(); }

    /// Records the display lists again. The new lists show day and night at the time of the last
    /// ReadTime.
    void Compile() { scene_.Compile(); }
    /// Reads the current time from the system clock.
    void ReadTime() noexcept { GetSystemTime(&sceneTime_); }
    /// Sets viewport and projection, records the display lists again and measures the globe.
    void Resize(std::int32_t width, std::int32_t height);
    /// The part of Resize that needs no context: stores the size and measures the globe.
    void ResizeWithoutContext(std::int32_t width, std::int32_t height) noexcept;
    /// Measures the edge of the globe. Call this function after the size of the scene or the
    /// distance of the camera has changed.
    void Measure() noexcept;
    /// Stores the client size of `window` as the size of the scene, for picking and projecting.
    /// Calls no GL function. @return false while the window has no size
    bool UseSizeOf(HWND window) noexcept { return ClientSize(window, scene_.width, scene_.height); }
    /// Calls UseSizeOf. @return whether a place can be picked in `window`: the window has a size
    /// and there is a planet
    bool CanPickIn(HWND window) noexcept { return UseSizeOf(window) && planet_ != nullptr; }
    /// Moves the lamp to a point above a place of the globe. @param place  in the globe's frame
    void PlaceLampOver(const CVector4& place) noexcept;

    CScene& Scene() noexcept { return scene_; }
    const CScene& Scene() const noexcept { return scene_; }
    /// Null while there is no live window.
    CPlanet* Planet() const noexcept { return planet_; }
    const CGLFont& Font() const noexcept { return font_; }
    /// The result of the last Measure.
    const GlobeMeasure& Globe() const noexcept { return globe_; }

    /// Loads the hand cursor, unless the cursor is loaded already. The cursor is released with the
    /// last window. The map never shows it.
    void LoadHandCursor() noexcept;
    void ReleaseHandCursor() noexcept { handCursor_.reset(); }

private:
    std::unique_ptr<CPlanet> MakePlanet(const PlanetInputs& inputs) const;

    ExtensionFlags extensions_;
    CGLContext context_;
    CGLFont font_;
    CScene scene_;
    CLamp* lamp_ = nullptr;      ///< owned by the scene
    CPlanet* planet_ = nullptr;  ///< owned by the scene
    GlobeMeasure globe_;
    SYSTEMTIME sceneTime_ = {};  ///< time of the last ReadTime, UTC
    UniqueCursor handCursor_;
};
