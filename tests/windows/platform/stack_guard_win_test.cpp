#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "base/windows_types.h"

// NOLINTNEXTLINE(bugprone-reserved-identifier): the compiler's name.
extern "C" std::uintptr_t __stack_chk_guard;

namespace {

/// Writes over the end of its own buffer, in a way that the compiler cannot foresee.
[[gnu::noinline]] int Overrun(std::size_t length) {
    char buffer[16] = {};
    char* volatile start = buffer;
    std::memset(start, 'x', length);
    return buffer[0];
}

TEST(StackGuard, EndsTheProcessBeforeAnOverwrittenAddressIsUsed) {
    EXPECT_NE(__stack_chk_guard >> 8, 0U);
    EXPECT_EQ(__stack_chk_guard & 0xFF, 0U) << "a text stops at it";
    EXPECT_EQ(Overrun(16), 'x');
    const auto overrun = static_cast<int>(STATUS_STACK_BUFFER_OVERRUN);
    EXPECT_EXIT(Overrun(256), testing::ExitedWithCode(overrun), "");
}

}  // namespace
