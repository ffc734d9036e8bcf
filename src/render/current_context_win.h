#pragma once

#include "base/windows_types.h"

class CGLContext;

/// Stores which rendering context is current on this thread at the beginning of a scope, and makes
/// it current again at the end. Does nothing when no context is current or when the map's own
/// context is current.
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

/// Makes the map's context current on `dc`, unless this context is already current on `dc`. When
/// the context of another part of the program was current before, the end of the scope makes that
/// context current again.
class CurrentContextScope {
public:
    CurrentContextScope(CGLContext& context, HDC dc);

    /// Whether the map's context is current. If not, the caller must issue no GL command: such a
    /// command would have no effect or would change the context of another part of the program.
    bool IsCurrent() const noexcept { return isCurrent_; }

private:
    ForeignContextGuard guard_;
    bool isCurrent_;
};
