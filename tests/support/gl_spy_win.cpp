#include "support/gl_spy_win.h"

#include <sstream>
#include <type_traits>

#include "support/faked_import_win.h"
#include "support/gl_listing_win.h"

namespace {

constexpr int kVectorLength = 4;  // all float arrays that the DLL hands to GL are colours or points

/// An argument of a call, as GlCall writes it.
template <class Argument>
void AppendArgument(std::string& line, Argument argument) {
    if constexpr (std::is_arithmetic_v<Argument>) {
        gl_listing_detail::Append(line, argument);
    } else if constexpr (std::is_same_v<Argument, const GLfloat*>) {
        for (int i = 0; i < kVectorLength; ++i) gl_listing_detail::Append(line, argument[i]);
    } else {
        gl_listing_detail::Append(line, GlAddress{});
    }
}

/// The function behind a spy.
template <FunctionName Name, class Function>
Function* real = nullptr;

/// The spy on most functions: records, then calls the real one.
template <FunctionName Name, class Result, class... Arguments>
Result APIENTRY Spy(Arguments... arguments) {
    if (SpiedGl().keepCalls) {
        std::string line(Name.View());
        (AppendArgument(line, arguments), ...);
        SpiedGl().calls.push_back(std::move(line));
    }
    return real<Name, Result(Arguments...)>(arguments...);
}

template <FunctionName Name, class Result, class... Arguments>
void Install(HMODULE module, Result(APIENTRY*)(Arguments...),
             Result(APIENTRY* spy)(Arguments...) = &Spy<Name, Result, Arguments...>) {
    void* before = ReplaceImport(module, Name.View(), reinterpret_cast<void*>(spy));
    ExpectImported(Name.View(), before != nullptr);
    if (before != nullptr)
        real<Name, Result(Arguments...)> =
            reinterpret_cast<Result(APIENTRY*)(Arguments...)>(before);
}

template <FunctionName... Names, class... Functions>
void InstallAll(HMODULE module, Functions... functions) {
    (Install<Names>(module, functions), ...);
}

bool refused = false;

void APIENTRY SpyTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width,
                            GLsizei height, GLint border, GLenum format, GLenum type,
                            const GLvoid* pixels) {
    SpiedUpload upload{internalFormat, width, height, border, format, {}};
    if (SpiedGl().keepPixels && pixels != nullptr) {
        const std::size_t size = static_cast<std::size_t>(width) *
                                 static_cast<std::size_t>(height) * (format == GL_RGBA ? 4U : 3U);
        const auto* bytes = static_cast<const unsigned char*>(pixels);
        upload.pixels.assign(bytes, bytes + size);
    }
    SpiedGl().uploads.push_back(std::move(upload));
    if (SpiedGl().keepCalls) SpiedGl().calls.push_back("glTexImage2D");
    const GLsizei limit = SpiedGl().refuseAbove;
    if (limit > 0 && (width > limit || height > limit)) {
        refused = true;
        return;
    }
    real<"glTexImage2D", decltype(glTexImage2D)>(target, level, internalFormat, width, height,
                                                 border, format, type, pixels);
}

void APIENTRY SpyCallLists(GLsizei count, GLenum type, const GLvoid* names) {
    GlSpyRecord& record = SpiedGl();
    if (record.keepCalls) {
        record.calls.push_back("glCallLists " + std::to_string(count) + ' ' + std::to_string(type) +
                               " *");
    }
    if (record.keepTexts && count > 0 && type == GL_UNSIGNED_BYTE)
        record.texts.emplace_back(static_cast<const char*>(names), static_cast<std::size_t>(count));
    real<"glCallLists", decltype(glCallLists)>(count, type, names);
}

const GLubyte* APIENTRY SpyGetString(GLenum name) {
    const std::string& renderer = SpiedGl().renderer;
    if (name == GL_RENDERER && !renderer.empty())
        return reinterpret_cast<const GLubyte*>(renderer.c_str());
    return real<"glGetString", decltype(glGetString)>(name);
}

void APIENTRY SpyGetIntegerv(GLenum name, GLint* value) {
    const GLint answer = name == GL_MAX_TEXTURE_SIZE ? SpiedGl().maxTextureSize : 0;
    if (answer == 0) real<"glGetIntegerv", decltype(glGetIntegerv)>(name, value);
    if (answer > 0) *value = answer;
}

