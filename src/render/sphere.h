#pragma once

#include "base/gl.h"
#include "render/gl_object.h"
#include "render/mesh_detail.h"

/// An untextured white sphere drawn through GLU into one display list.
class CSphere : public CGLObject {
public:
    /// @param detail  mesh resolution, read at every `Compile`; must outlive the sphere
    explicit CSphere(const MeshDetail& detail) noexcept : detail_(detail) {}
    ~CSphere() override;

    /// Records the list: own transform, children, sphere. The position of compile time is frozen
    /// in.
    void Compile() override;
    /// Calls the list; applies no transform of its own.
    void Draw() override;

    GLuint listId = 0;    ///< 0 while no list exists
    float radius = 1.0F;  ///< scene units

protected:
    const MeshDetail& Detail() const noexcept { return detail_; }

private:
    const MeshDetail& detail_;
};
