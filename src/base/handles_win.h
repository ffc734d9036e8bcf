#pragma once
// Owners of Windows handles: each handle is given back by the type that took it.

#include <memory>
#include <utility>

#include "base/windows_types.h"

/// Lets std::unique_ptr own a Windows handle; `Release` is the call that gives it back.
template <class Handle, auto Release>
struct HandleDeleter {
    using pointer = Handle;
    void operator()(Handle handle) const noexcept { Release(handle); }
};

using UniqueFont = std::unique_ptr<HFONT, HandleDeleter<HFONT, DeleteObject>>;
using UniqueCursor = std::unique_ptr<HCURSOR, HandleDeleter<HCURSOR, DestroyCursor>>;
using UniqueRegistryKey = std::unique_ptr<HKEY, HandleDeleter<HKEY, RegCloseKey>>;
/// A kernel object whose "none" is null: mutex, event, thread.
using UniqueHandle = std::unique_ptr<HANDLE, HandleDeleter<HANDLE, CloseHandle>>;
using UniqueGlobalBlock = std::unique_ptr<HGLOBAL, HandleDeleter<HGLOBAL, GlobalFree>>;
/// The right to use what a mutex guards.
using MutexHold = std::unique_ptr<HANDLE, HandleDeleter<HANDLE, ReleaseMutex>>;

/// Waits for `mutex`; empty when the time ran out or there is none (what then, the caller knows).
inline MutexHold AcquireMutex(HANDLE mutex, DWORD waitMs) noexcept {
    const DWORD result = mutex != nullptr ? WaitForSingleObject(mutex, waitMs) : WAIT_FAILED;
    // A mutex left by a thread that died is ours too; otherwise it would never be released again.
    const bool ours = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
    return MutexHold(ours ? mutex : nullptr);
}

/// A further handle to the same object of this process; empty when it cannot be made.
inline UniqueHandle DuplicateOf(HANDLE object) noexcept {
    HANDLE copy = nullptr;
    DuplicateHandle(GetCurrentProcess(), object, GetCurrentProcess(), &copy, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    return UniqueHandle(copy);
}

/// A file handle; its "none" is INVALID_HANDLE_VALUE.
class UniqueFile {
public:
    explicit UniqueFile(HANDLE file = INVALID_HANDLE_VALUE) noexcept : file_(file) {}
    UniqueFile(UniqueFile&& other) noexcept
        : file_(std::exchange(other.file_, INVALID_HANDLE_VALUE)) {}
    UniqueFile(const UniqueFile&) = delete;
    UniqueFile& operator=(const UniqueFile&) = delete;
    UniqueFile& operator=(UniqueFile&&) = delete;
    ~UniqueFile() {
        if (IsOpen()) CloseHandle(file_);
    }
    bool IsOpen() const noexcept { return file_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const noexcept { return file_; }

private:
    HANDLE file_;
};

/// The device context of a window (or of the screen, for null), released with the object.
class WindowDc {
public:
    explicit WindowDc(HWND window) noexcept : window_(window), dc_(GetDC(window)) {}
    WindowDc(WindowDc&& other) noexcept
        : window_(other.window_), dc_(std::exchange(other.dc_, nullptr)) {}
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    WindowDc& operator=(WindowDc&&) = delete;
    ~WindowDc() {
        if (dc_ != nullptr) ReleaseDC(window_, dc_);
    }
    HDC Get() const noexcept { return dc_; }

private:
    HWND window_;
    HDC dc_;
};

/// An object selected into a device context; what was selected before comes back with the end of
/// the scope.
class SelectedObject {
public:
    SelectedObject(HDC dc, HGDIOBJ object) noexcept
        : dc_(dc), previous_(object != nullptr ? SelectObject(dc, object) : nullptr) {}
    SelectedObject(SelectedObject&& other) noexcept
        : dc_(other.dc_), previous_(std::exchange(other.previous_, nullptr)) {}
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;
    SelectedObject& operator=(SelectedObject&&) = delete;
    ~SelectedObject() {
        if (previous_ != nullptr) SelectObject(dc_, previous_);
    }

private:
    HDC dc_;
    HGDIOBJ previous_;
};

/// BeginPaint to EndPaint.
class PaintScope {
public:
    explicit PaintScope(HWND window) noexcept : window_(window) { BeginPaint(window, &paint_); }
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;
    ~PaintScope() { EndPaint(window_, &paint_); }
    HDC Dc() const noexcept { return paint_.hdc; }

private:
    HWND window_;
    PAINTSTRUCT paint_ = {};
};
