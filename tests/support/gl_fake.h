#pragma once
// The part of OpenGL that portable tests look at. The test program defines these functions in place
// of the real ones; all others are the real library's, which without a context do nothing.

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/gl.h"

/// A sphere of GLU, or the call of a display list.
struct GlCommand {
    GLuint calledList = 0;  ///< 0 for a sphere
    double radius = 0.0;
};

/// What OpenGL answers, set by the test, and what the calls left behind.
struct GlState {
    std::deque<GLenum> errors;         ///< for glGetError, first to last
    GLenum steadyError = GL_NO_ERROR;  ///< for glGetError once `errors` is used up
    int errorsAsked = 0;
    int failingUpload = 0;  ///< number of the glTexImage2D without memory, from 1
    int uploads = 0;
    int failingList = 0;  ///< number of the glNewList whose recording fails, from 1
    int newLists = 0;
    int failingQuadric = 0;  ///< number of the gluNewQuadric that gets no memory, from 1
    int quadrics = 0;
    std::map<GLuint, std::vector<GlCommand>> lists;  ///< recorded and not deleted
    GLuint openList = 0;
    std::vector<double> spheres;     ///< radii of what was drawn, from lists and directly
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
