#include "photos/photo_panel.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>

#include "photos/photo_files.h"

namespace {

constexpr std::int32_t kFirstOffsetStep = 20;  // pixels between images before their first layout

std::int32_t PhotoY(const PanelImage& entry) noexcept {
    return static_cast<std::int32_t>(entry.image->position.y);
}

void PlaceImages(PhotoPanel& panel) noexcept {
    PhotoStack stack(panel.area);
    for (const PanelImage& entry : panel.images) {
        const std::int32_t height = entry.photo->thumbnail.GetHeight();
        entry.image->position.y = static_cast<float>(stack.Place(height));
    }
    panel.shownCount = stack.GetShownCount();
}

void UploadThumbnail(GLuint texture, const CJpegTexture& thumbnail) noexcept {
    constexpr GLint kComponents = 4;
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, kComponents, thumbnail.GetBufferWidth(),
                 thumbnail.GetBufferHeight(), 0, GL_RGBA, GL_UNSIGNED_BYTE, thumbnail.GetPixels());
}

std::unique_ptr<C2DImage> NewImage(const CJpegTexture& thumbnail, std::int32_t y) {
    auto image = std::make_unique<C2DImage>();
    const std::int32_t width = thumbnail.GetWidth();
    image->size = {static_cast<float>(width), static_cast<float>(thumbnail.GetHeight())};
    // Deliberate: a photo wider than the panel hangs over both edges.
    const std::int32_t left = (kPhotoPanelWidth - width) / 2;
    image->position = {static_cast<float>(left), static_cast<float>(y), 0.0F};
    return image;
}

void AddImages(PhotoPanel& panel) {
    const std::size_t count = std::min(panel.photoSet.loaded.size(), panel.textures.size());
    panel.images.reserve(count);
    std::int32_t y = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const PhotoRecord* photo = panel.photoSet.loaded[i];
        auto image = NewImage(photo->thumbnail, y);
        panel.group.AddChild(image.get());
        panel.images.push_back({image.release(), photo});
        y += photo->thumbnail.GetHeight() + kFirstOffsetStep;
    }
    panel.uploadsWait = true;
}

/// Pixels that a photo takes in the panel. One that is not loaded is measured by its file; one that
/// cannot be shown takes none.
std::int32_t RoomOf(const PhotoRecord& photo, const CityTable& cities) {
    std::int32_t height = photo.thumbnail.GetHeight();
    if (height <= 0) {
        WideString path;
        std::int32_t width = 0;
        const bool measured = GetPhotoPath(cities, photo.cityIndex, photo.photoNumber, path) &&
                              ReadPhotoSize(path, width, height);
        if (!measured || !IsThumbnailSize(width, height)) return 0;
    }
    return height + kPhotoGap;
}

}  // namespace

void ResizePhotoPanel(PhotoPanel& panel, const PanelArea& area) noexcept {
    panel.area = area;
    panel.panelX = PanelX(area);
    PlaceImages(panel);
}

void BuildPhotoPanel(PhotoPanel& panel, const CityTable& cities, WideView country, WideView city,
                     bool reload) {
    DeletePanelImages(panel);
    if (country.empty()) {
        DeletePhotos(panel.photoSet);
        panel.photoSet.country.clear();
        panel.photoSet.city.clear();
        return;
    }
    if (reload) LoadPhotoSet(panel.photoSet, cities, country, city);
    if (panel.photoSet.loaded.empty()) return;
    AddImages(panel);
    // A click may come before the next frame: it must find the images where that will draw them.
    PlaceImages(panel);
}

void UploadPhotos(PhotoPanel& panel) noexcept {
    if (!std::exchange(panel.uploadsWait, false)) return;
    if (panel.textures[0] == 0) {
        glGenTextures(static_cast<GLsizei>(panel.textures.size()), panel.textures.data());
    }
    for (std::size_t i = 0; i < panel.images.size(); ++i) {
        const CJpegTexture& thumbnail = panel.images[i].photo->thumbnail;
        UploadThumbnail(panel.textures[i], thumbnail);
        panel.images[i].image->SetTexture(panel.textures[i], thumbnail.GetBufferWidth(),
                                          thumbnail.GetBufferHeight());
    }
}

