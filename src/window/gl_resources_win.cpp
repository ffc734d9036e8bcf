#include "window/gl_resources_win.h"

#include <memory>
#include <utility>

#include "base/gl.h"
#include "render/list_name.h"

namespace {

constexpr GLuint kFontLists = 256;
constexpr double kLampHeight = 1.2;  // globe radii from the centre: the lamp is above the surface

bool SharesFontLists(const CPlanet& planet, const CGLFont& font) noexcept {
    // Names of display lists are made from addresses: each address inside the planet may be one.
    return ListNamesOverlap(ListName(&planet), sizeof planet, ListName(&font), kFontLists);
}

}  // namespace

std::uint32_t GlResources::CreateContext(const MapWindow& entry, SharedPicture& picture) {
    const std::uint32_t status = context_.Create(entry.dc.Get());
    if (status != HORIVO_OK) return status;
    if (entry.HasFont()) font_.Build(entry.dc.Get(), false);
    GLint size = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
    // Keep the earlier limit when OpenGL returns no limit: 0 would mean that there is no limit.
    if (size >= 1) picture.SetTextureLimit(size);
    return HORIVO_OK;
}

void GlResources::MakeCurrentOrNone(HDC dc) noexcept {
    if (!context_.MakeCurrent(dc)) wglMakeCurrent(nullptr, nullptr);
}

/// Makes a planet whose list names differ from the list names of the font. A list name is made from
/// an address. So a refused planet is freed only after the next planet is made: otherwise the next
/// planet could get the same address.
std::unique_ptr<CPlanet> GlResources::MakePlanet(const PlanetInputs& inputs) const {
    auto planet = std::make_unique<CPlanet>(inputs);
    return SharesFontLists(*planet, font_) ? MakePlanet(inputs) : std::move(planet);
}

void GlResources::Populate(const MeshDetail& mesh, const std::int32_t& texCompression,
                           const CityTable& cities) {
    auto lamp = std::make_unique<CLamp>(static_cast<GLenum>(GL_LIGHT1));
    auto planet = MakePlanet({mesh, extensions_, texCompression, sceneTime_, cities});
    planet->radius = kPlanetRadius;
    lamp_ = scene_.AddChild(std::move(lamp));
    planet_ = scene_.AddChild(std::move(planet));
}

void GlResources::ReleaseScene() noexcept {
    lamp_ = nullptr;
    planet_ = nullptr;
    scene_.DeleteChildren();
}

void GlResources::Resize(std::int32_t width, std::int32_t height) {
    scene_.Resize(width, height);
    Compile();
    Measure();
}

void GlResources::ResizeWithoutContext(std::int32_t width, std::int32_t height) noexcept {
    scene_.width = width;
    scene_.height = height;
    Measure();
}

void GlResources::Measure() noexcept {
    if (planet_ != nullptr) globe_ = scene_.MeasureGlobe(*planet_);
}

void GlResources::PlaceLampOver(const CVector4& place) noexcept {
    if (lamp_ == nullptr) return;
    double(&position)[4] = lamp_->lightPosition;
    position[0] = kLampHeight * place.x;
    position[1] = kLampHeight * place.y;
    position[2] = kLampHeight * place.z;
    position[3] = 1.0;
}

void GlResources::LoadHandCursor() noexcept {
    if (!handCursor_) handCursor_.reset(LoadCursorW(nullptr, IDC_HAND));
}
