#include "support/call_ledger_win.h"

#include <cstdint>
#include <set>

#include "base/gl.h"
#include "support/faked_import_win.h"

namespace {

/// Open entries by kind. A kind's entries are told apart by a number: handle, name or id.
class Book {
public:
    template <class Thing>
    Thing Enter(const char* kind, Thing thing) {
        if (thing == Thing{}) return thing;  // the call failed: nothing was made
        ++made_[kind];
        open_[kind].insert(NumberOf(thing));
        return thing;
    }
    template <class Thing>
    void Strike(const char* kind, Thing thing) {
        auto& entries = open_[kind];
        if (const auto found = entries.find(NumberOf(thing)); found != entries.end())
            entries.erase(found);
    }
    /// As Enter, for what may be made again under its name without being given back between.
    void EnterOnce(const char* kind, GLuint name) {
        Strike(kind, name);
        Enter(kind, name);
    }
    CallLedger::Counts Open() const {
        CallLedger::Counts counts;
        for (const auto& [kind, entries] : open_) {
            if (!entries.empty()) counts[kind] = entries.size();
        }
        return counts;
    }
    const CallLedger::Counts& Made() const { return made_; }

private:
    template <class Thing>
    static std::uint64_t NumberOf(Thing thing) {
        if constexpr (std::is_pointer_v<Thing>) {
            return reinterpret_cast<std::uint64_t>(thing);
        } else {
            return thing;
        }
    }
    std::map<std::string, std::multiset<std::uint64_t>> open_;
    CallLedger::Counts made_;
};

// A window's timers have small numbers, windows handles of 32 bits.
std::uint64_t TimerKey(HWND window, UINT_PTR id) {
    return reinterpret_cast<std::uint64_t>(window) << 8 | id;
}

template <FunctionName Name, class Function>
using Hook = FakedImport<Name, Function, CallLedger>;

}  // namespace

struct CallLedger::Hooks {
    explicit Hooks(HMODULE theModule) : module(theModule) {}

    HMODULE module;
    Book book;

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
    using GetDcHook = Hook<"GetDC", decltype(GetDC)>;
    GetDcHook getDc{module,
                    [this](HWND window) { return book.Enter("dc", GetDcHook::Real(window)); }};
    using ReleaseDcHook = Hook<"ReleaseDC", decltype(ReleaseDC)>;
    ReleaseDcHook releaseDc{module, [this](HWND window, HDC dc) {
                                book.Strike("dc", dc);
                                return ReleaseDcHook::Real(window, dc);
                            }};
    using BeginPaintHook = Hook<"BeginPaint", decltype(BeginPaint)>;
    BeginPaintHook beginPaint{module, [this](HWND window, PAINTSTRUCT* paint) {
                                  book.Enter("paint", window);
                                  return BeginPaintHook::Real(window, paint);
                              }};
    using EndPaintHook = Hook<"EndPaint", decltype(EndPaint)>;
    EndPaintHook endPaint{module, [this](HWND window, const PAINTSTRUCT* paint) {
                              book.Strike("paint", window);
                              return EndPaintHook::Real(window, paint);
                          }};
    using FontHook = Hook<"CreateFontIndirectW", decltype(CreateFontIndirectW)>;
    FontHook createFont{module, [this](const LOGFONTW* font) {
                            return book.Enter("gdi object", FontHook::Real(font));
                        }};
    using DeleteObjectHook = Hook<"DeleteObject", decltype(DeleteObject)>;
    DeleteObjectHook deleteObject{module, [this](HGDIOBJ object) {
                                      book.Strike("gdi object", object);
                                      return DeleteObjectHook::Real(object);
                                  }};
    using LoadCursorHook = Hook<"LoadCursorW", decltype(LoadCursorW)>;
    LoadCursorHook loadCursor{module, [this](HINSTANCE instance, LPCWSTR name) {
                                  return book.Enter("cursor", LoadCursorHook::Real(instance, name));
                              }};
    using DestroyCursorHook = Hook<"DestroyCursor", decltype(DestroyCursor)>;
    DestroyCursorHook destroyCursor{module, [this](HCURSOR cursor) {
                                        book.Strike("cursor", cursor);
                                        return DestroyCursorHook::Real(cursor);
                                    }};
    using ContextHook = Hook<"wglCreateContext", decltype(wglCreateContext)>;
    ContextHook createContext{
        module, [this](HDC dc) { return book.Enter("gl context", ContextHook::Real(dc)); }};
    using DeleteContextHook = Hook<"wglDeleteContext", decltype(wglDeleteContext)>;
    DeleteContextHook deleteContext{module, [this](HGLRC context) {
                                        book.Strike("gl context", context);
                                        return DeleteContextHook::Real(context);
                                    }};
    using NewListHook = Hook<"glNewList", decltype(glNewList)>;
    NewListHook newList{module, [this](GLuint name, GLenum mode) {
                            book.EnterOnce("gl list", name);
                            NewListHook::Real(name, mode);
                        }};
    using FontListsHook = Hook<"wglUseFontBitmapsW", decltype(wglUseFontBitmapsW)>;
    FontListsHook fontLists{module, [this](HDC dc, DWORD first, DWORD count, DWORD base) {
                                for (DWORD i = 0; i < count; ++i)
                                    book.EnterOnce("gl list", GLuint{base + i});
                                return FontListsHook::Real(dc, first, count, base);
                            }};
    using DeleteListsHook = Hook<"glDeleteLists", decltype(glDeleteLists)>;
    DeleteListsHook deleteLists{module, [this](GLuint first, GLsizei count) {
                                    for (GLsizei i = 0; i < count; ++i)
                                        book.Strike("gl list", first + static_cast<GLuint>(i));
                                    DeleteListsHook::Real(first, count);
                                }};
    using TexturesHook = Hook<"glGenTextures", decltype(glGenTextures)>;
    TexturesHook genTextures{module, [this](GLsizei count, GLuint* names) {
                                 TexturesHook::Real(count, names);
                                 for (GLsizei i = 0; i < count; ++i)
                                     book.Enter("gl texture", names[i]);
                             }};
    using DeleteTexturesHook = Hook<"glDeleteTextures", decltype(glDeleteTextures)>;
    DeleteTexturesHook deleteTextures{module, [this](GLsizei count, const GLuint* names) {
                                          for (GLsizei i = 0; i < count; ++i)
                                              book.Strike("gl texture", names[i]);
                                          DeleteTexturesHook::Real(count, names);
                                      }};
    using QuadricHook = Hook<"gluNewQuadric", decltype(gluNewQuadric)>;
    QuadricHook newQuadric{module,
                           [this] { return book.Enter("glu quadric", QuadricHook::Real()); }};
    using DeleteQuadricHook = Hook<"gluDeleteQuadric", decltype(gluDeleteQuadric)>;
    DeleteQuadricHook deleteQuadric{module, [this](GLUquadric* quadric) {
                                        book.Strike("glu quadric", quadric);
                                        DeleteQuadricHook::Real(quadric);
                                    }};
};

CallLedger::CallLedger(HMODULE module) : hooks_(std::make_unique<Hooks>(module)) {}
CallLedger::~CallLedger() = default;
CallLedger::Counts CallLedger::Held() const { return hooks_->book.Open(); }
const CallLedger::Counts& CallLedger::Made() const { return hooks_->book.Made(); }
