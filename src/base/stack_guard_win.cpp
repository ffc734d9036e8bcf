// What the compiler's stack protection needs. MinGW's own support library asks a cryptographic
// provider for a number while the DLL is being loaded, which loads further libraries under the
// loader's lock; this one takes what the system says at once.

#include <cstdint>

#include "base/windows_types.h"

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the compiler's names.
extern std::uintptr_t __stack_chk_guard;
std::uintptr_t __stack_chk_guard = 0;

/// A return address has been overwritten: nothing can be trusted any more, not even a handler.
[[noreturn]] void __stack_chk_fail();
void __stack_chk_fail() {
    // The headers of MinGW lack __fastfail, which is this interrupt.
    __asm__ volatile("int $0x29" : : "c"(FAST_FAIL_STACK_COOKIE_CHECK_FAILURE));
    __builtin_unreachable();
}
// NOLINTEND(bugprone-reserved-identifier)
}

namespace {

constexpr std::uint64_t kScatter = 0x9E3779B97F4A7C15;  // 2^64 / golden ratio: spreads every bit

// Before all other constructors, and unguarded itself: its own guard would change under its feet.
__attribute__((constructor(101), no_stack_protector)) void ChooseStackGuard() {
    LARGE_INTEGER counter = {};
    FILETIME time = {};
    QueryPerformanceCounter(&counter);
    GetSystemTimeAsFileTime(&time);
    const std::uint64_t parts[] = {static_cast<std::uint64_t>(counter.QuadPart),
                                   time.dwHighDateTime,
                                   time.dwLowDateTime,
                                   GetCurrentProcessId(),
                                   GetCurrentThreadId(),
                                   reinterpret_cast<std::uintptr_t>(&counter),
                                   reinterpret_cast<std::uintptr_t>(&ChooseStackGuard)};
    std::uint64_t guard = 0;
    for (const std::uint64_t part : parts) {
        guard = (guard ^ part) * kScatter;
        guard ^= guard >> 29;
    }
    // A zero byte in front stops texts that run over their end.
    __stack_chk_guard = static_cast<std::uintptr_t>(guard << 8);
}

}  // namespace
