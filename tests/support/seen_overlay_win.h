#pragma once
// The flat layer of a picture, read from the GL calls that drew it: what is written where in which
// colour, the boxes, the dots and the textured images. An own reader: nothing of the DLL's.
// Everything in window pixels, y upward.

#include <array>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

/// Colour as it was set: red, green, blue, alpha.
using SeenColour = std::array<double, 4>;
/// A place in the window: x, y.
using SeenPlace = std::pair<double, double>;

struct SeenRect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    bool operator==(const SeenRect&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const SeenRect& rect) {
        return out << rect.width << " x " << rect.height << " at " << rect.x << ", " << rect.y;
    }
};

/// Text where its raster position stood.
struct SeenText {
    std::string text;
    SeenPlace place;
    SeenColour colour = {};
};

/// A textured rectangle and the corner of the texture that it shows.
struct SeenImage : SeenRect {
    double s = 0.0;
    double t = 0.0;
};

struct SeenDot {
    SeenPlace place;
    double size = 0.0;
    SeenColour colour = {};
};

struct SeenOverlay {
    std::vector<SeenText> texts;
    std::vector<std::pair<SeenRect, SeenColour>> boxes;  ///< filled, without texture
    std::vector<SeenImage> images;
    std::vector<SeenDot> dots;
    int openMatrices = 0;  ///< pushes without a pop

    /// The texts alone that begin at `left` or right of it, in order.
    std::vector<std::string> Words(double left = 0.0) const;
    bool Has(const std::string& word) const { return PlaceOf(word) != kNowhere; }
    /// Where the last text equal to `word` stands: the panel's come behind the labels.
    SeenPlace PlaceOf(const std::string& word) const;
    /// The first box of this colour; of no size when there is none.
    SeenRect BoxOf(const SeenColour& colour) const;

    static constexpr SeenPlace kNowhere = {-1e9, -1e9};
};

/// Reads the only picture in `calls`. `texts` is what its glCallLists wrote.
SeenOverlay OverlayOfPicture(const std::vector<std::string>& calls,
                             const std::vector<std::string>& texts);
