#include "globe/day_night_mesh.h"

#include <cmath>

#include "math/angles.h"

namespace {

constexpr double kHalfPi = 1.5707963267948966;

/// Factor by which the part of a normal along the line to the Sun is enlarged before the normal
/// gets the length 1. With 10, the transition from day to night is a tenth as wide as with the
/// normals of a plain sphere. The value was chosen by eye.
constexpr float kSunStretch = 10.0F;

}  // namespace

DayNightMesh::DayNightMesh(const MeshDetail& detail, float radius, const CVector4& sun)
    : radius_(radius),
      sun_{static_cast<float>(sun.x), static_cast<float>(sun.y), static_cast<float>(sun.z)} {
    const std::int32_t slices = detail.sphereSlices;
    const std::int32_t bands = detail.sphereStacks / 2;
    if (slices < kMeshQuarters || bands < 1) return;
    bands_ = bands;
    segments_ = slices / kMeshQuarters;

    const auto directionOf = [](double angle) {
        return Direction{static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
    };
    meridians_.reserve(static_cast<std::size_t>(slices) + 1);
    for (std::int32_t k = 0; k < slices; ++k) {
        meridians_.push_back(directionOf(2.0 * kPi * k / slices - kHalfPi));
    }
    meridians_.push_back(meridians_.front());  // closes the ring at longitude 180
    parallels_.reserve(static_cast<std::size_t>(bands) + 1);
    for (std::int32_t j = 0; j <= bands; ++j) {
        parallels_.push_back(directionOf(j * kPi / (2.0 * bands)));
    }
    textureS_.reserve(static_cast<std::size_t>(segments_) + 1);
    for (std::int32_t i = 0; i <= segments_; ++i) {
        textureS_.push_back(static_cast<float>(segments_ - i) / static_cast<float>(segments_));
    }
}

void DayNightMesh::FillRow(Hemisphere hemisphere, std::int32_t quarter, std::int32_t ring,
                           std::vector<MeshVertex>& row) const noexcept {
    const Direction& parallel = parallels_[static_cast<std::size_t>(ring)];
    const float y = hemisphere == Hemisphere::North ? parallel.sine : -parallel.sine;
    const auto* meridian =
        &meridians_[static_cast<std::size_t>(quarter) * static_cast<std::size_t>(segments_)];
    for (std::size_t i = 0; i <= static_cast<std::size_t>(segments_); ++i, ++meridian) {
        const float x = parallel.cosine * meridian->cosine;
        const float z = parallel.cosine * meridian->sine;
        // Stretch the normal along the line to the Sun: add a multiple of `sun_`. Because
        // kSunStretch is above 1, the addition never makes the normal shorter, so its length cannot
        // become 0.
        const float towardsSun = x * sun_.x + y * sun_.y + z * sun_.z;
        const float pull = (kSunStretch - 1.0F) * towardsSun;
        const float nx = x + pull * sun_.x;
        const float ny = y + pull * sun_.y;
        const float nz = z + pull * sun_.z;
        const float scale = 1.0F / std::sqrt(nx * nx + ny * ny + nz * nz);
        row[i] = {{nx * scale, ny * scale, nz * scale}, {radius_ * x, radius_ * y, radius_ * z}};
    }
}
