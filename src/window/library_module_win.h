#pragma once

#include "base/windows_types.h"

/// The module that this code is in.
HMODULE LibraryModule() noexcept;

/// The same with a reference that keeps it loaded; the caller gives it back with FreeLibrary. Null
/// on failure.
HMODULE ReferenceToLibrary() noexcept;
