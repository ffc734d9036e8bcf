#include <array>
#include <cstddef>
#include <iterator>

#include "cities/city_lookup.h"
#include "photos/photo_panel.h"
#include "render/translucent_rect.h"

namespace {

constexpr double kBackgroundAlpha = 0.33;

/// Text of a line that is put together for one frame; nothing is allocated.
class LineText {
public:
    void Append(WideView part) noexcept {
        const std::size_t room = characters_.size() - 1 - length_;
        length_ += Truncate(part, room).copy(characters_.data() + length_, room);
        characters_[length_] = 0;
    }
    const HorivoWideChar* Get() const noexcept { return characters_.data(); }

private:
    std::array<HorivoWideChar, 256> characters_ = {};
    std::size_t length_ = 0;
};

void DrawBackground(const PhotoPanel& panel) {
    const PanelArea& area = panel.area;
    const std::int32_t strip = TitleStripHeight(area.lineHeight);
    const std::int32_t height = panel.images.empty() ? strip : area.height;
    glEnable(GL_BLEND);
    glColor4d(0.0, 0.0, 0.0, kBackgroundAlpha);
    DrawTranslucentRect(static_cast<float>(panel.panelX), static_cast<float>(area.height - height),
                        kPhotoPanelWidth, height);
}

void DrawTitle(const PhotoPanel& panel, const CGLFont& font, const WideString& title,
               std::int32_t y) {
    const std::int32_t x = TitleX(panel.panelX, font.GetTextWidthW(title.c_str()));
    font.DrawTextW(static_cast<float>(x), static_cast<float>(y), 0.0F, title.c_str());
}

void DrawTitles(const PhotoPanel& panel, const CGLFont& font) {
    std::int32_t y = panel.area.height - panel.area.lineHeight;
    if (!panel.heading.empty()) {
        DrawTitle(panel, font, panel.heading, y);
        y -= panel.area.lineHeight;
    }
    DrawTitle(panel, font, panel.placeName, y);
}

/// Whether the pointer's height is that of the image. Deliberate: any place right of the panel's
/// edge will do, also beside a narrow photo.
bool IsPointedAt(const PhotoPanel& panel, const PanelImage& entry,
                 const CGeoPoint& pointer) noexcept {
    const std::int32_t y = pointer.mouseY - panel.panelY;
    const auto bottom = static_cast<std::int32_t>(entry.image->position.y);
    return pointer.valid && pointer.mouseX > panel.panelX && y > bottom &&
           y < bottom + entry.photo->thumbnail.GetHeight();
}

/// Draws lines of text that end left of the panel, from the top down.
class CaptionLines {
public:
    CaptionLines(const PhotoPanel& panel, const CGLFont& font, std::int32_t y) noexcept
        : panel_(panel), font_(font), y_(y) {}
    void Draw(const HorivoWideChar* text) {
        const std::int32_t x = CaptionX(panel_.panelX, font_.GetTextWidthW(text));
        font_.DrawTextW(static_cast<float>(x), static_cast<float>(y_), 0.0F, text);
        y_ -= panel_.area.lineHeight;
    }

private:
    const PhotoPanel& panel_;
    const CGLFont& font_;
    std::int32_t y_;
};

void DrawCaption(const PhotoPanel& panel, const CityTable& cities, const CGLFont& font,
                 const PhotoRecord& photo, std::int32_t mouseY) {
    const auto records = cities.Records();
    const auto index = static_cast<std::size_t>(photo.cityIndex);
    const bool namesCity = panel.heading.empty() && photo.cityIndex >= 0 && index < records.size();
    CaptionLines lines(panel, font, namesCity ? mouseY + panel.area.lineHeight / 2 : mouseY);
    if (namesCity) {
        constexpr HorivoWideChar kSeparator[] = {',', ' '};
        LineText place;
        place.Append(CityNameOf(records[index]));
        place.Append({kSeparator, std::size(kSeparator)});
        place.Append(panel.placeName);
        lines.Draw(place.Get());
    }
    if (!photo.caption.empty()) lines.Draw(photo.caption.c_str());
    constexpr HorivoWideChar kInvitation[] = {'C', 'l', 'i', 'c', 'k', ' ', 't', 'o', ' ',
                                              'e', 'n', 'l', 'a', 'r', 'g', 'e', 0};
    lines.Draw(kInvitation);
}

}  // namespace

void DrawPhotoPanel(PhotoPanel& panel, const PanelArea& area, const CityTable& cities,
                    const CGLFont& font, const CGeoPoint& pointer) {
    ResizePhotoPanel(panel, area);
    if (panel.placeName.empty()) return;
    DrawBackground(panel);
    // White: the colour of the texts, and what leaves the photos as they are.
    glColor4d(1.0, 1.0, 1.0, 1.0);
    DrawTitles(panel, font);
    panel.group.position = {static_cast<float>(panel.panelX), static_cast<float>(panel.panelY),
                            0.0F};
    panel.group.Draw();
    const auto shown = static_cast<std::size_t>(panel.shownCount);
    for (std::size_t i = 0; i < shown; ++i) {
        const PanelImage& entry = panel.images[i];
        if (!IsPointedAt(panel, entry, pointer)) continue;
        DrawCaption(panel, cities, font, *entry.photo, pointer.mouseY);
    }
}
