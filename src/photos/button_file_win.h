#pragma once

#include <cstdint>
#include <string>

#include "base/handles_win.h"

/// The pixels of the button sheet, "buttons.png", in the layout that OpenGL needs.
class ButtonSheet {
public:
    /// Loads "buttons.png" from the folder of the program. Never loads it from the current
    /// directory, because anyone may have put a picture there.
    /// @param hostDirectory  the folder of the program according to its command line, with a
    ///                       backslash at its end
    /// @return false when there is no such file, when it cannot be read, when it does not have
    ///         128 x 256 pixels, or when the file does not store 32 bits per pixel. The sheet is
    ///         then empty
    bool LoadFor(const std::wstring& hostDirectory);

    /// Returns the pixels: R, G, B, A; rows bottom-up, without padding. Null while the sheet is
    /// empty. The sheet owns the pixels.
    const std::uint8_t* GetPixels() const noexcept;

private:
    bool Load(const std::wstring& path);

    UniqueGlobalBlock pixels_;
};
