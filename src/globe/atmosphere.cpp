// Draws the atmosphere around the globe: nested translucent shells, which are more transparent
// outwards.
#include <cstddef>

#include "globe/planet.h"
#include "math/angles.h"

namespace {

constexpr double kAirHeight = 0.025;   // height of the atmosphere above the surface, globe radii
constexpr float kDensest = 0.52F;      // opacity of the innermost shell, 0 to 1
constexpr float kDensityRange = 0.5F;  // decrease of the opacity over all shells
constexpr GLint kAirShininess = 120;

/// Colour of one material property of the air. The opacity is not stored here, because it is
/// different for each shell.
struct AirColour {
    GLenum property;
    float red, green, blue;
};
constexpr AirColour kAirColours[] = {
    {GL_DIFFUSE, 0.4F, 0.7F, 0.95F},
    {GL_AMBIENT, 0.0F, 0.25F, 0.55F},
    {GL_SPECULAR, 0.0F, 0.25F, 0.95F},
};

void SetAirMaterial(float alpha) {
    for (const AirColour& colour : kAirColours) {
        const float values[] = {colour.red, colour.green, colour.blue, alpha};
        glMaterialfv(GL_FRONT, colour.property, values);
    }
}

}  // namespace

std::int32_t CPlanet::AtmosphereLayers() const noexcept {
    return HasTexture() ? Detail().atmosphereLayers : 1;
}

ShellSphere CPlanet::SphereOfLayer(std::int32_t layer) const noexcept {
    const double step = kAirHeight / Square(static_cast<double>(AtmosphereLayers()));
    return {static_cast<double>(radius) * (1.0 + step * Square(layer + 1.0)), Detail().sphereSlices,
            Detail().sphereStacks};
}

void CPlanet::RecordAtmosphere() {
    const std::int32_t layers = AtmosphereLayers();
    for (std::int32_t i = 0; i < kMaxAtmosphereLayers; ++i) {
        AtmosphereShell& shell = shells_[static_cast<std::size_t>(i)];
        if (i < layers) {
            shell.Record(SphereOfLayer(i));
        } else {
            shell.DeleteList();
        }
    }
}

void CPlanet::RenderAtmosphere() const {
    glPushMatrix();
    glPolygonMode(GL_FRONT, GL_FILL);
    const std::int32_t layers = AtmosphereLayers();
    glEnable(GL_ALPHA_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glMateriali(GL_FRONT, GL_SHININESS, kAirShininess);
    glRotatef(-90.0F, 1.0F, 0.0F, 0.0F);  // turns GLU's axis (Z) to the globe's axis (Y)

    const float alphaStep = kDensityRange / static_cast<float>(layers);
    for (std::int32_t i = 0; i < layers; ++i) {
        SetAirMaterial(kDensest - alphaStep * static_cast<float>(i));
        DrawLayer(i);
    }

    glDisable(GL_BLEND);
    glDisable(GL_ALPHA_TEST);
    // Clear the depth buffer: otherwise the depth test would hide the globe, which is drawn next,
    // behind the shells in front of it. The globe covers these shells, and only the halo around the
    // globe stays visible.
    glClear(GL_DEPTH_BUFFER_BIT);
    glPopMatrix();
}

void CPlanet::DrawLayer(std::int32_t layer) const {
    const ShellSphere sphere = SphereOfLayer(layer);
    if (layer < kMaxAtmosphereLayers) {
        shells_[static_cast<std::size_t>(layer)].Draw(sphere);
    } else {
        IssueSphere(sphere);
    }
}
