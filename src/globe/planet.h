#pragma once

#include <array>
#include <cstdint>

#include "base/windows_types.h"
#include "cities/city_table.h"
#include "globe/atmosphere_shell.h"
#include "image/tile_grid.h"
#include "render/extension_flags.h"
#include "render/sphere.h"

/// What the planet reads from outside; everything referred to must outlive it. Window thread.
struct PlanetInputs {
    const MeshDetail& detail;
    const ExtensionFlags& extensions;
    const std::int32_t& texCompression;  ///< not 0: store tiles compressed where GL can
    const SYSTEMTIME& sceneTime;         ///< UTC instant of the Sun, read at every `Compile`
    const CityTable& cities;
};

/// The Earth: eight texture tiles on a latitude/longitude mesh with day and night, the atmosphere
/// around it and the cities on it. Two display lists, the lit body and the city points, and one for
/// each shell of the atmosphere, which the body list calls. All list names are addresses inside
/// this object.
class CPlanet : public CSphere {
public:
    explicit CPlanet(const PlanetInputs& inputs) noexcept
        : CSphere(inputs.detail), inputs_(inputs) {}
    /// Deletes textures and lists; the context must be current.
    ~CPlanet() override;

    /// Records body and cities, and those shells whose lists are missing or out of date; this is
    /// what moves the day/night line.
    void Compile() override;
    void Draw() override;

    /// Uploads a tile set, or frees the textures.
    /// @param tiles  eight pointers (column + 4 x row, from the south-west; null or empty tiles are
    ///               skipped), or null
    /// @return 0 or the GL error of the upload that failed; the planet is then untextured
    std::uint32_t SetTexture(const CGLTexture* const* tiles);
    bool HasTexture() const noexcept { return textureNames[0] != 0; }

    /// Issues the textured mesh with normals bent towards the Sun.
    void BuildMesh() const;
    /// Sun, atmosphere and surface: the content of the body list.
    void RenderBody();
    /// The city points: the content of the city list.
    void RenderCities() const;
    /// Makes GL_LIGHT0 the Sun of the scene time.
    void PlaceSunLight();
    /// The translucent shells around the limb.
    void RenderAtmosphere() const;

    GLuint cityListId = 0;
    double sunDeclination = 0.0;  ///< degrees
    double sunLongitude = 0.0;    ///< degrees east of the Sun, kept as -360 - hour angle
    GLuint textureNames[kTileCount] = {};
    std::uint32_t tileWidth = 0;   ///< buffer of tile 0, pixels; 0 when there is no tile set
    std::uint32_t tileHeight = 0;  ///< buffer of tile 0, pixels; 0 when there is no tile set

private:
    /// Shells that are drawn: one while there is no texture.
    std::int32_t AtmosphereLayers() const noexcept;
    /// @param layer  from 0, innermost first
    ShellSphere SphereOfLayer(std::int32_t layer) const noexcept;
    /// Records the lists of the drawn shells where they are missing or out of date, and deletes the
    /// others.
    void RecordAtmosphere();
    void DrawLayer(std::int32_t layer) const;
    static void SetSunColours();
    void BindTile(int tile) const;
    std::uint32_t UploadTiles(const CGLTexture* const* tiles);
    std::uint32_t UploadTile(GLuint name, const CGLTexture& tile) const;
    void FreeTextures();
    void ForgetTextures() noexcept;

    PlanetInputs inputs_;
    std::array<AtmosphereShell, kMaxAtmosphereLayers> shells_;
};
