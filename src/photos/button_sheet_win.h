#pragma once

#include <cstdint>
#include <string>

#include "base/handles_win.h"

/// The button sheet, "buttons.png", as it goes to OpenGL.
class ButtonSheet {
public:
    /// Loads "buttons.png" from the program's folder; never from the current directory, where
    /// anyone's picture may lie.
    /// @param hostDirectory  where the command line says that the program lies
    /// @return false, and an empty sheet, when there is none or it is not a readable picture of
    ///         128 x 256 pixels that the file itself stores with 32 bits each
    bool LoadFor(const std::wstring& hostDirectory);

    /// R, G, B, A; rows bottom-up without padding; null while the sheet is empty. The sheet's own.
    const std::uint8_t* GetPixels() const noexcept;

private:
    bool Load(const std::wstring& path);

    UniqueGlobalBlock pixels_;
};
