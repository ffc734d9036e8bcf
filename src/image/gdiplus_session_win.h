#pragma once

/// Keeps GDI+ running as long as this object lives. The first session of the process starts GDI+,
/// the last one shuts it down. Code that uses GDI+ objects must hold a session and destroy the
/// objects before the session.
///
/// When GDI+ cannot be started, the constructor reports nothing; opening pictures then fails.
/// Thread: any, but never from DllMain (starting and stopping wait for other threads).
class GdiplusSession {
public:
    GdiplusSession() noexcept;
    GdiplusSession(const GdiplusSession&) = delete;
    GdiplusSession& operator=(const GdiplusSession&) = delete;
    ~GdiplusSession();
    /// Whether this session could start GDI+.
    bool IsStarted() const noexcept { return started_; }

private:
    bool started_ = false;
};
