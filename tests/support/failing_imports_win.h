#pragma once
// Lets imported functions of a loaded module fail, the n-th call of all of them, whatever their
// arguments.

#include <cstdint>
#include <memory>
#include <span>

#include "base/windows_types.h"

/// How a function says that it failed.
struct ImportFailure {
    const char* function;
    std::uint64_t result = 0;
    DWORD lastError = ERROR_NOT_ENOUGH_MEMORY;
};

/// All by which the library gets memory.
inline constexpr ImportFailure kMemoryCalls[] = {
    {"malloc"}, {"calloc"}, {"realloc"}, {"GdipAlloc"}, {"GlobalAlloc"}};

inline constexpr int kAllThatFollow = 1 << 30;

/// Counts the calls of some imports of a module and lets some of them fail without being made.
/// The module has to be at rest when this goes.
class FailingImports {
public:
    /// Functions that the module does not import are passed over.
    FailingImports(HMODULE module, std::span<const ImportFailure> functions);
    FailingImports(const FailingImports&) = delete;
    FailingImports& operator=(const FailingImports&) = delete;
    ~FailingImports();

    /// The call of this number, counted from now on from 1, fails, and `count` - 1 more after it.
    void FailFrom(int number, int count = 1);
    /// No further call fails.
    void Stop();
    /// Calls since counting began.
    int Calls() const;
    /// The function that failed first; null while none has.
    const char* Failed() const;

private:
    struct Gate;
    std::unique_ptr<Gate> gate_;
};
