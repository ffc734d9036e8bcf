#pragma once
// The arithmetic of the globe's mesh: rings of latitude cut into quarters of longitude, one quarter
// for each texture tile, with normals bent towards and away from the Sun.

#include <cstdint>
#include <vector>

#include "math/vector4.h"
#include "render/mesh_detail.h"

/// What OpenGL gets for one vertex, texture coordinate apart.
struct MeshVertex {
    float normal[3];    ///< unit length
    float position[3];  ///< scene units, in the planet's frame
};

inline constexpr std::int32_t kMeshQuarters = 4;

enum class Hemisphere { North, South };

/// Trigonometry of one mesh: made once for a compile, then read ring by ring.
class DayNightMesh {
public:
    /// @param detail  slices are meant to be a multiple of 4, stacks even; a remainder is left out.
    ///                Fewer than 4 slices or 2 stacks make a mesh without rings
    /// @param sun     unit vector from the globe's centre to the Sun, in the planet's frame
    /// Throws std::bad_alloc.
    DayNightMesh(const MeshDetail& detail, float radius, const CVector4& sun);

    /// Bands between equator and pole; 0 for a mesh without rings.
    std::int32_t BandsPerHemisphere() const noexcept { return bands_; }
    /// Steps of longitude in one quarter.
    std::int32_t SegmentsPerQuarter() const noexcept { return segments_; }

    /// Fills in one quarter of a ring, from its eastern edge to its western one.
    /// @param quarter  0..3, counted westwards from longitude 180
    /// @param ring     0 at the equator to `BandsPerHemisphere` at the pole
    /// @param row      gets `SegmentsPerQuarter` + 1 vertices
    void FillRow(Hemisphere hemisphere, std::int32_t quarter, std::int32_t ring,
                 std::vector<MeshVertex>& row) const noexcept;

    /// Texture coordinate s of vertex `i` of a row: 1 at the eastern edge, 0 at the western one.
    float TextureS(std::int32_t i) const noexcept { return textureS_[static_cast<std::size_t>(i)]; }
    /// Texture coordinate t of a ring: 0 at the southern edge of its tile, 1 at the northern one.
    float TextureT(Hemisphere hemisphere, std::int32_t ring) const noexcept {
        const std::int32_t fromSouth = hemisphere == Hemisphere::North ? ring : bands_ - ring;
        return static_cast<float>(fromSouth) / static_cast<float>(bands_);
    }

private:
    /// A point of the unit circle.
    struct Direction {
        float cosine, sine;
    };

    std::int32_t bands_ = 0;
    std::int32_t segments_ = 0;
    float radius_;
    /// Single precision is what OpenGL gets; twice that would cost time and show nowhere.
    struct {
        float x, y, z;
    } sun_;
    /// x and z on the equator, westwards from longitude 180; the first once more at the end.
    std::vector<Direction> meridians_;
    /// Distances from the axis and from the equator's plane, equator to pole.
    std::vector<Direction> parallels_;
    std::vector<float> textureS_;
};
