#include "render/gl_context_win.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "base/gl.h"
#include "horivo_map.h"
#include "render/current_context_win.h"
#include "render/pixel_format.h"
#include "support/resource_count_win.h"
#include "windows/shell/small_window_win.h"

namespace {

class GlContextTest : public testing::Test {
protected:
    ~GlContextTest() override { wglMakeCurrent(nullptr, nullptr); }

    static std::string GlText(GLenum name) {
        return reinterpret_cast<const char*>(glGetString(name));
    }

    SmallWindow window_;
    ExtensionFlags flags_;
    std::uint32_t lastSysError_ = 0;
    CGLContext context_{flags_, lastSysError_};
};

TEST_F(GlContextTest, CreatesACurrentDoubleBufferedContext) {
    ASSERT_EQ(context_.Create(window_.Dc()), HORIVO_OK);
    EXPECT_EQ(wglGetCurrentContext(), context_.GetHandle());
    EXPECT_EQ(wglGetCurrentDC(), window_.Dc());
    PIXELFORMATDESCRIPTOR got = {};
    DescribePixelFormat(window_.Dc(), GetPixelFormat(window_.Dc()), sizeof got, &got);
    EXPECT_EQ(got.dwFlags & PFD_DOUBLEBUFFER, DWORD{PFD_DOUBLEBUFFER});
    EXPECT_EQ(got.iPixelType, PFD_TYPE_RGBA);
    EXPECT_GE(got.cDepthBits, 16);
    EXPECT_EQ(lastSysError_, 0U);
}

TEST_F(GlContextTest, KeepsTheTextsOfTheDriverAndItsExtensions) {
    ASSERT_EQ(context_.Create(window_.Dc()), HORIVO_OK);
    EXPECT_EQ(context_.GetRenderer(), GlText(GL_RENDERER).substr(0, 255));
    EXPECT_EQ(context_.GetVersion(), GlText(GL_VERSION).substr(0, 255));
    EXPECT_EQ(context_.GetVendor(), GlText(GL_VENDOR).substr(0, 255));
    const bool multitexture =
        GlText(GL_EXTENSIONS).find("GL_ARB_multitexture") != std::string::npos;
    EXPECT_EQ(flags_.hasMultitexture, multitexture);
    EXPECT_EQ(context_.GetEntryPoints().glActiveTextureARB != nullptr, multitexture);
    EXPECT_EQ(context_.GetEntryPoints().glMultiTexCoord2fARB != nullptr, multitexture);
}

TEST_F(GlContextTest, MakeCurrentDetectsAgain) {
    ASSERT_EQ(context_.Create(window_.Dc()), HORIVO_OK);
    const ExtensionFlags detected = flags_;
    flags_.hasMultitexture = !detected.hasMultitexture;
    ASSERT_TRUE(context_.MakeCurrent(window_.Dc()));
    EXPECT_EQ(flags_.hasMultitexture, detected.hasMultitexture);
}

TEST_F(GlContextTest, ANullDcOnlyDestroys) {
    EXPECT_EQ(context_.Create(nullptr), HORIVO_OK);
    ASSERT_EQ(context_.Create(window_.Dc()), HORIVO_OK);
    const HGLRC old = context_.GetHandle();
    EXPECT_EQ(context_.Create(nullptr), HORIVO_OK);
    EXPECT_FALSE(wglMakeCurrent(window_.Dc(), old)) << "not deleted";
    EXPECT_EQ(context_.GetHandle(), nullptr);
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    EXPECT_FALSE(context_.MakeCurrent(window_.Dc()));
}

TEST_F(GlContextTest, AFormatThatTheWindowCannotTakeIsRefusedWithItsError) {
    // A window keeps its first pixel format; this one is not what the map asks for.
    const PIXELFORMATDESCRIPTOR wanted = MapPixelFormat();
    const int maps = ChoosePixelFormat(window_.Dc(), &wanted);
    PIXELFORMATDESCRIPTOR other = {};
    int index = 1;
    while (index == maps || DescribePixelFormat(window_.Dc(), index, sizeof other, &other) == 0 ||
           (other.dwFlags & PFD_DRAW_TO_WINDOW) == 0) {
        ASSERT_LT(++index, 1000) << "one format only";
    }
    ASSERT_TRUE(SetPixelFormat(window_.Dc(), index, &other));
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(context_.Create(window_.Dc()), HORIVO_PIXEL_FORMAT_REFUSED);
    EXPECT_EQ(lastSysError_, GetLastError());
    EXPECT_EQ(context_.GetHandle(), nullptr);
    EXPECT_STREQ(context_.GetRenderer(), "");
}

TEST_F(GlContextTest, ADcThatIsNoneFindsNoFormat) {
    const HDC noDc = reinterpret_cast<HDC>(std::intptr_t{0x1234});
    EXPECT_EQ(context_.Create(noDc), HORIVO_NO_PIXEL_FORMAT);
    EXPECT_NE(lastSysError_, 0U);
    EXPECT_EQ(context_.GetHandle(), nullptr);
}

TEST_F(GlContextTest, ServesSeveralWindowsInTurn) {
    ASSERT_EQ(context_.Create(window_.Dc()), HORIVO_OK);
    const SmallWindow second;
    ASSERT_EQ(context_.Create(second.Dc()), HORIVO_OK);
    EXPECT_TRUE(context_.MakeCurrent(window_.Dc()));
    const SmallWindow third;
    ASSERT_EQ(SetMapPixelFormat(third.Dc(), MapPixelFormat(), lastSysError_), HORIVO_OK);
    EXPECT_TRUE(context_.MakeCurrent(third.Dc()));
    EXPECT_EQ(wglGetCurrentDC(), third.Dc());
    // A surviving window takes the context over, although it has had its format before.
    EXPECT_EQ(context_.Create(window_.Dc()), HORIVO_OK);
    EXPECT_TRUE(context_.MakeCurrent(second.Dc()));
}

TEST_F(GlContextTest, DrawsIntoTheWindowThatIsCurrent) {
    const SmallWindow second;
    ASSERT_EQ(context_.Create(window_.Dc()), HORIVO_OK);
    ASSERT_EQ(context_.Create(second.Dc()), HORIVO_OK);
    const struct {
        HDC dc;
        float red;
        GLubyte expected;
    } cases[] = {{window_.Dc(), 1.0F, 255}, {second.Dc(), 0.0F, 0}, {window_.Dc(), 1.0F, 255}};
    for (const auto& c : cases) {
        ASSERT_TRUE(context_.MakeCurrent(c.dc));
        glClearColor(c.red, 0.0F, 0.0F, 1.0F);
        glClear(GL_COLOR_BUFFER_BIT);
        GLubyte pixel[4] = {7, 7, 7, 7};
        glReadPixels(5, 5, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
        EXPECT_EQ(pixel[0], c.expected);
    }
}

TEST_F(GlContextTest, AScopeGivesAForeignContextBack) {
    ASSERT_EQ(context_.Create(window_.Dc()), HORIVO_OK);
    const SmallWindow hosts;
    ExtensionFlags hostFlags;
    CGLContext host(hostFlags, lastSysError_);
    ASSERT_EQ(host.Create(hosts.Dc()), HORIVO_OK);
    {
        const CurrentContextScope scope(context_, window_.Dc());
        EXPECT_TRUE(scope.IsCurrent());
        EXPECT_EQ(wglGetCurrentContext(), context_.GetHandle());
    }
    EXPECT_EQ(wglGetCurrentContext(), host.GetHandle());
    EXPECT_EQ(wglGetCurrentDC(), hosts.Dc());
    {
        const ForeignContextGuard guard(context_);
        context_.Destroy();
    }
    EXPECT_EQ(wglGetCurrentContext(), host.GetHandle()) << "after the map's context has gone";
    EXPECT_FALSE(CurrentContextScope(context_, window_.Dc()).IsCurrent());
    EXPECT_EQ(wglGetCurrentContext(), host.GetHandle()) << "after a scope that failed";
}

TEST_F(GlContextTest, AScopeLeavesTheMapsOwnContextCurrent) {
    ASSERT_EQ(context_.Create(window_.Dc()), HORIVO_OK);
    const SmallWindow second;
    ASSERT_EQ(SetMapPixelFormat(second.Dc(), MapPixelFormat(), lastSysError_), HORIVO_OK);
    EXPECT_TRUE(CurrentContextScope(context_, second.Dc()).IsCurrent());
    EXPECT_EQ(wglGetCurrentContext(), context_.GetHandle());
    EXPECT_EQ(wglGetCurrentDC(), second.Dc());
    wglMakeCurrent(nullptr, nullptr);
    EXPECT_TRUE(CurrentContextScope(context_, window_.Dc()).IsCurrent()) << "none was current";
    EXPECT_EQ(wglGetCurrentContext(), context_.GetHandle());
}

TEST_F(GlContextTest, FiftyContextsLeaveNothingBehind) {
    const auto round = [this] {
        const SmallWindow window;
        ASSERT_EQ(context_.Create(window.Dc()), HORIVO_OK);
        glClear(GL_COLOR_BUFFER_BIT);
        context_.Destroy();
    };
    for (int i = 0; i < 10; ++i) round();  // drivers keep what they need once
    const ResourceCount before = CountResources();
    for (int i = 0; i < 50; ++i) round();
    const ResourceCount after = CountResources();
    EXPECT_LE(after.kernelHandles, before.kernelHandles + 2);
    EXPECT_LE(after.gdiObjects, before.gdiObjects + 2);
    EXPECT_LT(after.privateBytes, before.privateBytes + (8U << 20));
}

TEST(CountResources, SeesALeak) {
    const ResourceCount before = CountResources();
    UniqueHandle events[5];
    for (UniqueHandle& event : events) event.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    UniqueFont fonts[5];
    for (UniqueFont& font : fonts)
        font.reset(CreateFontIndirectW(std::make_unique<LOGFONTW>().get()));
    const ResourceCount after = CountResources();
    EXPECT_EQ(after.kernelHandles, before.kernelHandles + 5);
    EXPECT_EQ(after.gdiObjects, before.gdiObjects + 5);
}

}  // namespace
