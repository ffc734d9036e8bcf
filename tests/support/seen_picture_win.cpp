#include "support/seen_picture_win.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace {

constexpr double kGlobeRadius = 3.0;
constexpr double kFovYDeg = 30.0;

double Radians(double degrees) { return degrees * std::numbers::pi / 180.0; }

/// Turns the plane of `a` and `b` from a towards b.
void Turn(double& a, double& b, double degrees) {
    const auto turned = std::complex(a, b) * std::polar(1.0, Radians(degrees));
    a = turned.real();
    b = turned.imag();
}

/// Follows the calls of the flat layer.
struct OverlayReader {
    void Read(const GlCall& call, const std::vector<std::string>& words) {
        const auto& [name, n] = call;
        SeenItem& origin = origins.back();
        if (name.starts_with("glColor")) pen.colour = {n[0], n[1], n[2], n.size() > 3 ? n[3] : 1.0};
        if (name == "glTranslatef") origin = {origin.x + n[0], origin.y + n[1]};
        if (name == "glRasterPos3f") pen = {.x = n[0], .y = n[1], .colour = pen.colour};
        if (name == "glPointSize") pointSize = n[0];
        if (name == "glBegin") shape = {static_cast<GLenum>(n[0]), {}, {}};
        if (name == "glTexCoord2d") shape.t.push_back(n[1]);
        if (name.starts_with("glVertex"))
            shape.corners.push_back({origin.x + n[0], origin.y + n[1]});
        if (name == "glEnd") EndShape();
        if (name == "glCallLists") {
            pen.text = words.at(seen.texts.size());
            seen.texts.push_back(pen);
        }
        if (name == "glPopMatrix") origins.pop_back();
        if (name == "glPushMatrix") origins.push_back(SeenItem(origin));
    }
    void EndShape() {
        SeenItem item = shape.corners.at(0);
        item.colour = pen.colour;
        item.width = pointSize;
        if (shape.primitive == GL_POINTS) seen.dots.push_back(item);
        if (shape.primitive != GL_QUADS) return;
        item.width = shape.corners.at(2).x - item.x;
        item.height = shape.corners[2].y - item.y;
        if (!shape.t.empty()) item.t = shape.t[0];
        (shape.t.empty() ? seen.boxes : seen.images).push_back(item);
    }

    SeenOverlay seen;
    SeenItem pen;
    std::vector<SeenItem> origins = {{0.0, 0.0}};
    struct {
        GLenum primitive;
        std::vector<SeenItem> corners;
        std::vector<double> t;
    } shape = {};
    double pointSize = 1.0;
};

/// The last item of which that holds; one nowhere when there is none.
SeenItem LastOf(const std::vector<SeenItem>& items, const auto& holds) {
    const auto found = std::find_if(items.rbegin(), items.rend(), holds);
    return found == items.rend() ? SeenItem{} : *found;
}

}  // namespace

SeenView ViewOfPicture(const std::vector<GlCall>& calls) {
    SeenView view;
    const auto clear = std::ranges::find(calls.rbegin(), calls.rend(), "glClear", &GlCall::name);
    auto call = std::ranges::find(clear.base(), calls.end(), "glTranslatef", &GlCall::name);
    if (call == calls.end()) return view;
    view.distance = call++->numbers[2];
    // A turn by nothing is left out.
    for (; call->name == "glRotated"; ++call)
        (call->numbers[1] != 0.0 ? view.tilt : view.spin) = call->numbers[0];
    call = std::ranges::find(call, calls.end(), "gluOrtho2D", &GlCall::name);
    view.width = call->numbers[1];
    view.height = call->numbers[3];
    return view;
}

POINT PixelOfPlace(const SeenView& view, double latitudeDeg, double longitudeDeg) {
    double x = 0.0;
    double y = 0.0;
    double z = kGlobeRadius;
    Turn(z, y, latitudeDeg);
    Turn(z, x, longitudeDeg + view.spin);
    Turn(y, z, view.tilt);
    const double scale = view.height / 2.0 / std::tan(Radians(kFovYDeg / 2.0));
    const double depth = -(view.distance + z);
    const double right = view.width / 2.0 + x / depth * scale;
    const double up = view.height / 2.0 + y / depth * scale;
    return {std::lround(right), std::lround(view.height) - 1 - std::lround(up)};
}

std::vector<std::string> SeenOverlay::Words(double left) const {
    std::vector<std::string> words;
    for (const SeenItem& text : texts)
        if (text.x >= left) words.push_back(text.text);
    return words;
}

SeenItem SeenOverlay::PlaceOf(const std::string& word) const {
    return LastOf(texts, [&](const SeenItem& text) { return text.text == word; });
}

SeenItem SeenOverlay::BoxOf(double alpha) const {
    return LastOf(boxes,
                  [=](const SeenItem& box) { return std::abs(box.colour[3] - alpha) < 1e-6; });
}

SeenOverlay OverlayOfPicture(const std::vector<GlCall>& calls,
                             const std::vector<std::string>& texts) {
    OverlayReader reader;
    const auto flat = std::ranges::find(calls, "gluOrtho2D", &GlCall::name);
    std::for_each(flat, calls.end(), [&](const GlCall& call) { reader.Read(call, texts); });
    reader.seen.openMatrices = static_cast<int>(reader.origins.size()) - 1;
    return reader.seen;
}
