#include "window/status_lines.h"

#include <cstdio>

#include "base/gl.h"
#include "globe/lat_long_text.h"
#include "globe/planet.h"
#include "math/angles.h"

namespace {

constexpr std::int32_t kLeft = 4;           // pixels from the left edge to each line
constexpr std::int32_t kFirstBaseline = 4;  // pixels from the bottom edge to the first line
constexpr std::int32_t kLineGap = 2;        // pixels between two lines
constexpr std::int32_t kInfoGap = 4;        // pixels added above the detail line
constexpr std::uint32_t kSizeMultiple = 4;  // pixels; sides are shown rounded down to a multiple
constexpr float kMaxFps = 1000.0F;          // a higher rate: the frame was too short to measure
constexpr std::size_t kLineSize = 256;      // characters with terminator

/// Writes lines of text, each above the one before.
class LinePen {
public:
    explicit LinePen(const CGLFont& font) noexcept : font_(font) {}

    void Write(const char* text) {
        font_.DrawText(static_cast<float>(x_), static_cast<float>(y_), 0.0F, text);
        // Pop the matrix that DrawText leaves pushed for an empty text.
        if (*text == '\0') glPopMatrix();
        x_ += font_.GetTextWidth(text);
    }
    void EndLine(std::int32_t gap = 0) noexcept {
        x_ = kLeft;
        y_ += font_.GetHeight() + kLineGap + gap;
    }
    void WriteLine(const char* text) {
        Write(text);
        EndLine();
    }

private:
    const CGLFont& font_;
    std::int32_t x_ = kLeft;
    std::int32_t y_ = kFirstBaseline;
};

std::uint32_t WithoutPadding(std::uint32_t size) noexcept {
    return size / kSizeMultiple * kSizeMultiple;
}

void WriteDetail(const StatusLines& lines, LinePen& pen) {
    char text[kLineSize];
    const LevelOfDetail& detail = lines.detail;
    int length =
        std::snprintf(text, sizeof text,
                      "per. factor: %d%%, atmo layers: %d, slices: %d, stacks %d, "
                      "texture size %dx%d(max %dx%d)",
                      detail.Factor(), detail.Mesh().atmosphereLayers, detail.Mesh().sphereSlices,
                      detail.Mesh().sphereStacks,
                      static_cast<int>(WithoutPadding(lines.tileWidth) * kTileColumns),
                      static_cast<int>(WithoutPadding(lines.tileHeight) * kTileRows),
                      lines.maxTextureSize * kTileColumns, lines.maxTextureSize * kTileRows);
    length = Clamp(length, 0, static_cast<int>(sizeof text) - 1);
    if (detail.IsMeasuring()) {
        std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length), ", test %d/%d",
                      detail.FramesMeasured(), kMeasuredFrames);
    }
    pen.Write(text);
    pen.EndLine(kInfoGap);
}

void WriteInformation(const StatusLines& lines, LinePen& pen) {
    if (lines.textured) WriteDetail(lines, pen);
    pen.Write("Renderer: ");
    pen.Write(lines.renderer);
    pen.Write(", Version: ");
    pen.Write(lines.version);
    pen.EndLine();
    pen.Write("Vendor: ");
    pen.Write(lines.vendor);
    pen.EndLine();
}

void WriteFrameRate(float fps, LinePen& pen) {
    char text[kLineSize] = "FPS N/A";
    if (fps <= kMaxFps) std::snprintf(text, sizeof text, "%1.1f FPS", static_cast<double>(fps));
    pen.WriteLine(text);
}

void WriteReadout(const CGeoPoint& geoPoint, LinePen& pen) {
    char text[kLatLongTextSize];
    FormatLatLong(text, geoPoint.latitudeDeg, geoPoint.longitudeDeg);
    pen.WriteLine(text);
}

}  // namespace

void DrawStatusLines(const StatusLines& lines, const CGLFont& font) {
    LinePen pen(font);
    glColor3d(1.0, 1.0, 1.0);
    WriteReadout(lines.geoPoint, pen);
    if (lines.showInfo) WriteInformation(lines, pen);
    if (lines.showFps) WriteFrameRate(lines.detail.FrameRate(), pen);
    if (lines.loading) {
        glColor3d(1.0, 0.0, 0.0);
        pen.WriteLine("Loading texture...");
    }
    if (lines.splitting) {
        glColor3d(1.0, 0.0, 0.0);
        pen.WriteLine("Rescaling and splitting textures...");
    }
}
