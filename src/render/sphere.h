#pragma once

#include "base/gl.h"
#include "render/gl_object.h"
#include "render/mesh_detail.h"

/// A white sphere without texture, which GLU draws into one display list.
class CSphere : public CGLObject {
public:
    /// @param detail  resolution of the mesh, read at every `Compile`; must outlive the sphere
    explicit CSphere(const MeshDetail& detail) noexcept : detail_(detail) {}
    ~CSphere() override;

    /// Records the display list with the node's transform, the children and the sphere. A later
    /// change of `position` or `rotation` has no effect before the next `Compile`.
    void Compile() override;
    /// Calls the display list, which contains the transform.
    void Draw() override;

    GLuint listId = 0;    ///< 0 while no list exists
    float radius = 1.0F;  ///< scene units

protected:
    const MeshDetail& Detail() const noexcept { return detail_; }

private:
    const MeshDetail& detail_;
};
