#include "support/gl_recorder.h"

#include <algorithm>
#include <charconv>
#include <sstream>

namespace {

template <class Number>
void Append(std::string& line, Number value) {
    char digits[32];
    line.append(" ").append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

template <class... Numbers>
void Record(const char* name, Numbers... numbers) {
    std::string& line = Gl().calls.emplace_back(name);
    (Append(line, numbers), ...);
}

}  // namespace

GlState& Gl() {
    static GlState state;
    return state;
}

std::vector<double> Numbers(const std::string& call) {
    std::istringstream words(call.substr(std::min(call.find(' '), call.size())));
    std::vector<double> numbers;
    for (double number; words >> number;) numbers.push_back(number);
    return numbers;
}

std::vector<std::string> GlTest::CallsTo(std::initializer_list<std::string_view> names) {
    std::vector<std::string> found;
    for (const std::string& call : Gl().calls) {
        const std::string_view name = std::string_view(call).substr(0, call.find(' '));
        if (std::find(names.begin(), names.end(), name) != names.end()) found.push_back(call);
    }
    return found;
}

void GlTest::ForgetCalls() {
    Gl().calls.clear();
    Gl().texts.clear();
}

// Calls that are only noted, by their arguments.
#define RECORD0(name) \
    void name() { Record(#name); }
#define RECORD1(name, T) \
    void name(T a) { Record(#name, a); }
#define RECORD2(name, T, U) \
    void name(T a, U b) { Record(#name, a, b); }
#define RECORD3(name, T) \
    void name(T a, T b, T c) { Record(#name, a, b, c); }
#define RECORD4(name, T) \
    void name(T a, T b, T c, T d) { Record(#name, a, b, c, d); }
#define RECORD_SETTING(name, T) \
    void name(GLenum a, GLenum b, T value) { Record(#name, a, b, value); }

RECORD0(glEnd)
RECORD0(glEndList)
RECORD0(glFlush)
RECORD0(glLoadIdentity)
RECORD1(glBegin, GLenum)
RECORD1(glCallList, GLuint)
RECORD1(glClear, GLbitfield)
RECORD1(glDisable, GLenum)
RECORD1(glEnable, GLenum)
RECORD1(glListBase, GLuint)
RECORD1(glMatrixMode, GLenum)
RECORD1(glPointSize, GLfloat)
RECORD1(glShadeModel, GLenum)
RECORD2(glBlendFunc, GLenum, GLenum)
RECORD2(glDeleteLists, GLuint, GLsizei)
RECORD2(glLightModeli, GLenum, GLint)
RECORD2(glNewList, GLuint, GLenum)
RECORD2(glPixelStorei, GLenum, GLint)
RECORD2(glPolygonMode, GLenum, GLenum)
RECORD2(glTexCoord2d, GLdouble, GLdouble)
RECORD2(glTexCoord2f, GLfloat, GLfloat)
RECORD2(glVertex2d, GLdouble, GLdouble)
RECORD2(glVertex2f, GLfloat, GLfloat)
RECORD3(glColor3d, GLdouble)
RECORD3(glColor3f, GLfloat)
RECORD3(glNormal3d, GLdouble)
RECORD3(glNormal3f, GLfloat)
RECORD3(glRasterPos3f, GLfloat)
RECORD3(glTranslatef, GLfloat)
RECORD3(glVertex3d, GLdouble)
RECORD3(glVertex3f, GLfloat)
RECORD4(glColor4d, GLdouble)
RECORD4(glColor4f, GLfloat)
RECORD4(glRotated, GLdouble)
RECORD4(glRotatef, GLfloat)
RECORD4(gluPerspective, GLdouble)
RECORD_SETTING(glLighti, GLint)
RECORD_SETTING(glMateriali, GLint)
RECORD_SETTING(glTexEnvi, GLint)
RECORD_SETTING(glTexParameteri, GLint)

void glLightModelfv(GLenum name, const GLfloat*) { Record("glLightModelfv", name); }
void glLightfv(GLenum light, GLenum name, const GLfloat*) { Record("glLightfv", light, name); }
void glMaterialfv(GLenum face, GLenum name, const GLfloat*) { Record("glMaterialfv", face, name); }
void glTexEnvfv(GLenum target, GLenum name, const GLfloat*) { Record("glTexEnvfv", target, name); }
void glViewport(GLint x, GLint y, GLsizei w, GLsizei h) { Record("glViewport", x, y, w, h); }

// Calls with an answer or an effect.
void glPushMatrix() { ++Gl().modelviewDepth; }
void glPopMatrix() { --Gl().modelviewDepth; }
GLboolean glIsEnabled(GLenum) { return GL_FALSE; }
GLenum glGetError() {
    Record("glGetError");
    if (Gl().errors.empty()) return Gl().steadyError;
    const GLenum error = Gl().errors.front();
    Gl().errors.pop_front();
    return error;
}
void glGenTextures(GLsizei count, GLuint* names) {
    Record("glGenTextures", count);
    GLuint next = 1;  // like drivers: the lowest names that are free
    for (GLsizei i = 0; i < count; ++i) {
        while (!Gl().textures.insert(next).second) ++next;
        names[i] = next;
    }
}
void glDeleteTextures(GLsizei count, const GLuint* names) {
    Record("glDeleteTextures", count);
    for (GLsizei i = 0; i < count; ++i) Gl().textures.erase(names[i]);
}
void glBindTexture(GLenum target, GLuint texture) {
    Record("glBindTexture", target, texture);
    Gl().boundTexture = texture;
}
void glTexImage2D(GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint border, GLenum format,
                  GLenum, const GLvoid* pixels) {
    Record("glTexImage2D", width, height, border, format);
    // Reads exactly the bytes that OpenGL would read, so that the sanitizer sees short buffers.
    const auto* bytes = static_cast<const std::uint8_t*>(pixels);
    const std::ptrdiff_t size = std::ptrdiff_t{width} * height * (format == GL_RGBA ? 4 : 3);
    Gl().uploads.push_back({Gl().boundTexture, width, height, {bytes, bytes + size}});
    if (std::ssize(Gl().uploads) == Gl().failingUpload) Gl().errors.push_back(GL_OUT_OF_MEMORY);
}
void glCallLists(GLsizei count, GLenum type, const GLvoid* lists) {
    Record("glCallLists", count, type);
    Gl().texts.emplace_back(static_cast<const char*>(lists), static_cast<std::size_t>(count));
}

// GLU quadrics; nobody looks behind the address.
GLUquadric* gluNewQuadric() { return reinterpret_cast<GLUquadric*>(&Gl()); }
void gluDeleteQuadric(GLUquadric*) {}
void gluQuadricDrawStyle(GLUquadric*, GLenum) {}
void gluSphere(GLUquadric*, GLdouble radius, GLint slices, GLint stacks) {
    Record("gluSphere", radius, slices, stacks);
}
