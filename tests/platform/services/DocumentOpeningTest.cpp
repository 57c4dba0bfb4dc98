#include "platform/services/DocumentOpening.h"

#include "platform/model/Document.h"
#include "tests/support/NumberedItems.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tolvane::platform {
namespace {

class Journal final : public Document {
public:
    bool readFromURL(const URL& url, std::string_view /*typeName*/, Error* error) override {
        steps += "read " + url.path();
        if (!readable && error != nullptr) {
            *error = posixError(EIO);
        }
        return readable;
    }
    void makeWindowControllers() override { steps += ", windows"; }

    std::string steps;
    bool readable = true;
};

TEST(IdentifiedURL, keepsTheIdentityOfWhatIsThere) {
    tests::NumberedItems items;
    items.identities = {{"/a", 9}};
    const auto url = identifiedURL(URL::fileURLWithPath("/a"), items);
    ASSERT_TRUE(url);
    const Value* const identity = url->keptResourceValue(NSURLFileResourceIdentifierKey);
    ASSERT_NE(identity, nullptr);
    EXPECT_EQ(*identity, Value(Data(16, std::byte{9})));
    EXPECT_EQ(identifiedURL(URL::fileURLWithPath("/nowhere"), items).error().code, ENOENT);
}

TEST(IdentifiedURL, dropsAFinalSlashOnlyWhereItChangesNothing) {
    tests::NumberedItems items;
    items.identities = {{"/f", 1}, {"/f/", 1}, {"/link", 2}, {"/link/", 3}, {"/", 4}};
    EXPECT_EQ(identifiedURL(URL::fileURLWithPath("/f/"), items)->path(), "/f");
    EXPECT_EQ(identifiedURL(URL::fileURLWithPath("/link/"), items)->path(), "/link/");
    EXPECT_EQ(identifiedURL(URL::fileURLWithPath("/"), items)->path(), "/");
}

TEST(OpenDocument, readsBeforeItMakesWindows) {
    const auto document = std::make_shared<Journal>();
    ASSERT_TRUE(openDocument(*document, URL::fileURLWithPath("/a")));
    EXPECT_EQ(document->steps, "read /a, windows");
    EXPECT_EQ(document->fileURL(), URL::fileURLWithPath("/a"));
}

TEST(OpenDocument, makesNoWindowsForWhatCannotBeRead) {
    const auto document = std::make_shared<Journal>();
    document->readable = false;
    const auto opened = openDocument(*document, URL::fileURLWithPath("/a"));
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().code, EIO);
    EXPECT_EQ(document->steps, "read /a");
}

} // namespace
} // namespace tolvane::platform
