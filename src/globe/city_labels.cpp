#include "globe/city_labels.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <span>

#include "base/gl.h"
#include "base/narrow_text.h"
#include "cities/city_lookup.h"
#include "render/translucent_rect.h"

namespace {

// Lengths in pixels.
constexpr std::int32_t kRowGap = 2;      // vertical space between two rows
constexpr std::int32_t kBoxOffset = 7;   // horizontal distance from the pointer to the box
constexpr std::int32_t kTextOffset = 9;  // horizontal distance from the pointer to the names
constexpr std::int32_t kBoxMargin = 4;   // sum of the left and the right margin of the box
constexpr float kDotSize = 3.5F;         // larger than a city point, so that the dot covers it

struct Colour {
    float red, green, blue;
};
constexpr Colour kWhite = {1.0F, 1.0F, 1.0F};
constexpr Colour kBoxColour = {0.0F, 0.0F, 0.0F};
constexpr float kBoxAlpha = 0.15F;                        // the map stays visible behind the box
constexpr Colour kTextColour = {0.75F, 0.82F, 0.0F};      // dull yellow
constexpr Colour kSelectedColour = {1.0F, 0.9F, 0.2F};    // bright yellow
constexpr Colour kHighlightColour = {0.0F, 0.95F, 0.9F};  // turquoise
constexpr float kHighlightAlpha = 0.17F;                  // the map and the box stay visible
constexpr Colour kDotColour = {0.0F, 0.99F, 0.0F};        // green, like the city points in range
constexpr float kOpaque = 1.0F;

void SetColour(const Colour& colour) noexcept { glColor3f(colour.red, colour.green, colour.blue); }

void SetColour(const Colour& colour, float alpha) noexcept {
    glColor4f(colour.red, colour.green, colour.blue, alpha);
}

using Entries = std::span<CityRecord*>;

/// Layout and texts of the labels of one frame; about 8 KB, on the stack.
struct LabelColumn {
    std::int32_t count = 0;        ///< number of entries that WriteTexts has processed
    std::int32_t selected = 0;     ///< index of the entry whose row is at the height of the pointer
    double anchorX = 0.0;          ///< x of the pointed place, window pixels
    double anchorY = 0.0;          ///< y of the pointed place, window pixels, y upward
    std::int32_t lineHeight = 0;   ///< height of a text line in the font, pixels
    std::int32_t rowHeight = 0;    ///< height of a line plus the gap to the next line, pixels
    std::int32_t maxRowWidth = 0;  ///< widest row: name + one space character + time, pixels
    std::int32_t maxNameWidth = 0;  ///< widest name + one space character, pixels
    char names[kMaxLabels][kLabelTextSize];
    char times[kMaxLabels][kLabelTextSize];
};

/// Projects a point of the globe to window pixels.
CVector4 ProjectGlobePoint(const CScene& scene, const CVector4& point) noexcept {
    CVector4 turned = point;
    scene.TransformPoint(turned, 0, 1);
    return scene.ProjectToWindow(turned);
}

bool IsBehindLimb(const CScene& scene, const CVector4& point, double limbDepth) noexcept {
    CVector4 inCamera = point;
    scene.TransformPoint(inCamera, 1, 1);
    return limbDepth > inCamera.z;
}

/// Whether `coordinate` can be the coordinate of a pixel in a window; false for infinity and NaN.
bool IsPixel(double coordinate) noexcept {
    // This limit is larger than any window, and the layout of smaller values fits into 32 bits.
    constexpr double kMaxCoordinate = 1e9;
    return std::abs(coordinate) < kMaxCoordinate;
}

void ProjectEntries(Entries entries, const CScene& scene) noexcept {
    for (CityRecord* entry : entries) {
        if (!HasCoordinates(*entry)) continue;
        const double* m = entry->markerPoint;
        const CVector4 p = ProjectGlobePoint(scene, {m[0], m[1], m[2], m[3]});
        const double projected[4] = {p.x, p.y, p.z, p.w};
        std::copy(std::begin(projected), std::end(projected), entry->windowPoint);
    }
}

/// Sorts the entries from the highest on the screen to the lowest. Uses an insertion sort, because
/// keys that are NaN make the comparison inconsistent, and std::sort may then access memory outside
/// the array.
/// @param reference  passed to CompareMarkers
void SortTopToBottom(Entries entries, double reference) noexcept {
    for (std::size_t i = 1; i < entries.size(); ++i) {
        CityRecord* const moving = entries[i];
        std::size_t place = i;
        while (place > 0 && CompareMarkers(*entries[place - 1], *moving, reference) > 0) {
            entries[place] = entries[place - 1];
            --place;
        }
        entries[place] = moving;
    }
}

void WriteName(const CityRecord& city, char (&text)[kLabelTextSize]) noexcept {
    const WideView name = CityNameOf(city);
    NarrowText(name.data(), static_cast<std::int32_t>(name.size()), text, kLabelTextSize);
}

/// Writes the names and times into the column and measures them. Stops at the first city that has a
/// position and an index of kMaxLabels or more.
void WriteTexts(LabelColumn& column, Entries entries, const CGLFont& font,
                CityClock& clock) noexcept {
    clock.ReadTime();
    const std::int32_t gap = font.GetTextWidth(" ");
    for (column.count = 0; column.count < std::ssize(entries); ++column.count) {
        const std::int32_t i = column.count;
        CityRecord& city = *entries[static_cast<std::size_t>(i)];
        if (!HasCoordinates(city)) continue;
        if (i >= kMaxLabels) return;
        clock.WriteTime(city, column.times[i]);
        WriteName(city, column.names[i]);
        const std::int32_t nameWidth = font.GetTextWidth(column.names[i]) + gap;
        const std::int32_t rowWidth = nameWidth + font.GetTextWidth(column.times[i]);
        column.maxNameWidth = std::max(column.maxNameWidth, nameWidth);
        column.maxRowWidth = std::max(column.maxRowWidth, rowWidth);
    }
}

/// Returns the index of the nearest city in `shown`, or 0 when `shown` does not contain that city.
std::int32_t FindSelected(Entries shown) noexcept {
    const auto isNearest = [](const CityRecord* entry) {
        return HasCoordinates(*entry) && entry->nearest != 0;
    };
    const auto found = std::find_if(shown.begin(), shown.end(), isNearest);
    return found == shown.end() ? 0 : static_cast<std::int32_t>(found - shown.begin());
}

void DrawBackground(const LabelColumn& column) noexcept {
    const std::int32_t height = column.count * column.rowHeight;
    const std::int32_t halfLine = column.lineHeight / 2;
    const auto top =
        static_cast<float>(column.anchorY + column.selected * column.rowHeight + halfLine);
    SetColour(kBoxColour, kBoxAlpha);
    DrawTranslucentRect(static_cast<float>(column.anchorX + kBoxOffset),
                        top - static_cast<float>(height), column.maxRowWidth + kBoxMargin, height);
}

void DrawDot(const CityRecord& city) noexcept {
    SetColour(kDotColour, kOpaque);
    glPointSize(kDotSize);
    glBegin(GL_POINTS);
    glVertex2d(city.windowPoint[0], city.windowPoint[1]);
    glEnd();
}

/// Draws the bar behind the selected row.
/// @param x  anchorX of the column, truncated to whole pixels
/// @param y  middle of the row, window pixels
void DrawHighlight(const LabelColumn& column, std::int32_t x, double y) noexcept {
    const std::int32_t halfLine = column.lineHeight / 2;
    SetColour(kHighlightColour, kHighlightAlpha);
    DrawTranslucentRect(static_cast<float>(x + kBoxOffset),
                        static_cast<float>(y - halfLine - kRowGap), column.maxRowWidth + kBoxMargin,
                        column.rowHeight);
}

void DrawLabelText(const CGLFont& font, std::int32_t x, double y, const char* text) noexcept {
    font.DrawText(static_cast<float>(x), static_cast<float>(y), 0.0F, text);
    if (text[0] == '\0') glPopMatrix();  // for an empty text, DrawText does not pop its matrix
}

/// Draws the row of the entry with index `i`. @param y  middle of the row, window pixels
void DrawRow(const LabelColumn& column, const CityRecord& city, std::int32_t i, double y,
             const CGLFont& font) noexcept {
    const auto x = static_cast<std::int32_t>(column.anchorX);
    const std::int32_t thirdOfLine = column.lineHeight / 3;
    const double textY = y - thirdOfLine;  // baseline that centres the letters in the row
    if (i == column.selected) {
        DrawDot(city);
        DrawHighlight(column, x, y);
        SetColour(kSelectedColour);
    } else {
        SetColour(kTextColour);
    }
    DrawLabelText(font, x + kTextOffset, textY, column.names[i]);
    DrawLabelText(font, x + kTextOffset + column.maxNameWidth, textY, column.times[i]);
}

void DrawRows(const LabelColumn& column, Entries entries, const CScene& scene,
              const CGLFont& font) noexcept {
    double y = column.anchorY + column.selected * column.rowHeight;
    SetColour(kWhite, kOpaque);
    for (std::int32_t i = 0; i < column.count; ++i) {
        // Deliberate: when the first row is at or above the upper edge of the window, no row is
        // drawn, although later rows would be inside the window. The box is drawn in any case.
        if (y >= scene.height) return;
        const CityRecord& city = *entries[static_cast<std::size_t>(i)];
        if (!HasCoordinates(city)) continue;
        DrawRow(column, city, i, y, font);
        y -= column.rowHeight;
    }
}

}  // namespace

