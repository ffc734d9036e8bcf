#include "support/seen_overlay_win.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "support/gl_spy_win.h"

namespace {

constexpr double kPoints = 0.0;  // primitive of glBegin
constexpr double kQuads = 7.0;
constexpr std::string_view kWrite = "glCallLists ";

struct Vertex {
    double s, t, x, y;
};

/// Follows the calls of the flat layer.
class OverlayReader {
public:
    OverlayReader(const std::vector<std::string>& texts, std::size_t firstText)
        : texts_(texts), nextText_(firstText) {}

    void Read(const std::string& call) {
        const std::string name = call.substr(0, call.find(' '));
        numbers_ = SpiedNumbers(call);
        if (name.starts_with("glColor")) {
            colour_[3] = 1.0;
            std::copy(numbers_.begin(), numbers_.end(), colour_.begin());
        } else if (name == "glPushMatrix") {
            origins_.push_back(origins_.back());
        } else if (name == "glPopMatrix") {
            origins_.pop_back();
        } else if (name == "glTranslatef") {
            origins_.back().x += numbers_[0];
            origins_.back().y += numbers_[1];
        } else if (name == "glRasterPos3f") {
            raster_ = numbers_;
        } else if (name == "glCallLists") {
            Write();
        } else {
            ReadShape(name);
        }
    }
    SeenOverlay Take() {
        seen_.openMatrices = static_cast<int>(origins_.size()) - 1;
        return std::move(seen_);
    }

private:
    void Write() {
        const std::string text = nextText_ < texts_.size() ? texts_[nextText_] : "?";
        ++nextText_;
        seen_.texts.push_back({text, raster_[0], raster_[1], colour_});
    }
    void ReadShape(const std::string& name) {
        if (name == "glBindTexture") texture_ = static_cast<unsigned>(numbers_[1]);
        if (name == "glPointSize") pointSize_ = numbers_[0];
        if (name == "glTexCoord2d") {
            at_.s = numbers_[0];
            at_.t = numbers_[1];
            textured_ = true;
        }
        if (name == "glBegin") {
            vertices_.clear();
            textured_ = false;
            primitive_ = numbers_[0];
        }
        if (name.starts_with("glVertex")) {
            at_.x = numbers_[0] + origins_.back().x;
            at_.y = numbers_[1] + origins_.back().y;
            vertices_.push_back(at_);
        }
        if (name == "glEnd") EndShape();
    }
    void EndShape() {
        if (primitive_ == kPoints) {
            for (const Vertex& v : vertices_) seen_.dots.push_back({v.x, v.y, pointSize_, colour_});
        }
        if (primitive_ != kQuads || vertices_.size() != 4) return;
        const Vertex& low = vertices_[0];
        const Vertex& high = vertices_[2];
        const double width = high.x - low.x;
        const double height = high.y - low.y;
        if (textured_) {
            seen_.images.push_back({texture_, low.s, low.t, low.x, low.y, width, height});
        } else {
            seen_.boxes.push_back({low.x, low.y, width, height, colour_});
        }
    }

    struct Origin {
        double x = 0.0;
        double y = 0.0;
    };
    const std::vector<std::string>& texts_;
    std::size_t nextText_;
    SeenOverlay seen_;
    std::vector<double> numbers_;
    std::vector<double> raster_ = {0.0, 0.0, 0.0};
    std::vector<Origin> origins_ = {{}};
    SeenColour colour_ = {};
    std::vector<Vertex> vertices_;
    Vertex at_ = {};
    unsigned texture_ = 0;
    bool textured_ = false;
    double primitive_ = -1.0;
    double pointSize_ = 1.0;
};

bool SameColour(const SeenColour& a, const SeenColour& b) {
    return std::equal(a.begin(), a.end(), b.begin(),
                      [](double x, double y) { return std::abs(x - y) < 1e-6; });
}

}  // namespace

std::vector<std::string> SeenOverlay::Words() const {
    std::vector<std::string> words;
    for (const SeenText& text : texts) words.push_back(text.text);
    return words;
}

const SeenText* SeenOverlay::Find(const std::string& word) const {
    const auto found = std::find_if(texts.begin(), texts.end(),
                                    [&](const SeenText& text) { return text.text == word; });
    return found == texts.end() ? nullptr : &*found;
}

const SeenBox* SeenOverlay::Find(const SeenColour& colour) const {
    const auto found = std::find_if(boxes.begin(), boxes.end(), [&](const SeenBox& box) {
        return SameColour(box.colour, colour);
    });
    return found == boxes.end() ? nullptr : &*found;
}

SeenOverlay OverlayOfPicture(const std::vector<std::string>& calls,
                             const std::vector<std::string>& texts) {
    const auto flat = std::find_if(calls.rbegin(), calls.rend(), [](const std::string& call) {
        return call.starts_with("gluOrtho2D ");
    });
    if (flat == calls.rend()) return {};
    const auto isWrite = [](const std::string& call) { return call.starts_with(kWrite); };
    const auto before = std::count_if(calls.begin(), flat.base(), isWrite);
    OverlayReader reader(texts, static_cast<std::size_t>(before));
    std::for_each(flat.base(), calls.end(), [&](const std::string& call) { reader.Read(call); });
    return reader.Take();
}
