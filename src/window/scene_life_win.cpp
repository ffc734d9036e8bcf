#include "window/scene_life_win.h"

#include <algorithm>
#include <memory>

#include "base/gl.h"
#include "globe/city_markers.h"
#include "render/list_name.h"
#include "window/loader_win.h"
#include "window/overlay_win.h"
#include "window/view_control.h"

namespace {

constexpr GLuint kPlanetLists = 2;
constexpr GLuint kFontLists = 256;

bool SharesFontLists(const CPlanet& planet, const CGLFont& font) noexcept {
    return ListNamesOverlap(ListName(&planet), kPlanetLists, ListName(&font), kFontLists);
}

/// A planet whose list names are not the font's. The first is freed only after the second is made,
/// or the same address would come again.
std::unique_ptr<CPlanet> MakePlanet(MapState& map) {
    const PlanetInputs inputs{map.detail.mesh, map.drawing.extensions, map.settings.texCompression,
                              map.drawing.sceneTime, map.host.cities};
    auto planet = std::make_unique<CPlanet>(inputs);
    if (SharesFontLists(*planet, map.drawing.font)) {
        auto another = std::make_unique<CPlanet>(inputs);
        planet.swap(another);
    }
    return planet;
}

void ReadTextureLimit(MapState& map) noexcept {
    GLint size = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
    // No answer leaves the size from before: 0 would mean that there is no limit.
    if (size < 1) return;
    map.textures.limits.maxTextureSize = std::min<std::int32_t>(size, map.textures.sizeCap);
}

/// Whether the tiles in memory can be shown as they are.
bool TilesArePresent(MapState& map) noexcept {
    // A context of less (a remote session) cannot show tiles that were cut for a better one.
    return map.textures.store.HasAllTiles() &&
           map.textures.store.TilesFit(map.textures.limits.maxTextureSize);
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
    auto planet = MakePlanet(map);
    planet->radius = kPlanetRadius;
    CScene& scene = map.drawing.scene;
    scene.AddChild(lamp.get());
    map.drawing.lamp = lamp.release();
    scene.AddChild(planet.get());
    map.drawing.planet = planet.release();
}

std::uint32_t AttachTiles(MapState& map) {
    map.textures.tilesWaitForContext = false;
    return map.drawing.planet->SetTexture(map.textures.store.Tiles());
}

bool AttachPresentTiles(MapState& map) {
    const HANDLE mutex = map.textures.sceneMutex.get();
    const MutexHold hold = AcquireMutex(mutex, 0);
    // Without a mutex no worker can be at them.
    if (!hold && mutex != nullptr) return false;
    return TilesArePresent(map) && AttachTiles(map) == 0;
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

void RebuildOn(MapState& map, MapWindow& entry) {
    if (CreateContext(map, entry) != HORIVO_OK) return;
    PopulateScene(map);
    const bool attached = AttachPresentTiles(map);
    InitScene(map);
    std::int32_t width = 0;
    std::int32_t height = 0;
    if (ClientSize(entry.window, width, height)) ResizeScene(map, width, height);
    InvalidateRect(entry.window, nullptr, FALSE);
    if (!attached) StartLoad(entry.window);
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

bool ClientSize(HWND window, std::int32_t& width, std::int32_t& height) noexcept {
    RECT client = {};
    if (!GetClientRect(window, &client) || client.right < 1 || client.bottom < 1) return false;
    width = client.right;
    height = client.bottom;
    return true;
}

bool UseSizeOf(MapState& map, HWND window) noexcept {
    return ClientSize(window, map.drawing.scene.width, map.drawing.scene.height);
}
