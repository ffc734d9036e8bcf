#pragma once

inline constexpr double kStartTilt = 40.0;       // degrees: shows Europe upright in the middle
inline constexpr float kStartDistance = -12.2F;  // scene units: shows the whole globe
inline constexpr float kPlanetRadius = 3.0F;     // scene units

/// Tilt and spin, degrees in [0, 360).
struct ViewAngles {
    double tilt = 0.0;  ///< about the horizontal axis; between 90 and 270 the globe is upside down
    double spin = 0.0;  ///< about the globe's own axis
};

/// Position of the camera, rotation of the globe, and which status lines are shown. All windows
/// have the same view.
class ViewState {
public:
    const ViewAngles& Angles() const noexcept { return angles_; }
    void TurnTo(const ViewAngles& angles) noexcept { angles_ = angles; }

    /// Scene units, negative. A larger number is nearer to the globe.
    float CameraDistance() const noexcept { return cameraDistance_; }
    void MoveTo(float cameraDistance) noexcept { cameraDistance_ = cameraDistance; }

    bool ShowsFrameRate() const noexcept { return showFps_; }
    void ToggleFrameRate() noexcept { showFps_ = !showFps_; }
    bool ShowsInformation() const noexcept { return showInfo_; }
    void ToggleInformation() noexcept { showInfo_ = !showInfo_; }

private:
    ViewAngles angles_{kStartTilt, 0.0};
    float cameraDistance_ = kStartDistance;
    bool showFps_ = false;
    bool showInfo_ = false;
};
