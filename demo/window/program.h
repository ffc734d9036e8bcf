#pragma once
// What a window asks of the program around it.

#include "language.h"
#include "window/host_windows.h"

class HostWindow;

class Program {
public:
    Program() = default;
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    virtual ~Program() = default;

    /// Opens one more window; tells the user over `asker` when it was refused.
    virtual void OpenAnother(HWND asker, bool withList) = 0;
    virtual void CloseAll() = 0;
    /// To be called by a window that goes.
    virtual void Forget(HostWindow* window) = 0;
    /// Changes the language of everything that is open, and remembers it.
    virtual void ChooseLanguage(const Language& language) = 0;
};
