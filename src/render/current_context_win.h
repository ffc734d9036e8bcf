#pragma once

#include "base/windows_types.h"

class CGLContext;

/// Remembers a rendering context of another part of the program that is current on this thread,
/// and makes it current again at the end of the scope. With none, or with the map's own, nothing
/// happens.
class ForeignContextGuard {
public:
    explicit ForeignContextGuard(const CGLContext& ours) noexcept;
    ForeignContextGuard(const ForeignContextGuard&) = delete;
    ForeignContextGuard& operator=(const ForeignContextGuard&) = delete;
    ~ForeignContextGuard();

private:
    HGLRC foreign_ = nullptr;
    HDC foreignDc_ = nullptr;
};

/// Makes the map's context current on `dc` for a scope; a foreign one that was current comes back
/// at its end. Nothing is switched where the map's context is already current on `dc`.
class CurrentContextScope {
public:
    CurrentContextScope(CGLContext& context, HDC dc);

    /// Whether GL commands of this scope reach the map's context; if not, issue none.
    bool IsCurrent() const noexcept { return isCurrent_; }

private:
    ForeignContextGuard guard_;
    bool isCurrent_;
};
