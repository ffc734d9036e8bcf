#pragma once

class CGLTexture;

/// Cuts tiles[0] into columns x rows tiles (powers of two): tiles[c + columns x r] is column c from
/// the left and band r from the bottom. The other tiles are cleared first.
/// @param tiles  columns x rows pointers, none null
/// @return false when memory ran out or a side would become empty
bool SplitIntoGrid(CGLTexture* const* tiles, int columns, int rows) noexcept;
