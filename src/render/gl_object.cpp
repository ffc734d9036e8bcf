#include "render/gl_object.h"

#include <algorithm>
#include <cmath>

#include "base/gl.h"
#include "math/angles.h"

namespace {

constexpr std::int32_t kChildrenPerGrowth = 16;
constexpr double kLeastTurnDeg = 1e-6;  // smaller turns move nothing by a pixel

bool Turns(double degrees) noexcept { return std::abs(degrees) > kLeastTurnDeg; }

/// m = m x translation by `scale` times `position`.
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
    for (std::int32_t i = 0; i < childCount_; ++i) children_[i]->Init();
}

void CGLObject::Compile() {
    for (std::int32_t i = 0; i < childCount_; ++i) children_[i]->Compile();
}

void CGLObject::Draw() {
    ApplyTransform();
    for (std::int32_t i = 0; i < childCount_; ++i) children_[i]->Draw();
}

void CGLObject::AddChild(CGLObject* child) {
    if (child == nullptr) return;
    if (childCount_ >= childCapacity_) GrowChildren();
    children_[childCount_] = child;
    ++childCount_;
    child->parent_ = this;
}

void CGLObject::GrowChildren() {
    const std::int32_t capacity = childCapacity_ + kChildrenPerGrowth;
    auto** const larger = new CGLObject*[static_cast<std::size_t>(capacity)];
    std::copy_n(children_, childCount_, larger);
    delete[] children_;
    children_ = larger;
    childCapacity_ = capacity;
}

void CGLObject::DeleteChildren() noexcept {
    while (childCount_ >= 1) {
        --childCount_;
        delete children_[childCount_];
    }
    delete[] children_;
    children_ = nullptr;
    childCapacity_ = 0;
}

CGLObject* CGLObject::GetChild(std::int32_t index) const noexcept {
    return index >= 0 && index < childCount_ ? children_[index] : nullptr;
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
    // Undone last, so that (-1, -1) is the inverse of (1, 1).
    if (translateSign < 0) Translate(m, position, translateSign);
    m.Transform(point);
}

void CGLObject::GetModelMatrix(std::array<double, 16>& out, bool withRotation) const noexcept {
    CMatrix4 m;
    Translate(m, position, 1.0);
    if (withRotation) Rotate(m, rotation);
    m.Transpose();  // OpenGL's order
    std::copy_n(m.Data(), out.size(), out.begin());
}

void CGLGroup::Draw() {
    glPushMatrix();
    CGLObject::Draw();
    glPopMatrix();
}
