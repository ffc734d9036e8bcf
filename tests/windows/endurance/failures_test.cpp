// Every call by which the library asks Windows for something fails once: nothing crashes, hangs or
// stays behind, each function answers as promised, and the next life is a whole one.
#include <algorithm>
#include <string>

#include "long_run.h"
#include "support/gdiplus_pictures_win.h"
#include "support/gl_spy_win.h"

namespace {

class FailuresTest : public LongRunTest {
protected:
    /// Start, load, split, attach, draw, photos, reload, install, a second window, destroy, free.
    /// @param why  the failure that went before: all has to succeed now; empty: one happens now
    void Live(const std::string& why, int mapWidth = kMapWidth) {
        PutFiles(mapWidth);
        SpiedGl().uploads.clear();
        const std::uint32_t init = Init();
        const HWND window = Make(64, 48);
        const auto send = [&](UINT message, WPARAM wParam, LPARAM lParam) {
            SendMessageW(window, message, wParam, lParam);
        };
        Rest();
        Paint(window);
        send(WM_MOUSEMOVE, 0, MAKELPARAM(32, 24));
        send(HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(sane.data()));
        Paint(window);
        send(HORIVO_MSG_PHOTOS_CHANGED, 0, 2);
        for (const WPARAM timer : {1, 2, 3, 4}) send(WM_TIMER, timer, 0);
        send(WM_MOUSEWHEEL, WHEEL_DELTA << 16, 0);
        send(WM_MOUSEMOVE, 0, MAKELPARAM(54, 38));
        for (const int key : {VK_NEXT, VK_PRIOR, int{'I'}, int{'I'}, int{'L'}, int{'H'}}) {
            Key(window, key);
            Paint(window);
        }
        send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(32, 28));
        send(WM_LBUTTONUP, 0, MAKELPARAM(32, 28));
        Rest();
        send(WM_SIZE, 0, MAKELPARAM(72, 54));
        Paint(window);
        const std::uint32_t install = library.InstallMap();
        const HWND second = Make(64, 48);
        Rest();
        const int frames = SpiedGl().frames;
        Paint(second);
        if (why.empty()) {
            EXPECT_TRUE(init == HORIVO_OK || init == HORIVO_CLASS_FAILED) << init;
            EXPECT_TRUE(install == HORIVO_OK ||
                        (install >= HORIVO_BAD_PICTURE && install <= HORIVO_CONTEXT_FAILED));
        } else {
            EXPECT_TRUE(init == HORIVO_OK && install == HORIVO_OK) << why;
            EXPECT_TRUE(window != nullptr && second != nullptr) << why;
            EXPECT_EQ(SpiedGl().frames, frames + 1) << why;
            std::size_t tiles = 0;
            for (const SpiedUpload& upload : SpiedGl().uploads)
                if (upload.width == kMapWidth / 4) ++tiles;
            EXPECT_TRUE(tiles >= 16 && tiles % 8 == 0) << why << ": " << tiles << " tiles";
        }
        DestroyAll();
        library.FreeMap();
        Rest();
    }

    /// Lets call after call of the family fail, with `count` - 1 more, until a life runs through
    /// without; a whole life follows each. A short run takes some of the calls, others each time.
    void FailEach(unsigned family, int count = 1) {
        FailingImports failing(library.module, family);
        ImportLedger::Counts held;
        int step = 1;
        // What is kept for the life of the process is there after a failure and a whole life.
        for (int number = 5; !HasFailure(); number += step) {
            const int boxes = watched->boxes.Calls();
            failing.FailFrom(number, count);
            Live("");
            if (failing.Failed() == nullptr) break;
            const std::string why = failing.Failed() + (", call " + std::to_string(number));
            const int told = watched->boxes.Calls() - boxes;
            EXPECT_TRUE(told <= 4 && (told > 0 || !why.starts_with("CreateThread"))) << why;
            failing.FailFrom(0, 0);
            Live(why);
            if (held.empty()) {
                held = watched->ledger.Held();
                step = kIsFullRun ? 1 : std::max(1, failing.Calls() / 20);
                number = 1 + dice.Roll(step) - step;
            }
            EXPECT_EQ(watched->ledger.Held(), held) << why;
        }
    }

    static constexpr int kMapWidth = 64;
};

TEST_F(FailuresTest, Gdiplus) { FailEach(kGdiplusCalls); }
TEST_F(FailuresTest, Wgl) { FailEach(kWglCalls); }
TEST_F(FailuresTest, Gl) { FailEach(kGlCalls); }
TEST_F(FailuresTest, ThreadsAndLocks) { FailEach(kThreadCalls); }
TEST_F(FailuresTest, Files) { FailEach(kFileCalls); }
TEST_F(FailuresTest, Windows) { FailEach(kWindowCalls); }
TEST_F(FailuresTest, Texts) { FailEach(kTextCalls); }
TEST_F(FailuresTest, Memory) { FailEach(kMemoryCalls); }
TEST_F(FailuresTest, NoMemoryForAWhile) { FailEach(kMemoryCalls, 50); }

// The renderer without a driver: nothing above OpenGL 1.1, textures smaller than the picture.
TEST_F(FailuresTest, WorstRenderer) {
    const FakedImport<"wglGetProcAddress", decltype(wglGetProcAddress)> onlyOpenGl11(
        library.module, [](LPCSTR) { return PROC{}; });
    SpiedGl().maxTextureSize = kMapWidth;
    Live("the worst renderer", 4 * kMapWidth);
    EXPECT_EQ(DecodePicture(MapPath()).width, kMapWidth);
    for (const SpiedUpload& upload : SpiedGl().uploads)
        EXPECT_TRUE(upload.format == GL_RGB || upload.format == GL_RGBA) << upload.format;
}

}  // namespace
