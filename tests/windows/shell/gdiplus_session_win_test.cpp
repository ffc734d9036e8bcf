#include "image/gdiplus_session_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include "image/gdiplus_win.h"
#include "image/jpeg_texture.h"
#include "support/import_spy_win.h"

namespace {

std::atomic<int> running = 0;
std::atomic<int> mostRunning = 0;
decltype(&Gdiplus::GdiplusStartup) realStartup = nullptr;
decltype(&Gdiplus::GdiplusShutdown) realShutdown = nullptr;
bool refuseStart = false;

Gdiplus::GpStatus WINGDIPAPI CountStartup(ULONG_PTR* token,
                                          const Gdiplus::GdiplusStartupInput* input,
                                          Gdiplus::GdiplusStartupOutput* output) {
    if (refuseStart) return Gdiplus::OutOfMemory;
    mostRunning = std::max(mostRunning.load(), ++running);
    return realStartup(token, input, output);
}

void WINGDIPAPI CountShutdown(ULONG_PTR token) {
    --running;
    realShutdown(token);
}

class GdiplusUseTest : public testing::Test {
protected:
    void SetUp() override {
        const HMODULE self = GetModuleHandleW(nullptr);
        realStartup = reinterpret_cast<decltype(realStartup)>(
            ReplaceImport(self, "GdiplusStartup", reinterpret_cast<void*>(&CountStartup)));
        realShutdown = reinterpret_cast<decltype(realShutdown)>(
            ReplaceImport(self, "GdiplusShutdown", reinterpret_cast<void*>(&CountShutdown)));
        ASSERT_TRUE(realStartup != nullptr && realShutdown != nullptr);
        mostRunning = 0;
    }
    void TearDown() override {
        const HMODULE self = GetModuleHandleW(nullptr);
        ReplaceImport(self, "GdiplusStartup", reinterpret_cast<void*>(realStartup));
        ReplaceImport(self, "GdiplusShutdown", reinterpret_cast<void*>(realShutdown));
    }
};

TEST_F(GdiplusUseTest, RunsOnceFromTheFirstUserToTheLastOnAnyThread) {
    std::vector<std::thread> threads;
    std::atomic<int> failures = 0;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 50; ++round) {
                const GdiplusUse use;
                { const GdiplusUse second; }
                if (!use.IsStarted() || running != 1) ++failures;
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(mostRunning, 1);
    EXPECT_EQ(running, 0);
}

TEST_F(GdiplusUseTest, AFailedStartIsTriedAgainByTheNextUser) {
    refuseStart = true;
    const GdiplusUse refused;
    EXPECT_FALSE(refused.IsStarted());
    refuseStart = false;
    {
        const GdiplusUse use;
        EXPECT_TRUE(use.IsStarted());
    }
    EXPECT_EQ(running, 0);
}

TEST_F(GdiplusUseTest, WithoutAUserNothingIsOpenedAndNothingBreaks) {
    CJpegTexture texture;
    const int result = texture.LoadFromFile(L"missing.jpg", 0, 0);
    EXPECT_EQ(result, kLoadFailed);
    EXPECT_FALSE(texture.SaveJpeg(L"never.jpg", 85));
}

}  // namespace
