#pragma once
// Records every OpenGL and GLU call that the running DLL makes, while the real ones run.

#include <string>
#include <vector>

#include "base/gl.h"

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
    const unsigned char* At(int x, int y) const {
        return pixels.data() + 3 * (static_cast<std::ptrdiff_t>(y) * width + x);
    }
};

/// What the DLL sent. A line is the function's name and its arguments in decimal, as many digits as
/// a float needs; enumerations are numbers.
struct GlSpyRecord {
    std::vector<std::string> calls;
    std::vector<SpiedUpload> uploads;
    std::vector<std::string> texts;  ///< what glCallLists wrote, one entry a call
    bool keepTexts = false;          ///< copy what is written into `texts`
    bool keepCalls = true;           ///< off: only count uploads (long runs)
    bool keepPixels = false;         ///< copy what is uploaded
    bool keepFrame = false;          ///< copy the picture of each SwapBuffers into `frame`
    int frames = 0;                  ///< pictures shown so far
    SpiedFrame frame;
    /// Answer of glGetString(GL_RENDERER) in place of the real one, when not empty.
    std::string renderer;
    /// Answer of glGetIntegerv(GL_MAX_TEXTURE_SIZE); 0 for GL's own, below 0 for none at all.
    GLint maxTextureSize = 0;
    /// glTexImage2D calls above this size a side leave GL_OUT_OF_MEMORY, when above 0.
    GLsizei refuseAbove = 0;
};

GlSpyRecord& SpiedGl();

/// Puts the spy between `module` and OpenGL; once a loaded module.
void SpyOnGl(HMODULE module);

/// The calls of one function, in order.
std::vector<std::string> SpiedCalls(const std::string& function);
/// The numbers of a recorded call.
std::vector<double> SpiedNumbers(const std::string& call);
