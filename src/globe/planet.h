#pragma once

#include <array>
#include <cstdint>

#include "base/windows_types.h"
#include "cities/city_table.h"
#include "globe/atmosphere_shell.h"
#include "image/tile_grid.h"
#include "render/extension_flags.h"
#include "render/sphere.h"

/// The data that the planet reads. The referenced objects must outlive the planet. Window thread.
struct PlanetInputs {
    const MeshDetail& detail;
    const ExtensionFlags& extensions;
    const std::int32_t& texCompression;  ///< not 0: compress the tiles if OpenGL supports this
    const SYSTEMTIME& sceneTime;  ///< UTC, for the position of the Sun; read at every `Compile`
    const CityTable& cities;
};

/// The Earth: eight texture tiles on a latitude/longitude mesh with day and night, the atmosphere
/// around the globe and the cities on the globe. The planet has one display list for the body (the
/// surface and the atmosphere), one for the city points, and one for each shell of the atmosphere.
/// The body list calls the lists of the shells. All list names come from addresses inside this
/// object (see ListName).
class CPlanet : public CSphere {
public:
    explicit CPlanet(const PlanetInputs& inputs) noexcept
        : CSphere(inputs.detail), inputs_(inputs) {}
    /// Deletes the textures and the display lists. The context must be current.
    ~CPlanet() override;

    /// Records the display lists of the body and of the cities, with the Sun at its position at the
    /// scene time. Also records the display list of each shell to be drawn that has no list or
    /// whose size or resolution has changed.
    void Compile() override;
    void Draw() override;

    /// Uploads a set of tiles, or deletes the textures.
    /// @param tiles  eight pointers; the index of a tile is column + 4 x row, counted from the
    ///               south-west. Null or empty tiles are not uploaded. If `tiles` itself is
    ///               null, the textures are deleted
    /// @return 0, or the GL error of an upload that failed; the planet then has no textures
    std::uint32_t SetTexture(const CGLTexture* const* tiles);
    bool HasTexture() const noexcept { return textureNames[0] != 0; }

    /// Draws the textured mesh (see DayNightMesh).
    void BuildMesh() const;
    /// Places the light of the Sun and draws the atmosphere and, if there are textures, the
    /// surface. The body list records these commands.
    void RenderBody();
    /// Draws the city points. The city list records these commands.
    void RenderCities() const;
    /// Computes the position of the Sun at the scene time and sets GL_LIGHT0 to shine from there.
    void PlaceSunLight();
    /// Draws the translucent shells of the atmosphere.
    void RenderAtmosphere() const;

    GLuint cityListId = 0;
    double sunDeclination = 0.0;  ///< degrees
    /// Longitude where the Sun is in the zenith, degrees east: -360 - hour angle.
    double sunLongitude = 0.0;
    GLuint textureNames[kTileCount] = {};
    std::uint32_t tileWidth = 0;   ///< width of the buffer of tile 0, pixels; 0 without tiles
    std::uint32_t tileHeight = 0;  ///< height of the buffer of tile 0, pixels; 0 without tiles

private:
    /// Returns the number of shells to be drawn; 1 while there is no texture.
    std::int32_t AtmosphereLayers() const noexcept;
    /// Computes the sphere of a shell. @param layer  0 is the innermost shell
    ShellSphere SphereOfLayer(std::int32_t layer) const noexcept;
    /// Records the display list of each shell to be drawn, unless the list has the right sphere
    /// already. Deletes the display lists of the shells that are not to be drawn.
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
