#pragma once

#include <array>
#include <cstdint>

#include "render/gl_object.h"

class CSphere;

/// What `MeasureGlobe` finds about the limb, the visible edge of the globe. The globe is measured
/// without the rotation of the scene, so that the equator is a horizontal line.
struct GlobeMeasure {
    std::int32_t diameter = 0;       ///< width of the globe in the window, pixels
    std::int32_t longitudeSpan = 0;  ///< degrees between the two limbs on the equator
    double limbDepth = 0.0;  ///< z of the limb in camera space; visible points have a larger z
};

/// Root of the scene, with viewport, perspective and global GL state. Its own position and rotation
/// are the camera transform.
class CScene : public CGLObject {
public:
    void Init() override;
    void Compile() override;
    void Draw() override;
    /// Sets viewport and projection. @param width, height  pixels, both at least 1
    virtual void Resize(std::int32_t width, std::int32_t height);

    /// Computes the projection matrix that `Resize` sets, column-major, without calling GL.
    void GetProjectionMatrix(std::array<double, 16>& out) const noexcept;

    /// Projects a point to normalized device coordinates, [-1, 1] inside the view; w = 1.
    /// Deliberate: applies only the translation of the camera; the caller must rotate the point
    /// first.
    CVector4 ProjectToNormalized(const CVector4& point) const noexcept;

    /// Projects a point to window pixels, y upward. As for ProjectToNormalized, the caller must
    /// rotate the point first. z is mapped to [zNear, zFar], not to [0, 1].
    CVector4 ProjectToWindow(const CVector4& point) const noexcept;

    /// Finds the limb of `sphere` along the equator, as the camera sees the sphere without
    /// rotation.
    GlobeMeasure MeasureGlobe(const CSphere& sphere) const noexcept;

    std::int32_t width = 1;   ///< width of the viewport, pixels
    std::int32_t height = 1;  ///< height of the viewport, pixels
    double zNear = 1.0;       ///< from the camera to the near plane, scene units
    double zFar = 30.0;       ///< from the camera to the far plane, scene units
    double fovY = 30.0;       ///< vertical field of view, degrees
};
