#pragma once

#include <cstdint>

inline constexpr double kStartTilt = 40.0;       // degrees: Europe stands upright in the middle
inline constexpr float kStartDistance = -12.2F;  // scene units: the whole globe with some space
inline constexpr float kNearestDistance =
    -4.1F;  // scene units: nearer, the near plane cuts the air
inline constexpr float kFarthestDistance = -28.5F;  // scene units: farther, the far plane cuts it
inline constexpr float kPlanetRadius = 3.0F;        // scene units

/// Where camera and globe stand; one for all windows. Window thread.
struct ViewState {
    double viewTilt = kStartTilt;  ///< degrees [0, 360), about the horizontal axis; between 90 and
                                   ///< 270 the globe is upside down
    double viewSpin = 0.0;         ///< degrees [0, 360), about the globe's own axis
    float cameraDistance = kStartDistance;  ///< scene units, negative; larger is nearer the viewer
    bool showFps = false;
    bool showInfo = false;
    std::uint32_t lastPaintTick = 0;  ///< ms, start of the last frame (and its end afterwards)
};
