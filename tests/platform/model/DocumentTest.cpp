#include "platform/model/Document.h"

#include "platform/model/WindowController.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace tolvane::platform {
namespace {

class Content final : public ContentController {
public:
    Content() : ContentController(std::nullopt, nullptr) {}
    void viewDidAppear() override {
        ++appearances;
        if (reaction) {
            reaction();
        }
    }
    int appearances = 0;
    std::function<void()> reaction;
};

class TwoWindows final : public Document {
public:
    bool readFromURL(const URL&, std::string_view, Error*) override { return true; }
    void makeWindowControllers() override {
        addWindowController(WindowController::make(std::make_shared<Window>(), first));
        addWindowController(WindowController::make(std::make_shared<Window>(), second));
    }
    std::shared_ptr<Content> first = std::make_shared<Content>();
    std::shared_ptr<Content> second = std::make_shared<Content>();
};

std::shared_ptr<TwoWindows> makeDocument(std::string_view path) {
    auto document = std::make_shared<TwoWindows>();
    document->setFileURL(URL::fileURLWithPath(path));
    document->makeWindowControllers();
    return document;
}

TEST(Document, isNamedAfterItsFileAndUnedited) {
    TwoWindows document;
    EXPECT_EQ(document.displayName(), "");
    EXPECT_EQ(document.fileURL(), std::nullopt);
    EXPECT_FALSE(document.isDocumentEdited());
    document.setFileURL(URL::fileURLWithPath("/f/a b.txt"));
    EXPECT_EQ(document.displayName(), "a b.txt");
    EXPECT_EQ(document.fileURL(), URL::fileURLWithPath("/f/a b.txt"));
    document.setFileURL(URL::fileURLWithPath("/"));
    EXPECT_EQ(document.displayName(), "/");
}

TEST(Document, titlesItsWindowsWithTextThatCanBeShown) {
    const auto document = makeDocument("/f/a\xFF\xE2\x82z");
    ASSERT_EQ(document->windowControllers().size(), 2U);
    for (const auto& controller : document->windowControllers()) {
        EXPECT_EQ(controller->window()->title(), "a\uFFFD\uFFFDz");
        EXPECT_EQ(controller->document(), document);
    }
}

TEST(Document, showsEveryWindow) {
    const auto document = makeDocument("/a");
    document->showWindows();
    document->showWindows();
    EXPECT_EQ(document->first->appearances, 1);
    EXPECT_EQ(document->second->appearances, 1);
}

TEST(Document, closesItsWindowsAndReleasesTheirControllers) {
    const auto document = makeDocument("/a");
    const std::weak_ptr<WindowController> controller = document->windowControllers().front();
    const auto window = document->windowControllers().front()->window();
    document->showWindows();
    document->close();
    EXPECT_TRUE(document->windowControllers().empty());
    EXPECT_TRUE(controller.expired());
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(window->windowController(), nullptr);
    document->close();
    document->showWindows();
    EXPECT_FALSE(window->isVisible());
}

TEST(Document, showsNoFurtherWindowOnceWhatAppearsHasClosedIt) {
    auto document = makeDocument("/a");
    const auto first = document->first;
    const auto second = document->second;
    first->reaction = [&] {
        document->close();
        document.reset();
    };
    document->showWindows();
    EXPECT_EQ(document, nullptr);
    EXPECT_EQ(first->appearances, 1);
    EXPECT_EQ(second->appearances, 0);
    EXPECT_FALSE(second->view().window()->isVisible());
}

TEST(Document, notifiesTheDelegateOnceWhenThatClosesTheDocument) {
    struct ClosingDelegate final : WindowDelegate {
        void windowWillClose() override {
            ++calls;
            document->close();
        }
        Document* document = nullptr;
        int calls = 0;
    };
    const auto document = makeDocument("/a");
    const auto delegate = std::make_shared<ClosingDelegate>();
    delegate->document = document.get();
    const auto window = document->windowControllers().front()->window();
    window->setDelegate(delegate);
    document->showWindows();
    window->close();
    EXPECT_EQ(delegate->calls, 1);
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(document->windowControllers().empty());
}

} // namespace
} // namespace tolvane::platform
