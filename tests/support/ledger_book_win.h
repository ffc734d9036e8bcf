#pragma once
// The hooks that a ledger is made of: each watches one imported function and books what it makes or
// gives back.

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>

#include "support/faked_import_win.h"

/// Open entries by kind, each told apart by a number: handle, address or name. Any thread.
class LedgerBook {
public:
    using Counts = std::map<std::string, std::size_t>;

    void Enter(const char* kind, std::uint64_t number) {
        if (number == 0) return;  // the call failed: nothing was made
        const std::lock_guard lock(mutex_);
        ++made_[kind];
        open_[kind].insert(number);
    }
    void Strike(const char* kind, std::uint64_t number) {
        const std::lock_guard lock(mutex_);
        auto& entries = open_[kind];
        if (const auto found = entries.find(number); found != entries.end()) entries.erase(found);
    }
    /// What is open, by kind; kinds with nothing left out.
    Counts Held() const {
        const std::lock_guard lock(mutex_);
        Counts counts;
        for (const auto& [kind, entries] : open_) {
            if (!entries.empty()) counts[kind] = entries.size();
        }
        return counts;
    }
    void ForEach(const char* kind, const std::function<void(std::uint64_t)>& act) const {
        const std::lock_guard lock(mutex_);
        if (const auto found = open_.find(kind); found != open_.end())
            std::for_each(found->second.begin(), found->second.end(), act);
    }
    const Counts& Made() const { return made_; }

private:
    mutable std::mutex mutex_;
    std::map<std::string, std::multiset<std::uint64_t>> open_;
    Counts made_;
};

/// The hooks of the ledger `Owner`.
template <class Owner>
struct LedgerHooks {
    template <class Thing>
    static std::uint64_t NumberOf(Thing thing) {
        if constexpr (std::is_pointer_v<Thing>) {
            return reinterpret_cast<std::uint64_t>(thing);
        } else {
            return thing;
        }
    }

    template <FunctionName Name, class Function>
    using Hook = FakedImport<Name, Function, Owner>;

    /// Watches a function whose result is a new thing.
    template <FunctionName Name, class Function>
    struct Maker {
        Maker(HMODULE module, LedgerBook& book, const char* kind)
            : hook(module, [&book, kind](auto... arguments) {
                  const auto made = Hook<Name, Function>::Real(arguments...);
                  book.Enter(kind, NumberOf(made));
                  return made;
              }) {}
        Hook<Name, Function> hook;
    };

    /// Watches a function that writes a new thing to where its argument number `Which` points and
    /// returns `Success` then.
    template <FunctionName Name, std::size_t Which, auto Success, class Function>
    struct OutMaker {
        OutMaker(HMODULE module, LedgerBook& book, const char* kind)
            : hook(module, [&book, kind](auto... arguments) {
                  const auto result = Hook<Name, Function>::Real(arguments...);
                  if (result == static_cast<decltype(result)>(Success))
                      book.Enter(kind, NumberOf(*std::get<Which>(std::tuple(arguments...))));
                  return result;
              }) {}
        Hook<Name, Function> hook;
    };

    /// Watches a function that gives back what its argument number `Which` names.
    template <FunctionName Name, std::size_t Which, class Function>
    struct Taker {
        Taker(HMODULE module, LedgerBook& book, const char* kind)
            : hook(module, [&book, kind](auto... arguments) {
                  book.Strike(kind, NumberOf(std::get<Which>(std::tuple(arguments...))));
                  return Hook<Name, Function>::Real(arguments...);
              }) {}
        Hook<Name, Function> hook;
    };
};
