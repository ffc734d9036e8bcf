#include "photos/photo_panel.h"

#include <array>
#include <cstddef>
#include <iterator>

#include "cities/city_lookup.h"
#include "render/translucent_rect.h"

namespace {

constexpr double kBackgroundAlpha = 0.33;  // titles stay legible, the globe stays visible

/// Joins parts to one line of text, at most 255 characters. Allocates nothing, because every frame
/// uses this class.
class LineText {
public:
    void Append(WideView part) noexcept {
        const std::size_t available = characters_.size() - 1 - length_;
        length_ += Truncate(part, available).copy(characters_.data() + length_, available);
        characters_[length_] = 0;
    }
    const HorivoWideChar* Get() const noexcept { return characters_.data(); }

private:
    std::array<HorivoWideChar, 256> characters_ = {};  // always terminated
    std::size_t length_ = 0;
};

/// Draws lines of text from the top down. Each line ends left of the panel.
class CaptionLines {
public:
    /// @param panelX      left edge of the panel, window pixels
    /// @param y           baseline of the first line, window pixels, y upward
    /// @param lineHeight  pixels
    CaptionLines(const CGLFont& font, std::int32_t panelX, std::int32_t y,
                 std::int32_t lineHeight) noexcept
        : font_(font), panelX_(panelX), y_(y), lineHeight_(lineHeight) {}
    void Draw(const HorivoWideChar* text) {
        const std::int32_t x = CaptionX(panelX_, font_.GetTextWidthW(text));
        font_.DrawTextW(static_cast<float>(x), static_cast<float>(y_), 0.0F, text);
        y_ -= lineHeight_;
    }

private:
    const CGLFont& font_;
    std::int32_t panelX_;
    std::int32_t y_;
    std::int32_t lineHeight_;
};

}  // namespace

void PhotoPanel::DrawPhotoPanel(const PanelArea& area, const CityTable& cities, const CGLFont& font,
                                const CGeoPoint& pointer) {
    Resize(area);
    if (placeName_.empty()) return;
    DrawBackground();
    // Draw in white: the texts are white, and white does not change the colours of the photos.
    glColor4d(1.0, 1.0, 1.0, 1.0);
    DrawTitles(font);
    group_.position = {static_cast<float>(panelX_), static_cast<float>(kPanelBottom), 0.0F};
    group_.Draw();
    const auto shown = static_cast<std::size_t>(shownCount_);
    for (std::size_t i = 0; i < shown; ++i) {
        const Image& entry = images_[i];
        if (IsPointedAt(entry, pointer)) DrawCaption(cities, font, *entry.photo, pointer.mouseY);
    }
}

void PhotoPanel::DrawBackground() const {
    const std::int32_t height = images_.empty() ? TitleStripHeight(area_.lineHeight) : area_.height;
    glEnable(GL_BLEND);
    glColor4d(0.0, 0.0, 0.0, kBackgroundAlpha);
    DrawTranslucentRect(static_cast<float>(panelX_), static_cast<float>(area_.height - height),
                        kPhotoPanelWidth, height);
}

void PhotoPanel::DrawTitles(const CGLFont& font) const {
    std::int32_t y = area_.height - area_.lineHeight;
    if (!heading_.empty()) {
        DrawTitle(font, heading_, y);
        y -= area_.lineHeight;
    }
    DrawTitle(font, placeName_, y);
}

void PhotoPanel::DrawTitle(const CGLFont& font, const WideString& title, std::int32_t y) const {
    const std::int32_t x = TitleX(panelX_, font.GetTextWidthW(title.c_str()));
    font.DrawTextW(static_cast<float>(x), static_cast<float>(y), 0.0F, title.c_str());
}

bool PhotoPanel::IsPointedAt(const Image& entry, const CGeoPoint& pointer) const noexcept {
    // Deliberate: of the image, only the top and the bottom are compared with the pointer, so the
    // caption also shows while the pointer is beside a narrow photo.
    const std::int32_t y = pointer.mouseY - kPanelBottom;
    const std::int32_t bottom = BottomOf(entry);
    return pointer.valid && pointer.mouseX > panelX_ && y > bottom &&
           y < bottom + entry.photo->thumbnail.GetHeight();
}

void PhotoPanel::DrawCaption(const CityTable& cities, const CGLFont& font, const PhotoRecord& photo,
                             std::int32_t mouseY) const {
    const auto records = cities.Records();
    const auto index = static_cast<std::size_t>(photo.cityIndex);
    const bool namesCity = heading_.empty() && photo.cityIndex >= 0 && index < records.size();
    const std::int32_t firstY = namesCity ? mouseY + area_.lineHeight / 2 : mouseY;
    CaptionLines lines(font, panelX_, firstY, area_.lineHeight);
    if (namesCity) {
        constexpr HorivoWideChar kSeparator[] = {',', ' '};
        LineText place;
        place.Append(CityNameOf(records[index]));
        place.Append({kSeparator, std::size(kSeparator)});
        place.Append(placeName_);
        lines.Draw(place.Get());
    }
    if (!photo.caption.empty()) lines.Draw(photo.caption.c_str());
    constexpr HorivoWideChar kInvitation[] = {'C', 'l', 'i', 'c', 'k', ' ', 't', 'o', ' ',
                                              'e', 'n', 'l', 'a', 'r', 'g', 'e', 0};
    lines.Draw(kInvitation);
}
