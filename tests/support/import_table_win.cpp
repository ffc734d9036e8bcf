#include "support/import_table_win.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <shlobj.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <mutex>
#include <set>
#include <tuple>
#include <type_traits>

#include "base/gl.h"
#include "image/gdiplus_win.h"
#include "support/faked_import_win.h"

namespace {

using namespace Gdiplus::DllExports;

// ---- The book of what is held -----------------------------------------------------------------

template <class Thing>
std::uint64_t NumberOf(Thing thing) {
    if constexpr (std::is_pointer_v<Thing>) {
        return reinterpret_cast<std::uint64_t>(thing);
    } else {
        return static_cast<std::uint64_t>(thing);
    }
}

/// Open entries by kind, each told apart by a number: handle, address or name. Any thread. A thing
/// may be entered again before it is struck: another thread may get what was just given back.
class LedgerBook {
public:
    template <class Thing>
    void Enter(const char* kind, Thing thing) {
        if (NumberOf(thing) == 0) return;  // the call failed: nothing was made
        const std::lock_guard lock(mutex);
        ++made[kind];
        open[kind].insert(NumberOf(thing));
    }
    template <class Thing>
    void Strike(const char* kind, Thing thing) {
        const std::lock_guard lock(mutex);
        auto& entries = open[kind];
        if (const auto found = entries.find(NumberOf(thing)); found != entries.end())
            entries.erase(found);
    }
    /// A list that is recorded anew is still one list.
    void EnterLists(GLuint first, DWORD count) {
        for (GLuint name = first; name < first + count; ++name) {
            Strike("gl list", name);
            Enter("gl list", name);
        }
    }

    std::mutex mutex;
    std::map<std::string, std::multiset<std::uint64_t>> open;
    ImportLedger::Counts made;
};

LedgerBook book;

// What is booked when a call has returned: its result (0 when it has none), then its arguments.

template <FunctionName Kind>
constexpr auto kMakes = [](auto made, auto...) { book.Enter(Kind.text, made); };
/// Argument number `At` points to what was made, when the call returns `Success`.
template <FunctionName Kind, std::size_t At, auto Success = 0>
constexpr auto kMakesAt = [](auto result, auto... arguments) {
    if (static_cast<long long>(result) == static_cast<long long>(Success))
        book.Enter(Kind.text, *std::get<At>(std::tuple(arguments...)));
};
template <FunctionName Kind, std::size_t At = 0>
constexpr auto kTakes =
    [](auto, auto... arguments) { book.Strike(Kind.text, std::get<At>(std::tuple(arguments...))); };
constexpr auto kNothing = [](auto...) {};

constexpr auto kOpensFile = [](HANDLE file, auto...) {
    if (file != INVALID_HANDLE_VALUE) book.Enter("kernel handle", file);
};
constexpr auto kMovesBlock = [](void* moved, void* block, std::size_t size) {
    if (moved == nullptr && size != 0) return;
    book.Strike("heap block", block);
    book.Enter("heap block", moved);
};
constexpr auto kRefersToModule = [](BOOL done, DWORD flags, LPCWSTR, HMODULE* module) {
    if (done && (flags & GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT) == 0)
        book.Enter("reference to the library", *module);
};
constexpr auto kLoadsCursor = [](HCURSOR cursor, HINSTANCE, LPCWSTR name) {
    // A window class never gives its arrow back: it is the system's.
    if (name != IDC_ARROW) book.Enter("cursor", cursor);
};
// A window's timers have small numbers, windows handles of 32 bits.
constexpr auto kStartsTimer = [](UINT_PTR timer, HWND window, auto...) {
    if (timer == 0) return;
    book.Strike("timer", NumberOf(window) << 8 | timer);
    book.Enter("timer", NumberOf(window) << 8 | timer);
};
constexpr auto kStopsTimer = [](BOOL, HWND window, UINT_PTR timer) {
    book.Strike("timer", NumberOf(window) << 8 | timer);
};
constexpr auto kMakesTextures = [](auto, GLsizei count, GLuint* names) {
    for (GLsizei i = 0; i < count; ++i) book.Enter("gl texture", names[i]);
};
constexpr auto kTakesTextures = [](auto, GLsizei count, const GLuint* names) {
    for (GLsizei i = 0; i < count; ++i) book.Strike("gl texture", names[i]);
};
constexpr auto kMakesList = [](auto, GLuint name, GLenum) { book.EnterLists(name, 1); };
constexpr auto kMakesFontLists = [](BOOL, HDC, DWORD, DWORD count, DWORD base) {
    book.EnterLists(base, count);
};
constexpr auto kTakesLists = [](auto, GLuint first, GLsizei count) {
    for (GLsizei i = 0; i < count; ++i) book.Strike("gl list", first + static_cast<GLuint>(i));
};
constexpr auto kMakesClass = [](ATOM atom, auto...) {
    if (atom != 0) book.Enter("window class", 1);
};
constexpr auto kTakesClass = [](BOOL done, auto...) {
    if (done) book.Strike("window class", 1);
};

// ---- Calls that fail --------------------------------------------------------------------------

/// How a function says that it failed, and with which families.
struct Failure {
    unsigned families = 0;  ///< 0: it never fails
    std::uint64_t result = 0;
    DWORD lastError = ERROR_NOT_ENOUGH_MEMORY;
};
constexpr std::uint64_t kMinusOne = ~0ULL;

struct {
    std::atomic<int> calls = 0;
    std::atomic<int> from = 0;
    std::atomic<int> until = 0;
    std::atomic<const char*> failed = nullptr;
} failing;

bool HasToFail(const char* function, const Failure& failure) {
    const int number = ++failing.calls;
    if (number < failing.from || number >= failing.until) return false;
    const char* none = nullptr;
    failing.failed.compare_exchange_strong(none, function);
    SetLastError(failure.lastError);
    return true;
}

// ---- The table --------------------------------------------------------------------------------

/// What stands in the module's table of imports while a function is watched, and where it finds
/// what stood there before.
struct Hook {
    void* call = nullptr;  ///< null: not watched
    void** below = nullptr;
};

struct ImportRow {
    const char* function;
    Hook booked;
    Hook failing;
    Failure failure;
};

template <class Result>
Result ResultOf(std::uint64_t number) {
    if constexpr (std::is_pointer_v<Result>) {
        return reinterpret_cast<Result>(number);
    } else {
        return static_cast<Result>(number);
    }
}

/// When a call is booked: before it when it never returns.
enum class Booking { After, Before };

template <FunctionName Name, auto Book, Booking When, class Result, class... Arguments>
struct WatchedCall {
    static inline void* belowBook = nullptr;
    static inline void* belowFailure = nullptr;
    static inline Failure failure;

