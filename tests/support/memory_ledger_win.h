#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>

#include "base/windows_types.h"

/// Books the memory, kernel handles, registry keys and GDI+ objects that a module holds, by pairing
/// its calls: what grows here is the module's own doing, not Windows' or a driver's.
class MemoryLedger {
public:
    explicit MemoryLedger(HMODULE module);
    MemoryLedger(const MemoryLedger&) = delete;
    MemoryLedger& operator=(const MemoryLedger&) = delete;
    ~MemoryLedger();

    using Counts = std::map<std::string, std::size_t>;
    /// What was made since the ledger began and not given back, by kind; kinds with none left out.
    Counts Held() const;
    /// Bytes of the heap blocks among it.
    std::size_t HeldBytes() const;

private:
    struct Hooks;
    std::unique_ptr<Hooks> hooks_;
};
