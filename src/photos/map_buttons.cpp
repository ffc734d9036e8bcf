#include "photos/map_buttons.h"

#include <algorithm>
#include <iterator>
#include <memory>

#include "photos/panel_layout.h"
#include "render/overlay_button.h"
#include "render/overlay_texture.h"

namespace {

// Windows' virtual-key codes, defined here because this file is portable.
constexpr std::int32_t kKeyPrior = 33;
constexpr std::int32_t kKeyNext = 34;
constexpr std::int32_t kKeyHome = 36;
constexpr std::int32_t kKeyLeft = 37;
constexpr std::int32_t kKeyUp = 38;
constexpr std::int32_t kKeyRight = 39;
constexpr std::int32_t kKeyDown = 40;
constexpr std::int32_t kKeyInsert = 45;
constexpr std::int32_t kKeyAdd = 107;
constexpr std::int32_t kKeySubtract = 109;

constexpr float kHiddenY = -32.0F;  // pixels; hides a button: none is taller than 32 pixels

/// Pixels by which the hint is raised. Without them, the whole line, including its descenders,
/// would be centred on the button, and the letters would look too low.
constexpr float kHintLift = 4.0F;
constexpr std::int32_t kHintGap = 1;  // pixels between the hint and the panel

struct ButtonSpec {
    std::int32_t id;      // virtual-key code
    float x, y;           // position in the group, pixels
    std::int32_t u, v;    // lower-left pixel of the highlighted picture in the sheet
    float width, height;  // pixels
};

enum ButtonIndex : std::int32_t { kPhotosButton = 7, kPreviousButton, kNextButton };

// First the buttons for the view: a block of 3 x 3 cells of 32 pixels, 6 pixels from the
// lower-left corner of the panel, with no button in its two lower corners. Then the photo buttons
// in the order of ButtonIndex. Each frame sets the y of the photo buttons again.
constexpr ButtonSpec kButtons[] = {
    {kKeyDown, 38, 6, 32, 0, 32, 32},
    {kKeyLeft, 6, 38, 0, 32, 32, 32},
    {kKeyHome, 38, 38, 32, 32, 32, 32},
    {kKeyRight, 70, 38, 64, 32, 32, 32},
    {kKeyAdd, 6, 70, 0, 64, 32, 32},
    {kKeyUp, 38, 70, 32, 64, 32, 32},
    {kKeySubtract, 70, 70, 0, 0, 32, 32},
    {kKeyInsert, 4, kHiddenY, 0, 96, 100, kPhotosButtonHeight},
    {kKeyPrior, 40, kHiddenY, 64, 64, 9, kPagingButtonHeight},
    // Overlaps the photos button. In the overlap, this button gets the click, and its picture is
    // transparent.
    {kKeyNext, 59, kHiddenY, 64, 0, 9, 32},
};
static_assert(kButtons[kPhotosButton].id == kKeyInsert && kButtons[kNextButton].id == kKeyNext &&
                  std::size(kButtons) == kNextButton + 1,
              "ButtonIndex must give the rows of the photo buttons");

std::unique_ptr<C2DButton2> NewButton(const ButtonSpec& spec, GLuint sheet) {
    auto button = std::make_unique<C2DButton2>();
    button->SetImage(sheet, spec.u, spec.v, kSheetWidth, kSheetHeight);
    button->position = {spec.x, spec.y, 0.0F};
    button->size = {spec.width, spec.height};
    button->commandId = spec.id;
    return button;
}

/// Returns a child of the group as a button; the group holds nothing but buttons.
C2DButton2* ButtonAt(const CGLGroup& group, std::int32_t index) noexcept {
    return static_cast<C2DButton2*>(group.GetChild(index));
}

float ShownAt(bool shown, std::int32_t y) noexcept {
    return shown ? static_cast<float>(y) : kHiddenY;
}

}  // namespace

bool ActsOnRelease(std::int32_t key) noexcept {
    return key == kKeyHome || key == kKeyPrior || key == kKeyNext || key == kKeyInsert;
}

void MapButtons::CreateButtons(const std::uint8_t* sheet) {
    DestroyButtons();
    if (sheet == nullptr) return;
    UploadSheet(sheet);
    try {
        AddButtons();
    } catch (...) {
        DestroyButtons();  // the other functions need all buttons or none
        throw;
    }
}

void MapButtons::AddButtons() {
    for (const ButtonSpec& spec : kButtons) {
        group_.AddChild(NewButton(spec, texture_));
    }
}

void MapButtons::UploadSheet(const std::uint8_t* sheet) noexcept {
    glGenTextures(1, &texture_);
    UploadOverlayTexture(texture_, kSheetWidth, kSheetHeight, sheet);
}

void MapButtons::DestroyButtons() noexcept {
    group_.DeleteChildren();
    if (texture_ == 0) return;
    glDeleteTextures(1, &texture_);
    texture_ = 0;
}

void MapButtons::LayoutButtons(const ButtonLayout& layout, const CGLFont& font,
                               const HorivoWideChar* hint) {
    PlacePhotoButtons(layout, font.GetHeight());
    group_.position.x = static_cast<float>(layout.windowWidth - kPhotoPanelWidth);
    DrawGroup();
    DrawHint(layout, font, hint);
}

void MapButtons::PlacePhotoButtons(const ButtonLayout& layout, std::int32_t lineHeight) noexcept {
    if (group_.GetChildCount() == 0) return;
    const std::int32_t pagingY = layout.windowHeight - TitleStripHeight(lineHeight) + kPagingGap;
    const std::int32_t photosY = layout.windowHeight - PhotosButtonDepth(lineHeight);
    ButtonAt(group_, kNextButton)->position.y = ShownAt(HasNextPhotos(layout.page), pagingY);
    ButtonAt(group_, kPreviousButton)->position.y =
        ShownAt(HasPreviousPhotos(layout.page), pagingY);
    ButtonAt(group_, kPhotosButton)->position.y = ShownAt(layout.offerPhotos, photosY);
}

void MapButtons::DrawGroup() {
    glEnable(GL_ALPHA_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
    group_.Draw();
    glDisable(GL_BLEND);
    glDisable(GL_ALPHA_TEST);
}

void MapButtons::DrawHint(const ButtonLayout& layout, const CGLFont& font,
                          const HorivoWideChar* hint) const {
    if (hint == nullptr || hint[0] == 0 || group_.GetChildCount() == 0) return;
    const C2DButton2& button = *ButtonAt(group_, kPhotosButton);
    if (!layout.offerPhotos || !button.highlighted) return;
    const std::int32_t right = layout.windowWidth - kPhotoPanelWidth - kHintGap;
    // x must be at least 0: OpenGL draws no part of a text that begins left of the window.
    const std::int32_t x = std::max(right - font.GetTextWidthW(hint), 0);
    const float middle = (button.size.height - static_cast<float>(font.GetHeight())) / 2.0F;
    const float y = button.position.y + group_.position.y + kHintLift + middle;
    font.DrawTextW(static_cast<float>(x), y, 0.0F, hint);
}

std::int32_t MapButtons::HitTestButtons(std::int32_t x, std::int32_t y, bool clearOnly,
                                        std::int32_t windowWidth) noexcept {
    const std::int32_t groupX = x - (windowWidth - kPhotoPanelWidth);
    std::int32_t hit = 0;
    for (std::int32_t i = 0; i < group_.GetChildCount(); ++i) {
        C2DButton2& button = *ButtonAt(group_, i);
        button.highlighted = !clearOnly && button.HitTest(groupX, y);
        if (button.highlighted) hit = button.commandId;
    }
    return hit;
}
