// Prints which OpenGL this machine has.
#include <cstdio>

#include "base/gl.h"
#include "bench_window_win.h"
#include "render/gl_context_win.h"

int wmain() {
    const BenchWindow window(64, 64);
    ExtensionFlags extensions;
    std::uint32_t lastSysError = 0;
    CGLContext context(extensions, lastSysError);
    if (context.Create(window.Dc()) != 0) {
        std::printf("no OpenGL, system error %u\n", lastSysError);
        return 1;
    }
    constexpr GLenum kNames[] = {GL_VENDOR, GL_RENDERER, GL_VERSION};
    for (const GLenum name : kNames) {
        std::printf("%s\n", reinterpret_cast<const char*>(glGetString(name)));
    }
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    std::printf("largest texture: %d pixels\n", largest);
    return 0;
}
