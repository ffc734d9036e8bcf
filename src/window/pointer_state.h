#pragma once

#include <cstdint>

#include "render/geo_point.h"

/// The photo on which the button went down.
struct PressedPhoto {
    std::int32_t cityIndex = -1;  ///< -1: on none
    std::int32_t photoNumber = 0;
};

/// What the pointer points at, and what the left button holds. Window thread.
struct PointerState {
    CGeoPoint geoPoint;
    /// Handle of the window that will hear when the pointer leaves it, while geoPoint.valid.
    const void* overWindow = nullptr;
    std::int32_t pressX = 0;  ///< window pixels, where the button went down
    std::int32_t pressY = 0;  ///< from the bottom
    bool anchored = false;    ///< the press grabbed the globe and a drag may turn it
    bool dragged = false;     ///< the pointer moved while the button was held
    PressedPhoto pressedPhoto;
    std::int32_t pressedKey = 0;  ///< virtual-key code of the overlay button held, 0 none

    /// Forgets the press: its button was released, or another window has the capture.
    void ForgetPress() noexcept {
        pressedKey = 0;
        dragged = false;
        anchored = false;
        pressedPhoto = {};
    }
};
