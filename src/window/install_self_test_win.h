#pragma once
// The self-test of a newly installed map picture.

#include <string>

#include "window/gl_resources_win.h"
#include "window/shared_picture_win.h"

/// Whether InstallMap tests the picture: the window that is created then is its hidden one.
class InstallTest {
public:
    /// @param mayLoad  whether InstallMap holds the scene mutex, or there is none
    void Begin(bool mayLoad) noexcept {
        isRunning_ = true;
        mayLoad_ = mayLoad;
    }
    void End() noexcept { isRunning_ = false; }
    bool IsRunning() const noexcept { return isRunning_; }
    bool MayLoad() const noexcept { return mayLoad_; }

private:
    bool isRunning_ = false;
    bool mayLoad_ = false;
};

/// Loads, splits and uploads the picture, halving the size limit until the tiles fit, and writes
/// the picture back when it had to be shrunk. This is the only work on pixels that the window
/// thread does. It runs while InstallMap, which holds the scene mutex, creates its hidden window;
/// the context must be current.
void RunInstallSelfTest(SharedPicture& shared, const GlResources& gl,
                        const std::wstring& dataDirectory);
