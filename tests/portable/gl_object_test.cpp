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

}  // namespace
