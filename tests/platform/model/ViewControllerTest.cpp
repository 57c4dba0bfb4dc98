#include "platform/model/ViewController.h"

#include "platform/model/Controls.h"

#include <gtest/gtest.h>

#include <any>
#include <memory>
#include <optional>
#include <string>

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
    Outlet<TextField> field{outletTable(), "field"};
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

TEST(ViewController, listsTheOutletsOfItsClass) {
    Loading controller;
    const auto& entries = controller.outlets().entries();
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries.front().name, "field");
    EXPECT_EQ(entries.front().outlet, OutletTable::Reference(&controller.field));
}

TEST(ViewController, standsForAnyObject) {
    ViewController controller(std::nullopt, nullptr);
    EXPECT_FALSE(controller.representedObject().has_value());
    controller.setRepresentedObject(std::string("a"));
    const auto* text = std::any_cast<std::string>(&controller.representedObject());
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(*text, "a");
}

} // namespace
} // namespace tolvane::platform
