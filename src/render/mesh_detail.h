#pragma once

#include <cstdint>

inline constexpr std::int32_t kMaxAtmosphereLayers = 20;  ///< number of shells at finest detail

/// How finely the globe is drawn. The level of detail sets these values; the meshes read them at
/// every `Compile`.
struct MeshDetail {
    std::int32_t sphereSlices = 180;     ///< divisions of longitude, a multiple of 4
    std::int32_t sphereStacks = 120;     ///< divisions of latitude, even
    std::int32_t atmosphereLayers = 10;  ///< number of shells
};
