#pragma once

#include <cstdint>

#include "photos/map_buttons.h"
#include "photos/photo_panel.h"
#include "window/gl_resources_win.h"
#include "window/host_data.h"
#include "window/map_window_win.h"
#include "window/pointer_state.h"

/// Whose photos are shown.
enum class PhotosOf : bool { Country, City };

/// The flat controls over the globe: buttons and photo panel, the same in all map windows.
class Overlay {
public:
    /// All three must outlive the overlay.
    Overlay(const HostData& host, GlResources& gl, LiveWindows& windows) noexcept
        : host_(host), gl_(gl), windows_(windows) {}

    /// Makes the buttons from "buttons.png" and loads the photos that the panel showed before. The
    /// context must be current.
    void Create();
    /// Deletes the textures and images of the buttons and of the panel. The panel keeps its place.
    void Release() noexcept;

    /// Places the panel and the photo buttons for the size of `window`. Call it before a point of
    /// the window is compared with them: the last painted window may have had another size.
    void FitTo(HWND window) noexcept;
    /// Uploads photos that were loaded while the context could not be made current. The context
    /// must be current now.
    void UploadWaitingPhotos() noexcept { panel_.UploadPhotos(); }
    /// Draws panel and buttons. Needs the flat projection in window pixels.
    void Draw(const CGeoPoint& pointed, std::int32_t width, std::int32_t height);

    /// Asks the host whether the photos may be shown, and keeps the answer for the add-photo
    /// button.
    /// @return the answer
    bool AskHost(HWND window, std::int32_t signedIndex);
    /// Asks the host and, when it consents, shows the photos of the record's country or of the city
    /// itself. Does nothing for an index outside the table and for a window that is not live (any
    /// more).
    void OfferPhotos(HWND window, std::int32_t signedIndex, PhotosOf whose);
    /// Reads the photos of the panel again after the host has reported new ones. Pages of which no
    /// photo could be loaded are offered again.
    void TakeNewPhotos(HWND window);
    /// Reads the photos again after the host has handed over a new city table, because each photo
    /// stores the index of its city in the table.
    void TakeNewTable() noexcept;

    void ShowNextPage(HWND window);
    void ShowPreviousPage(HWND window);

    /// Highlights the button at a point of the window and no other button.
    /// @return its virtual-key code, 0 for none
    std::int32_t LightButtonAt(HWND window, const WindowPoint& point) noexcept;
    void PutOutButtons() noexcept;

    const PhotoPanel& Panel() const noexcept { return panel_; }

private:
    PanelArea AreaOf(std::int32_t width, std::int32_t height) const noexcept;
    ButtonLayout ButtonLayoutOf(std::int32_t width, std::int32_t height) const noexcept;
    void UploadNowOrLater(const MapWindow& entry);
    void ShowPhotos(HWND window, WideString country, WideString city);
    void ReloadPhotos(HWND window);

    const HostData& host_;
    GlResources& gl_;
    LiveWindows& windows_;
    MapButtons buttons_;
    PhotoPanel panel_;
    bool hostAccepted_ = false;  ///< the last answer of the host; shows the add-photo button
};
