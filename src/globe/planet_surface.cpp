// Draws the surface of the globe: sends the mesh to OpenGL, one tile after the other.
#include <vector>

#include "globe/day_night_mesh.h"
#include "globe/planet.h"
#include "math/geographic.h"

namespace {

/// The quad strip of one tile between two neighbouring rings of vertices.
struct Strip {
    const std::vector<MeshVertex>& first;  ///< the ring that gives the first vertex of each pair
    const std::vector<MeshVertex>& second;
    float firstT, secondT;  ///< texture coordinate t of each ring
};

void SendVertex(const MeshVertex& vertex, bool textured, float s, float t) {
    glNormal3f(vertex.normal[0], vertex.normal[1], vertex.normal[2]);
    if (textured) glTexCoord2f(s, t);
    glVertex3f(vertex.position[0], vertex.position[1], vertex.position[2]);
}

void SendStrip(const DayNightMesh& mesh, const Strip& strip, bool textured) {
    glBegin(GL_QUAD_STRIP);
    for (std::int32_t i = 0; i <= mesh.SegmentsPerQuarter(); ++i) {
        const auto at = static_cast<std::size_t>(i);
        const float s = mesh.TextureS(i);
        SendVertex(strip.first[at], textured, s, strip.firstT);
        SendVertex(strip.second[at], textured, s, strip.secondT);
    }
    glEnd();
}

/// The vertices of the two rings that bound the current band.
struct RowPair {
    std::vector<MeshVertex> nearEquator;
    std::vector<MeshVertex> nearPole;
};

/// Sends the bands of one tile, from the equator to the pole. Computes each ring once, because the
/// two bands beside a ring share its vertices.
/// @param rows  buffers for the vertices; each must have the size of a row of `mesh`
void SendTile(const DayNightMesh& mesh, Hemisphere hemisphere, std::int32_t quarter, RowPair& rows,
              bool textured) {
    mesh.FillRow(hemisphere, quarter, 0, rows.nearEquator);
    for (std::int32_t ring = 1; ring <= mesh.BandsPerHemisphere(); ++ring) {
        mesh.FillRow(hemisphere, quarter, ring, rows.nearPole);
        const float lowT = mesh.TextureT(hemisphere, ring - 1);
        const float highT = mesh.TextureT(hemisphere, ring);
        // The southern ring must come first, so that the quads face outward.
        if (hemisphere == Hemisphere::North) {
            SendStrip(mesh, {rows.nearEquator, rows.nearPole, lowT, highT}, textured);
        } else {
            SendStrip(mesh, {rows.nearPole, rows.nearEquator, highT, lowT}, textured);
        }
        rows.nearEquator.swap(rows.nearPole);
    }
}

}  // namespace

void CPlanet::BuildMesh() const {
    const CVector4 sun = LatLonToPoint(sunDeclination, sunLongitude, 1.0);
    const DayNightMesh mesh(Detail(), radius, sun);
    const auto rowSize = static_cast<std::size_t>(mesh.SegmentsPerQuarter()) + 1;
    RowPair rows{std::vector<MeshVertex>(rowSize), std::vector<MeshVertex>(rowSize)};

    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    for (const Hemisphere hemisphere : {Hemisphere::North, Hemisphere::South}) {
        // The quarters of the mesh are counted westwards, the tiles of a row eastwards.
        const int eastern = hemisphere == Hemisphere::North ? kTileCount - 1 : kTileColumns - 1;
        for (std::int32_t quarter = 0; quarter < kMeshQuarters; ++quarter) {
            BindTile(eastern - quarter);
            if (mesh.BandsPerHemisphere() > 0) {
                SendTile(mesh, hemisphere, quarter, rows, HasTexture());
            }
        }
    }
    if (HasTexture()) glDisable(GL_TEXTURE_2D);
}

void CPlanet::BindTile(int tile) const {
    if (textureNames[tile] == 0) return;
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, textureNames[tile]);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
}