    static Result WINAPI Booked(Arguments... arguments) {
        const auto real = reinterpret_cast<Result(WINAPI*)(Arguments...)>(belowBook);
        if constexpr (std::is_void_v<Result>) {
            if (When == Booking::Before) Book(0, arguments...);
            real(arguments...);
            if (When == Booking::After) Book(0, arguments...);
        } else {
            const Result result = real(arguments...);
            Book(result, arguments...);
            return result;
        }
    }
    static Result WINAPI Failing(Arguments... arguments) {
        if constexpr (!std::is_void_v<Result>) {
            if (HasToFail(Name.text, failure)) return ResultOf<Result>(failure.result);
        }
        return reinterpret_cast<Result(WINAPI*)(Arguments...)>(belowFailure)(arguments...);
    }
};

/// A row of the table: what is booked of the function's calls, and how they fail.
template <FunctionName Name, auto Book = kNothing, Booking When = Booking::After, class Result,
          class... Arguments>
ImportRow Import(Result(WINAPI*)(Arguments...), const Failure& failure = {}) {
    using Call = WatchedCall<Name, Book, When, Result, Arguments...>;
    Call::failure = failure;
    ImportRow row = {Name.text, {}, {}, failure};
    if constexpr (!std::is_same_v<decltype(Book), std::remove_const_t<decltype(kNothing)>>)
        row.booked = {reinterpret_cast<void*>(&Call::Booked), &Call::belowBook};
    if (failure.families != 0)
        row.failing = {reinterpret_cast<void*>(&Call::Failing), &Call::belowFailure};
    return row;
}

constexpr Failure kNoGdiplus = {kGdiplusCalls, Gdiplus::OutOfMemory};
constexpr Failure kNoWgl = {kWglCalls};
constexpr Failure kNoWindow = {kWglCalls | kRefusingCalls};
constexpr Failure kNoThread = {kThreadCalls};
constexpr Failure kNoFile = {kFileCalls, 0, ERROR_READ_FAULT};
constexpr Failure kDenied = {kFileCalls, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED};
constexpr Failure kNotThere = {kFileCalls, kMinusOne, ERROR_SHARING_VIOLATION};
constexpr Failure kNoUser = {kWindowCalls};
constexpr Failure kNoText = {kTextCalls};
constexpr Failure kNoMemory = {kMemoryCalls};

// Calls that give something back never fail here: what they would leave is not the library's fault.
const ImportRow kImports[] = {
    Import<"malloc", kMakes<"heap block">>(std::malloc, {kMemoryCalls | kRefusingCalls}),
    Import<"calloc", kMakes<"heap block">>(std::calloc, kNoMemory),
    Import<"realloc", kMovesBlock>(std::realloc, kNoMemory),
    Import<"free", kTakes<"heap block">>(std::free),
    Import<"GlobalAlloc", kMakes<"global block">>(GlobalAlloc, kNoMemory),
    Import<"GlobalFree", kTakes<"global block">>(GlobalFree),
    Import<"GdipAlloc", kMakes<"gdi+ block">>(GdipAlloc, kNoMemory),
    Import<"GdipFree", kTakes<"gdi+ block">>(GdipFree),

    Import<"GdiplusStartup", kMakesAt<"use of gdi+", 0>>(Gdiplus::GdiplusStartup, kNoGdiplus),
    Import<"GdiplusShutdown", kTakes<"use of gdi+">>(Gdiplus::GdiplusShutdown),
    Import<"GdipCreateBitmapFromFile", kMakesAt<"gdi+ object", 1>>(GdipCreateBitmapFromFile,
                                                                   kNoGdiplus),
    Import<"GdipCreateBitmapFromScan0", kMakesAt<"gdi+ object", 5>>(GdipCreateBitmapFromScan0,
                                                                    kNoGdiplus),
    Import<"GdipCloneImage", kMakesAt<"gdi+ object", 1>>(GdipCloneImage, kNoGdiplus),
    Import<"GdipDisposeImage", kTakes<"gdi+ object">>(GdipDisposeImage),
    Import<"GdipGetImageGraphicsContext", kMakesAt<"gdi+ object", 1>>(GdipGetImageGraphicsContext,
                                                                      kNoGdiplus),
    Import<"GdipDeleteGraphics", kTakes<"gdi+ object">>(GdipDeleteGraphics),
    Import<"GdipBitmapGetPixel">(GdipBitmapGetPixel, kNoGdiplus),
    Import<"GdipBitmapLockBits">(GdipBitmapLockBits, kNoGdiplus),
    Import<"GdipBitmapSetPixel">(GdipBitmapSetPixel, kNoGdiplus),
    Import<"GdipDrawImageRectI">(GdipDrawImageRectI, kNoGdiplus),
    Import<"GdipGetImageEncoders">(GdipGetImageEncoders, kNoGdiplus),
    Import<"GdipGetImageEncodersSize">(GdipGetImageEncodersSize, kNoGdiplus),
    Import<"GdipGetImageHeight">(GdipGetImageHeight, kNoGdiplus),
    Import<"GdipGetImagePixelFormat">(GdipGetImagePixelFormat, kNoGdiplus),
    Import<"GdipGetImageWidth">(GdipGetImageWidth, kNoGdiplus),
    Import<"GdipSaveImageToFile">(GdipSaveImageToFile, kNoGdiplus),
    Import<"GdipSetCompositingMode">(GdipSetCompositingMode, kNoGdiplus),
    Import<"GdipSetInterpolationMode">(GdipSetInterpolationMode, kNoGdiplus),
    Import<"GdipSetPixelOffsetMode">(GdipSetPixelOffsetMode, kNoGdiplus),
    Import<"GdipSetSmoothingMode">(GdipSetSmoothingMode, kNoGdiplus),

    Import<"ChoosePixelFormat">(ChoosePixelFormat, kNoWindow),
    Import<"SetPixelFormat">(SetPixelFormat, kNoWindow),
    Import<"wglCreateContext", kMakes<"gl context">>(wglCreateContext, kNoWindow),
    Import<"wglDeleteContext", kTakes<"gl context">>(wglDeleteContext),
    Import<"wglMakeCurrent">(wglMakeCurrent, kNoWindow),
    Import<"wglGetCurrentContext">(wglGetCurrentContext, kNoWgl),
    Import<"wglGetCurrentDC">(wglGetCurrentDC, kNoWgl),
    Import<"wglGetProcAddress">(wglGetProcAddress, kNoWgl),
    Import<"wglUseFontBitmapsW", kMakesFontLists>(wglUseFontBitmapsW, kNoWgl),
    Import<"wglUseFontOutlinesW">(wglUseFontOutlinesW, kNoWgl),
    Import<"SwapBuffers">(SwapBuffers, kNoWgl),
    Import<"glNewList", kMakesList>(glNewList),
    Import<"glDeleteLists", kTakesLists>(glDeleteLists),
    Import<"glGenTextures", kMakesTextures>(glGenTextures),
    Import<"glDeleteTextures", kTakesTextures>(glDeleteTextures),
    Import<"glGetError">(glGetError, {kGlCalls, GL_OUT_OF_MEMORY}),
    Import<"glGetString">(glGetString, {kGlCalls}),
    Import<"gluNewQuadric", kMakes<"glu quadric">>(gluNewQuadric, {kGlCalls}),
    Import<"gluDeleteQuadric", kTakes<"glu quadric">>(gluDeleteQuadric),

    Import<"CreateThread", kMakes<"kernel handle">>(CreateThread, kNoThread),
    Import<"CreateMutexW", kMakes<"kernel handle">>(CreateMutexW, kNoThread),
    Import<"DuplicateHandle", kMakesAt<"kernel handle", 3, TRUE>>(DuplicateHandle, kNoThread),
    Import<"CloseHandle", kTakes<"kernel handle">>(CloseHandle),
    Import<"GetModuleHandleExW", kRefersToModule>(GetModuleHandleExW, kNoThread),
    Import<"FreeLibrary", kTakes<"reference to the library">>(FreeLibrary),
    Import<"FreeLibraryAndExitThread", kTakes<"reference to the library">, Booking::Before>(
        FreeLibraryAndExitThread),
    Import<"PostMessageW">(PostMessageW, kNoThread),
    Import<"WaitForSingleObject">(WaitForSingleObject, {kThreadCalls, WAIT_TIMEOUT}),

    Import<"CreateFileW", kOpensFile>(CreateFileW, kNotThere),
    Import<"ReadFile">(ReadFile, kNoFile),
    Import<"GetFileSizeEx">(GetFileSizeEx, kNoFile),
    Import<"SetFilePointerEx">(SetFilePointerEx, kNoFile),
    Import<"GetFileAttributesW">(GetFileAttributesW, kNotThere),
    Import<"CreateDirectoryW">(CreateDirectoryW, kNoFile),
    Import<"CopyFileW">(CopyFileW, kNoFile),
    Import<"SHGetFolderPathW">(SHGetFolderPathW, {kFileCalls, 0x8007000E}),
    Import<"GetModuleFileNameW">(GetModuleFileNameW, kNoFile),
    Import<"RegOpenKeyExW", kMakesAt<"registry key", 4>>(RegOpenKeyExW, kDenied),
    Import<"RegCloseKey", kTakes<"registry key">>(RegCloseKey),
    Import<"RegQueryValueExW">(RegQueryValueExW, kDenied),
    Import<"EnumDynamicTimeZoneInformation">(EnumDynamicTimeZoneInformation, kDenied),
    Import<"GetTimeZoneInformationForYear">(GetTimeZoneInformationForYear, kNoFile),
    Import<"ReadProcessMemory">(ReadProcessMemory, kNoFile),
    Import<"GlobalMemoryStatusEx">(GlobalMemoryStatusEx, kNoFile),

    Import<"RegisterClassExW", kMakesClass>(RegisterClassExW, kNoUser),
    Import<"UnregisterClassW", kTakesClass>(UnregisterClassW),
    Import<"CreateWindowExW">(CreateWindowExW, {kWindowCalls | kRefusingCalls}),
    Import<"GetDC", kMakes<"dc">>(GetDC, kNoUser),
    Import<"ReleaseDC", kTakes<"dc", 1>>(ReleaseDC),
    Import<"BeginPaint">(BeginPaint, kNoUser),
    Import<"GetClientRect">(GetClientRect, kNoUser),
    Import<"LoadCursorW", kLoadsCursor>(LoadCursorW, kNoUser),
    Import<"DestroyCursor", kTakes<"cursor">>(DestroyCursor),
    Import<"SetTimer", kStartsTimer>(SetTimer, kNoUser),
    Import<"KillTimer", kStopsTimer>(KillTimer),
    Import<"GetCursorPos">(GetCursorPos, kNoUser),
    Import<"MapWindowPoints">(MapWindowPoints, kNoUser),
    Import<"TrackMouseEvent">(TrackMouseEvent, kNoUser),
    Import<"GetParent">(GetParent, kNoUser),
    Import<"FindWindowW">(FindWindowW, kNoUser),

    Import<"CreateFontIndirectW", kMakes<"gdi object">>(CreateFontIndirectW, kNoText),
    Import<"DeleteObject", kTakes<"gdi object">>(DeleteObject),
    Import<"SelectObject">(SelectObject, kNoText),
    Import<"GetDeviceCaps">(GetDeviceCaps, kNoText),
    Import<"DPtoLP">(DPtoLP, kNoText),
    Import<"GetTextExtentPoint32A">(GetTextExtentPoint32A, kNoText),
    Import<"GetGlyphOutlineW">(GetGlyphOutlineW, {kTextCalls, kMinusOne}),
    Import<"GetLocaleInfoW">(GetLocaleInfoW, kNoText),
    Import<"GetCPInfo">(GetCPInfo, kNoText),
    Import<"GetTimeFormatW">(GetTimeFormatW, kNoText),
    Import<"GetPrivateProfileIntW">(GetPrivateProfileIntW, kNoText),
    Import<"MultiByteToWideChar">(MultiByteToWideChar, kNoText),
    Import<"WideCharToMultiByte">(WideCharToMultiByte, kNoText),
    Import<"SystemTimeToTzSpecificLocalTime">(SystemTimeToTzSpecificLocalTime, kNoText),
};

void Install(HMODULE module, const ImportRow& row, const Hook& hook) {
    *hook.below = ReplaceImport(module, row.function, hook.call);
    ExpectImported(row.function, *hook.below != nullptr);
}

void Remove(HMODULE module, const ImportRow& row, const Hook& hook) {
    if (IsLoaded(module) && *hook.below != nullptr)
        ReplaceImport(module, row.function, *hook.below);
}

bool Concerns(const ImportRow& row, unsigned families) {
    return (row.failure.families & families) != 0;
}

}  // namespace

