#include "details/ItemChange.h"

#include "platform/services/DocumentOpening.h"
#include "tests/support/ScriptedSources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

namespace tolvane::tests {
namespace {

using details::changeOf;
using details::ItemChange;
using platform::Data;
using platform::Date;
using platform::URL;
using testing::ElementsAre;

class ItemChangeTest : public testing::Test {
protected:
    ItemChangeTest() {
        resources.values = {
            {"NSURLFileResourceIdentifierKey", Data(16, std::byte{1})},
            {"NSURLCreationDateKey", Date(10)},
            {"NSURLAttributeModificationDateKey", Date(20)}};
        url = platform::identifiedURL(URL::fileURLWithPath("/a"), resources).value();
        log.clear();
    }

    ItemChange change() const { return changeOf(url, resources); }

    CallLog log;
    ScriptedURLResources resources{log};
    URL url = URL::fileURLWithPath("/a");
};

TEST_F(ItemChangeTest, isNoneWhileTheItemIsTheSame) {
    EXPECT_EQ(change(), ItemChange::none);
    EXPECT_EQ(details::noteOf(ItemChange::none), "");
    EXPECT_THAT(
        log, ElementsAre("resourceValues NSURLFileResourceIdentifierKey NSURLCreationDateKey "
                         "NSURLAttributeModificationDateKey"))
        << "one look, and nothing else";
}

TEST_F(ItemChangeTest, isSeenByTheDateOfTheLastChangeAndAnotherItemByItsNumberOrCreation) {
    resources.values.set("NSURLAttributeModificationDateKey", Date(21));
    EXPECT_EQ(change(), ItemChange::changed);
    resources.values.set("NSURLFileResourceIdentifierKey", Data(16, std::byte{2}));
    EXPECT_EQ(change(), ItemChange::replaced) << "another number";
    resources.values.set("NSURLFileResourceIdentifierKey", Data(16, std::byte{1}));
    resources.values.set("NSURLCreationDateKey", Date(21));
    EXPECT_EQ(change(), ItemChange::replaced) << "the same number, which another item got";
}

TEST_F(ItemChangeTest, tellsWhatIsGoneFromWhatCannotBeSeen) {
    resources.failingKey = "";
    for (const int code : {ENOENT, ENOTDIR}) {
        resources.failure = platform::posixError(code);
        EXPECT_EQ(change(), ItemChange::gone) << code;
    }
    resources.failure = platform::posixError(EACCES);
    EXPECT_EQ(change(), ItemChange::inaccessible);
    resources.failure = platform::cocoaError(ENOENT, "of another domain");
    EXPECT_EQ(change(), ItemChange::inaccessible);
}

TEST_F(ItemChangeTest, isNotSeenWithoutMemory) {
    EXPECT_EQ(changeOf(URL::fileURLWithPath("/a"), resources), ItemChange::none);
}

TEST_F(ItemChangeTest, isNotSeenInWhatTheFileSystemNeverKept) {
    resources.values = {{"NSURLFileResourceIdentifierKey", Data(16, std::byte{1})}};
    url = platform::identifiedURL(URL::fileURLWithPath("/a"), resources).value();
    resources.values.set("NSURLCreationDateKey", Date(21));
    EXPECT_EQ(change(), ItemChange::none);
}

} // namespace
} // namespace tolvane::tests
