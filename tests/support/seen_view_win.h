#pragma once
// What a picture shows, read from the GL calls that made it: where camera and globe stand, which
// place of the globe lies under a pixel, what is written. An own geometry: nothing of the DLL's.

#include <optional>
#include <string>
#include <vector>

#include "base/windows_types.h"

/// Camera and globe of a picture.
struct SeenView {
    double distance = 0.0;  ///< scene units, negative
    double tilt = 0.0;      ///< degrees
    double spin = 0.0;      ///< degrees
    double fovY = 0.0;      ///< degrees
    int width = 0;          ///< pixels
    int height = 0;         ///< pixels
};

/// The view of the last picture in `calls`.
SeenView ViewOfPicture(const std::vector<std::string>& calls);

/// A direction from the globe's centre, of length 1; y to the north pole, z to 0 N 0 E.
struct GlobeDirection {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// What lies under a client point (y downward, as messages count); empty beside the globe.
std::optional<GlobeDirection> PlaceUnder(const SeenView& view, int x, int y);

/// The client point that shows a place of the globe's front.
POINT PixelOfPlace(const SeenView& view, double latitudeDeg, double longitudeDeg);

/// The angle between two places, degrees.
double AngleBetween(const GlobeDirection& a, const GlobeDirection& b);
