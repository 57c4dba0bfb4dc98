#include "tests/support/ResolverWindow.h"

#include "resolver/TRWindow.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

namespace tolvane::tests {

using platform::Dictionary;

ResolverWindow::ResolverWindow() {
    bookmarks.stored = bytesOf("stored bookmark");
    bookmarks.resolved = platform::ResolvedBookmark{url, false};
    properties.answer = Dictionary{
        {"NSURLBookmarkAllPropertiesKey", Dictionary{{"NSURLNameKey", "notes.txt"}}},
        {"NSURLBookmarkDetailedDescription", "first line\nsecond line"}};
    fileManager.answer =
        Dictionary{{"NSFileSystemNumber", std::uint64_t{5}}, {"NSFileSystemFileNumber", std::uint64_t{123}}};
    bundle.storyboard("Main").addWindowScene(
        "Bookmark Resolver Window",
        [this](const platform::Coder& coder) {
            return resolver::TRViewController::initWithCoder(coder, resolverSources());
        },
        [] {
            return resolver::TRWindow::initWithContentRect(
                {0, 0, 600, 400}, platform::windowStyleMaskTitled, platform::BackingStore::buffered, true);
        });
}

resolver::ResolverSources ResolverWindow::resolverSources() {
    return {
        bookmarks,
        properties.reader(),
        fileManager,
        openPanels,
        appleScripts,
        previewPanels,
        defaults,
        [this](std::span<const std::byte> stored, std::span<const std::byte> found) {
            comparedWith.emplace_back(
                platform::Data(stored.begin(), stored.end()), platform::Data(found.begin(), found.end()));
            return comparedFacts;
        },
        [this](std::span<const std::byte> /*bookmark*/) {
            return salvaged ? platform::Result<std::string>(*salvaged)
                            : std::unexpected(platform::posixError(5));
        }};
}

void ResolverWindow::open() {
    windowController_ = std::dynamic_pointer_cast<platform::WindowController>(
        bundle.storyboardWithName("Main")->instantiateControllerWithIdentifier("Bookmark Resolver Window"));
    controller_ =
        std::dynamic_pointer_cast<resolver::TRViewController>(windowController_->contentViewController());
    windowController_->showWindow();
}

void ResolverWindow::perform(std::string_view selector) const {
    const auto action = controller_->actionForSelector(selector);
    ASSERT_TRUE(action) << selector;
    action(nullptr);
}

void ResolverWindow::showAgain() {
    window().orderOut();
    window().makeKeyAndOrderFront();
}

void ResolverWindow::letGo() {
    windowController_->close();
    windowController_.reset();
    controller_.reset();
}

void ResolverWindow::paste(std::string text) const {
    controller_->inputTextbox->textStorage()->setAttributedString({std::move(text), {}});
}

void ResolverWindow::analyse(std::string text) const {
    paste(std::move(text));
    perform("analyseButton:");
}

void ResolverWindow::resolve(std::string text) const {
    paste(std::move(text));
    perform("resolveButton:");
}

} // namespace tolvane::tests
