// The glowing air around the globe: nested translucent shells, thinner outwards.
#include "globe/planet.h"
#include "math/angles.h"

namespace {

constexpr double kAirHeight = 0.025;   // globe radii, of the outermost shell
constexpr float kDensest = 0.52F;      // opacity of the innermost shell
constexpr float kDensityRange = 0.5F;  // fall of the opacity over all shells
constexpr GLint kAirShininess = 120;

/// Colour of one material property of the air. The opacity is different for each shell.
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

/// Issues one shell; nothing when GLU has no memory for it.
void DrawShell(double radius, const MeshDetail& detail) {
    GLUquadric* quadric = gluNewQuadric();
    if (quadric == nullptr) return;
    gluSphere(quadric, radius, detail.sphereSlices, detail.sphereStacks);
    gluDeleteQuadric(quadric);
}

}  // namespace

void CPlanet::RenderAtmosphere() const {
    glPushMatrix();
    glPolygonMode(GL_FRONT, GL_FILL);
    const std::int32_t layers = HasTexture() ? Detail().atmosphereLayers : 1;
    glEnable(GL_ALPHA_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glMateriali(GL_FRONT, GL_SHININESS, kAirShininess);
    glRotatef(-90.0F, 1.0F, 0.0F, 0.0F);  // brings the poles of GLU's spheres onto the globe's axis

    const double step = kAirHeight / Square(static_cast<double>(layers));
    const float alphaStep = kDensityRange / static_cast<float>(layers);
    for (std::int32_t i = 0; i < layers; ++i) {
        SetAirMaterial(kDensest - alphaStep * static_cast<float>(i));
        DrawShell(static_cast<double>(radius) * (1.0 + step * Square(i + 1.0)), Detail());
    }

    glDisable(GL_BLEND);
    glDisable(GL_ALPHA_TEST);
    // Without this, the depth test would hide the globe, drawn next, behind the shells in front of
    // it. The globe covers them; only the halo around it stays.
    glClear(GL_DEPTH_BUFFER_BIT);
    glPopMatrix();
}
