#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "base/windows_types.h"

namespace {

/// Writes over the end of its own buffer, in a way that the compiler cannot foresee.
[[gnu::noinline]] int Overrun(std::size_t length) {
    char buffer[16] = {};
    char* volatile start = buffer;
    std::memset(start, 'x', length);
    return buffer[0];
}

TEST(StackGuard, EndsTheProcessBeforeAnOverwrittenAddressIsUsed) {
    EXPECT_EQ(Overrun(16), 'x');
    const auto overrun = static_cast<int>(STATUS_STACK_BUFFER_OVERRUN);
    EXPECT_EXIT(Overrun(256), testing::ExitedWithCode(overrun), "");
}

}  // namespace
