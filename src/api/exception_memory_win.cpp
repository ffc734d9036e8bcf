// Stores exceptions outside the heap, so that they can be thrown when no memory is left at all.
// MinGW's C++ library, which is linked into this DLL, needs heap memory for the first exception of
// the process and for the first exception of each thread. When no heap memory is left, the library
// ends the host's process. This file defines the four functions of the Itanium C++ ABI that every
// throw and catch gets its memory from. The linker uses these functions instead of the functions of
// the library.

#include <version>  // defines __GLIBCXX__

#ifdef __GLIBCXX__

#include <cxxabi.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <exception>

#include "base/windows_types.h"

// NOLINTBEGIN(bugprone-reserved-identifier): the ABI and MinGW's start-up code prescribe the names.

/// The data that the ABI keeps for each thread: the exceptions that the thread has caught, and the
/// number of exceptions that are thrown and not caught yet.
struct __cxxabiv1::__cxa_eh_globals {
    void* caughtExceptions;
    unsigned int uncaughtExceptions;
};

extern "C" {
extern ULONG _tls_index;  ///< this DLL's index in the array of thread-local data of a thread
extern char* _tls_start;  ///< start of the initial state of the thread-local data
}

namespace {

// bytes before an exception object, where the C++ library stores its data about the exception; the
// library of GCC 12 needs 160 bytes
constexpr std::size_t kHeaderCapacity = 256;
// bytes of the largest exception object that fits into a slot; std::bad_alloc has 8
constexpr std::size_t kObjectCapacity = 256;
/// Number of slots for the exceptions of all threads together. Further exceptions use the heap.
constexpr std::size_t kMaxExceptions = 16;

struct Slot {
    alignas(std::max_align_t) std::array<std::byte, kHeaderCapacity + kObjectCapacity> bytes;
    std::atomic<bool> taken;
};
constinit std::array<Slot, kMaxExceptions> slots{};

/// Initial state of a thread's __cxa_eh_globals. Windows makes a copy of it for each thread when
/// the thread starts or the DLL is loaded. MinGW's thread_local cannot be used, because its memory
/// comes from the heap at the first use. The linker sorts sections by name, so this section is
/// between the sections of the start-up code, .tls and .tls$ZZZ.
__attribute__((section(".tls$HORIVO"))) constinit __cxxabiv1::__cxa_eh_globals initialState{};

std::byte* TakeSlot() noexcept {
    for (Slot& slot : slots) {
        if (!slot.taken.exchange(true)) return slot.bytes.data();
    }
    return nullptr;
}

/// Frees the slot that begins at `bytes`. @return false when no slot begins there
bool FreeSlot(const std::byte* bytes) noexcept {
    for (Slot& slot : slots) {
        if (slot.bytes.data() != bytes) continue;
        slot.taken = false;
        return true;
    }
    return false;
}

}  // namespace

namespace __cxxabiv1 {

__cxa_eh_globals* __cxa_get_globals() noexcept {
    // The array of thread-local data of this thread: one address for each loaded module.
    std::byte** ofThread = nullptr;
    __asm__("movq %%gs:0x58, %0" : "=r"(ofThread));  // TEB::ThreadLocalStoragePointer
    const auto offset =
        reinterpret_cast<std::byte*>(&initialState) - reinterpret_cast<std::byte*>(&_tls_start);
    return reinterpret_cast<__cxa_eh_globals*>(ofThread[_tls_index] + offset);
}

__cxa_eh_globals* __cxa_get_globals_fast() noexcept { return __cxa_get_globals(); }

// Uses a slot, and uses the heap only when no slot is free or the exception is too large. The slots
// come first, so that exceptions are handled in the same way whether heap memory is left or not.
void* __cxa_allocate_exception(std::size_t size) noexcept {
    std::byte* bytes = size <= kObjectCapacity ? TakeSlot() : nullptr;
    if (bytes == nullptr) bytes = static_cast<std::byte*>(std::malloc(kHeaderCapacity + size));
    if (bytes == nullptr) std::terminate();
    std::memset(bytes, 0, kHeaderCapacity);
    return bytes + kHeaderCapacity;
}

void __cxa_free_exception(void* exception) noexcept {
    std::byte* const bytes = static_cast<std::byte*>(exception) - kHeaderCapacity;
    if (!FreeSlot(bytes)) std::free(bytes);
}

}  // namespace __cxxabiv1
// NOLINTEND(bugprone-reserved-identifier)

#endif
