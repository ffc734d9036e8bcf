#include "support/call_ledger_win.h"

#include <cstdint>
#include <set>
#include <tuple>
#include <type_traits>

#include "base/gl.h"
#include "support/faked_import_win.h"

namespace {

/// Open entries by kind, each told apart by a number: handle, name or id.
struct Book {
    std::map<std::string, std::multiset<std::uint64_t>> open;
    CallLedger::Counts made;

    void Enter(const char* kind, std::uint64_t number) {
        if (number == 0) return;  // the call failed: nothing was made
        ++made[kind];
        open[kind].insert(number);
    }
    void Strike(const char* kind, std::uint64_t number) {
        auto& entries = open[kind];
        if (const auto found = entries.find(number); found != entries.end()) entries.erase(found);
    }
};

template <class Thing>
std::uint64_t NumberOf(Thing thing) {
    if constexpr (std::is_pointer_v<Thing>) {
        return reinterpret_cast<std::uint64_t>(thing);
    } else {
        return thing;
    }
}

template <FunctionName Name, class Function>
using Hook = FakedImport<Name, Function, CallLedger>;

/// Watches a function whose result is a new thing.
template <FunctionName Name, class Function>
struct Maker {
    Maker(HMODULE module, Book& book, const char* kind)
        : hook(module, [&book, kind](auto... arguments) {
              const auto made = Hook<Name, Function>::Real(arguments...);
              book.Enter(kind, NumberOf(made));
              return made;
          }) {}
    Hook<Name, Function> hook;
};

/// Watches a function that gives back what its argument number `Which` names.
template <FunctionName Name, std::size_t Which, class Function>
struct Taker {
    Taker(HMODULE module, Book& book, const char* kind)
        : hook(module, [&book, kind](auto... arguments) {
              book.Strike(kind, NumberOf(std::get<Which>(std::tuple(arguments...))));
              return Hook<Name, Function>::Real(arguments...);
          }) {}
    Hook<Name, Function> hook;
};

// A window's timers have small numbers, windows handles of 32 bits.
std::uint64_t TimerKey(HWND window, UINT_PTR id) { return NumberOf(window) << 8 | id; }

}  // namespace

struct CallLedger::Hooks {
    explicit Hooks(HMODULE theModule) : module(theModule) {}

    HMODULE module;
    Book book;

    Maker<"GetDC", decltype(GetDC)> getDc{module, book, "dc"};
    Taker<"ReleaseDC", 1, decltype(ReleaseDC)> releaseDc{module, book, "dc"};
    Maker<"CreateFontIndirectW", decltype(CreateFontIndirectW)> font{module, book, "gdi object"};
    Taker<"DeleteObject", 0, decltype(DeleteObject)> deleteObject{module, book, "gdi object"};
    Maker<"LoadCursorW", decltype(LoadCursorW)> loadCursor{module, book, "cursor"};
    Taker<"DestroyCursor", 0, decltype(DestroyCursor)> destroyCursor{module, book, "cursor"};
    Maker<"wglCreateContext", decltype(wglCreateContext)> context{module, book, "gl context"};
    Taker<"wglDeleteContext", 0, decltype(wglDeleteContext)> deleteContext{module, book,
                                                                           "gl context"};
    Maker<"gluNewQuadric", decltype(gluNewQuadric)> quadric{module, book, "glu quadric"};
    Taker<"gluDeleteQuadric", 0, decltype(gluDeleteQuadric)> deleteQuadric{module, book,
                                                                           "glu quadric"};

    using SetTimerHook = Hook<"SetTimer", decltype(SetTimer)>;
    SetTimerHook setTimer{module, [this](HWND window, UINT_PTR id, UINT ms, TIMERPROC procedure) {
                              const UINT_PTR timer = SetTimerHook::Real(window, id, ms, procedure);
                              if (timer != 0) book.Enter("timer", TimerKey(window, timer));
                              return timer;
                          }};
    using KillTimerHook = Hook<"KillTimer", decltype(KillTimer)>;
    KillTimerHook killTimer{module, [this](HWND window, UINT_PTR id) {
                                book.Strike("timer", TimerKey(window, id));
                                return KillTimerHook::Real(window, id);
                            }};
};

CallLedger::CallLedger(HMODULE module) : hooks_(std::make_unique<Hooks>(module)) {}
CallLedger::~CallLedger() = default;
CallLedger::Counts CallLedger::Held() const {
    Counts counts;
    for (const auto& [kind, entries] : hooks_->book.open) {
        if (!entries.empty()) counts[kind] = entries.size();
    }
    return counts;
}
const CallLedger::Counts& CallLedger::Made() const { return hooks_->book.made; }
