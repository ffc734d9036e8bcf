#pragma once
// Computes the mesh of the globe. The mesh consists of rings of latitude and the bands between
// them. Each ring is divided into four quarters of longitude, like the texture tiles. The normals
// are bent towards or away from the Sun, so that the line between day and night is sharp.

#include <cstdint>
#include <vector>

#include "math/vector4.h"
#include "render/mesh_detail.h"

/// The values of one vertex for OpenGL, except the texture coordinates.
struct MeshVertex {
    float normal[3];    ///< unit length
    float position[3];  ///< scene units, in the planet's frame (axes: see math/geographic.h)
};

inline constexpr std::int32_t kMeshQuarters = 4;

enum class Hemisphere { North, South };

/// The mesh that CPlanet::BuildMesh sends to OpenGL. The constructor computes all sines and
/// cosines, so that FillRow needs no trigonometry.
class DayNightMesh {
public:
    /// @param detail  sphereSlices should be a multiple of 4, sphereStacks an even number; a
    ///                remainder is ignored. With fewer than 4 slices or 2 stacks the mesh has no
    ///                rings
    /// @param radius  radius of the globe, scene units
    /// @param sun     unit vector from the globe's centre to the Sun, in the planet's frame
    /// Throws std::bad_alloc.
    DayNightMesh(const MeshDetail& detail, float radius, const CVector4& sun);

    /// Number of bands between the equator and a pole; 0 for a mesh without rings.
    std::int32_t BandsPerHemisphere() const noexcept { return bands_; }
    /// Number of steps of longitude in one quarter.
    std::int32_t SegmentsPerQuarter() const noexcept { return segments_; }

    /// Computes one quarter of a ring, from its eastern edge to its western edge.
    /// @param quarter  0..3, counted westwards from longitude 180
    /// @param ring     from 0 at the equator to `BandsPerHemisphere` at the pole
    /// @param row      out: must have the size `SegmentsPerQuarter` + 1
    void FillRow(Hemisphere hemisphere, std::int32_t quarter, std::int32_t ring,
                 std::vector<MeshVertex>& row) const noexcept;

    /// Texture coordinate s of vertex `i` of a row: 1 at the eastern edge, 0 at the western edge.
    float TextureS(std::int32_t i) const noexcept { return textureS_[static_cast<std::size_t>(i)]; }
    /// Texture coordinate t of a ring: 0 at the southern edge of its tile, 1 at the northern edge.
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
    /// Unit vector to the Sun, in single precision: OpenGL gets floats, and double precision would
    /// cost time without a visible difference.
    struct {
        float x, y, z;
    } sun_;
    /// For each meridian, westwards from longitude 180: x (cosine) and z (sine) of its point on the
    /// equator, in globe radii. The first entry is repeated at the end.
    std::vector<Direction> meridians_;
    /// For each ring, from the equator to the pole: distance from the axis (cosine) and from the
    /// plane of the equator (sine), in globe radii.
    std::vector<Direction> parallels_;
    std::vector<float> textureS_;
};
