#pragma once

#include <array>
#include <cstdint>

#include "render/gl_object.h"

class CSphere;

/// What `MeasureGlobe` finds about the globe's edge on screen.
struct GlobeMeasure {
    std::int32_t diameter = 0;       ///< pixels along the equator
    std::int32_t longitudeSpan = 0;  ///< width of the visible cap along the equator, degrees
    double limbDepth = 0.0;          ///< z of the edge in camera space; nearer points are in front
};

/// Root of the scene: viewport, perspective, global GL state and camera. Its own position and
/// rotation are the camera transform.
class CScene : public CGLObject {
public:
    void Init() override;
    void Compile() override;
    void Draw() override;
    /// Sets viewport and projection. @param width, height  pixels, both at least 1
    virtual void Resize(std::int32_t width, std::int32_t height);

    /// The matrix that `Resize` gives to GL, column-major, computed without GL.
    void GetProjectionMatrix(std::array<double, 16>& out) const noexcept;

    /// Projects a point into [-1, 1] each way; w = 1.
    /// Deliberate: only the camera's translation is applied; callers rotate the point first.
    CVector4 ProjectToNormalized(const CVector4& point) const noexcept;

    /// Projects a point to window pixels, y upward. z is mapped into [zNear, zFar], not [0, 1].
    CVector4 ProjectToWindow(const CVector4& point) const noexcept;

    /// Finds the visible edge of `sphere` on the equator; ends for every input.
    GlobeMeasure MeasureGlobe(const CSphere& sphere) const noexcept;

    std::int32_t width = 1;   ///< viewport, pixels
    std::int32_t height = 1;  ///< viewport, pixels
    double zNear = 1.0;
    double zFar = 30.0;
    double fovY = 30.0;  ///< degrees
};
