#include "image/tile_grid.h"

#include <cstddef>

#include "image/jpeg_texture.h"

namespace {

/// Cuts tile 0 into `count` tiles that stand `2 * half / count` apart, by halving.
bool Halve(CGLTexture* const* tiles, std::ptrdiff_t count, std::ptrdiff_t half,
           bool byColumns) noexcept {
    if (count < 2 || half == 0) return true;
    if (!tiles[0]->Split(*tiles[half], byColumns)) return false;
    return Halve(tiles, count / 2, half / 2, byColumns) &&
           Halve(tiles + half, count / 2, half / 2, byColumns);
}

}  // namespace

bool SplitIntoGrid(CGLTexture* const* tiles, int columns, int rows) noexcept {
    const std::ptrdiff_t count = static_cast<std::ptrdiff_t>(columns) * rows;
    for (std::ptrdiff_t i = 1; i < count; ++i) tiles[i]->Clear(true);
    if (!Halve(tiles, columns, columns / 2, true)) return false;

    bool done = true;
    for (std::ptrdiff_t column = 0; done && column < columns; ++column) {
        done = Halve(tiles + column, rows, count / 2, false);
    }
    if (done) return true;
    for (std::ptrdiff_t i = 0; i < count; ++i) tiles[i]->Clear(true);
    return false;
}
