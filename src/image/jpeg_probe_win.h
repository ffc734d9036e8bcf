#pragma once

#include <cstdint>
#include <string>

/// Reads size and component count from the header of a JPEG file, without decoding it.
/// @param width, height  out: pixels; untouched on failure, like `components`
/// @return false when the file cannot be read or is no baseline or progressive JPEG
bool ProbeJpeg(const std::wstring& path, std::int32_t& width, std::int32_t& height,
               std::int32_t& components) noexcept;
