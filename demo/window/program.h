#pragma once
// The functions of the program that a window may call.

#include "language.h"
#include "windows_api.h"

class HostWindow;

/// HostApp implements this interface. The interface exists so that the windows do not depend on the
/// program that opens them.
class Program {
public:
    Program() = default;
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    virtual ~Program() = default;

    /// Opens one more window; shows a message box over `asker` when that fails.
    virtual void OpenAnother(HWND asker) = 0;
    /// Closes all windows, which ends the program.
    virtual void CloseAll() = 0;
    /// Deletes the object of a window that has been destroyed; does nothing when its Open failed.
    virtual void Forget(HostWindow* window) = 0;
    /// Changes the language of all open windows and stores the choice in the settings.
    virtual void ChooseLanguage(const Language& choice) = 0;
};