void ExpectImported(std::string_view function, bool imported) {
    EXPECT_TRUE(imported) << "the library does not import " << function;
}

std::vector<std::string> MakersNotInTable(HMODULE module) {
    constexpr std::string_view kVerbs[] = {
        "Create", "Open", "LoadC", "Register", "Duplicate", "GdipCreate", "GdipClone", "GdipLoad",
        "RegCr",  "RegO", "glGen", "glNew",    "gluNew",    "wglCreate",  "GlobalA",   "LocalA"};
    std::vector<std::string> lacking = ImportedFunctions(module);
    std::erase_if(lacking, [&](const std::string& name) {
        return std::none_of(std::begin(kVerbs), std::end(kVerbs),
                            [&](std::string_view verb) { return name.starts_with(verb); }) ||
               std::any_of(std::begin(kImports), std::end(kImports),
                           [&](const ImportRow& row) { return name == row.function; });
    });
    return lacking;
}

ImportLedger::ImportLedger(HMODULE module) : module_(module) {
    book.open.clear();
    book.made.clear();
    for (const ImportRow& row : kImports) {
        if (row.booked.call != nullptr) Install(module, row, row.booked);
    }
}

ImportLedger::~ImportLedger() {
    for (const ImportRow& row : kImports) {
        if (row.booked.call != nullptr) Remove(module_, row, row.booked);
    }
}

