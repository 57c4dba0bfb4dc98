#include "tests/support/DetailsWindow.h"

#include "platform/model/WindowController.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace tolvane::tests {

using platform::Dictionary;

ScriptedFile::ScriptedFile() {
    resources.values = {
        {"NSURLTotalFileSizeKey", std::int64_t{1'300}},
        {"NSURLFileSizeKey", std::int64_t{1'000}},
        {"NSURLTypeIdentifierKey", "public.plain-text"},
        {"NSURLFileResourceIdentifierKey", platform::Data(16, std::byte{1})}};
    attributes.attributes = {{"user.note", "hello"}, {"user.x", ""}};
    fileManager.answer = Dictionary{
        {"NSFileSize", std::uint64_t{1'001}},
        {"NSFilePosixPermissions", std::uint16_t{0644}},
        {"NSFileSystemNumber", std::uint64_t{2049}},
        {"NSFileSystemFileNumber", std::uint64_t{131'077}},
        {"NSFileOwnerAccountName", "demo"},
        {"NSFileOwnerAccountID", std::uint32_t{1000}},
        {"NSFileGroupOwnerAccountName", "staff"},
        {"NSFileGroupOwnerAccountID", std::uint32_t{50}},
        {"NSFileCreationDate", platform::Date(0)},
        {"NSFileModificationDate", platform::Date(744'920'822.5517)},
        {"NSFileType", "NSFileTypeRegular"},
        {"NSFileReferenceCount", std::uint32_t{2}},
        {"NSFileExtendedAttributes",
         Dictionary{{"user.note", bytesOf("hello")}, {"user.x", platform::Data{}}}},
    };
    bookmarks.made = bytesOf("bookmark");
    bookmarks.resolved = platform::ResolvedBookmark{url, false};
}

DetailsWindow::DetailsWindow() {
    bundle.storyboard("Main").addWindowScene(
        "Document Window Controller", [this](const platform::Coder& coder) {
            return details::ViewController::initWithCoder(coder, detailsSources());
        });
}

details::DetailsSources DetailsWindow::detailsSources() {
    return {
        resources,
        bookmarks,
        session,
        textFiles,
        savePanels,
        pasteboard,
        defaults,
        documents,
        {.explanations = {.files = fileSources(), .contents = *contents, .facts = &statusFacts},
         .sharedContents = contents,
         .tasks = &tasks}};
}

void DetailsWindow::open() {
    makeWindow();
    readAgain();
    document_->showWindows();
}

void DetailsWindow::makeWindow() {
    document_ = std::make_shared<inspect::Document>(fileSources(), bundle);
    document_->setFileURL(url);
    document_->makeWindowControllers();
    controller_ = std::dynamic_pointer_cast<details::ViewController>(
        document_->windowControllers().front()->contentViewController());
}

void DetailsWindow::readAgain() {
    document_->readFromURL(url, "public.item", nullptr);
}

void DetailsWindow::perform(std::string_view selector) const {
    const auto action = controller_->actionForSelector(selector);
    ASSERT_TRUE(action) << selector;
    action(nullptr);
}

void DetailsWindow::showAgain() {
    window().orderOut();
    window().makeKeyAndOrderFront();
}

} // namespace tolvane::tests
