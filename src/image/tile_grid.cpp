#include "image/tile_grid.h"

#include <cstddef>
#include <cstring>

#include "image/jpeg_texture.h"
#include "image/pixel_block.h"

namespace {

void ClearFrom(int first, CGLTexture* const* tiles, int count) noexcept {
    for (int i = first; i < count; ++i) tiles[i]->Clear(true);
}

/// First pixel of piece `index` of `count` when a side of `size` pixels is halved repeatedly.
/// Halving an odd side drops its last pixel, so there may be a gap between two pieces.
int PieceStart(int size, int count, int index) noexcept {
    int start = 0;
    while (count > 1) {
        size /= 2;
        count /= 2;
        if (index < count) continue;
        start += size;
        index -= count;
    }
    return start;
}

/// Copies the rows of one band (a row of tiles) into its tiles; reads each row once and in order.
/// The picture itself may be the first tile: its part of each row then moves towards the start of
/// the picture's block.
void CopyBand(const CGLTexture& picture, int firstRow, CGLTexture* const* tiles, int columns,
              const TextureSizes& tile) noexcept {
    const std::int32_t channels = picture.GetBytesPerPixel();
    const std::size_t rowBytes = BlockBytes(picture.GetBufferWidth(), 1, channels);
    const std::size_t tileRowBytes = BlockBytes(tile.bufferWidth, 1, channels);
    const auto height = static_cast<std::size_t>(tile.bufferHeight);
    const std::uint8_t* source =
        picture.GetPixels() + static_cast<std::size_t>(firstRow) * rowBytes;
    for (std::size_t row = 0; row < height; ++row, source += rowBytes) {
        for (int column = 0; column < columns; ++column) {
            const int start = PieceStart(picture.GetBufferWidth(), columns, column);
            std::memmove(tiles[column]->GetPixels() + row * tileRowBytes,
                         source + BlockBytes(start, 1, channels), tileRowBytes);
        }
    }
}

/// Moves the top band of the picture, the rows from `firstRow` on, into `tiles`. The rows below
/// stay in the picture. @return false when memory runs out
bool MoveBand(CGLTexture& picture, int firstRow, CGLTexture* const* tiles, int columns,
              const TextureSizes& tile) noexcept {
    for (int column = 0; column < columns; ++column) {
        if (tiles[column] == &picture) continue;
        if (!tiles[column]->Allocate(tile, picture.GetBytesPerPixel())) return false;
    }
    CopyBand(picture, firstRow, tiles, columns, tile);
    if (firstRow == 0) return picture.KeepFront(tile);
    return picture.KeepFront({picture.GetWidth(), firstRow, picture.GetBufferWidth(), firstRow});
}

}  // namespace

// The bands are moved from the top down: the rows below then stay at the start of the picture's
// block, and the memory of each band is freed before the next one is copied. In the end the picture
// is the bottom left tile.
bool SplitIntoGrid(CGLTexture* const* tiles, int columns, int rows) noexcept {
    const int count = columns * rows;
    ClearFrom(1, tiles, count);
    CGLTexture& picture = *tiles[0];
    if (picture.GetPixels() == nullptr) return false;
    const TextureSizes tile{picture.GetWidth() / columns, picture.GetHeight() / rows,
                            picture.GetBufferWidth() / columns, picture.GetBufferHeight() / rows};
    const std::int32_t bufferHeight = picture.GetBufferHeight();
    for (int band = rows - 1; band >= 0; --band) {
        CGLTexture* const* const bandTiles = tiles + static_cast<std::ptrdiff_t>(columns) * band;
        const int firstRow = PieceStart(bufferHeight, rows, band);
        if (MoveBand(picture, firstRow, bandTiles, columns, tile)) continue;
        // When the band that is moved first fails, the picture is still whole and is kept, except
        // when the picture has fewer rows of pixels than the grid has bands.
        const bool isWhole = band == rows - 1 && tile.bufferHeight > 0;
        ClearFrom(isWhole ? 1 : 0, tiles, count);
        return false;
    }
    return true;
}
