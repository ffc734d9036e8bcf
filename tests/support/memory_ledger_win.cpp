#include "support/memory_ledger_win.h"

#include <malloc.h>

#include <cstdlib>

#include "image/gdiplus_win.h"
#include "support/ledger_book_win.h"

namespace {

using Hooks = LedgerHooks<MemoryLedger>;
template <FunctionName Name, class Function>
using Hook = Hooks::Hook<Name, Function>;
template <FunctionName Name, class Function>
using Maker = Hooks::Maker<Name, Function>;
template <FunctionName Name, std::size_t Which, auto Success, class Function>
using OutMaker = Hooks::OutMaker<Name, Which, Success, Function>;
template <FunctionName Name, std::size_t Which, class Function>
using Taker = Hooks::Taker<Name, Which, Function>;

// GDI+ as the import table knows it: status, then what it makes behind a pointer.
using NewBitmapFromFile = int(const wchar_t*, void**);
using NewBitmapFromScan0 = int(int, int, int, int, void*, void**);
using NewFromImage = int(void*, void**);
using ForgetObject = int(void*);
constexpr int kOk = 0;

constexpr const char* kHeap = "heap block";
constexpr const char* kHandle = "kernel handle";
constexpr const char* kObject = "gdi+ object";

}  // namespace

struct MemoryLedger::Hooks {
    explicit Hooks(HMODULE theModule) : module(theModule) {}

    HMODULE module;
    LedgerBook book;

    Maker<"malloc", void*(std::size_t)> allocate{module, book, kHeap};
    Maker<"calloc", void*(std::size_t, std::size_t)> allocateCleared{module, book, kHeap};
    Taker<"free", 0, void(void*)> release{module, book, kHeap};
    using Reallocate = Hook<"realloc", void*(void*, std::size_t)>;
    Reallocate reallocate{module, [this](void* block, std::size_t size) {
                              void* moved = Reallocate::Real(block, size);
                              if (moved == nullptr && size != 0) return moved;
                              book.Strike(kHeap, LedgerHooks<MemoryLedger>::NumberOf(block));
                              book.Enter(kHeap, LedgerHooks<MemoryLedger>::NumberOf(moved));
                              return moved;
                          }};
    Maker<"GlobalAlloc", decltype(GlobalAlloc)> globalAlloc{module, book, "global block"};
    Taker<"GlobalFree", 0, decltype(GlobalFree)> globalFree{module, book, "global block"};

    Maker<"CreateMutexW", decltype(CreateMutexW)> mutex{module, book, kHandle};
    Maker<"CreateThread", decltype(CreateThread)> thread{module, book, kHandle};
    Maker<"CreateEventA", decltype(CreateEventA)> event{module, book, kHandle};
    Maker<"CreateSemaphoreA", decltype(CreateSemaphoreA)> semaphore{module, book, kHandle};
    OutMaker<"DuplicateHandle", 3, TRUE, decltype(DuplicateHandle)> duplicate{module, book,
                                                                              kHandle};
    using OpenFile = Hook<"CreateFileW", decltype(CreateFileW)>;
    OpenFile openFile{module, [this](auto... arguments) {
                          const HANDLE file = OpenFile::Real(arguments...);
                          if (file != INVALID_HANDLE_VALUE)
                              book.Enter(kHandle, LedgerHooks<MemoryLedger>::NumberOf(file));
                          return file;
                      }};
    Taker<"CloseHandle", 0, decltype(CloseHandle)> close{module, book, kHandle};
    OutMaker<"RegOpenKeyExW", 4, ERROR_SUCCESS, decltype(RegOpenKeyExW)> openKey{module, book,
                                                                                 "registry key"};
    Taker<"RegCloseKey", 0, decltype(RegCloseKey)> closeKey{module, book, "registry key"};

    OutMaker<"GdipCreateBitmapFromFile", 1, kOk, NewBitmapFromFile> fromFile{module, book, kObject};
    OutMaker<"GdipCreateBitmapFromScan0", 5, kOk, NewBitmapFromScan0> fromScan0{module, book,
                                                                                kObject};
    OutMaker<"GdipCloneImage", 1, kOk, NewFromImage> clone{module, book, kObject};
    Taker<"GdipDisposeImage", 0, ForgetObject> dispose{module, book, kObject};
    OutMaker<"GdipGetImageGraphicsContext", 1, kOk, NewFromImage> graphics{module, book, kObject};
    Taker<"GdipDeleteGraphics", 0, ForgetObject> deleteGraphics{module, book, kObject};
    Maker<"GdipAlloc", void*(std::size_t)> gdipAlloc{module, book, "gdi+ block"};
    Taker<"GdipFree", 0, void(void*)> gdipFree{module, book, "gdi+ block"};
};

MemoryLedger::MemoryLedger(HMODULE module) : hooks_(std::make_unique<Hooks>(module)) {}
MemoryLedger::~MemoryLedger() = default;
MemoryLedger::Counts MemoryLedger::Held() const { return hooks_->book.Held(); }
std::size_t MemoryLedger::HeldBytes() const {
    std::size_t bytes = 0;
    hooks_->book.ForEach(
        kHeap, [&](std::uint64_t block) { bytes += _msize(reinterpret_cast<void*>(block)); });
    return bytes;
}
