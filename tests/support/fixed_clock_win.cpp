#include "support/fixed_clock_win.h"

#include "support/import_spy_win.h"

namespace {

void WINAPI TellFixedTime(SYSTEMTIME* time) { *time = FixedClock(); }

DWORD WINAPI TellNextTick() {
    static DWORD tick = 0;
    return ++tick;
}

}  // namespace

SYSTEMTIME& FixedClock() {
    static SYSTEMTIME time = {};
    return time;
}

void FixClock(HMODULE module, const SYSTEMTIME& utc) {
    FixedClock() = utc;
    ReplaceImport(module, "GetSystemTime", reinterpret_cast<void*>(&TellFixedTime));
    LookFast(module);
}

void LookFast(HMODULE module) {
    ReplaceImport(module, "GetTickCount", reinterpret_cast<void*>(&TellNextTick));
}
