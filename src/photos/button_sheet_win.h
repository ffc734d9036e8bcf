#pragma once

#include <cstdint>
#include <string>

#include "base/handles_win.h"

/// The button sheet as it goes to OpenGL.
class ButtonSheet {
public:
    /// Reads the picture file `path`.
    /// @return false, and an empty sheet, when it is not a readable picture of 128 x 256 pixels
    ///         that the file itself stores with 32 bits each
    bool Load(const std::wstring& path);

    /// R, G, B, A; rows bottom-up without padding; null while the sheet is empty. The sheet's own.
    const std::uint8_t* GetPixels() const noexcept;

private:
    UniqueGlobalBlock pixels_;
};
