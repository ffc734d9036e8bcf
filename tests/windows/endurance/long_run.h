#pragma once
// What the long runs share: how long they are, where their chance comes from, and the watch over
// everything that could grow.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "support/call_ledger_win.h"
#include "support/memory_ledger_win.h"

/// HORIVO_ENDURANCE in the environment: "full", "short", or unset, which means short.
bool IsFullRun();
/// `full` in a full run, `brief` in a short one.
int LengthOfRun(int full, int brief);
/// HORIVO_SEED in the environment, else one from the clock. Printed, so that a failure can be
/// repeated.
std::uint32_t SeedOfRun();

/// Samples what process and library hold, and judges at the end whether it stayed flat.
class GrowthWatch {
public:
    explicit GrowthWatch(const char* name) : name_(name) {}
    /// Ledgers to ask from now on; null for none.
    void Follow(const CallLedger* calls, const MemoryLedger* memory) {
        calls_ = calls;
        memory_ = memory;
    }
    /// @param step  rounds done so far; the library is at rest
    void Take(int step);
    /// Prints the samples and fails the test for what grew after the first tenth: all but the
    /// process's memory as a whole, in which the driver's grows.
    void ExpectFlat() const { Judge(true); }
    /// Only prints them: what grows belongs to others.
    void Print() const { Judge(false); }

private:
    void Judge(bool strict) const;

    using Sample = std::map<std::string, double>;
    const char* name_;
    const CallLedger* calls_ = nullptr;
    const MemoryLedger* memory_ = nullptr;
    std::vector<int> steps_;
    std::vector<Sample> samples_;
};
