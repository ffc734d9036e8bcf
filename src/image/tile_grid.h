#pragma once

class CGLTexture;

/// The tiles of the map picture.
inline constexpr int kTileColumns = 4;
inline constexpr int kTileRows = 2;
inline constexpr int kTileCount = kTileColumns * kTileRows;

/// Cuts tiles[0] into columns x rows tiles (powers of two): tiles[c + columns x r] is column c from
/// the left and band r from the bottom. The other tiles are cleared first.
/// @param tiles  columns x rows pointers, none null
/// Each byte is copied once; at most 1 / rows of the picture is there twice.
/// @return false when memory ran out or a side would become empty; tiles[0] then still has the
/// whole picture or nothing
bool SplitIntoGrid(CGLTexture* const* tiles, int columns, int rows) noexcept;
