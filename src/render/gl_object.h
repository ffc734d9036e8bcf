#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "math/matrix4.h"

/// A position in the frame of the parent node: in scene units (the globe has the radius 3), or in
/// window pixels for the flat objects of the overlay.
struct Position3 {
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

/// Angles in degrees about the X, Y and Z axes.
struct Rotation3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// A node of the scene tree. Call `Init` once after the context exists, `Compile` whenever display
/// lists must be recorded again, and `Draw` for every frame, all on the window thread with the
/// context current. A node owns its children and deletes them in reverse order.
class CGLObject {
public:
    CGLObject() noexcept = default;
    CGLObject(const CGLObject&) = delete;
    CGLObject& operator=(const CGLObject&) = delete;
    virtual ~CGLObject();

    virtual void Init();
    virtual void Compile();
    /// Applies the node's own transform and draws the children.
    /// Deliberate: no matrix is pushed, so the transform also applies to later siblings. Put a
    /// subtree under a CGLGroup to limit its transform to the subtree.
    virtual void Draw();

    /// Appends `child`; null is ignored. Throws std::bad_alloc. @return the child
    template <class Object>
    Object* AddChild(std::unique_ptr<Object> child) {
        Object* const added = child.get();
        Append(std::move(child));
        return added;
    }
    /// Deletes all children in reverse order and frees the memory of the list of children.
    void DeleteChildren() noexcept;
    std::int32_t GetChildCount() const noexcept {
        return static_cast<std::int32_t>(children_.size());
    }
    /// Returns the child at `index`, or null outside [0, count).
    CGLObject* GetChild(std::int32_t index) const noexcept;
    CGLObject* GetParent() const noexcept { return parent_; }

    /// Multiplies the current GL matrix by the node's translation and by its rotations about X, Y
    /// and Z. Rotations of 1e-6 degrees or less are left out.
    void ApplyTransform() const;

    /// Transforms `point` by the node's transform or by its inverse.
    /// @param translateSign  1: translate; -1: undo the translation; 0: no translation
    /// @param rotateSign     1: rotate about X, Y, Z; -1: undo the rotation; 0: no rotation
    void TransformPoint(CVector4& point, std::int32_t translateSign,
                        std::int32_t rotateSign) const noexcept;

    /// Computes the matrix of the node's own transform in OpenGL's column-major order.
    void GetModelMatrix(std::array<double, 16>& out, bool withRotation) const noexcept;

    Position3 position;
    Rotation3 rotation;

private:
    void Append(std::unique_ptr<CGLObject> child);

    CGLObject* parent_ = nullptr;
    std::vector<std::unique_ptr<CGLObject>> children_;
};

/// A node whose transform applies to its own subtree only.
class CGLGroup : public CGLObject {
public:
    void Draw() override;
};
