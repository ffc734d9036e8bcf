#include "support/import_table_win.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <array>
#include <atomic>
#include <mutex>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "base/gl.h"
#include "support/faked_import_win.h"

namespace {

/// What a call is given or returns. On x64 it takes eight bytes, whatever its type.
using Word = std::uint64_t;
/// No function of the table has more arguments, nor one of floating point among its first four.
using Words = std::array<Word, 12>;
using AnyFunction = Word WINAPI(Word, Word, Word, Word, Word, Word, Word, Word, Word, Word, Word,
                                Word);

constexpr Word kMinusOne = ~Word{0};

// ---- The book of what is held, each thing told apart by a number: handle, address or name
// --------

std::mutex bookMutex;
std::map<std::string, std::multiset<Word>> book;
ImportLedger::Counts everMade;

void Enter(const char* kind, Word thing) {
    if (thing == 0 || thing == kMinusOne) return;  // the call failed: nothing was made
    const std::lock_guard lock(bookMutex);
    ++everMade[kind];
    book[kind].insert(thing);
}

void Strike(const char* kind, Word thing) {
    const std::lock_guard lock(bookMutex);
    auto& things = book[kind];
    if (const auto found = things.find(thing); found != things.end()) things.erase(found);
}

// ---- How a call is booked ---------------------------------------------------------------------

using Entry = void(const char* kind, Word result, const Words& words);

void Made(const char* kind, Word result, const Words&) { Enter(kind, result); }
/// Argument number `At` points to what was made, when the call returns `Success`.
template <std::size_t At, int Success>
void MadeAt(const char* kind, Word result, const Words& words) {
    if (static_cast<int>(result) == Success) Enter(kind, *reinterpret_cast<const Word*>(words[At]));
}
template <std::size_t At>
void Taken(const char* kind, Word, const Words& words) {
    Strike(kind, words[At]);
}
template <auto Act>
void Textures(const char* kind, Word, const Words& words) {
    const auto* names = reinterpret_cast<const GLuint*>(words[1]);
    for (int i = 0; i < static_cast<int>(words[0]); ++i) Act(kind, names[i]);
}
template <auto Act, std::size_t First, std::size_t Count>
void Lists(const char* kind, Word, const Words& words) {
    for (GLuint i = 0; i < static_cast<GLuint>(words[Count]); ++i)
        Act(kind, static_cast<GLuint>(words[First]) + i);
}
void FontMade(const char* kind, Word result, const Words& words) {
    if (static_cast<BOOL>(result) != FALSE) Lists<Enter, 3, 2>(kind, result, words);
}
/// What has a number of 32 bits as its first argument.
template <auto Act>
void First(const char* kind, Word, const Words& words) {
    Act(kind, static_cast<std::uint32_t>(words[0]));
}

// ---- The table --------------------------------------------------------------------------------

struct Booking {
    const char* kind;
    const char* makers;
    Entry* after;  ///< what is booked when they return
    const char* takers;
    /// What is booked before these are called: at once another thread may get what is given back.
    Entry* before;
};

constexpr Booking kBookings[] = {
    {"heap block", "malloc calloc realloc", Made, "free realloc", Taken<0>},
    {"gdi+ block", "GdipAlloc", Made, "GdipFree", Taken<0>},
    {"use of gdi+", "GdiplusStartup", MadeAt<0, 0>, "GdiplusShutdown", Taken<0>},
    {"gdi+ object", "GdipCreateBitmapFromFile GdipCloneImage GdipGetImageGraphicsContext",
     MadeAt<1, 0>, "GdipDisposeImage GdipDeleteGraphics", Taken<0>},
    {"gdi+ object", "GdipCreateBitmapFromScan0", MadeAt<5, 0>, "", nullptr},
    {"gl context", "wglCreateContext", Made, "wglDeleteContext", Taken<0>},
    // A list that is recorded anew is still one list.
    {"gl list", "glNewList", First<Enter>, "glNewList", First<Strike>},
    {"gl list", "wglUseFontBitmapsW", FontMade, "wglUseFontBitmapsW", Lists<Strike, 3, 2>},
    {"gl list", "", nullptr, "glDeleteLists", Lists<Strike, 0, 1>},
    {"gl texture", "glGenTextures", Textures<Enter>, "glDeleteTextures", Textures<Strike>},
    {"glu quadric", "gluNewQuadric", Made, "gluDeleteQuadric", Taken<0>},
    {"kernel handle", "CreateThread CreateMutexW CreateFileW", Made, "CloseHandle", Taken<0>},
    {"kernel handle", "DuplicateHandle", MadeAt<3, TRUE>, "", nullptr},
    {"registry key", "RegOpenKeyExW", MadeAt<4, 0>, "RegCloseKey", Taken<0>},
    {"reference to the library", "GetModuleHandleExW", MadeAt<2, TRUE>,
     "FreeLibrary FreeLibraryAndExitThread", Taken<0>},
    {"painting", "BeginPaint", First<Enter>, "EndPaint", First<Strike>},
    {"dc", "GetDC", Made, "ReleaseDC", Taken<1>},
    {"timer", "SetTimer", First<Enter>, "KillTimer SetTimer", First<Strike>},
    {"gdi object", "CreateFontIndirectW", Made, "DeleteObject", Taken<0>},
};

struct Failure {
    unsigned family;
    Word result;
    const char* functions;
};

// Calls that give something back never fail: what they would leave is not the library's fault.
constexpr Failure kFailures[] = {
    {kMemoryCalls, 0, "malloc calloc realloc GlobalAlloc GdipAlloc"},
    {kRefusingCalls, 0,
     "malloc CreateWindowExW ChoosePixelFormat SetPixelFormat wglCreateContext wglMakeCurrent"},
    {kGdiplusCalls, 3 /* OutOfMemory */,
     "GdiplusStartup GdipCreateBitmapFromFile GdipCreateBitmapFromScan0 GdipCloneImage "
     "GdipGetImageGraphicsContext GdipBitmapGetPixel GdipBitmapLockBits GdipBitmapSetPixel "
     "GdipDrawImageRectI GdipGetImageEncoders GdipGetImageEncodersSize GdipGetImageHeight "
     "GdipGetImagePixelFormat GdipGetImageWidth GdipSaveImageToFile GdipSetCompositingMode "
     "GdipSetInterpolationMode GdipSetPixelOffsetMode GdipSetSmoothingMode"},
    {kWglCalls, 0,
     "ChoosePixelFormat SetPixelFormat wglCreateContext wglMakeCurrent wglGetCurrentContext "
     "wglGetCurrentDC wglGetProcAddress wglUseFontBitmapsW wglUseFontOutlinesW SwapBuffers"},
    {kGlCalls, 0, "glGetString gluNewQuadric"},
    {kGlCalls, GL_OUT_OF_MEMORY, "glGetError"},
    {kThreadCalls, 0, "CreateThread CreateMutexW DuplicateHandle GetModuleHandleExW PostMessageW"},
    {kThreadCalls, WAIT_TIMEOUT, "WaitForSingleObject"},
    {kFileCalls, kMinusOne, "CreateFileW GetFileAttributesW"},
    {kFileCalls, ERROR_ACCESS_DENIED,
     "RegOpenKeyExW RegQueryValueExW EnumDynamicTimeZoneInformation"},
    {kFileCalls, 0x8007000E, "SHGetFolderPathW"},
    {kFileCalls, 0,
     "ReadFile GetFileSizeEx SetFilePointerEx CreateDirectoryW CopyFileW GetModuleFileNameW "
     "GetTimeZoneInformationForYear ReadProcessMemory GlobalMemoryStatusEx"},
    {kWindowCalls, 0,
     "RegisterClassExW CreateWindowExW GetDC BeginPaint GetClientRect LoadCursorW SetTimer "
     "GetCursorPos MapWindowPoints TrackMouseEvent GetParent FindWindowW"},
    {kTextCalls, kMinusOne, "GetGlyphOutlineW"},
    {kTextCalls, 0,
     "CreateFontIndirectW SelectObject GetDeviceCaps DPtoLP GetTextExtentPoint32A GetLocaleInfoW "
     "GetCPInfo GetTimeFormatW GetPrivateProfileIntW MultiByteToWideChar WideCharToMultiByte "
     "SystemTimeToTzSpecificLocalTime"},
};

// ---- Calls on their way to Windows ------------------------------------------------------------

/// Stands between the module and a function, for the ledger or for a family of failures.
struct Hook {
    std::string function;
    const char* kind;
    Entry* after;
    Entry* before;
    const Failure* failure;       ///< null: it is the ledger's
    AnyFunction* real = nullptr;  ///< what stood in the module's table before
};

std::vector<Hook> MakeHooks() {
    std::vector<Hook> hooks;
    const auto add = [&](const char* functions, const Hook& like) {
        std::istringstream names(functions);
        for (std::string name; names >> name;) hooks.emplace_back(like).function = name;
    };
    for (const Booking& booking : kBookings) {
        add(booking.makers, {"", booking.kind, booking.after, nullptr, nullptr});
        add(booking.takers, {"", booking.kind, nullptr, booking.before, nullptr});
    }
    for (const Failure& failure : kFailures)
        add(failure.functions, {"", "", nullptr, nullptr, &failure});
    return hooks;
}

std::vector<Hook> hooks = MakeHooks();

std::atomic<int> calls = 0;
std::atomic<int> failFrom = 0;
std::atomic<int> failUntil = 0;
std::atomic<const char*> firstFailed = nullptr;

bool HasToFail(const Hook& hook) {
    const int number = ++calls;
    if (number < failFrom || number >= failUntil) return false;
    const char* none = nullptr;
    firstFailed.compare_exchange_strong(none, hook.function.c_str());
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return true;
}

template <std::size_t Number>
Word WINAPI Call(Word a, Word b, Word c, Word d, Word e, Word f, Word g, Word h, Word i, Word j,
                 Word k, Word l) {
    const Hook& hook = hooks[Number];
    if (hook.failure != nullptr && HasToFail(hook)) return hook.failure->result;
    const Words words = {a, b, c, d, e, f, g, h, i, j, k, l};
    if (hook.before != nullptr) hook.before(hook.kind, 0, words);
    const Word result = hook.real(a, b, c, d, e, f, g, h, i, j, k, l);
    if (hook.after != nullptr) hook.after(hook.kind, result, words);
    return result;
}

constexpr auto kCalls = []<std::size_t... Numbers>(std::index_sequence<Numbers...>) {
    return std::array<AnyFunction*, sizeof...(Numbers)>{Call<Numbers>...};
}
(std::make_index_sequence<160>());

/// Of these families; 0: those of the ledger.
bool IsOf(const Hook& hook, unsigned families) {
    if (hook.failure == nullptr) return families == 0;
    return (hook.failure->family & families) != 0;
}

void Install(HMODULE module, unsigned families) {
    for (std::size_t i = 0; i < hooks.size(); ++i) {
        if (!IsOf(hooks[i], families)) continue;
        void* call = reinterpret_cast<void*>(kCalls.at(i));
        void* before = ReplaceImport(module, hooks[i].function, call);
        hooks[i].real = reinterpret_cast<AnyFunction*>(before);
        ExpectImported(hooks[i].function, before != nullptr);
    }
}

/// The last first: a function may have two hooks.
void Remove(HMODULE module, unsigned families) {
    for (auto hook = hooks.rbegin(); hook != hooks.rend() && IsLoaded(module); ++hook) {
        if (IsOf(*hook, families) && hook->real != nullptr)
            ReplaceImport(module, hook->function, reinterpret_cast<void*>(hook->real));
    }
}

}  // namespace

