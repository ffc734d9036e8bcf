#pragma once
// Records every OpenGL and GLU call that the running DLL makes, while the real ones run.

#include <string>
#include <string_view>
#include <vector>

#include "base/gl.h"

/// A call as the DLL made it. An array of floats counts as four numbers, any other address as none.
struct GlCall {
    std::string_view name;
    std::vector<double> numbers;
};

/// One glTexImage2D as it was handed over.
struct SpiedUpload {
    GLint internalFormat = 0;
    GLsizei width = 0;
    GLsizei height = 0;
    GLint border = 0;
    GLenum format = 0;
    std::vector<unsigned char> pixels;
};

/// A picture as it was shown: rows from the bottom, bytes R, G, B.
struct SpiedFrame {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> pixels;
};

/// What the DLL sent.
struct GlSpyRecord {
    std::vector<GlCall> calls;
    std::vector<SpiedUpload> uploads;
    std::vector<std::string> texts;  ///< what glCallLists wrote, one entry a call
    bool keepTexts = false;          ///< copy what is written into `texts`
    bool keepCalls = true;           ///< off: only count uploads (long runs)
    bool keepPixels = false;         ///< copy what is uploaded
    bool keepFrame = false;          ///< copy the picture of each SwapBuffers into `frame`
    int frames = 0;                  ///< pictures shown so far
    SpiedFrame frame;
    /// Answer of glGetIntegerv(GL_MAX_TEXTURE_SIZE); 0 for GL's own, below 0 for none at all.
    GLint maxTextureSize = 0;
    /// glTexImage2D calls above this size a side leave GL_OUT_OF_MEMORY, when above 0.
    GLsizei refuseAbove = 0;
};

GlSpyRecord& SpiedGl();

/// Puts the spy between `module` and OpenGL; once a loaded module.
void SpyOnGl(HMODULE module);

/// The recorded calls of one function, in order.
std::vector<GlCall> SpiedCalls(std::string_view function);
