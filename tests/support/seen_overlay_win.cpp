#include "support/seen_overlay_win.h"

#include <algorithm>
#include <cmath>

#include "support/gl_spy_win.h"

namespace {

constexpr double kPoints = 0.0;  // primitives of glBegin
constexpr double kQuads = 7.0;

/// Follows the calls of the flat layer.
struct OverlayReader {
    void Read(const std::string& call, const std::vector<std::string>& words) {
        const std::string name = call.substr(0, call.find(' '));
        const std::vector<double> numbers = SpiedNumbers(call);
        if (name.starts_with("glColor")) {
            colour[3] = 1.0;
            std::copy(numbers.begin(), numbers.end(), colour.begin());
        } else if (name == "glPushMatrix") {
            origins.push_back(origins.back());
        } else if (name == "glPopMatrix") {
            origins.pop_back();
        } else if (name == "glTranslatef") {
            origins.back().first += numbers[0];
            origins.back().second += numbers[1];
        } else if (name == "glRasterPos3f") {
            raster = {numbers[0], numbers[1]};
        } else if (name == "glCallLists") {
            seen.texts.push_back({words.at(seen.texts.size()), raster, colour});
        } else if (name == "glPointSize") {
            pointSize = numbers[0];
        } else if (name == "glBegin") {
            primitive = numbers[0];
            vertices.clear();
            corners.clear();
        } else if (name == "glTexCoord2d") {
            corners.emplace_back(numbers[0], numbers[1]);
        } else if (name.starts_with("glVertex")) {
            vertices.emplace_back(numbers[0] + origins.back().first,
                                  numbers[1] + origins.back().second);
        } else if (name == "glEnd") {
            EndShape();
        }
    }
    void EndShape() {
        if (primitive == kPoints) {
            for (const SeenPlace& place : vertices) seen.dots.push_back({place, pointSize, colour});
        }
        if (primitive != kQuads || vertices.size() != 4) return;
        const auto& [x, y] = vertices[0];
        const SeenRect rect = {x, y, vertices[2].first - x, vertices[2].second - y};
        if (corners.empty()) {
            seen.boxes.emplace_back(rect, colour);
        } else {
            seen.images.push_back({rect, corners[0].first, corners[0].second});
        }
    }

    SeenOverlay seen;
    SeenPlace raster;
    std::vector<SeenPlace> origins = {{}};
    SeenColour colour = {};
    std::vector<SeenPlace> vertices;
    std::vector<SeenPlace> corners;  ///< in the texture
    double primitive = -1.0;
    double pointSize = 1.0;
};

bool SameColour(const SeenColour& a, const SeenColour& b) {
    return std::equal(a.begin(), a.end(), b.begin(),
                      [](double x, double y) { return std::abs(x - y) < 1e-6; });
}

}  // namespace

std::vector<std::string> SeenOverlay::Words(double left) const {
    std::vector<std::string> words;
    for (const SeenText& text : texts) {
        if (text.place.first >= left) words.push_back(text.text);
    }
    return words;
}

SeenPlace SeenOverlay::PlaceOf(const std::string& word) const {
    const auto found = std::find_if(texts.rbegin(), texts.rend(),
                                    [&](const SeenText& text) { return text.text == word; });
    return found == texts.rend() ? kNowhere : found->place;
}

SeenRect SeenOverlay::BoxOf(const SeenColour& colour) const {
    const auto found = std::find_if(boxes.begin(), boxes.end(), [&](const auto& box) {
        return SameColour(box.second, colour);
    });
    return found == boxes.end() ? SeenRect{} : found->first;
}

SeenOverlay OverlayOfPicture(const std::vector<std::string>& calls,
                             const std::vector<std::string>& texts) {
    OverlayReader reader;
    const auto flat = std::find_if(calls.begin(), calls.end(), [](const std::string& call) {
        return call.starts_with("gluOrtho2D ");
    });
    std::for_each(flat, calls.end(), [&](const std::string& call) { reader.Read(call, texts); });
    reader.seen.openMatrices = static_cast<int>(reader.origins.size()) - 1;
    return reader.seen;
}
