// The variable and the function that the compiler's stack protection needs. They replace MinGW's
// variable and function: while the DLL is being loaded, MinGW's code asks a cryptographic provider
// for a random number, and Windows then loads further DLLs under the loader lock. The code below
// calls only kernel32.

#include <cstdint>

#include "base/windows_types.h"

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the compiler prescribes these names.
extern std::uintptr_t __stack_chk_guard;
std::uintptr_t __stack_chk_guard = 0;

/// Ends the process at once. A function calls this when the guard value on the stack was
/// overwritten: exception handlers may be damaged, too, and must not run.
[[noreturn]] void __stack_chk_fail();
void __stack_chk_fail() {
    // This interrupt is what __fastfail does; MinGW's headers do not declare __fastfail.
    __asm__ volatile("int $0x29" : : "c"(FAST_FAIL_STACK_COOKIE_CHECK_FAILURE));
    __builtin_unreachable();
}
// NOLINTEND(bugprone-reserved-identifier)
}

namespace {

// Numbers of a multiplicative hash: the factor is 2^64 / golden ratio; the shift mixes high bits
// into low bits.
constexpr std::uint64_t kHashFactor = 0x9E3779B97F4A7C15;
constexpr unsigned kHashShift = 29;
constexpr unsigned kBitsPerByte = 8;

// Chooses the guard value before all other constructors run. The function itself must not be
// protected: it changes the value that its own check would compare.
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
        guard = (guard ^ part) * kHashFactor;
        guard ^= guard >> kHashShift;
    }
    // The lowest byte is 0. A string copy that overruns its buffer stops at its first 0, so it
    // cannot write this value back.
    __stack_chk_guard = static_cast<std::uintptr_t>(guard << kBitsPerByte);
}

}  // namespace
