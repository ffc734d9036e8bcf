// Lights the globe with the light of the Sun.
#include <cmath>

#include "globe/planet.h"
#include "globe/sun_position.h"
#include "math/trigonometry.h"

namespace {

constexpr float kSunDiffuse[] = {1.0F, 1.0F, 1.0F, 1.0F};
constexpr float kSunAmbient[] = {0.4F, 0.4F, 0.4F, 1.0F};
constexpr float kSunSpecular[] = {0.7F, 0.7F, 0.55F, 1.0F};  // a yellowish highlight

/// Distance of the Sun's light from the centre of the globe, globe radii. The distance has no
/// visible effect, because the light is directional.
constexpr double kSunDistance = 1.2;

}  // namespace

void CPlanet::PlaceSunLight() {
    double hourAngle = 0.0;
    SunPosition(inputs_.sceneTime, &hourAngle, &sunDeclination);
    // Deliberate: sunLongitude is not reduced to one turn; it lies in (-720, 0). Only its sine and
    // cosine are used.
    sunLongitude = -360.0 - hourAngle;

    const double distance = static_cast<double>(radius) * kSunDistance;
    const auto x = static_cast<float>(distance * CosDeg(sunDeclination) * SinDeg(sunLongitude));
    const auto y = static_cast<float>(distance * SinDeg(sunDeclination));
    const auto z = static_cast<float>(distance * CosDeg(sunDeclination) * CosDeg(sunLongitude));
    const float towardsSun[] = {x, y, z, 0.0F};  // w = 0: parallel rays
    glLightfv(GL_LIGHT0, GL_POSITION, towardsSun);

    const float length = std::sqrt(x * x + y * y + z * z);
    const float fromSun[] = {-x / length, -y / length, -z / length, 1.0F};
    glLightfv(GL_LIGHT0, GL_SPOT_DIRECTION, fromSun);
}

void CPlanet::SetSunColours() {
    glLightfv(GL_LIGHT0, GL_DIFFUSE, kSunDiffuse);
    glLightfv(GL_LIGHT0, GL_AMBIENT, kSunAmbient);
    glLightfv(GL_LIGHT0, GL_SPECULAR, kSunSpecular);
}
