#pragma once
// Finds the point of the globe under a pixel of the window. Calls no function of Windows.

#include <cstdint>
#include <optional>

#include "render/geo_point.h"
#include "render/scene.h"

/// Finds the point of `sphere` nearest to the viewer under a window point.
/// @param x, y          window pixels, y from the bottom, in the viewport of the scene
/// @param withRotation  true: the result is in the globe's frame; false: in the frame of a globe
///                      that does not turn with the view
/// @return the point (w = 1); empty when (x, y) is beside the globe
std::optional<CVector4> PickGlobe(const CScene& scene, const CSphere& sphere, double x, double y,
                                  bool withRotation) noexcept;

/// Stores (x, y) as the pointer position and the globe point under it as the pointed place. When
/// (x, y) is beside the globe, keeps the pointed place and computes its angles and its projection
/// again.
/// @return whether (x, y) is on the globe
bool RepickAt(CGeoPoint& geoPoint, const CScene& scene, const CSphere& sphere, std::int32_t x,
              std::int32_t y) noexcept;
