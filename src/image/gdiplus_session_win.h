#pragma once

/// The right to use GDI+ while it lives. The first one of the process starts GDI+, the last one
/// shuts it down; no GDI+ object may outlive the one that its user holds.
///
/// A failed start is no error here: opening pictures fails then.
/// Thread: any, but never from DllMain (starting and stopping wait for other threads).
class GdiplusSession {
public:
    GdiplusSession() noexcept;
    GdiplusSession(const GdiplusSession&) = delete;
    GdiplusSession& operator=(const GdiplusSession&) = delete;
    ~GdiplusSession();
    /// Whether GDI+ runs for this user.
    bool IsStarted() const noexcept { return started_; }

private:
    bool started_ = false;
};
