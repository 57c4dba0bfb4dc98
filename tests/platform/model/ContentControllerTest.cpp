#include "platform/model/ContentController.h"

#include <gtest/gtest.h>

#include <optional>

namespace tolvane::platform {
namespace {

class Loading final : public ContentController {
public:
    Loading() : ContentController(std::nullopt, nullptr) {}

    void viewDidLoad() override {
        ++loads;
        loadViewIfNeeded();
    }

    int loads = 0;
};

TEST(ContentController, loadsItsViewOnce) {
    Loading controller;
    EXPECT_EQ(controller.loads, 0);
    controller.loadViewIfNeeded();
    controller.loadViewIfNeeded();
    EXPECT_EQ(controller.loads, 1);
}

TEST(ContentController, remembersWhereItComesFrom) {
    EXPECT_EQ(ContentController("Details", nullptr).nibName(), "Details");
    EXPECT_EQ(ContentController(std::nullopt, nullptr).nibName(), std::nullopt);
    EXPECT_EQ(ContentController(std::nullopt, nullptr).bundle(), nullptr);
    EXPECT_EQ(ContentController(Coder{"Scene"}).nibName(), "Scene");
}

} // namespace
} // namespace tolvane::platform
