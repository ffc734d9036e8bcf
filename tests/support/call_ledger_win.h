#pragma once

#include <map>
#include <memory>
#include <string>

#include "base/windows_types.h"

/// Books what a module makes with user32, gdi32 and OpenGL and gives back, by pairing its calls.
/// Wine counts none of these truly; the calls are the same everywhere.
class CallLedger {
public:
    explicit CallLedger(HMODULE module);
    CallLedger(const CallLedger&) = delete;
    CallLedger& operator=(const CallLedger&) = delete;
    ~CallLedger();

    using Counts = std::map<std::string, std::size_t>;
    /// What was made since the ledger began and not given back, by kind; kinds with none left out.
    Counts Held() const;
    /// All that was ever made, by kind.
    const Counts& Made() const;

private:
    struct Hooks;
    std::unique_ptr<Hooks> hooks_;
};
