#pragma once
// Where camera and globe of a picture stand, read from the GL calls that made it, and where the
// picture shows a place. An own geometry: nothing of the DLL's.

#include <vector>

#include "support/gl_spy_win.h"

/// Camera and globe of a picture.
struct SeenView {
    double distance = 0.0;  ///< scene units, negative
    double tilt = 0.0;      ///< degrees
    double spin = 0.0;      ///< degrees
    double fovY = 0.0;      ///< degrees
    double width = 0.0;     ///< pixels
    double height = 0.0;    ///< pixels
};

/// The view of the last picture in `calls`.
SeenView ViewOfPicture(const std::vector<GlCall>& calls);

/// The client point (y downward, as messages count) that shows a place of the globe's front.
POINT PixelOfPlace(const SeenView& view, double latitudeDeg, double longitudeDeg);
