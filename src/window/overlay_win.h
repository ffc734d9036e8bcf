#pragma once

#include <cstdint>

#include "photos/map_buttons.h"
#include "photos/photo_panel.h"
#include "window/gl_resources_win.h"
#include "window/host_data.h"
#include "window/live_windows_win.h"
#include "window/pointer_state.h"

/// Selects which photos are shown: the photos of a city, or the photos of its country.
enum class PhotosOf : bool { Country, City };

/// The flat controls over the globe: buttons and photo panel, the same in all map windows.
class Overlay {
public:
    /// All three arguments must outlive the overlay.
    Overlay(const HostData& host, GlResources& gl, LiveWindows& windows) noexcept
        : host_(host), gl_(gl), windows_(windows) {}

    /// Makes the buttons from "buttons.png". Also makes the images of the photos that the panel
    /// showed before. The context must be current.
    void Create();
    /// Deletes the textures and images of the buttons and of the panel. The panel keeps its photos,
    /// so that Create can show them again.
    void Release() noexcept;

    /// Places the panel and the photo buttons for the size of `window`. Call this function before a
    /// point of the window is compared with the panel or the buttons: the last painted window may
    /// have had another size.
    void FitTo(HWND window) noexcept;
    /// Uploads photos that were loaded while the context could not be made current. The context
    /// must be current now.
    void UploadWaitingPhotos() noexcept { panel_.UploadPhotos(); }
    /// Draws panel and buttons. The projection must map to window pixels, y upward.
    void Draw(const CGeoPoint& pointed, std::int32_t width, std::int32_t height);

    /// Asks the host whether the photos may be shown. Stores the answer, because the add-photo
    /// button is shown only when the host has agreed.
    /// @param signedIndex  index of the city, or the negated index of the nearest city when the
    ///                     pointer is on no city
    /// @return the answer
    bool AskHost(HWND window, std::int32_t signedIndex);
    /// Asks the host and, when the host agrees, shows the photos of a city or of its country. Does
    /// nothing for an index outside the table and for a window that is not live.
    /// @param signedIndex  as for AskHost
    void OfferPhotos(HWND window, std::int32_t signedIndex, PhotosOf whose);
    /// Reads the photos of the panel again, because the host has reported new photos. Offers all
    /// pages again, also the pages that could not be loaded before.
    void OnNewPhotos(HWND window);
    /// Reads the photos again, because the host has handed over a new city table and each photo
    /// stores the index of its city in the table.
    void OnNewTable() noexcept;

    void ShowNextPage(HWND window);
    void ShowPreviousPage(HWND window);

    /// Highlights the button at a point of the window and no other button.
    /// @return the virtual-key code of the button; 0 when there is no button
    std::int32_t HighlightButtonAt(HWND window, const WindowPoint& point) noexcept;
    void ClearHighlights() noexcept;

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
    bool hostAccepted_ = false;  ///< last answer of the host; true: show the add-photo button
};
