#pragma once

#include <cstdint>

#include "horivo_map.h"

/// The results of failed calls that the host can ask for, and why a window was refused.
class CallResults {
public:
    /// Error number of Windows for the last failure that has stored one; a success does not reset
    /// it.
    std::uint32_t LastSysError() const noexcept { return lastSysError_; }
    void KeepSysError(std::uint32_t error) noexcept { lastSysError_ = error; }
    /// The same number, for CGLContext, which writes to it.
    std::uint32_t& SysErrorSlot() noexcept { return lastSysError_; }

    /// Forgets the result of the last window creation.
    void BeginCreation() noexcept {
        createStatus_ = HORIVO_OK;
        createError_ = 0;
    }
    /// Notes how the creation went: HORIVO_OK or an OpenGL set-up code.
    void EndCreation(std::uint32_t status) noexcept { createStatus_ = status; }
    /// Notes why the window is refused though its status is HORIVO_OK.
    void RefuseCreation(std::uint32_t sysError) noexcept { createError_ = sysError; }
    std::uint32_t CreateStatus() const noexcept { return createStatus_; }
    /// 0: the map has not refused the window itself, and GetLastError has the reason.
    std::uint32_t CreateError() const noexcept { return createError_; }

private:
    std::uint32_t lastSysError_ = 0;
    std::uint32_t createStatus_ = HORIVO_OK;
    std::uint32_t createError_ = 0;
};
