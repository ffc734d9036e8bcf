#include "support/gl_fake.h"

#include <cstddef>
#include <cstdint>
#include <numeric>

GlState& Gl() {
    static GlState state;
    return state;
}

namespace {

void Execute(const GlCommand& command) {
    if (command.calledList == 0) return Gl().spheres.push_back(command.radius);
    for (const GlCommand& recorded : Gl().lists[command.calledList]) Execute(recorded);
}

void Issue(const GlCommand& command) {
    if (Gl().openList == 0) return Execute(command);
    Gl().lists[Gl().openList].push_back(command);
}

}  // namespace

void glNewList(GLuint list, GLenum) {
    EXPECT_EQ(Gl().openList, 0U) << "lists cannot be nested";
    Gl().openList = list;
    Gl().lists[list].clear();
}

void glEndList() {
    Gl().openList = 0;
    if (++Gl().newLists == Gl().failingList) Gl().errors.push_back(GL_OUT_OF_MEMORY);
}

void glCallList(GLuint list) { Issue({list, 0.0}); }

void glDeleteLists(GLuint first, GLsizei count) {
    for (GLsizei i = 0; i < count; ++i) Gl().lists.erase(first + static_cast<GLuint>(i));
}

GLUquadric* gluNewQuadric() {
    static char quadric = 0;
    return ++Gl().quadrics == Gl().failingQuadric ? nullptr
                                                  : reinterpret_cast<GLUquadric*>(&quadric);
}

void gluDeleteQuadric(GLUquadric*) {}

void gluSphere(GLUquadric*, GLdouble radius, GLint, GLint) { Issue({0, radius}); }

void glPushMatrix() { ++Gl().matrixDepth; }
void glPopMatrix() { --Gl().matrixDepth; }

void glBindTexture(GLenum, GLuint name) { Gl().sent.push_back(name); }
void glTexCoord2d(GLdouble s, GLdouble t) { Gl().sent.insert(Gl().sent.end(), {s, t}); }
void glVertex3f(GLfloat x, GLfloat y, GLfloat z) { Gl().sent.insert(Gl().sent.end(), {x, y, z}); }
void glLightfv(GLenum, GLenum, const GLfloat* values) {
    Gl().sent.insert(Gl().sent.end(), values, values + 3);
}

GLenum glGetError() {
    ++Gl().errorsAsked;
    if (Gl().errors.empty()) return Gl().steadyError;
    const GLenum error = Gl().errors.front();
    Gl().errors.pop_front();
    return error;
}

void glGenTextures(GLsizei count, GLuint* names) {
    GLuint next = 1;  // like drivers: the lowest names that are free
    for (GLsizei i = 0; i < count; ++i) {
        while (!Gl().textures.insert(next).second) ++next;
        names[i] = next;
    }
}

void glDeleteTextures(GLsizei count, const GLuint* names) {
    for (GLsizei i = 0; i < count; ++i) Gl().textures.erase(names[i]);
}

void glTexImage2D(GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint, GLenum format, GLenum,
                  const GLvoid* pixels) {
    // Reads exactly the bytes that OpenGL would read, so that the sanitizer sees short buffers.
    const auto* bytes = static_cast<const std::uint8_t*>(pixels);
    const std::ptrdiff_t size = std::ptrdiff_t{width} * height * (format == GL_RGBA ? 4 : 3);
    Gl().pixelSum = std::accumulate(bytes, bytes + size, Gl().pixelSum);
    if (++Gl().uploads == Gl().failingUpload) Gl().errors.push_back(GL_OUT_OF_MEMORY);
}

void glCallLists(GLsizei count, GLenum, const GLvoid* lists) {
    Gl().texts.emplace_back(static_cast<const char*>(lists), static_cast<std::size_t>(count));
}