ImportLedger::Counts ImportLedger::Held() const {
    const std::lock_guard lock(book.mutex);
    Counts counts;
    for (const auto& [kind, entries] : book.open) {
        if (!entries.empty()) counts[kind] = entries.size();
    }
    return counts;
}

ImportLedger::Counts ImportLedger::HeldObjects() const {
    Counts counts = Held();
    counts.erase("heap block");
    return counts;
}

std::size_t ImportLedger::HeldBytes() const {
    const std::lock_guard lock(book.mutex);
    std::size_t bytes = 0;
    for (const std::uint64_t block : book.open["heap block"])
        bytes += _msize(reinterpret_cast<void*>(block));
    return bytes;
}

const ImportLedger::Counts& ImportLedger::Made() const { return book.made; }

FailingImports::FailingImports(HMODULE module, unsigned families)
    : module_(module), families_(families) {
    FailFrom(0, 0);
    for (const ImportRow& row : kImports) {
        if (Concerns(row, families)) Install(module, row, row.failing);
    }
}

FailingImports::~FailingImports() {
    for (const ImportRow& row : kImports) {
        if (Concerns(row, families_)) Remove(module_, row, row.failing);
    }
}

void FailingImports::FailFrom(int number, int count) {
    failing.until = 0;
    failing.calls = 0;
    failing.failed = nullptr;
    failing.from = number;
    failing.until = number + count;
}

void FailingImports::Stop() { failing.until = 0; }
int FailingImports::Calls() const { return failing.calls; }
const char* FailingImports::Failed() const { return failing.failed; }
