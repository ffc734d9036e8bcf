#pragma once

#include "base/windows_types.h"

/// The module (DLL or program) that contains this code.
HMODULE LibraryModule() noexcept;

/// Adds a reference to this module, so that it stays loaded until the caller passes the result to
/// FreeLibrary. @return the module; null on failure
HMODULE ReferenceToLibrary() noexcept;
