#pragma once

#include <cstdint>

inline constexpr std::int32_t kMaxAtmosphereLayers = 20;  ///< shells at the finest detail

/// How finely the globe is drawn. The level of detail changes it; meshes read it at every
/// `Compile`.
struct MeshDetail {
    std::int32_t sphereSlices = 180;     ///< divisions of longitude, a multiple of 4
    std::int32_t sphereStacks = 120;     ///< divisions of latitude, even
    std::int32_t atmosphereLayers = 10;  ///< shells of the atmosphere
};
