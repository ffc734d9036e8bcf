#include "render/gl_object.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/gl.h"
#include "math/angles.h"

namespace {

constexpr std::size_t kChildrenPerGrowth = 16;
constexpr double kMinTurnDeg = 1e-6;  // smaller turns move no point by a pixel

bool Turns(double degrees) noexcept { return std::abs(degrees) > kMinTurnDeg; }

/// Multiplies `m` by the translation `scale` x `position`.
void Translate(CMatrix4& m, const Position3& position, double scale) noexcept {
    CMatrix4 translation;
    translation.SetTranslation(scale * static_cast<double>(position.x),
                               scale * static_cast<double>(position.y),
                               scale * static_cast<double>(position.z));
    m.Multiply(translation);
}

void Rotate(CMatrix4& m, const Rotation3& rotation) noexcept {
    if (Turns(rotation.x)) m.RotateX(DegToRad(rotation.x));
    if (Turns(rotation.y)) m.RotateY(DegToRad(rotation.y));
    if (Turns(rotation.z)) m.RotateZ(DegToRad(rotation.z));
}

void RotateBack(CMatrix4& m, const Rotation3& rotation) noexcept {
    if (Turns(rotation.z)) m.RotateZ(DegToRad(-rotation.z));
    if (Turns(rotation.y)) m.RotateY(DegToRad(-rotation.y));
    if (Turns(rotation.x)) m.RotateX(DegToRad(-rotation.x));
}

}  // namespace

CGLObject::~CGLObject() { DeleteChildren(); }

void CGLObject::Init() {
    for (const auto& child : children_) child->Init();
}

void CGLObject::Compile() {
    for (const auto& child : children_) child->Compile();
}

void CGLObject::Draw() {
    ApplyTransform();
    for (const auto& child : children_) child->Draw();
}

void CGLObject::Append(std::unique_ptr<CGLObject> child) {
    if (child == nullptr) return;
    if (children_.size() == children_.capacity()) {
        children_.reserve(children_.capacity() + kChildrenPerGrowth);
    }
    children_.push_back(std::move(child));
    children_.back()->parent_ = this;
}

void CGLObject::DeleteChildren() noexcept {
    while (!children_.empty()) children_.pop_back();
    children_.shrink_to_fit();
}

CGLObject* CGLObject::GetChild(std::int32_t index) const noexcept {
    return index >= 0 && index < GetChildCount() ? children_[static_cast<std::size_t>(index)].get()
                                                 : nullptr;
}

void CGLObject::ApplyTransform() const {
    glTranslatef(position.x, position.y, position.z);
    if (Turns(rotation.x)) glRotated(rotation.x, 1.0, 0.0, 0.0);
    if (Turns(rotation.y)) glRotated(rotation.y, 0.0, 1.0, 0.0);
    if (Turns(rotation.z)) glRotated(rotation.z, 0.0, 0.0, 1.0);
}

void CGLObject::TransformPoint(CVector4& point, std::int32_t translateSign,
                               std::int32_t rotateSign) const noexcept {
    if (translateSign == 0 && rotateSign == 0) return;
    CMatrix4 m;
    if (translateSign > 0) Translate(m, position, translateSign);
    if (rotateSign > 0) Rotate(m, rotation);
    if (rotateSign < 0) RotateBack(m, rotation);
    // The matrix that is multiplied last acts on the point first. So signs (-1, -1) undo the
    // translation before the rotation, and are the inverse of (1, 1).
    if (translateSign < 0) Translate(m, position, translateSign);
    m.Transform(point);
}

void CGLObject::GetModelMatrix(std::array<double, 16>& out, bool withRotation) const noexcept {
    CMatrix4 m;
    Translate(m, position, 1.0);
    if (withRotation) Rotate(m, rotation);
    m.Transpose();  // CMatrix4 is row-major, OpenGL's order is column-major
    std::copy_n(m.Data(), out.size(), out.begin());
}

void CGLGroup::Draw() {
    glPushMatrix();
    CGLObject::Draw();
    glPopMatrix();
}
