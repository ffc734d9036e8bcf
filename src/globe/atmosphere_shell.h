#pragma once

#include <cstdint>

#include "base/gl.h"

/// Radius and resolution of one shell of the atmosphere, which is a sphere.
struct ShellSphere {
    double radius = 0.0;      ///< scene units
    std::int32_t slices = 0;  ///< divisions of longitude
    std::int32_t stacks = 0;  ///< divisions of latitude

    bool operator==(const ShellSphere&) const noexcept = default;
};

/// Draws the sphere, or records it into the open display list. Does nothing when GLU has no memory
/// for it. @return whether the sphere was drawn or recorded
bool IssueSphere(const ShellSphere& sphere);

/// One shell of the atmosphere in its own display list. It is not recorded together with the globe,
/// because the shells change only with the detail and not with the Sun, and recording them would
/// need nine tenths of the time. The name of the list comes from the address of this object (see
/// ListName). Window thread; the context must be current.
class AtmosphereShell {
public:
    AtmosphereShell() noexcept = default;
    AtmosphereShell(const AtmosphereShell&) = delete;
    AtmosphereShell& operator=(const AtmosphereShell&) = delete;
    ~AtmosphereShell() { DeleteList(); }

    /// Records `sphere`, unless the list contains it already. No other list may be open. When
    /// OpenGL reports an error or GLU has no memory, there is no list afterwards, and the next call
    /// tries again.
    void Record(const ShellSphere& sphere);
    /// Deletes the list, if there is one.
    void DeleteList() noexcept;
    /// Calls the list if it contains `sphere`, otherwise calls IssueSphere.
    void Draw(const ShellSphere& sphere) const;

private:
    bool Holds(const ShellSphere& sphere) const noexcept {
        return listId_ != 0 && recorded_ == sphere;
    }

    GLuint listId_ = 0;  ///< 0 while no list exists
    ShellSphere recorded_;
};
