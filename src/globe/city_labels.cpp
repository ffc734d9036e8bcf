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

constexpr std::int32_t kRowGap = 2;      // pixels between two rows
constexpr std::int32_t kBoxOffset = 7;   // from the pointer to the box, pixels
constexpr std::int32_t kTextOffset = 9;  // from the pointer to the names
constexpr std::int32_t kBoxMargin = 4;   // both sides together
constexpr float kDotSize = 3.5F;         // pixels

using Entries = std::span<CityRecord*>;

/// Everything that the drawing needs to know; about 8 KB, on the stack.
struct LabelColumn {
    std::int32_t count = 0;     ///< entries that are shown, those without a position included
    std::int32_t selected = 0;  ///< the entry whose row is level with the pointer
    double anchorX = 0.0;       ///< the pointer's place, window pixels
    double anchorY = 0.0;
    std::int32_t lineHeight = 0;    ///< pixels
    std::int32_t rowHeight = 0;     ///< pixels
    std::int32_t maxRowWidth = 0;   ///< pixels, name, blank and time
    std::int32_t maxNameWidth = 0;  ///< pixels, name and blank
    char names[kMaxLabels][kLabelTextSize];
    char times[kMaxLabels][kLabelTextSize];
};

/// The place of a point of the globe on screen.
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

/// Whether the coordinate can be a pixel of any window; infinite ones and NaN cannot.
bool IsPixel(double coordinate) noexcept { return std::abs(coordinate) < 1e9; }

void ProjectEntries(Entries entries, const CScene& scene) noexcept {
    for (CityRecord* entry : entries) {
        if (!HasCoordinates(*entry)) continue;
        const double* m = entry->markerPoint;
        const CVector4 p = ProjectGlobePoint(scene, {m[0], m[1], m[2], m[3]});
        const double projected[4] = {p.x, p.y, p.z, p.w};
        std::copy(std::begin(projected), std::end(projected), entry->windowPoint);
    }
}

/// Highest on screen first. An insertion sort keeps its bounds whatever the comparison says; keys
/// that are not numbers make it contradict itself, which std::sort answers by leaving the array.
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

/// Writes names and times and measures them; cuts the column at the first city that has no room.
void WriteTexts(LabelColumn& column, Entries entries, const CGLFont& font,
                CityClock& clock) noexcept {
    clock.TakeTime();
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

/// The nearest city's entry; the first one when it is not among those shown.
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
    glColor4f(0.0F, 0.0F, 0.0F, 0.15F);
    DrawTranslucentRect(static_cast<float>(column.anchorX + kBoxOffset),
                        top - static_cast<float>(height), column.maxRowWidth + kBoxMargin, height);
}

void DrawDot(const CityRecord& city) noexcept {
    glColor4f(0.0F, 0.99F, 0.0F, 1.0F);
    glPointSize(kDotSize);
    glBegin(GL_POINTS);
    glVertex2d(city.windowPoint[0], city.windowPoint[1]);
    glEnd();
}

/// The bar behind the selected row. @param x, y  the column's anchor and the row's middle
void DrawHighlight(const LabelColumn& column, std::int32_t x, double y) noexcept {
    const std::int32_t halfLine = column.lineHeight / 2;
    glColor4f(0.0F, 0.95F, 0.9F, 0.17F);
    DrawTranslucentRect(static_cast<float>(x + kBoxOffset), static_cast<float>(y - halfLine - 2),
                        column.maxRowWidth + kBoxMargin, column.lineHeight + 2);
}

void DrawLabelText(const CGLFont& font, std::int32_t x, double y, const char* text) noexcept {
    font.DrawText(static_cast<float>(x), static_cast<float>(y), 0.0F, text);
    if (text[0] == '\0') glPopMatrix();  // an empty text leaves its matrix level behind
}

/// @param y  the row's middle, window pixels
void DrawRow(const LabelColumn& column, const CityRecord& city, std::int32_t i, double y,
             const CGLFont& font) noexcept {
    const auto x = static_cast<std::int32_t>(column.anchorX);
    const std::int32_t thirdOfLine = column.lineHeight / 3;
    const double textY = y - thirdOfLine;
    if (i == column.selected) {
        DrawDot(city);
        DrawHighlight(column, x, y);
        glColor3f(1.0F, 0.9F, 0.2F);
    } else {
        glColor3f(0.75F, 0.82F, 0.0F);
    }
    DrawLabelText(font, x + kTextOffset, textY, column.names[i]);
    DrawLabelText(font, x + kTextOffset + column.maxNameWidth, textY, column.times[i]);
}

void DrawRows(const LabelColumn& column, Entries entries, const CScene& scene,
              const CGLFont& font) noexcept {
    double y = column.anchorY + column.selected * column.rowHeight;
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
    for (std::int32_t i = 0; i < column.count; ++i) {
        // Deliberate: a first row at or above the window's top edge ends the column, although
        // later rows would lie inside; the box is drawn all the same.
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
    // Deliberate: the other way round than above.
    if (rawA > rawB) return 1;
    return rawB > rawA ? -1 : 0;
}

double SnapToPixel(double coordinate) noexcept {
    constexpr double kReach = 1e-6;  // pixels: far above the rounding, far below what is seen
    const double whole = std::round(coordinate);
    return std::abs(coordinate - whole) <= kReach ? whole : coordinate;
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
