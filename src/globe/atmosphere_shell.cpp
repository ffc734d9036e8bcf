#include "globe/atmosphere_shell.h"

#include "render/list_name.h"
#include "render/pending_errors.h"

bool IssueSphere(const ShellSphere& sphere) {
    GLUquadric* quadric = gluNewQuadric();
    if (quadric == nullptr) return false;
    gluSphere(quadric, sphere.radius, sphere.slices, sphere.stacks);
    gluDeleteQuadric(quadric);
    return true;
}

void AtmosphereShell::Record(const ShellSphere& sphere) {
    if (Holds(sphere)) return;
    listId_ = ListName(this);
    recorded_ = sphere;
    DrainErrors();
    glNewList(listId_, GL_COMPILE);
    const bool issued = IssueSphere(sphere);
    glEndList();
    // Delete a display list that was recorded only in part: such a list would leave a gap in the
    // halo until the detail changes.
    if (!issued || glGetError() != GL_NO_ERROR) DeleteList();
}

void AtmosphereShell::DeleteList() noexcept {
    if (listId_ != 0) glDeleteLists(listId_, 1);
    listId_ = 0;
}

void AtmosphereShell::Draw(const ShellSphere& sphere) const {
    if (Holds(sphere)) {
        glCallList(listId_);
    } else {
        IssueSphere(sphere);
    }
}
