#include "render/gl_object.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

/// Writes its name into a common log when it is drawn and when it goes.
class Logged : public CGLObject {
public:
    Logged(std::vector<std::string>& log, std::string name) : log_(log), name_(std::move(name)) {}
    ~Logged() override { log_.push_back("~" + name_); }
    void Draw() override { log_.push_back(name_); }

private:
    std::vector<std::string>& log_;
    std::string name_;
};

TEST(CGLObject, KeepsItsChildrenInOrderWhileItGrowsAndIsEmptied) {
    std::vector<std::string> log;
    CGLObject root;
    root.AddChild(nullptr);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(root.GetChild(0), nullptr);
        std::vector<std::string> expected;
        for (int i = 0; i < 40; ++i) {
            expected.push_back(std::to_string(i));
            root.AddChild(new Logged(log, expected.back()));
        }
        for (int i = 39; i >= 0; --i) expected.push_back("~" + std::to_string(i));
        log.clear();
        root.Draw();
        EXPECT_EQ(root.GetChild(39)->GetParent(), &root);
        EXPECT_EQ(root.GetChild(-1), nullptr);
        EXPECT_EQ(root.GetChild(40), nullptr);
        root.DeleteChildren();
        EXPECT_EQ(log, expected) << "drawn in order, deleted in reverse";
    }
}

}  // namespace
