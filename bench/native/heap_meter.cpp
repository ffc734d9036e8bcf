#include "heap_meter.h"

#include <malloc.h>

#include <algorithm>
#include <atomic>

// Second names of the allocation functions of the C library. They still call the library's own
// functions when this file defines functions with the public names.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void __libc_free(void*);
}

namespace {

std::atomic<std::size_t> held{0};
std::atomic<std::size_t> peak{0};

void* Count(void* block) noexcept {
    const std::size_t now = held += malloc_usable_size(block);
    if (now > peak) peak = now;
    return block;
}

void Uncount(void* block) noexcept { held -= malloc_usable_size(block); }

}  // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): libc's names are reserved
extern "C" {

void* malloc(std::size_t bytes) { return Count(__libc_malloc(bytes)); }
void* calloc(std::size_t count, std::size_t bytes) { return Count(__libc_calloc(count, bytes)); }
void free(void* block) {
    Uncount(block);
    __libc_free(block);
}
void* realloc(void* block, std::size_t bytes) {
    // Counts the new block only after the old one is subtracted: a block that is resized in place
    // must not be counted twice.
    Uncount(block);
    return Count(__libc_realloc(block, bytes));
}

}  // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

HeapMeter::HeapMeter() noexcept : start_(held) { peak = held.load(); }

std::size_t HeapMeter::Peak() const noexcept { return peak - std::min(peak.load(), start_); }
