#pragma once

#include "base/windows_types.h"

class CGLContext;

/// Makes the rendering context of another part of the program current again at the end of a scope.
/// Does nothing when no context, or the map's own, is current on this thread at the beginning.
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

/// Makes the map's context current on `dc`, unless it is already. At the end of the scope makes a
/// context of another part of the program current again, as ForeignContextGuard does.
class CurrentContextScope {
public:
    CurrentContextScope(CGLContext& context, HDC dc);

    /// Whether the map's context is current. If not, GL commands would go nowhere or to the context
    /// of another part of the program, so the caller must issue none.
    bool IsCurrent() const noexcept { return isCurrent_; }

private:
    ForeignContextGuard guard_;
    bool isCurrent_;
};
