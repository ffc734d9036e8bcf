#pragma once
// What a picture shows, read from the GL calls that made it: where camera and globe stand, and what
// is drawn flat over the globe. An own reader and an own geometry: nothing of the DLL's.

#include <array>
#include <string>
#include <vector>

#include "support/gl_spy_win.h"

/// Camera and globe of a picture.
struct SeenView {
    double distance = 0.0;  ///< scene units, negative
    double tilt = 0.0;      ///< degrees
    double spin = 0.0;      ///< degrees
    double width = 0.0;     ///< pixels
    double height = 0.0;    ///< pixels
};

/// The view of the last picture in `calls`.
SeenView ViewOfPicture(const std::vector<GlCall>& calls);

/// The client point (y downward, as messages count) that shows a place of the globe's front.
POINT PixelOfPlace(const SeenView& view, double latitudeDeg, double longitudeDeg);

/// Colour as it was set: red, green, blue, alpha.
using SeenColour = std::array<double, 4>;

/// Something drawn flat, in window pixels, y upward. A text stands at its raster position and has
/// no size; a dot is as wide as its point.
struct SeenItem {
    double x = -1e9;  ///< what is not there is nowhere
    double y = -1e9;
    double width = 0.0;
    double height = 0.0;
    SeenColour colour = {};
    std::string text = {};
    double t = 0.0;  ///< of an image: lower edge of the part of the texture that it shows
};
using SeenImage = SeenItem;

struct SeenOverlay {
    /// Boxes are filled and have no texture.
    std::vector<SeenItem> texts, boxes, images, dots;
    int openMatrices = 0;  ///< pushes without a pop

    /// The texts alone that begin at `left` or right of it, in order.
    std::vector<std::string> Words(double left = 0.0) const;
    /// Where the last text equal to `word` stands: the panel's come behind the labels.
    SeenItem PlaceOf(const std::string& word) const;
    bool Has(const std::string& word) const { return PlaceOf(word).text == word; }
    /// The last box of this opacity.
    SeenItem BoxOf(double alpha) const;
};

/// Reads the only picture in `calls`. `texts` is what its glCallLists wrote.
SeenOverlay OverlayOfPicture(const std::vector<GlCall>& calls,
                             const std::vector<std::string>& texts);