GLenum APIENTRY SpyGetError() {
    if (!refused) return real<"glGetError", decltype(glGetError)>();
    refused = false;
    return GL_OUT_OF_MEMORY;
}

BOOL WINAPI SpySwapBuffers(HDC dc) {
    GlSpyRecord& record = SpiedGl();
    ++record.frames;
    if (record.keepFrame) {
        GLint viewport[4] = {};
        real<"glGetIntegerv", decltype(glGetIntegerv)>(GL_VIEWPORT, viewport);
        record.frame.width = viewport[2];
        record.frame.height = viewport[3];
        record.frame.pixels.resize(3U * static_cast<std::size_t>(viewport[2]) *
                                   static_cast<std::size_t>(viewport[3]));
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(0, 0, viewport[2], viewport[3], GL_RGB, GL_UNSIGNED_BYTE,
                     record.frame.pixels.data());
    }
    if (record.keepCalls) record.calls.emplace_back("SwapBuffers");
    return real<"SwapBuffers", decltype(SwapBuffers)>(dc);
}

}  // namespace

GlSpyRecord& SpiedGl() {
    static GlSpyRecord record;
    return record;
}

void SpyOnGl(HMODULE module) {
    Install<"SwapBuffers">(module, SwapBuffers, SpySwapBuffers);
    Install<"glTexImage2D">(module, glTexImage2D, SpyTexImage2D);
    Install<"glCallLists">(module, glCallLists, SpyCallLists);
    Install<"glGetString">(module, glGetString, SpyGetString);
    Install<"glGetIntegerv">(module, glGetIntegerv, SpyGetIntegerv);
    Install<"glGetError">(module, glGetError, SpyGetError);
    InstallAll<"glBegin", "glBindTexture", "glBlendFunc", "glCallList", "glClear", "glClearColor",
               "glColor3d", "glColor3f", "glColor4d", "glColor4f", "glDeleteLists",
               "glDeleteTextures", "glDisable", "glEnable", "glEnd", "glEndList", "glFlush",
               "glGenTextures", "glIsEnabled", "glLightModelfv", "glLightModeli", "glLightfv",
               "glLighti", "glListBase", "glLoadIdentity", "glMaterialfv", "glMateriali",
               "glMatrixMode", "glNewList", "glNormal3d", "glNormal3f", "glPixelStorei",
               "glPointSize", "glPolygonMode", "glPopMatrix", "glPushMatrix", "glRasterPos3f",
               "glRotated", "glRotatef", "glShadeModel", "glTexCoord2d", "glTexCoord2f",
               "glTexEnvfv", "glTexEnvi", "glTexParameteri", "glTranslatef", "glVertex2d",
               "glVertex2f", "glVertex3d", "glVertex3f", "glViewport", "gluDeleteQuadric",
               "gluNewQuadric", "gluOrtho2D", "gluPerspective", "gluQuadricDrawStyle", "gluSphere">(
        module, glBegin, glBindTexture, glBlendFunc, glCallList, glClear, glClearColor, glColor3d,
        glColor3f, glColor4d, glColor4f, glDeleteLists, glDeleteTextures, glDisable, glEnable,
        glEnd, glEndList, glFlush, glGenTextures, glIsEnabled, glLightModelfv, glLightModeli,
        glLightfv, glLighti, glListBase, glLoadIdentity, glMaterialfv, glMateriali, glMatrixMode,
        glNewList, glNormal3d, glNormal3f, glPixelStorei, glPointSize, glPolygonMode, glPopMatrix,
        glPushMatrix, glRasterPos3f, glRotated, glRotatef, glShadeModel, glTexCoord2d, glTexCoord2f,
        glTexEnvfv, glTexEnvi, glTexParameteri, glTranslatef, glVertex2d, glVertex2f, glVertex3d,
        glVertex3f, glViewport, gluDeleteQuadric, gluNewQuadric, gluOrtho2D, gluPerspective,
        gluQuadricDrawStyle, gluSphere);
}

std::vector<std::string> SpiedCalls(const std::string& function) {
    std::vector<std::string> found;
    for (const std::string& call : SpiedGl().calls) {
        if (call == function || call.starts_with(function + " ")) found.push_back(call);
    }
    return found;
}

std::vector<double> SpiedNumbers(const std::string& call) {
    std::istringstream words(call);
    std::string word;
    words >> word;
    std::vector<double> numbers;
    for (double number = 0; words >> number;) numbers.push_back(number);
    return numbers;
}
