#pragma once
// The self-test of a newly installed map picture.

#include <string>

#include "window/gl_resources_win.h"
#include "window/shared_picture_win.h"

/// Whether InstallMap is testing the picture. A window that is created during the test is the
/// hidden window of InstallMap.
class InstallTest {
public:
    /// @param mayLoad  whether the test may use the picture, because InstallMap holds the mutex of
    ///                 the picture or there is no mutex
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

/// Loads, splits and uploads the picture, and halves the size limit until the tiles fit. Saves the
/// picture in its file when the picture had to be shrunk. The window thread does no other
/// work on pixels of the map. Runs while InstallMap creates its hidden window. The caller must hold
/// the mutex of the picture, if there is one, and the context must be current.
void RunInstallSelfTest(SharedPicture& shared, const GlResources& gl,
                        const std::wstring& dataDirectory);
