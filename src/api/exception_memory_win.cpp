// Keeps exceptions outside the heap, so that one can be thrown when no memory is left at all. The
// C++ library of MinGW, which is linked into this DLL, would end the host's process then: for the
// first exception of the process, and for the first of each thread, it needs memory of the heap.
// Below are the four functions of the Itanium C++ ABI that give memory to every throw and catch.
// The linker takes them in place of the library's own.

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

// NOLINTBEGIN(bugprone-reserved-identifier): names that the ABI and MinGW's start-up code give.

/// What the ABI keeps for each thread: the exceptions that it has caught and how many are under
/// way.
struct __cxxabiv1::__cxa_eh_globals {
    void* caughtExceptions;
    unsigned int uncaughtExceptions;
};

extern "C" {
extern ULONG _tls_index;  ///< this DLL's number among those with data for each thread
extern char* _tls_start;  ///< begin of that data's initial state
}

namespace {

// bytes in front of an exception, for the header of the C++ library; 160 in GCC 12
constexpr std::size_t kHeaderRoom = 256;
constexpr std::size_t kObjectRoom = 256;  // bytes; std::bad_alloc has 8
/// Exceptions under way or caught at the same time, of all threads.
constexpr std::size_t kMostExceptions = 16;

struct Place {
    alignas(std::max_align_t) std::array<std::byte, kHeaderRoom + kObjectRoom> bytes;
    std::atomic<bool> taken;
};
constinit std::array<Place, kMostExceptions> places{};

/// Part of the data of which Windows gives every thread a copy, when the thread starts or the DLL
/// is loaded. GCC's thread_local is no such data here: it comes from the heap at its first use. The
/// linker sorts the section by its name in between those of the start-up code, .tls and .tls$ZZZ.
__attribute__((section(".tls$HORIVO"))) constinit __cxxabiv1::__cxa_eh_globals initialState{};

std::byte* TakePlace() noexcept {
    for (Place& place : places) {
        if (!place.taken.exchange(true)) return place.bytes.data();
    }
    return nullptr;
}

/// @return whether `bytes` are those of a place
bool GiveBack(const std::byte* bytes) noexcept {
    for (Place& place : places) {
        if (place.bytes.data() != bytes) continue;
        place.taken = false;
        return true;
    }
    return false;
}

}  // namespace

namespace __cxxabiv1 {

__cxa_eh_globals* __cxa_get_globals() noexcept {
    std::byte** ofThread = nullptr;                  // one copy for each library
    __asm__("movq %%gs:0x58, %0" : "=r"(ofThread));  // TEB::ThreadLocalStoragePointer
    const auto offset =
        reinterpret_cast<std::byte*>(&initialState) - reinterpret_cast<std::byte*>(&_tls_start);
    return reinterpret_cast<__cxa_eh_globals*>(ofThread[_tls_index] + offset);
}

__cxa_eh_globals* __cxa_get_globals_fast() noexcept { return __cxa_get_globals(); }

// The heap comes second, so that exceptions take the same way whether memory is left or not.
void* __cxa_allocate_exception(std::size_t size) noexcept {
    std::byte* bytes = size <= kObjectRoom ? TakePlace() : nullptr;
    if (bytes == nullptr) bytes = static_cast<std::byte*>(std::malloc(kHeaderRoom + size));
    if (bytes == nullptr) std::terminate();
    std::memset(bytes, 0, kHeaderRoom);
    return bytes + kHeaderRoom;
}

void __cxa_free_exception(void* exception) noexcept {
    std::byte* const bytes = static_cast<std::byte*>(exception) - kHeaderRoom;
    if (!GiveBack(bytes)) std::free(bytes);
}

}  // namespace __cxxabiv1
// NOLINTEND(bugprone-reserved-identifier)

#endif
