#include "render/gl_object.h"

#include <gmock/gmock.h>

#include <random>

#include "support/gl_recorder.h"
#include "support/table.h"

namespace {

using testing::ElementsAre;

/// Writes its name and the pass into a common log.
class Spy : public CGLObject {
public:
    Spy(std::vector<std::string>& log, std::string name) : log_(log), name_(std::move(name)) {}
    ~Spy() override { log_.push_back("~" + name_); }
    void Draw() override { log_.push_back(name_); }

private:
    std::vector<std::string>& log_;
    std::string name_;
};

using CGLObjectTest = GlTest;

TEST_F(CGLObjectTest, DrawsChildrenInOrderAndDeletesThemInReverse) {
    std::vector<std::string> log;
    {
        CGLObject root;
        for (const char* name : {"a", "b", "c"}) root.AddChild(new Spy(log, name));
        root.Draw();
    }
    EXPECT_THAT(log, ElementsAre("a", "b", "c", "~c", "~b", "~a"));
}

TEST_F(CGLObjectTest, KeepsChildrenInOrderWhileItGrowsAndIsEmptied) {
    CGLObject root;
    root.AddChild(nullptr);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(root.GetChild(0), nullptr);
        std::vector<CGLObject*> added;
        for (int i = 0; i < 40; ++i) root.AddChild(added.emplace_back(new CGLObject));
        ASSERT_EQ(root.GetChildCount(), 40);
        for (int i = 0; i < 40; ++i) {
            EXPECT_EQ(root.GetChild(i), added[static_cast<std::size_t>(i)]);
            EXPECT_EQ(root.GetChild(i)->GetParent(), &root);
        }
        EXPECT_EQ(root.GetChild(-1), nullptr);
        EXPECT_EQ(root.GetChild(40), nullptr);
        root.DeleteChildren();
    }
}

TEST_F(CGLObjectTest, AppliesOnlyVisibleTurnsAndReachesLaterSiblings) {
    CGLObject root;
    root.AddChild(new CGLGroup);
    root.AddChild(new CGLObject);
    root.GetChild(0)->position.x = 7.0F;
    root.GetChild(1)->position = {1.0F, -2.5F, 3.0F};
    root.GetChild(1)->rotation = {40.0, 1e-6, 2e-6};
    root.Draw();
    EXPECT_THAT(Gl().calls,
                ElementsAre("glTranslatef 0 0 0", "glTranslatef 7 0 0", "glTranslatef 1 -2.5 3",
                            "glRotated 40 1 0 0", "glRotated 2e-06 0 0 1"));
    EXPECT_EQ(Gl().modelviewDepth, 1);
}

TEST_F(CGLObjectTest, TransformPointTakesEachHalfAloneAndBack) {
    CGLObject node;
    node.position = {1.0F, 2.0F, 3.0F};
    node.rotation = {90.0, 90.0, 0.0};
    for (const Row& row : Table("transform")) {
        CVector4 point{0, 0, 1, 1};
        node.TransformPoint(point, row.Int(0), row.Int(1));
        EXPECT_NEAR(point.x, row.Real(2), 1e-12) << row.why;
        EXPECT_NEAR(point.y, row.Real(3), 1e-12) << row.why;
        EXPECT_NEAR(point.z, row.Real(4), 1e-12) << row.why;
    }
    std::mt19937 random(815);
    std::uniform_real_distribution<double> angle(-360.0, 360.0);
    for (int round = 0; round < 200; ++round) {
        node.rotation = {angle(random), angle(random), angle(random)};
        CVector4 point{1.0, 2.0, 3.0, 1.0};
        node.TransformPoint(point, 1, 1);
        node.TransformPoint(point, -1, -1);
        EXPECT_NEAR(Length(CVector4(point.x - 1, point.y - 2, point.z - 3, 1)), 0.0, 1e-10);
    }
}

TEST_F(CGLObjectTest, ModelMatrixIsInOpenGlOrder) {
    CGLObject node;
    node.position = {1.0F, 2.0F, 3.0F};
    node.rotation = {0.0, 0.0, 90.0};
    std::array<double, 16> matrix;
    node.GetModelMatrix(matrix, false);
    EXPECT_THAT(matrix, ElementsAre(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1));
    node.GetModelMatrix(matrix, true);
    EXPECT_NEAR(matrix[1], 1.0, 1e-12) << "the image of X lies in the first four";
    EXPECT_NEAR(matrix[4], -1.0, 1e-12);
}

}  // namespace
