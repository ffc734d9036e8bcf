#pragma once

#include "base/handles_win.h"
#include "base/windows_types.h"

/// A bare window without a frame, shown; owns its device context for life.
class BenchWindow {
public:
    BenchWindow(int width, int height);
    BenchWindow(const BenchWindow&) = delete;
    BenchWindow& operator=(const BenchWindow&) = delete;
    ~BenchWindow();
    HWND Get() const { return window_; }
    HDC Dc() const { return dc_; }

private:
    HWND window_;
    HDC dc_;
};

/// Handles what is in the message queue.
void PumpPending();
