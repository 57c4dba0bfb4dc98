#include "platform/memory/MemoryPreviewPanel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

class Names final : public platform::PreviewPanelDataSource, public platform::PreviewPanelDelegate {
public:
    explicit Names(std::vector<std::string> first) : names(std::move(first)) {}

    std::size_t numberOfPreviewItemsInPreviewPanel(const platform::PreviewPanel&) override {
        return names.size();
    }
    platform::URL previewPanel(const platform::PreviewPanel&, std::size_t index) override {
        return platform::URL::fileURLWithPath("/" + names.at(index));
    }

    std::vector<std::string> names;
};

platform::URL fileURL(std::string_view path) {
    return platform::URL::fileURLWithPath(path);
}

TEST(MemoryPreviewPanel, isOneForAll) {
    platform::MemoryPreviewPanels panels;
    EXPECT_EQ(panels.sharedPreviewPanel(), panels.sharedPreviewPanel());
    EXPECT_EQ(panels.sharedPreviewPanel(), panels.panel());
    EXPECT_FALSE(panels.panel()->isVisible());
    EXPECT_EQ(panels.panel()->delegate(), nullptr);
    EXPECT_EQ(panels.panel()->dataSource(), nullptr);
}

TEST(MemoryPreviewPanel, asksForItsItemsWhenItIsShownAndWhenToldTo) {
    platform::MemoryPreviewPanel panel;
    const auto names = std::make_shared<Names>(std::vector<std::string>{"a", "b"});
    panel.setDelegate(names);
    panel.setDataSource(names);
    EXPECT_EQ(panel.delegate(), names);
    EXPECT_TRUE(panel.items().empty());
    panel.makeKeyAndOrderFront(nullptr);
    EXPECT_TRUE(panel.isVisible());
    EXPECT_THAT(panel.items(), testing::ElementsAre(fileURL("/a"), fileURL("/b")));
    names->names = {"c"};
    EXPECT_EQ(panel.items().size(), 2U);
    panel.askDataSource();
    EXPECT_THAT(panel.items(), testing::ElementsAre(fileURL("/c")));
}

TEST(MemoryPreviewPanel, keepsNobodyAliveAndShowsNothingWithoutADataSource) {
    platform::MemoryPreviewPanel panel;
    auto names = std::make_shared<Names>(std::vector<std::string>{"a"});
    const std::weak_ptr<Names> watched = names;
    panel.setDelegate(names);
    panel.setDataSource(names);
    names.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(panel.delegate(), nullptr);
    panel.makeKeyAndOrderFront(nullptr);
    EXPECT_TRUE(panel.isVisible());
    EXPECT_TRUE(panel.items().empty());
}

} // namespace
} // namespace tolvane::tests
