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

/// Draws the sphere, or records the sphere if a display list is open. Does nothing when GLU cannot
/// allocate memory. @return whether the sphere was drawn or recorded
bool IssueSphere(const ShellSphere& sphere);

/// One shell of the atmosphere with its own display list. The display list of the globe must be
/// recorded again when the Sun moves. The shells change only with the detail, and recording them
/// would need nine tenths of the recording time; therefore they have their own lists. The name of
/// the list comes from the address of this object (see ListName). Window thread; the context must
/// be current.
class AtmosphereShell {
public:
    AtmosphereShell() noexcept = default;
    AtmosphereShell(const AtmosphereShell&) = delete;
    AtmosphereShell& operator=(const AtmosphereShell&) = delete;
    ~AtmosphereShell() { DeleteList(); }

    /// Records `sphere` into the display list, unless the list already contains this sphere. No
    /// other display list may be open. When OpenGL reports an error or GLU cannot allocate memory,
    /// no list exists afterwards, and the next call records the sphere again.
    void Record(const ShellSphere& sphere);
    /// Deletes the display list, if it exists.
    void DeleteList() noexcept;
    /// Calls the display list if the list contains `sphere`; otherwise calls IssueSphere.
    void Draw(const ShellSphere& sphere) const;

private:
    bool Holds(const ShellSphere& sphere) const noexcept {
        return listId_ != 0 && recorded_ == sphere;
    }

    GLuint listId_ = 0;  ///< 0 while no list exists
    ShellSphere recorded_;
};
