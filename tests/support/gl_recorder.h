#pragma once
// OpenGL for tests: the test program links these functions and GLU quadrics in place of the real
// ones. Each call is kept as a readable line; GLU's arithmetic stays the real library's.

#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <initializer_list>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/gl.h"

/// What one glTexImage2D handed over.
struct TextureUpload {
    GLuint texture = 0;  ///< the name bound at that time
    GLsizei width = 0;
    GLsizei height = 0;
    std::vector<std::uint8_t> pixels;  ///< all rows as given
};

/// What OpenGL answers, set by the test, and what the calls left behind.
struct GlState {
    std::deque<GLenum> errors;         ///< for glGetError, first to last
    GLenum steadyError = GL_NO_ERROR;  ///< for glGetError once `errors` is used up
    int failingUpload = 0;             ///< number of the glTexImage2D without memory, from 1

    std::vector<std::string> calls;
    std::vector<std::string> texts;  ///< bytes of each glCallLists
    std::vector<TextureUpload> uploads;
    std::set<GLuint> textures;  ///< names generated and not deleted
    int modelviewDepth = 1;
    GLuint boundTexture = 0;
};

GlState& Gl();

/// The numbers behind the name of a call: "glVertex3f 1 2 3" gives {1, 2, 3}.
std::vector<double> Numbers(const std::string& call);

/// Fixture for tests of code that issues GL calls; starts with an empty record. A line is the
/// function's name and its arguments, numbers in their shortest form.
class GlTest : public testing::Test {
protected:
    GlTest() { Gl() = {}; }
    /// The calls of these functions only, in order.
    static std::vector<std::string> CallsTo(std::initializer_list<std::string_view> names);
    static std::vector<std::string> CallsTo(std::string_view name) { return CallsTo({name}); }
    static std::size_t CountCalls(std::string_view name) { return CallsTo(name).size(); }
    static void ForgetCalls();
};
