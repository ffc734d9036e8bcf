#pragma once
// The part of OpenGL that portable tests look at. The test program defines these functions in place
// of the real ones; all others are the real library's, which without a context do nothing.

#include <gmock/gmock.h>

#include <deque>
#include <map>
#include <set>

#include "base/gl.h"

/// What OpenGL answers, set by the test, and what the calls left behind.
struct GlState {
    std::deque<GLenum> errors;  ///< for glGetError, first to last
    int failingUpload = 0;      ///< number of the glTexImage2D without memory, from 1
    int uploads = 0;
    int failingList = 0;  ///< number of the glNewList whose recording fails, from 1
    int newLists = 0;
    std::map<GLuint, std::vector<double>> lists;  ///< radii of the spheres in lists not deleted
    GLuint openList = 0;
    std::vector<double> spheres;     ///< radii of what was drawn, from lists and directly
    std::set<GLuint> textures;       ///< names generated and not deleted
    std::vector<std::string> texts;  ///< bytes of each glCallLists
    std::vector<double> sent;        ///< numbers of lights, vertices, raster places and textures
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
