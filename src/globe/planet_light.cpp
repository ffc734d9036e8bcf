// The Sun as the globe's light, and the order in which the body is drawn under it.
#include <cmath>

#include "globe/planet.h"
#include "globe/sun_position.h"
#include "globe/trigonometry.h"

namespace {

constexpr float kSunDiffuse[] = {1.0F, 1.0F, 1.0F, 1.0F};
constexpr float kSunAmbient[] = {0.4F, 0.4F, 0.4F, 1.0F};
constexpr float kSunSpecular[] = {0.7F, 0.7F, 0.55F, 1.0F};

constexpr float kGlobeAmbient[] = {0.3F, 0.3F, 0.35F, 1.0F};
constexpr float kGlobeDiffuse[] = {1.0F, 1.0F, 1.0F, 1.0F};
constexpr float kGlobeSpecular[] = {0.2F, 0.2F, 0.2F, 1.0F};
constexpr GLint kGlobeShininess = 30;
constexpr float kTextureEnvironment[] = {1.0F, 1.0F, 1.0F, 1.0F};

constexpr float kNoSpecular[] = {0.0F, 0.0F, 0.0F, 1.0F};

/// Of the Sun's light in globe radii. The light is directional, so only its direction shows.
constexpr double kSunDistance = 1.2;

void SetSunColours() {
    glLightfv(GL_LIGHT0, GL_DIFFUSE, kSunDiffuse);
    glLightfv(GL_LIGHT0, GL_AMBIENT, kSunAmbient);
    glLightfv(GL_LIGHT0, GL_SPECULAR, kSunSpecular);
}

void SetGlobeMaterial() {
    glMaterialfv(GL_FRONT, GL_AMBIENT, kGlobeAmbient);
    glMaterialfv(GL_FRONT, GL_DIFFUSE, kGlobeDiffuse);
    glMaterialfv(GL_FRONT, GL_SPECULAR, kGlobeSpecular);
    glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, kTextureEnvironment);
    glMateriali(GL_FRONT, GL_SHININESS, kGlobeShininess);
}

void ResetMaterial() {
    glMateriali(GL_FRONT, GL_SHININESS, 0);
    glMaterialfv(GL_FRONT, GL_SPECULAR, kNoSpecular);
}

}  // namespace

void CPlanet::RenderBody() {
    PlaceSunLight();
    SetSunColours();
    RenderAtmosphere();
    // Deliberate: an untextured planet is one shell of air; there is no globe before its map.
    if (HasTexture()) {
        SetGlobeMaterial();
        BuildMesh();
    }
    ResetMaterial();
}

void CPlanet::PlaceSunLight() {
    double hourAngle = 0.0;
    SunPosition(inputs_.sceneTime, &hourAngle, &sunDeclination);
    // Deliberate: not brought into a range; only its sine and cosine are used.
    sunLongitude = -360.0 - hourAngle;

    const double distance = static_cast<double>(radius) * kSunDistance;
    const auto x = static_cast<float>(distance * CosDeg(sunDeclination) * SinDeg(sunLongitude));
    const auto y = static_cast<float>(distance * SinDeg(sunDeclination));
    const auto z = static_cast<float>(distance * CosDeg(sunDeclination) * CosDeg(sunLongitude));
    const float towardsSun[] = {x, y, z, 0.0F};  // w = 0: rays are parallel
    glLightfv(GL_LIGHT0, GL_POSITION, towardsSun);

    const float length = std::sqrt(x * x + y * y + z * z);
    const float fromSun[] = {-x / length, -y / length, -z / length, 1.0F};
    glLightfv(GL_LIGHT0, GL_SPOT_DIRECTION, fromSun);
}
