#pragma once

#include <cstdint>

#include "horivo_map.h"

/// What the host may ask about calls that failed, and why a window was refused.
class CallResults {
public:
    /// Windows' error number of the last failure that kept one; a success does not reset it.
    std::uint32_t LastSysError() const noexcept { return lastSysError_; }
    void KeepSysError(std::uint32_t error) noexcept { lastSysError_ = error; }
    /// The same, for CGLContext, which writes it itself.
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
    /// 0: the map itself has not refused the window; GetLastError has the reason.
    std::uint32_t CreateError() const noexcept { return createError_; }

private:
    std::uint32_t lastSysError_ = 0;
    std::uint32_t createStatus_ = HORIVO_OK;
    std::uint32_t createError_ = 0;
};
