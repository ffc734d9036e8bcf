#include "support/gl_spy_win.h"

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <utility>

#include "support/faked_import_win.h"

namespace {

constexpr int kVectorLength = 4;  // all float arrays that the DLL hands to GL are colours or points

template <class Argument>
void Append(std::vector<double>& numbers, Argument argument) {
    if constexpr (std::is_arithmetic_v<Argument>) numbers.push_back(argument);
    if constexpr (std::is_same_v<Argument, const GLfloat*>)
        numbers.insert(numbers.end(), argument, argument + kVectorLength);
}

template <class... Arguments>
void Record(std::string_view name, Arguments... arguments) {
    if (!SpiedGl().keepCalls) return;
    GlCall& call = SpiedGl().calls.emplace_back(GlCall{name, {}});
    (Append(call.numbers, arguments), ...);
}

/// The function behind a spy.
template <FunctionName Name, class Function>
Function* real = nullptr;

/// The spy on most functions: records, then calls the real one.
template <FunctionName Name, class Result, class... Arguments>
Result APIENTRY Spy(Arguments... arguments) {
    Record(Name.View(), arguments...);
    return real<Name, Result(Arguments...)>(arguments...);
}

template <FunctionName Name, class Result, class... Arguments>
void Install(HMODULE module, Result(APIENTRY*)(Arguments...),
             Result(APIENTRY* spy)(Arguments...) = &Spy<Name, Result, Arguments...>) {
    void* before = ReplaceImport(module, Name.View(), reinterpret_cast<void*>(spy));
    ExpectImported(Name.View(), before != nullptr);
    real<Name, Result(Arguments...)> = reinterpret_cast<Result(APIENTRY*)(Arguments...)>(before);
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
    const auto* bytes = static_cast<const unsigned char*>(pixels);
    if (SpiedGl().keepPixels && pixels != nullptr)
        upload.pixels.assign(bytes, bytes + width * height * (format == GL_RGBA ? 4 : 3));
    SpiedGl().uploads.push_back(std::move(upload));
    Record("glTexImage2D", target, level, internalFormat, width, height, border, format, type);
    const GLsizei limit = SpiedGl().refuseAbove;
    refused = limit > 0 && std::max(width, height) > limit;
    if (refused) return;
    real<"glTexImage2D", decltype(glTexImage2D)>(target, level, internalFormat, width, height,
                                                 border, format, type, pixels);
}

void APIENTRY SpyCallLists(GLsizei count, GLenum type, const GLvoid* names) {
    Record("glCallLists", count, type);
    if (SpiedGl().keepTexts)
        SpiedGl().texts.emplace_back(static_cast<const char*>(names), static_cast<GLuint>(count));
    real<"glCallLists", decltype(glCallLists)>(count, type, names);
}

void APIENTRY SpyGetIntegerv(GLenum name, GLint* value) {
    const GLint answer = name == GL_MAX_TEXTURE_SIZE ? SpiedGl().maxTextureSize : 0;
    if (answer == 0) real<"glGetIntegerv", decltype(glGetIntegerv)>(name, value);
    if (answer > 0) *value = answer;
}

GLenum APIENTRY SpyGetError() {
    const bool outOfMemory = std::exchange(refused, false);
    return outOfMemory ? GL_OUT_OF_MEMORY : real<"glGetError", decltype(glGetError)>();
}

BOOL WINAPI SpySwapBuffers(HDC dc) {
    GlSpyRecord& record = SpiedGl();
    ++record.frames;
    if (record.keepFrame) {
        GLint viewport[4] = {};
        glGetIntegerv(GL_VIEWPORT, viewport);
        const auto [x, y, width, height] = viewport;
        record.frame = {width, height, {}};
        record.frame.pixels.resize(3U * static_cast<std::size_t>(width * height));
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(x, y, width, height, GL_RGB, GL_UNSIGNED_BYTE, record.frame.pixels.data());
    }
    Record("SwapBuffers");
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

std::vector<GlCall> SpiedCalls(std::string_view function) {
    std::vector<GlCall> found;
    std::ranges::copy_if(SpiedGl().calls, std::back_inserter(found),
                         [=](const GlCall& call) { return call.name == function; });
    return found;
}
