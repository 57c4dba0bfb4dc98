#include "platform/model/ViewController.h"

#include <gtest/gtest.h>

#include <optional>

namespace tolvane::platform {
namespace {

class Loading final : public ViewController {
public:
    Loading() : ViewController(std::nullopt, nullptr) {}

    void viewDidLoad() override {
        ++loads;
        loadViewIfNeeded();
    }

    int loads = 0;
};

TEST(ViewController, loadsItsViewOnce) {
    Loading controller;
    EXPECT_EQ(controller.loads, 0);
    controller.loadViewIfNeeded();
    controller.loadViewIfNeeded();
    EXPECT_EQ(controller.loads, 1);
}

TEST(ViewController, remembersWhereItComesFrom) {
    EXPECT_EQ(ViewController("Details", nullptr).nibName(), "Details");
    EXPECT_EQ(ViewController(std::nullopt, nullptr).nibName(), std::nullopt);
    EXPECT_EQ(ViewController(std::nullopt, nullptr).bundle(), nullptr);
    EXPECT_EQ(ViewController(Coder{"Scene"}).nibName(), "Scene");
}

} // namespace
} // namespace tolvane::platform
