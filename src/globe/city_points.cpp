// Draws the cities as points on the globe.
#include "globe/planet.h"
#include "math/vector4.h"

namespace {

// The points get more ambient light than the globe, so that the points are also bright on the night
// side.
constexpr float kPointAmbientLight[] = {0.95F, 0.95F, 0.95F, 1.0F};
constexpr float kPointDiffuseLight[] = {0.9F, 0.9F, 0.9F, 1.0F};
constexpr float kPointColour[] = {0.9F, 0.65F, 0.1F, 1.0F};    // orange
constexpr float kInRangeColour[] = {0.0F, 0.99F, 0.0F, 1.0F};  // green
constexpr float kPointSize = 2.0F;                             // pixels

void SendPoint(const CityRecord& city) {
    const double* marker = city.markerPoint;
    CVector4 normal(marker[0], marker[1], marker[2], 1.0);
    normal.Normalize();
    glNormal3d(normal.x, normal.y, normal.z);
    glVertex3d(marker[0], marker[1], marker[2]);
}

/// Sends the points of the cities that have a position and are not in range of the pointer. @return
/// the number of cities that have a position and are in range
int SendOrdinaryPoints(const CityTable& cities) {
    int inRange = 0;
    glBegin(GL_POINTS);
    for (const CityRecord& city : cities.Records()) {
        if (!HasCoordinates(city)) continue;
        if (city.inRange == 0) {
            SendPoint(city);
        } else {
            ++inRange;
        }
    }
    glEnd();
    return inRange;
}

void SendInRangePoints(const CityTable& cities) {
    glBegin(GL_POINTS);
    for (const CityRecord& city : cities.Records()) {
        // Deliberate: no check for a position, because a city without a position is never in range.
        if (city.inRange != 0) SendPoint(city);
    }
    glEnd();
}

}  // namespace

void CPlanet::RenderCities() const {
    glLightfv(GL_LIGHT0, GL_AMBIENT, kPointAmbientLight);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, kPointDiffuseLight);
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, kPointColour);
    glPointSize(kPointSize);
    if (SendOrdinaryPoints(inputs_.cities) == 0) return;
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, kInRangeColour);
    SendInRangePoints(inputs_.cities);
}
