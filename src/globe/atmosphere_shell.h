#pragma once

#include <cstdint>

#include "base/gl.h"

/// The sphere that a shell of the atmosphere consists of.
struct ShellSphere {
    double radius = 0.0;      ///< scene units
    std::int32_t slices = 0;  ///< divisions of longitude
    std::int32_t stacks = 0;  ///< divisions of latitude

    bool operator==(const ShellSphere&) const noexcept = default;
};

/// Issues the sphere; nothing when GLU has no memory for it. @return whether it was issued
bool IssueSphere(const ShellSphere& sphere);

/// One shell of the atmosphere in a display list of its own. The spheres take nine tenths of the
/// time that recording the globe takes, and they change only with the detail, not with the Sun. The
/// list has the address of this object as its name. Window thread, context current.
class AtmosphereShell {
public:
    AtmosphereShell() noexcept = default;
    AtmosphereShell(const AtmosphereShell&) = delete;
    AtmosphereShell& operator=(const AtmosphereShell&) = delete;
    ~AtmosphereShell() { DeleteList(); }

    /// Records `sphere`, unless the list holds it already; no other list may be open. When OpenGL
    /// reports an error or GLU has no memory, there is no list afterwards and the next call tries
    /// again.
    void Record(const ShellSphere& sphere);
    /// Deletes the list, if there is one.
    void DeleteList() noexcept;
    /// Calls the list if it holds `sphere`, otherwise issues the sphere itself.
    void Draw(const ShellSphere& sphere) const;

private:
    bool Holds(const ShellSphere& sphere) const noexcept {
        return listId_ != 0 && recorded_ == sphere;
    }

    GLuint listId_ = 0;  ///< 0 while no list exists
    ShellSphere recorded_;
};
