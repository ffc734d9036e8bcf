#pragma once

#include <cstdint>

/// Number of shells of the atmosphere at the finest detail.
inline constexpr std::int32_t kMaxAtmosphereLayers = 20;

/// How finely the globe is drawn. LevelOfDetail sets these values; the meshes read them at every
/// `Compile`.
struct MeshDetail {
    std::int32_t sphereSlices = 180;     ///< divisions of longitude, a multiple of 4
    std::int32_t sphereStacks = 120;     ///< divisions of latitude, even
    std::int32_t atmosphereLayers = 10;  ///< number of shells of the atmosphere
};
