#pragma once
// The flat layer of a picture, read from the GL calls that drew it: what is written where in which
// colour, the boxes, the dots and the textured images. An own reader: nothing of the DLL's.

#include <array>
#include <ostream>
#include <string>
#include <vector>

/// Colour as it was set: red, green, blue, alpha.
using SeenColour = std::array<double, 4>;

/// Text where its raster position stood, window pixels, y upward.
struct SeenText {
    std::string text;
    double x = 0.0;
    double y = 0.0;
    SeenColour colour = {};
};

/// A filled rectangle without texture.
struct SeenBox {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
    SeenColour colour = {};
};

/// A textured rectangle and the corner of the texture that it shows.
struct SeenImage {
    unsigned texture = 0;
    double s = 0.0;
    double t = 0.0;
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
};

struct SeenDot {
    double x = 0.0;
    double y = 0.0;
    double size = 0.0;
    SeenColour colour = {};
};

struct SeenOverlay {
    std::vector<SeenText> texts;
    std::vector<SeenBox> boxes;
    std::vector<SeenImage> images;
    std::vector<SeenDot> dots;
    int openMatrices = 0;  ///< pushes without a pop

    /// The texts alone, in order.
    std::vector<std::string> Words() const;
    /// The first text equal to `word`; null when there is none.
    const SeenText* Find(const std::string& word) const;
    /// The first box of this colour; null when there is none.
    const SeenBox* Find(const SeenColour& colour) const;
};

/// Reads the last picture in `calls`. `texts` is what all their glCallLists wrote.
SeenOverlay OverlayOfPicture(const std::vector<std::string>& calls,
                             const std::vector<std::string>& texts);
