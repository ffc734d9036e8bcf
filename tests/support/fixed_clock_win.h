#pragma once
// Clocks that tests wind for the DLL under test.

#include "base/windows_types.h"

/// What GetSystemTime answers to a module after FixClock; a test moves it as it likes.
SYSTEMTIME& FixedClock();

/// Puts the fixed clock in place of the real one for `module`, and makes the machine look fast.
void FixClock(HMODULE module, const SYSTEMTIME& utc);

/// A millisecond passes between two looks of `module` at the tick count. So every frame is quick,
/// and a loaded machine does not lower the globe's detail in the middle of a test.
void LookFast(HMODULE module);
