#pragma once

#include "base/windows_types.h"

/// The module that this code is in.
HMODULE LibraryModule() noexcept;

/// The same module with a reference that keeps it loaded; the caller releases it with FreeLibrary.
/// Null on failure.
HMODULE ReferenceToLibrary() noexcept;
