#pragma once
// The part of OpenGL that portable tests look at. The test program defines these functions in place
// of the real ones; all others are the real library's, which without a context do nothing.

#include <gtest/gtest.h>

#include <deque>
#include <set>
#include <string>
#include <vector>

#include "base/gl.h"

/// What OpenGL answers, set by the test, and what the calls left behind.
struct GlState {
    std::deque<GLenum> errors;         ///< for glGetError, first to last
    GLenum steadyError = GL_NO_ERROR;  ///< for glGetError once `errors` is used up
    int errorsAsked = 0;
    int failingUpload = 0;  ///< number of the glTexImage2D without memory, from 1
    int uploads = 0;
    std::set<GLuint> textures;       ///< names generated and not deleted
    std::vector<std::string> texts;  ///< bytes of each glCallLists
    std::vector<double> sent;        ///< numbers of lights, vertices and what belongs to them
    int matrixDepth = 1;
    unsigned pixelSum = 0;  ///< of all that was uploaded
};

GlState& Gl();

/// Starts with an empty record.
class GlTest : public testing::Test {
protected:
    GlTest() { Gl() = {}; }
    ~GlTest() override { EXPECT_EQ(Gl().matrixDepth, 1) << "pushes without a pop"; }
};
