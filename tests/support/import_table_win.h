#pragma once
// What the library's calls of Windows and OpenGL make and take back, and how they fail: one table
// of its imports for the ledger of what it holds and for the failures that tests put in.

#include <cstddef>
#include <map>
#include <string>

#include "base/windows_types.h"

/// Families of calls that fail together; they can be added up.
enum FailingCalls : unsigned {
    kGdiplusCalls = 1,
    kWglCalls = 2,
    kGlCalls = 4,
    kThreadCalls = 8,
    kFileCalls = 16,
    kWindowCalls = 32,
    kTextCalls = 64,
    kMemoryCalls = 128,    ///< all by which the library gets memory
    kRefusingCalls = 256,  ///< those that decide whether a window is made
};

/// Books what a module makes and gives back, by pairing its calls: what grows here is the module's
/// own doing, not Windows' or a driver's, and Wine counts few of these truly. One at a time.
class ImportLedger {
public:
    using Counts = std::map<std::string, std::size_t>;

    explicit ImportLedger(HMODULE module);
    ImportLedger(const ImportLedger&) = delete;
    ~ImportLedger();

    /// What was made since the ledger began and not given back, by kind; kinds with none left out.
    Counts Held() const;
    /// The same without the blocks of the heap, some of which the library keeps for its next use.
    Counts HeldObjects() const;
    /// Bytes of the heap blocks among it.
    std::size_t HeldBytes() const;
    /// All that was ever made, by kind.
    const Counts& Made() const;

private:
    const HMODULE module_;
};

inline constexpr int kAllThatFollow = 1 << 30;

/// Counts the calls of some families and lets some of them fail without being made, whatever their
/// arguments. One at a time.
class FailingImports {
public:
    /// @param families  sum of FailingCalls
    FailingImports(HMODULE module, unsigned families);
    FailingImports(const FailingImports&) = delete;
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
    const HMODULE module_;
    const unsigned families_;
};
