#include "render/current_context_win.h"

#include "render/gl_context_win.h"

namespace {

bool IsCurrentOn(const CGLContext& context, HDC dc) noexcept {
    return context.GetHandle() != nullptr && wglGetCurrentContext() == context.GetHandle() &&
           wglGetCurrentDC() == dc;
}

}  // namespace

ForeignContextGuard::ForeignContextGuard(const CGLContext& ours) noexcept {
    const HGLRC current = wglGetCurrentContext();
    if (current == nullptr || current == ours.GetHandle()) return;
    foreign_ = current;
    foreignDc_ = wglGetCurrentDC();
}

ForeignContextGuard::~ForeignContextGuard() {
    if (foreign_ != nullptr) wglMakeCurrent(foreignDc_, foreign_);
}

CurrentContextScope::CurrentContextScope(CGLContext& context, HDC dc)
    : guard_(context), isCurrent_(IsCurrentOn(context, dc) || context.MakeCurrent(dc)) {}
