#pragma once

#include <cstdint>

#include "horivo_map.h"

/// The errors that the host can query after a failed call, and the result of the last window
/// creation.
class CallResults {
public:
    /// The Windows error number that was stored last. A later success does not reset this number.
    std::uint32_t LastSysError() const noexcept { return lastSysError_; }
    void KeepSysError(std::uint32_t error) noexcept { lastSysError_ = error; }
    /// Reference to the number that LastSysError returns. CGLContext stores its errors there.
    std::uint32_t& SysErrorSlot() noexcept { return lastSysError_; }

    /// Resets the result of the last window creation.
    void BeginCreation() noexcept {
        createStatus_ = HORIVO_OK;
        createError_ = 0;
    }
    /// Stores the result of the creation: HORIVO_OK or an OpenGL set-up code of horivo_map.h.
    void EndCreation(std::uint32_t status) noexcept { createStatus_ = status; }
    /// Stores the Windows error of a creation that failed for another reason than OpenGL, such as
    /// missing memory. The status of such a creation is HORIVO_OK.
    void RefuseCreation(std::uint32_t sysError) noexcept { createError_ = sysError; }
    std::uint32_t CreateStatus() const noexcept { return createStatus_; }
    /// The error that RefuseCreation has stored. 0: Windows has refused the window, and
    /// GetLastError returns the reason.
    std::uint32_t CreateError() const noexcept { return createError_; }

private:
    std::uint32_t lastSysError_ = 0;
    std::uint32_t createStatus_ = HORIVO_OK;
    std::uint32_t createError_ = 0;
};
