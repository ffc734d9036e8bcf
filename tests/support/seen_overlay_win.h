#pragma once
// The flat layer of a picture, read from the GL calls that drew it: what is written where in which
// colour, the boxes, the dots and the textured images. An own reader: nothing of the DLL's.
// Everything in window pixels, y upward.

#include <array>
#include <string>
#include <vector>

#include "support/gl_spy_win.h"

/// Colour as it was set: red, green, blue, alpha.
using SeenColour = std::array<double, 4>;

/// Something drawn flat. A text has no size and stands at its raster position; a dot has no height.
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
    std::vector<SeenItem> texts;
    std::vector<SeenItem> boxes;  ///< filled, without texture
    std::vector<SeenImage> images;
    std::vector<SeenItem> dots;
    int openMatrices = 0;  ///< pushes without a pop

    /// The texts alone that begin at `left` or right of it, in order.
    std::vector<std::string> Words(double left = 0.0) const;
    /// Where the last text equal to `word` stands: the panel's come behind the labels.
    SeenItem PlaceOf(const std::string& word) const;
    /// The first box of this opacity.
    SeenItem BoxOf(double alpha) const;
};

/// Reads the only picture in `calls`. `texts` is what its glCallLists wrote.
SeenOverlay OverlayOfPicture(const std::vector<GlCall>& calls,
                             const std::vector<std::string>& texts);
