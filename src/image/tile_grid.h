#pragma once

class CGLTexture;

/// The tiles of the map picture.
inline constexpr int kTileColumns = 4;
inline constexpr int kTileRows = 2;
inline constexpr int kTileCount = kTileColumns * kTileRows;

/// Splits the picture in tiles[0] into columns x rows tiles (both powers of two). tiles[c + columns
/// x r] becomes column c from the left in band r from the bottom. The other tiles are cleared
/// first. Each byte is copied once; at most 1 / rows of the picture is in memory twice.
/// @param tiles  columns x rows pointers, none null
/// @return false when there is no picture, when memory runs out or when a tile would be empty.
/// tiles[0] then has the whole picture or nothing, and the other tiles are empty
bool SplitIntoGrid(CGLTexture* const* tiles, int columns, int rows) noexcept;
