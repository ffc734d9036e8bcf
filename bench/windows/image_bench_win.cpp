// The image pipeline with the real decoder: image_bench MODE MAP [WIDTH HEIGHT]
//   pairs   times of load and split against decoding and against plain copies
//   decode, load, plain
//           one run each, for the peak memory of the process: the decoder alone, the whole
//           pipeline, the pipeline without shrinking
// WIDTH and HEIGHT are the limits of the load.
#include <cstdlib>
#include <cstring>
#include <string>

#include "common/result_line.h"
#include "image/gdiplus_session_win.h"
#include "image/jpeg_texture.h"
#include "image/picture.h"
#include "image/tile_grid.h"
#include "peak_memory_win.h"

namespace {

struct Limits {
    int width = 0, height = 0;
};

/// Opens a picture and locks it once, because the platform may decode only at the first lock.
std::unique_ptr<Picture> Decode(const std::wstring& path) {
    auto picture = OpenPicture(path);
    picture->LockForReading();
    picture->Unlock();
    return picture;
}

/// Passes a picture to a load without its ownership. A load destroys the picture that it gets, but
/// the benchmark counts the time to free the memory of the picture as time of the decoder.
class LentPicture final : public Picture {
public:
    explicit LentPicture(Picture& lent) : lent_(lent) {}
    bool IsOk() const noexcept override { return lent_.IsOk(); }
    std::int32_t GetWidth() const noexcept override { return lent_.GetWidth(); }
    std::int32_t GetHeight() const noexcept override { return lent_.GetHeight(); }
    std::int32_t GetPixelFormat() const noexcept override { return lent_.GetPixelFormat(); }
    PixelRows LockForReading() override { return lent_.LockForReading(); }
    void Unlock() noexcept override { lent_.Unlock(); }

private:
    Picture& lent_;
};

struct Tiles {
    CGLTexture textures[8];
    CGLTexture* grid[8];
    Tiles() {
        for (int i = 0; i < 8; ++i) grid[i] = &textures[i];
    }
};

double CopyIntoNewMs(std::size_t bytes) {
    static const std::vector<unsigned char> source(bytes, 1);
    void* block = nullptr;
    const double ms = MillisecondsOf([&] {
        block = std::malloc(bytes);
        std::memcpy(block, source.data(), bytes);
    });
    std::free(block);
    return ms;
}

void MeasurePairs(const std::wstring& path, Limits limits) {
    Pairs ofDecode;
    Pairs plain;
    Pairs shrinking;
    for (int i = 0; i < kBenchPairs; ++i) {
        Tiles tiles;
        std::unique_ptr<Picture> picture;
        const double decodeMs = MillisecondsOf([&] { picture = Decode(path); });
        const std::size_t bytes = std::size_t{3} * static_cast<std::size_t>(picture->GetWidth()) *
                                  static_cast<std::size_t>(picture->GetHeight());
        const double copyMs = CopyIntoNewMs(bytes);
        const double loadMs = MillisecondsOf([&] {
            tiles.textures[0].Load(std::make_unique<LentPicture>(*picture), limits.width,
                                   limits.height);
        });
        const double splitMs = MillisecondsOf([&] { SplitIntoGrid(tiles.grid, 4, 2); });
        shrinking.Add(copyMs, loadMs);

        CGLTexture whole;
        const double copyAgainMs = CopyIntoNewMs(bytes);
        plain.Add(copyAgainMs, MillisecondsOf([&] {
                      whole.Load(std::make_unique<LentPicture>(*picture), 0, 0);
                  }));
        const double freeMs = MillisecondsOf([&] { picture.reset(); });
        ofDecode.Add(decodeMs + freeMs, loadMs + splitMs);
    }
    PrintPairs("image_pipeline_to_decode", ofDecode);
    PrintPairs("gdi_load", plain);
    PrintPairs("gdi_load_shrink", shrinking);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    const GdiplusSession gdiplus;
    if (count < 3) return 2;
    const std::wstring mode = arguments[1];
    const std::wstring path = arguments[2];
    const Limits limits = count > 4 ? Limits{_wtoi(arguments[3]), _wtoi(arguments[4])} : Limits{};
    if (mode == L"pairs") {
        MeasurePairs(path, limits);
    } else if (mode == L"decode") {
        Decode(path);
        PrintValue("peak_decode", "MiB", PeakMiB());
    } else {
        Tiles tiles;
        tiles.textures[0].LoadFromFile(path, limits.width, limits.height);
        PrintValue(mode == L"load" ? "peak_load_shrink" : "peak_load", "MiB", PeakMiB());
    }
    return 0;
}
