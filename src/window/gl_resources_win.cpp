#include "window/gl_resources_win.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/gl.h"
#include "cities/city_markers.h"
#include "render/list_name.h"
#include "window/overlay_win.h"
#include "window/view_state.h"

namespace {

constexpr GLuint kFontLists = 256;

bool SharesFontLists(const CPlanet& planet, const CGLFont& font) noexcept {
    // Any address inside the planet may be the name of one of its lists.
    return ListNamesOverlap(ListName(&planet), sizeof planet, ListName(&font), kFontLists);
}

/// A planet whose list names are not the font's. A refused one is freed only after the next is
/// made, or the same address would come again.
std::unique_ptr<CPlanet> MakePlanet(const PlanetInputs& inputs, const CGLFont& font) {
    auto planet = std::make_unique<CPlanet>(inputs);
    return SharesFontLists(*planet, font) ? MakePlanet(inputs, font) : std::move(planet);
}

void ReadTextureLimit(MapState& map) noexcept {
    GLint size = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
    // No answer leaves the size from before: 0 would mean that there is no limit.
    if (size < 1) return;
    map.textures.limits.maxTextureSize = std::min<std::int32_t>(size, map.textures.sizeCap);
}

}  // namespace

std::uint32_t CreateContext(MapState& map, MapWindow& entry) {
    const std::uint32_t status = map.drawing.context.Create(entry.dc.Get());
    if (status != HORIVO_OK) return status;
    if (entry.font) map.drawing.font.Build(entry.dc.Get(), false);
    ReadTextureLimit(map);
    return HORIVO_OK;
}

void PopulateScene(MapState& map) {
    auto lamp = std::make_unique<CLamp>(static_cast<GLenum>(GL_LIGHT1));
    const PlanetInputs inputs{map.detail.mesh, map.drawing.extensions, map.settings.texCompression,
                              map.drawing.sceneTime, map.host.cities};
    auto planet = MakePlanet(inputs, map.drawing.font);
    planet->radius = kPlanetRadius;
    CScene& scene = map.drawing.scene;
    scene.AddChild(lamp.get());
    map.drawing.lamp = lamp.release();
    scene.AddChild(planet.get());
    map.drawing.planet = planet.release();
}

void InitScene(MapState& map) {
    map.drawing.scene.Init();
    CreateOverlay(map);
    PlaceCityMarkers(map.host.cities, kPlanetRadius);
}

void ReleaseScene(MapState& map) noexcept {
    map.drawing.lamp = nullptr;
    map.drawing.planet = nullptr;
    map.drawing.scene.DeleteChildren();
    ReleaseOverlay(map);
    map.drawing.font.Release();
}

void ResizeScene(MapState& map, std::int32_t width, std::int32_t height) {
    map.drawing.scene.Resize(width, height);
    CompileScene(map);
    MeasureScene(map);
}

void ResizeSceneWithoutContext(MapState& map, std::int32_t width, std::int32_t height) noexcept {
    map.drawing.scene.width = width;
    map.drawing.scene.height = height;
    MeasureScene(map);
}

void CompileScene(MapState& map) { map.drawing.scene.Compile(); }

void MeasureScene(MapState& map) noexcept {
    if (map.drawing.planet != nullptr)
        map.drawing.globe = map.drawing.scene.MeasureGlobe(*map.drawing.planet);
}
