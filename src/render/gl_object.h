#pragma once

#include <array>
#include <cstdint>

#include "math/matrix4.h"

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

/// A node of the scene tree. The window calls `Init` once after the context exists, `Compile`
/// whenever display lists must be made again, `Draw` every frame; all on its own thread with the
/// context current. A node owns its children and deletes them last-added first.
class CGLObject {
public:
    CGLObject() noexcept = default;
    CGLObject(const CGLObject&) = delete;
    CGLObject& operator=(const CGLObject&) = delete;
    virtual ~CGLObject();

    virtual void Init();
    virtual void Compile();
    /// Applies the node's own transform and draws the children.
    /// Deliberate: no matrix is pushed, so the transform stays in force for later siblings; a
    /// subtree that must keep it to itself goes under a CGLGroup.
    virtual void Draw();

    /// Appends `child` and takes ownership; null is ignored. Throws std::bad_alloc; the child is
    /// then still the caller's.
    void AddChild(CGLObject* child);
    void DeleteChildren() noexcept;
    std::int32_t GetChildCount() const noexcept { return childCount_; }
    /// The child at `index`; null outside [0, count).
    CGLObject* GetChild(std::int32_t index) const noexcept;
    CGLObject* GetParent() const noexcept { return parent_; }

    /// Issues the node's translation and its rotations about X, Y, Z (those above 1e-6 degrees).
    void ApplyTransform() const;

    /// Moves `point` by the node's transform or by its inverse.
    /// @param translateSign  1 translate, -1 translate back, 0 not
    /// @param rotateSign     1 rotate about X, Y, Z; -1 undo that; 0 not
    void TransformPoint(CVector4& point, std::int32_t translateSign,
                        std::int32_t rotateSign) const noexcept;

    /// The node's own matrix in OpenGL's column-major order.
    void GetModelMatrix(std::array<double, 16>& out, bool withRotation) const noexcept;

    Position3 position;
    Rotation3 rotation;

private:
    void GrowChildren();

    CGLObject* parent_ = nullptr;
    CGLObject** children_ = nullptr;
    std::int32_t childCount_ = 0;
    std::int32_t childCapacity_ = 0;
};

/// A node that keeps its transform to itself.
class CGLGroup : public CGLObject {
public:
    void Draw() override;
};
