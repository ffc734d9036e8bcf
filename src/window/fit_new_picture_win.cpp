#include "window/fit_new_picture_win.h"

#include "window/attach_tiles_win.h"

namespace {

constexpr int kSaveQuality = 85;  // percent; JPEG quality of the saved picture
// pixels; a smaller limit is not halved, because tiles of less than 128 pixels show too little
constexpr std::int32_t kMinHalvableLimit = 257;

/// Loads the picture, or shrinks the loaded picture to the current limits.
/// @return whether the picture was shrunk and therefore differs from its file
bool LoadOrFit(SharedPicture& shared, const std::wstring& dataDirectory) {
    if (shared.picture.Stage() == PictureStage::Loaded) return shared.picture.Fit(shared.limits);
    return (shared.picture.Load(shared.limits, dataDirectory) & kLoadShrunkBit) != 0;
}

/// Calls LoadOrFit and saves a shrunk picture in its file. @return whether a picture is loaded
bool LoadAndSave(SharedPicture& shared, const std::wstring& dataDirectory) {
    if (LoadOrFit(shared, dataDirectory)) {
        shared.picture.MapTexture().SaveJpeg(MapPicture::PathIn(dataDirectory), kSaveQuality);
    }
    return shared.picture.Stage() != PictureStage::Empty;
}

}  // namespace

void RunInstallSelfTest(SharedPicture& shared, const GlResources& gl,
                        const std::wstring& dataDirectory) {
    while (true) {
        shared.UseWholeTextureLimit();
        if (!shared.picture.HasAllTiles() && !LoadAndSave(shared, dataDirectory)) return;
        if (shared.picture.Split(shared.limits) && AttachTiles(shared, gl) == 0) return;
        if (shared.limits.maxTextureSize < kMinHalvableLimit) return;
        shared.HalveLimit();
    }
}
