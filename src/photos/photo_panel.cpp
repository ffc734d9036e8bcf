#include "photos/photo_panel.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>

#include "photos/photo_files.h"
#include "render/overlay_texture.h"

namespace {

/// Makes an image of a photo, centred in the panel. PlaceImages sets its vertical position.
std::unique_ptr<C2DImage> NewImage(const CJpegTexture& thumbnail) {
    auto image = std::make_unique<C2DImage>();
    const std::int32_t width = thumbnail.GetWidth();
    image->size = {static_cast<float>(width), static_cast<float>(thumbnail.GetHeight())};
    // Deliberate: a photo wider than the panel extends past both of its edges.
    const std::int32_t left = (kPhotoPanelWidth - width) / 2;
    image->position.x = static_cast<float>(left);
    return image;
}

/// Returns the height of a photo in the panel plus the gap below the photo, pixels, or 0 for a
/// photo that cannot be shown. For a photo that is not loaded, reads the size from the header of
/// the file.
std::int32_t HeightInPanel(const PhotoRecord& photo, const CityTable& cities) {
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

std::int32_t PhotoPanel::BottomOf(const Image& entry) noexcept {
    return static_cast<std::int32_t>(entry.image->position.y);
}

void PhotoPanel::Resize(const PanelArea& area) noexcept {
    area_ = area;
    panelX_ = PanelX(area);
    PlaceImages();
}

void PhotoPanel::PlaceImages() noexcept {
    PhotoStack stack(area_);
    for (const Image& entry : images_) {
        const std::int32_t height = entry.photo->thumbnail.GetHeight();
        entry.image->position.y = static_cast<float>(stack.Place(height));
    }
    shownCount_ = stack.GetShownCount();
}

void PhotoPanel::ShowPlace(const CityTable& cities, WideString country, WideString city) {
    placeName_ = std::move(country);
    heading_ = std::move(city);
    ForgetCityOrder();
    BuildPhotoPanel(cities, PhotoSource::Disk);
}

void PhotoPanel::BuildPhotoPanel(const CityTable& cities, PhotoSource source) {
    DeleteImages();
    if (placeName_.empty()) {
        DeletePhotos(photoSet_);
        photoSet_.country.clear();
        photoSet_.city.clear();
        return;
    }
    if (source == PhotoSource::Disk) ReloadPhotoSet(cities);
    if (!HasThumbnails()) return;
    AddImages();
    // Lay out the images now: a click may come before the next frame and must find the images where
    // the next frame will draw them.
    PlaceImages();
}

void PhotoPanel::ReloadPhotoSet(const CityTable& cities) {
    LoadPhotoSet(photoSet_, cities, placeName_, heading_);
}

void PhotoPanel::AddImages() {
    const std::size_t count = std::min(photoSet_.loaded.size(), textureNames_.size());
    images_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const PhotoRecord* photo = photoSet_.loaded[i];
        images_.push_back({group_.AddChild(NewImage(photo->thumbnail)), photo});
    }
    uploadPending_ = true;
}

void PhotoPanel::UploadPhotos() noexcept {
    if (!std::exchange(uploadPending_, false)) return;
    if (textureNames_[0] == 0) {
        glGenTextures(static_cast<GLsizei>(textureNames_.size()), textureNames_.data());
    }
    for (std::size_t i = 0; i < images_.size(); ++i) {
        const CJpegTexture& thumbnail = images_[i].photo->thumbnail;
        const std::int32_t width = thumbnail.GetBufferWidth();
        const std::int32_t height = thumbnail.GetBufferHeight();
        UploadOverlayTexture(textureNames_[i], width, height, thumbnail.GetPixels());
        images_[i].image->SetTexture(textureNames_[i], width, height);
    }
}

void PhotoPanel::DeleteImages() noexcept {
    images_.clear();
    group_.DeleteChildren();
    shownCount_ = 0;
    uploadPending_ = false;
}

void PhotoPanel::DeleteImagesAndPhotos() noexcept {
    DeleteImages();
    DeletePhotos(photoSet_);
}

void PhotoPanel::DeleteTextures() noexcept {
    if (textureNames_[0] == 0) return;
    glDeleteTextures(static_cast<GLsizei>(textureNames_.size()), textureNames_.data());
    textureNames_ = {};
}

const PhotoRecord* PhotoPanel::FindPhotoAt(std::int32_t x, std::int32_t y) const noexcept {
    const std::int32_t groupX = x - panelX_;
    const std::int32_t groupY = y - kPanelBottom;
    for (std::int32_t i = 0; i < shownCount_; ++i) {
        const Image& entry = images_[static_cast<std::size_t>(i)];
        const auto left = static_cast<std::int32_t>(entry.image->position.x);
        const std::int32_t bottom = BottomOf(entry);
        const CJpegTexture& thumbnail = entry.photo->thumbnail;
        if (groupX >= left && groupX < left + thumbnail.GetWidth() && groupY >= bottom &&
            groupY < bottom + thumbnail.GetHeight()) {
            return entry.photo;
        }
    }
    return nullptr;
}

std::int32_t PhotoPanel::HitTestPhoto(std::int32_t x, std::int32_t y) const noexcept {
    const PhotoRecord* photo = FindPhotoAt(x, y);
    return photo != nullptr ? photo->photoNumber : -1;
}

PhotoPage PhotoPanel::GetPage() const noexcept {
    const auto count = static_cast<std::int32_t>(photoSet_.photos.size());
    return {photoSet_.firstShown, shownCount_, count, photoSet_.brokenFrom};
}

bool PhotoPanel::PageForward() noexcept {
    const std::int32_t next = NextFirstShown(GetPage());
    return std::exchange(photoSet_.firstShown, next) != next;
}

bool PhotoPanel::PageBack(const CityTable& cities) {
    // Limit the index: the list may have become shorter since the page was turned.
    const auto count = static_cast<std::int32_t>(photoSet_.photos.size());
    const std::int32_t from = std::clamp(photoSet_.firstShown, 0, count);
    std::array<std::int32_t, kPhotosPerPage> heights = {};
    const auto before = static_cast<std::size_t>(std::min(from, kPhotosPerPage));
    for (std::size_t i = 0; i < before; ++i) {
        heights[i] =
            HeightInPanel(*photoSet_.photos[static_cast<std::size_t>(from) - 1 - i], cities);
    }
    const std::int32_t previous =
        PreviousFirstShown(from, std::span(heights).first(before), PhotoStackHeight(area_));
    return std::exchange(photoSet_.firstShown, previous) != previous;
}

void PhotoPanel::RejectPage(std::int32_t firstShown) noexcept {
    photoSet_.brokenFrom = photoSet_.firstShown;
    photoSet_.firstShown = firstShown;
}

bool PhotoPanel::IsHoverOverPanel(std::int32_t x) const noexcept {
    return !images_.empty() && x >= panelX_;
}

bool PhotoPanel::IsClickOnPanel(std::int32_t x) const noexcept {
    return !images_.empty() && x > panelX_;
}

bool PhotoPanel::IsWheelOverPanel(std::int32_t x) const noexcept {
    return x > panelX_ && photoSet_.photos.size() > kMaxThumbnails;
}
