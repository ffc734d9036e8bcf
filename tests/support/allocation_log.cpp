#include "support/allocation_log.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HORIVO_TEST_ASAN
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define HORIVO_TEST_ASAN
#endif

#ifdef HORIVO_TEST_ASAN
// From the sanitizer's allocator_interface.h, which not every compiler brings along.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*onAllocate)(const volatile void*,
                                                                            std::size_t),
                                                         void (*onFree)(const volatile void*));
#endif

namespace {

// The hooks run inside the allocator, so what they fill is here already.
constexpr std::size_t kMostSizes = 256;
std::size_t sizes[kMostSizes];
std::size_t sizeCount = 0;
bool logging = false;

#ifdef HORIVO_TEST_ASAN
void OnAllocate(const volatile void*, std::size_t size) {
    if (logging && sizeCount < kMostSizes) sizes[sizeCount++] = size;
}

void OnFree(const volatile void*) {}
#endif

bool InstallHooks() noexcept {
#ifdef HORIVO_TEST_ASAN
    return __sanitizer_install_malloc_and_free_hooks(OnAllocate, OnFree) != 0;
#else
    return false;
#endif
}

}  // namespace

bool AllocationLog::IsSupported() noexcept {
    static const bool installed = InstallHooks();
    return installed;
}

AllocationLog::AllocationLog() noexcept {
    sizeCount = 0;
    logging = IsSupported();
}

AllocationLog::~AllocationLog() { logging = false; }

std::vector<std::size_t> AllocationLog::Stop() {
    logging = false;
    return {sizes, sizes + sizeCount};
}
