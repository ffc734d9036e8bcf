#include "render/geo_point.h"

#include "math/angles.h"
#include "math/geographic.h"
#include "render/scene.h"

void UpdateGeoPoint(CGeoPoint& geoPoint, const CScene& scene) noexcept {
    const CVector4& point = geoPoint.globePoint;
    // The origin means that no point of the globe was picked yet.
    if (point.x == 0.0 && point.y == 0.0 && point.z == 0.0) return;
    const LatLon angles = PointToLatLon(point);
    geoPoint.latitudeRad = angles.latitude;
    geoPoint.longitudeRad = angles.longitude;
    geoPoint.latitudeDeg = RadiansToDegrees(angles.latitude);
    geoPoint.longitudeDeg = RadiansToDegrees(angles.longitude);

    CVector4 turned = point;
    // Apply only the rotation here: ProjectToWindow applies the translation itself.
    scene.TransformPoint(turned, 0, 1);
    geoPoint.windowPoint = scene.ProjectToWindow(turned);
}
