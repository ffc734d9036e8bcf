#include "render/sphere.h"

#include "render/list_name.h"

namespace {

/// Draws a white sphere. Draws nothing when GLU cannot allocate memory.
void DrawWhiteSphere(double radius, const MeshDetail& detail) {
    GLUquadricObj* const quadric = gluNewQuadric();
    if (quadric == nullptr) return;
    gluQuadricDrawStyle(quadric, GLU_FILL);
    glColor3d(1.0, 1.0, 1.0);
    gluSphere(quadric, radius, detail.sphereSlices, detail.sphereStacks);
    gluDeleteQuadric(quadric);
}

}  // namespace

CSphere::~CSphere() {
    if (listId != 0) glDeleteLists(listId, 1);
}

void CSphere::Compile() {
    listId = ListName(this);
    glNewList(listId, GL_COMPILE);
    glPushMatrix();
    ApplyTransform();
    CGLObject::Compile();
    DrawWhiteSphere(static_cast<double>(radius), detail_);
    glPopMatrix();
    glEndList();
}

void CSphere::Draw() {
    if (listId != 0) glCallList(listId);
}
