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
/// Handle of a kernel object for which null means "none": a mutex, an event or a thread.
using UniqueHandle = std::unique_ptr<HANDLE, HandleDeleter<HANDLE, CloseHandle>>;
using UniqueGlobalBlock = std::unique_ptr<HGLOBAL, HandleDeleter<HGLOBAL, GlobalFree>>;
/// Ownership of a mutex, released at the end of the scope.
using MutexHold = std::unique_ptr<HANDLE, HandleDeleter<HANDLE, ReleaseMutex>>;

/// Waits for `mutex`. @return its ownership; empty after a time-out or when `mutex` is null
inline MutexHold AcquireMutex(HANDLE mutex, DWORD waitMs) noexcept {
    const DWORD result = mutex != nullptr ? WaitForSingleObject(mutex, waitMs) : WAIT_FAILED;
    // WAIT_ABANDONED also gives ownership: the thread that held the mutex has died.
    const bool ours = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
    return MutexHold(ours ? mutex : nullptr);
}

/// Duplicates a handle for use in this process; empty when that fails.
inline UniqueHandle DuplicateOf(HANDLE object) noexcept {
    HANDLE copy = nullptr;
    DuplicateHandle(GetCurrentProcess(), object, GetCurrentProcess(), &copy, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    return UniqueHandle(copy);
}

/// A file handle, for which INVALID_HANDLE_VALUE means "none".
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

/// The device context of a window; of the screen when the window is null.
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

/// Calls BeginPaint, and EndPaint in the destructor.
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
