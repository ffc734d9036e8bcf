#include "support/seen_overlay_win.h"

#include <algorithm>
#include <cmath>

namespace {

/// Follows the calls of the flat layer.
struct OverlayReader {
    void Read(const GlCall& call, const std::vector<std::string>& words) {
        const std::vector<double>& n = call.numbers;
        if (call.name.starts_with("glColor")) {
            pen.colour[3] = 1.0;
            std::copy(n.begin(), n.end(), pen.colour.begin());
        } else if (call.name == "glPushMatrix") {
            origins.push_back(origins.back());
        } else if (call.name == "glPopMatrix") {
            origins.pop_back();
        } else if (call.name == "glTranslatef") {
            origins.back().x += n[0];
            origins.back().y += n[1];
        } else if (call.name == "glRasterPos3f") {
            pen.x = n[0];
            pen.y = n[1];
        } else if (call.name == "glCallLists") {
            pen.text = words.at(seen.texts.size());
            seen.texts.push_back(pen);
        } else if (call.name == "glPointSize") {
            pointSize = n[0];
        } else if (call.name == "glBegin") {
            primitive = static_cast<GLenum>(n[0]);
            vertices.clear();
            lowestT.clear();
        } else if (call.name == "glTexCoord2d") {
            lowestT.push_back(n[1]);
        } else if (call.name.starts_with("glVertex")) {
            vertices.push_back({n[0] + origins.back().x, n[1] + origins.back().y});
        } else if (call.name == "glEnd") {
            EndShape();
        }
    }
    void EndShape() {
        SeenItem shape = vertices.at(0);
        shape.colour = pen.colour;
        shape.width = pointSize;
        if (primitive == GL_POINTS) seen.dots.push_back(shape);
        if (primitive != GL_QUADS || vertices.size() != 4) return;
        shape.width = vertices[2].x - shape.x;
        shape.height = vertices[2].y - shape.y;
        if (!lowestT.empty()) shape.t = lowestT[0];
        (lowestT.empty() ? seen.boxes : seen.images).push_back(shape);
    }

    SeenOverlay seen;
    SeenItem pen;
    std::vector<SeenItem> origins = {{0.0, 0.0}};
    std::vector<SeenItem> vertices;
    std::vector<double> lowestT;
    GLenum primitive = GL_POINTS;
    double pointSize = 1.0;
};

}  // namespace

std::vector<std::string> SeenOverlay::Words(double left) const {
    std::vector<std::string> words;
    for (const SeenItem& text : texts)
        if (text.x >= left) words.push_back(text.text);
    return words;
}

SeenItem SeenOverlay::PlaceOf(const std::string& word) const {
    const auto found = std::find_if(texts.rbegin(), texts.rend(),
                                    [&](const SeenItem& text) { return text.text == word; });
    return found == texts.rend() ? SeenItem{} : *found;
}

SeenItem SeenOverlay::BoxOf(double alpha) const {
    const auto found = std::ranges::find_if(
        boxes, [=](const SeenItem& box) { return std::abs(box.colour[3] - alpha) < 1e-6; });
    return found == boxes.end() ? SeenItem{} : *found;
}

SeenOverlay OverlayOfPicture(const std::vector<GlCall>& calls,
                             const std::vector<std::string>& texts) {
    OverlayReader reader;
    const auto flat = std::ranges::find(calls, "gluOrtho2D", &GlCall::name);
    std::for_each(flat, calls.end(), [&](const GlCall& call) { reader.Read(call, texts); });
    reader.seen.openMatrices = static_cast<int>(reader.origins.size()) - 1;
    return reader.seen;
}
