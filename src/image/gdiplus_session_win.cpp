#include "image/gdiplus_session_win.h"

#include "image/gdiplus_win.h"

namespace {

/// GDI+ belongs to the process, and so does its count of users; under its lock.
struct GdiplusSession {
    SRWLOCK lock = SRWLOCK_INIT;
    int users = 0;
    ULONG_PTR token = 0;
};

GdiplusSession session;

class SessionLock {
public:
    SessionLock() noexcept { AcquireSRWLockExclusive(&session.lock); }
    SessionLock(const SessionLock&) = delete;
    SessionLock& operator=(const SessionLock&) = delete;
    ~SessionLock() { ReleaseSRWLockExclusive(&session.lock); }
};

}  // namespace

GdiplusUse::GdiplusUse() noexcept {
    const SessionLock lock;
    if (session.users == 0) {
        const Gdiplus::GdiplusStartupInput input;
        if (Gdiplus::GdiplusStartup(&session.token, &input, nullptr) != Gdiplus::Ok) return;
    }
    ++session.users;
    started_ = true;
}

GdiplusUse::~GdiplusUse() {
    if (!started_) return;
    const SessionLock lock;
    if (--session.users == 0) Gdiplus::GdiplusShutdown(session.token);
}