void ShowPhotoPanel(PhotoPanel& panel, const CityTable& cities, WideString name, WideString key) {
    panel.placeName = std::move(name);
    panel.heading = std::move(key);
    panel.photoSet.ranks.clear();
    BuildPhotoPanel(panel, cities, panel.placeName, panel.heading, true);
}

void DeletePanelImages(PhotoPanel& panel) noexcept {
    panel.images.clear();
    panel.group.DeleteChildren();
    panel.shownCount = 0;
    panel.uploadsWait = false;
}

void DeletePhotoTextures(PhotoPanel& panel) noexcept {
    if (panel.textures[0] == 0) return;
    glDeleteTextures(static_cast<GLsizei>(panel.textures.size()), panel.textures.data());
    panel.textures = {};
}

const PhotoRecord* FindPhotoAt(const PhotoPanel& panel, std::int32_t x, std::int32_t y) noexcept {
    const std::int32_t panelX = x - panel.panelX;
    const std::int32_t panelY = y - panel.panelY;
    for (std::int32_t i = 0; i < panel.shownCount; ++i) {
        const PanelImage& entry = panel.images[static_cast<std::size_t>(i)];
        const auto left = static_cast<std::int32_t>(entry.image->position.x);
        const std::int32_t bottom = PhotoY(entry);
        const CJpegTexture& thumbnail = entry.photo->thumbnail;
        if (panelX >= left && panelX < left + thumbnail.GetWidth() && panelY >= bottom &&
            panelY < bottom + thumbnail.GetHeight()) {
            return entry.photo;
        }
    }
    return nullptr;
}

std::int32_t HitTestPhoto(const PhotoPanel& panel, std::int32_t x, std::int32_t y) noexcept {
    const PhotoRecord* photo = FindPhotoAt(panel, x, y);
    return photo != nullptr ? photo->photoNumber : -1;
}

PhotoPage PageOf(const PhotoPanel& panel) noexcept {
    const PhotoSet& set = panel.photoSet;
    const auto count = static_cast<std::int32_t>(set.photos.size());
    return {set.firstShown, panel.shownCount, count, set.brokenFrom};
}

bool PageForward(PhotoPanel& panel) noexcept {
    const std::int32_t next = NextFirstShown(PageOf(panel));
    return std::exchange(panel.photoSet.firstShown, next) != next;
}

bool PageBack(PhotoPanel& panel, const CityTable& cities) {
    PhotoSet& set = panel.photoSet;
    // Photos may have vanished since the page was turned.
    const auto count = static_cast<std::int32_t>(set.photos.size());
    const std::int32_t from = std::clamp(set.firstShown, 0, count);
    std::array<std::int32_t, kPhotosPerPage> rooms = {};
    const auto before = static_cast<std::size_t>(std::min(from, kPhotosPerPage));
    for (std::size_t i = 0; i < before; ++i) {
        rooms[i] = RoomOf(*set.photos[static_cast<std::size_t>(from) - 1 - i], cities);
    }
    const std::int32_t previous =
        PreviousFirstShown(from, std::span(rooms).first(before), PhotoStackHeight(panel.area));
    return std::exchange(set.firstShown, previous) != previous;
}

bool IsHoverOverPanel(const PhotoPanel& panel, std::int32_t x) noexcept {
    return !panel.images.empty() && x >= panel.panelX;
}

bool IsClickOnPanel(const PhotoPanel& panel, std::int32_t x) noexcept {
    return !panel.images.empty() && x > panel.panelX;
}

bool IsWheelOverPanel(const PhotoPanel& panel, std::int32_t x) noexcept {
    return x > panel.panelX && panel.photoSet.photos.size() > kMostThumbnails;
}
