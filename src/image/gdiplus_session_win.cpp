#include "image/gdiplus_session_win.h"

#include "image/gdiplus_win.h"

namespace {

/// Counts the sessions that use GDI+, because GDI+ is started once per process. `lock` guards all
/// members.
struct SharedStart {
    SRWLOCK lock = SRWLOCK_INIT;
    int users = 0;
    ULONG_PTR token = 0;
};

SharedStart shared;

class StartLock {
public:
    StartLock() noexcept { AcquireSRWLockExclusive(&shared.lock); }
    StartLock(const StartLock&) = delete;
    StartLock& operator=(const StartLock&) = delete;
    ~StartLock() { ReleaseSRWLockExclusive(&shared.lock); }
};

}  // namespace

GdiplusSession::GdiplusSession() noexcept {
    const StartLock lock;
    if (shared.users == 0) {
        const Gdiplus::GdiplusStartupInput input;
        if (Gdiplus::GdiplusStartup(&shared.token, &input, nullptr) != Gdiplus::Ok) return;
    }
    ++shared.users;
    started_ = true;
}

GdiplusSession::~GdiplusSession() {
    if (!started_) return;
    const StartLock lock;
    if (--shared.users == 0) Gdiplus::GdiplusShutdown(shared.token);
}