std::int32_t CompareMarkers(const CityRecord& a, const CityRecord& b, double reference) noexcept {
    const double rawA = a.windowPoint[1];
    const double rawB = b.windowPoint[1];
    const double keyA = rawA - reference;
    const double keyB = rawB - reference;
    if (keyB > keyA) return 1;
    if (keyA > keyB) return -1;
    // The subtraction rounds, so different y can give equal keys. Deliberate: then the city with
    // the larger y comes last, in the opposite order to the above.
    if (rawA > rawB) return 1;
    return rawB > rawA ? -1 : 0;
}

double SnapToPixel(double coordinate) noexcept {
    constexpr double kMaxError = 1e-6;  // pixels; far above rounding errors, too small to see
    const double whole = std::round(coordinate);
    return std::abs(coordinate - whole) <= kMaxError ? whole : coordinate;
}

void RenderCityLabels(CityRecord** entries, std::int32_t count, const CGeoPoint& geoPoint,
                      const CScene& scene, const CGLFont& font, double limbDepth,
                      CityClock& clock) noexcept {
    if (entries == nullptr || count <= 0) return;
    if (IsBehindLimb(scene, geoPoint.globePoint, limbDepth)) return;
    const Entries all(entries, static_cast<std::size_t>(count));
    const CVector4 anchor = ProjectGlobePoint(scene, geoPoint.globePoint);
    if (!IsPixel(anchor.x) || !IsPixel(anchor.y)) return;

    LabelColumn column;
    column.anchorX = SnapToPixel(anchor.x);
    column.anchorY = SnapToPixel(anchor.y);
    column.lineHeight = font.GetHeight();
    column.rowHeight = column.lineHeight + kRowGap;
    ProjectEntries(all, scene);
    SortTopToBottom(all, column.anchorY);
    WriteTexts(column, all, font, clock);
    column.selected = FindSelected(all.first(static_cast<std::size_t>(column.count)));
    DrawBackground(column);
    DrawRows(column, all, scene, font);
}
