#include "support/call_ledger_win.h"

#include "base/gl.h"
#include "support/ledger_book_win.h"

namespace {

using Hooks = LedgerHooks<CallLedger>;
template <FunctionName Name, class Function>
using Hook = Hooks::Hook<Name, Function>;
template <FunctionName Name, class Function>
using Maker = Hooks::Maker<Name, Function>;
template <FunctionName Name, std::size_t Which, class Function>
using Taker = Hooks::Taker<Name, Which, Function>;

// A window's timers have small numbers, windows handles of 32 bits.
std::uint64_t TimerKey(HWND window, UINT_PTR id) { return Hooks::NumberOf(window) << 8 | id; }

/// A list that is recorded anew is still one list.
void EnterLists(LedgerBook& book, GLuint first, GLsizei count) {
    for (GLuint name = first; name < first + static_cast<GLuint>(count); ++name) {
        book.Strike("gl list", name);
        book.Enter("gl list", name);
    }
}

}  // namespace

struct CallLedger::Hooks {
    explicit Hooks(HMODULE theModule) : module(theModule) {}

    HMODULE module;
    LedgerBook book;

    Maker<"GetDC", decltype(GetDC)> getDc{module, book, "dc"};
    Taker<"ReleaseDC", 1, decltype(ReleaseDC)> releaseDc{module, book, "dc"};
    Maker<"CreateFontIndirectW", decltype(CreateFontIndirectW)> font{module, book, "gdi object"};
    Taker<"DeleteObject", 0, decltype(DeleteObject)> deleteObject{module, book, "gdi object"};
    using LoadCursorHook = Hook<"LoadCursorW", decltype(LoadCursorW)>;
    LoadCursorHook loadCursor{module, [this](HINSTANCE owner, LPCWSTR name) {
                                  const HCURSOR cursor = LoadCursorHook::Real(owner, name);
                                  // A window class never gives its arrow back: it is the system's.
                                  if (name != IDC_ARROW)
                                      book.Enter("cursor", reinterpret_cast<std::uint64_t>(cursor));
                                  return cursor;
                              }};
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

    using GenTextures = Hook<"glGenTextures", decltype(glGenTextures)>;
    GenTextures genTextures{module, [this](GLsizei count, GLuint* names) {
                                GenTextures::Real(count, names);
                                for (GLsizei i = 0; i < count; ++i)
                                    book.Enter("gl texture", names[i]);
                            }};
    using DeleteTextures = Hook<"glDeleteTextures", decltype(glDeleteTextures)>;
    DeleteTextures deleteTextures{module, [this](GLsizei count, const GLuint* names) {
                                      for (GLsizei i = 0; i < count; ++i)
                                          book.Strike("gl texture", names[i]);
                                      DeleteTextures::Real(count, names);
                                  }};
    using NewList = Hook<"glNewList", decltype(glNewList)>;
    NewList newList{module, [this](GLuint name, GLenum mode) {
                        EnterLists(book, name, 1);
                        NewList::Real(name, mode);
                    }};
    using FontLists = Hook<"wglUseFontBitmapsW", decltype(wglUseFontBitmapsW)>;
    FontLists fontLists{module, [this](HDC dc, DWORD first, DWORD count, DWORD base) {
                            EnterLists(book, base, static_cast<GLsizei>(count));
                            return FontLists::Real(dc, first, count, base);
                        }};
    using DeleteLists = Hook<"glDeleteLists", decltype(glDeleteLists)>;
    DeleteLists deleteLists{module, [this](GLuint first, GLsizei count) {
                                for (GLsizei i = 0; i < count; ++i)
                                    book.Strike("gl list", first + static_cast<GLuint>(i));
                                DeleteLists::Real(first, count);
                            }};
};

CallLedger::CallLedger(HMODULE module) : hooks_(std::make_unique<Hooks>(module)) {}
CallLedger::~CallLedger() = default;
CallLedger::Counts CallLedger::Held() const { return hooks_->book.Held(); }
const CallLedger::Counts& CallLedger::Made() const { return hooks_->book.Made(); }