void ExpectImported(std::string_view function, bool imported) {
    EXPECT_TRUE(imported) << "the library does not import " << function;
}

ImportLedger::ImportLedger(HMODULE module) : module_(module) {
    book.clear();
    everMade.clear();
    Install(module, 0);
}

ImportLedger::~ImportLedger() { Remove(module_, 0); }

ImportLedger::Counts ImportLedger::Held() const {
    const std::lock_guard lock(bookMutex);
    Counts counts;
    for (const auto& [kind, things] : book) {
        if (!things.empty()) counts[kind] = things.size();
    }
    return counts;
}

ImportLedger::Counts ImportLedger::HeldObjects() const {
    Counts counts = Held();
    counts.erase("heap block");
    return counts;
}

std::size_t ImportLedger::HeldBytes() const {
    const std::lock_guard lock(bookMutex);
    std::size_t bytes = 0;
    for (const Word block : book["heap block"]) bytes += _msize(reinterpret_cast<void*>(block));
    return bytes;
}

const ImportLedger::Counts& ImportLedger::Made() const { return everMade; }

FailingImports::FailingImports(HMODULE module, unsigned families)
    : module_(module), families_(families) {
    FailFrom(0, 0);
    Install(module, families);
}

FailingImports::~FailingImports() { Remove(module_, families_); }

void FailingImports::FailFrom(int number, int count) {
    failUntil = 0;
    calls = 0;
    firstFailed = nullptr;
    failFrom = number;
    failUntil = number + count;
}

void FailingImports::Stop() { failUntil = 0; }
int FailingImports::Calls() const { return calls; }
const char* FailingImports::Failed() const { return firstFailed; }
