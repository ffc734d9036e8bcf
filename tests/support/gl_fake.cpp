#include "support/gl_fake.h"

#include <numeric>

GlState& Gl() {
    static GlState state;
    return state;
}

namespace {

void Send(std::initializer_list<double> numbers) {
    Gl().sent.insert(Gl().sent.end(), numbers.begin(), numbers.end());
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
void gluSphere(GLUquadric*, GLdouble radius, GLint, GLint) {
    (Gl().openList == 0 ? Gl().spheres : Gl().lists[Gl().openList]).push_back(radius);
}
void glCallList(GLuint list) {
    for (const double radius : Gl().lists[list]) gluSphere(nullptr, radius, 0, 0);
}
void glDeleteLists(GLuint first, GLsizei count) {
    for (GLsizei i = 0; i < count; ++i) Gl().lists.erase(first + static_cast<GLuint>(i));
}

GLUquadric* gluNewQuadric() { return reinterpret_cast<GLUquadric*>(&Gl()); }
void gluDeleteQuadric(GLUquadric*) {}

void glPushMatrix() { ++Gl().matrixDepth; }
void glPopMatrix() { --Gl().matrixDepth; }

void glBindTexture(GLenum, GLuint name) { Send({double(name)}); }
void glTexCoord2d(GLdouble s, GLdouble t) { Send({s, t}); }
void glVertex3f(GLfloat x, GLfloat y, GLfloat z) { Send({x, y, z}); }
void glRasterPos3f(GLfloat x, GLfloat y, GLfloat) { Send({x, y}); }
void glLightfv(GLenum, GLenum, const GLfloat* values) { Send({values[0], values[1], values[2]}); }

GLenum glGetError() {
    if (Gl().errors.empty()) return GL_NO_ERROR;
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
