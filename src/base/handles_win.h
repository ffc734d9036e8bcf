#pragma once
// Owners of Windows handles: each type releases its handle in its destructor.

#include <memory>
#include <utility>

#include "base/windows_types.h"

/// Lets std::unique_ptr own a Windows handle. `Release` is the function that releases it.
template <class Handle, auto Release>
struct HandleDeleter {
    using pointer = Handle;
    void operator()(Handle handle) const noexcept { Release(handle); }
};

using UniqueFont = std::unique_ptr<HFONT, HandleDeleter<HFONT, DeleteObject>>;
using UniqueCursor = std::unique_ptr<HCURSOR, HandleDeleter<HCURSOR, DestroyCursor>>;
using UniqueRegistryKey = std::unique_ptr<HKEY, HandleDeleter<HKEY, RegCloseKey>>;
/// Owns the handle of a mutex, an event or a thread; a null handle means "none".
using UniqueHandle = std::unique_ptr<HANDLE, HandleDeleter<HANDLE, CloseHandle>>;
using UniqueGlobalBlock = std::unique_ptr<HGLOBAL, HandleDeleter<HGLOBAL, GlobalFree>>;
/// Holds a mutex until this object is destroyed. Empty: no mutex is held.
using MutexHold = std::unique_ptr<HANDLE, HandleDeleter<HANDLE, ReleaseMutex>>;

/// Waits until this thread holds `mutex`, at most `waitMs` milliseconds.
/// @return the hold; empty after a time-out, when `mutex` is null or when the wait fails
inline MutexHold AcquireMutex(HANDLE mutex, DWORD waitMs) noexcept {
    const DWORD result = mutex != nullptr ? WaitForSingleObject(mutex, waitMs) : WAIT_FAILED;
    // After WAIT_ABANDONED this thread holds the mutex, too: the previous holder has died.
    const bool ours = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
    return MutexHold(ours ? mutex : nullptr);
}

/// Duplicates a handle for use in this process. @return the copy; empty when Windows reports an
/// error
inline UniqueHandle DuplicateOf(HANDLE object) noexcept {
    HANDLE copy = nullptr;
    DuplicateHandle(GetCurrentProcess(), object, GetCurrentProcess(), &copy, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    return UniqueHandle(copy);
}

/// Owns a file handle; the handle INVALID_HANDLE_VALUE means "none".
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

/// Gets the device context of a window, or of the screen when the window is null; the destructor
/// releases the device context.
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

/// Selects an object into a device context; the destructor selects the previous object again.
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

/// The constructor calls BeginPaint, the destructor calls EndPaint.
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
