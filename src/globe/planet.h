#pragma once

#include <array>
#include <cstdint>

#include "base/windows_types.h"
#include "cities/city_table.h"
#include "globe/atmosphere_shell.h"
#include "image/tile_grid.h"
#include "render/extension_flags.h"
#include "render/sphere.h"

/// What the planet reads. The objects referred to must outlive the planet. Window thread.
struct PlanetInputs {
    const MeshDetail& detail;
    const ExtensionFlags& extensions;
    const std::int32_t& texCompression;  ///< not 0: compress the tiles if OpenGL can
    const SYSTEMTIME& sceneTime;  ///< UTC, gives the place of the Sun; read at every `Compile`
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

    /// Uploads a set of tiles, or deletes the textures.
    /// @param tiles  eight pointers, the tile of a column and row at column + 4 x row, counted from
    ///               the south-west; null or empty tiles are left out. Null: deletes the textures
    /// @return 0, or the GL error of an upload that failed; the planet then has no textures
    std::uint32_t SetTexture(const CGLTexture* const* tiles);
    bool HasTexture() const noexcept { return textureNames[0] != 0; }

    /// Draws the textured mesh, whose normals are bent towards the Sun.
    void BuildMesh() const;
    /// Sets the Sun and draws atmosphere and surface: the content of the body list.
    void RenderBody();
    /// Draws the city points: the content of the city list.
    void RenderCities() const;
    /// Points GL_LIGHT0 from the place of the Sun at the scene time.
    void PlaceSunLight();
    /// Draws the translucent shells of the atmosphere.
    void RenderAtmosphere() const;

    GLuint cityListId = 0;
    double sunDeclination = 0.0;  ///< degrees
    double sunLongitude = 0.0;  ///< of the place below the Sun, degrees east, as -360 - hour angle
    GLuint textureNames[kTileCount] = {};
    std::uint32_t tileWidth = 0;   ///< of the buffer of tile 0, pixels; 0 without tiles
    std::uint32_t tileHeight = 0;  ///< of the buffer of tile 0, pixels; 0 without tiles

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
