#include "platform/propertylist/PropertyList.h"

#include "tests/platform/propertylist/Reading.h"
#include "tests/support/PropertyListWriters.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {
namespace {

using namespace tests;
using namespace std::string_literals;

TEST(PropertyList, isRecognisedByItsContent) {
    for (const auto& [bytes, form] :
         {std::pair<std::string_view, PropertyListForm>{"<plist><array/></plist>", PropertyListForm::xml},
          {" \n<data>AAEC</data>", PropertyListForm::xml},
          {"<date>2024-08-09T18:27:02Z</date>", PropertyListForm::xml},
          {"<dict/>", PropertyListForm::xml},
          {"\xEF\xBB\xBF<true/>", PropertyListForm::xml},
          {"<fade DADA>", PropertyListForm::text},
          {"<>", PropertyListForm::text},
          {"\xEF\xBB\xBF\n{}", PropertyListForm::text},
          {"// <plist/>\n()", PropertyListForm::text}}) {
        const auto list = readList(bytes);
        ASSERT_TRUE(list) << bytes << ": " << testing::PrintToString(list.error());
        EXPECT_EQ(list->form, form) << bytes;
    }
}

TEST(PropertyList, isNoneWithoutAnythingToRecognise) {
    EXPECT_EQ(listFault(""), (PropertyListFault{0, "a value"}));
    EXPECT_EQ(listFault(" \n"), (PropertyListFault{2, "a value"}));
    EXPECT_EQ(listFault("\0\0\0"s), (PropertyListFault{0, "a value"}));
    EXPECT_EQ(listFault("[]"), (PropertyListFault{0, "a value"}));
    EXPECT_EQ(listFault("hello"), (PropertyListFault{5, "'=' after a key"}));
    EXPECT_EQ(listFault("Not found"), (PropertyListFault{4, "'=' after a key"}));
    EXPECT_EQ(
        listFault("<html><body>Not found</body></html>"),
        (PropertyListFault{0, "an element of property lists"}));
    EXPECT_EQ(listFault("<"), (PropertyListFault{0, "well-formed XML (unclosed token)"}));
    EXPECT_EQ(listFault("bplist"), (PropertyListFault{0, R"(the letters "bplist00")"}));
}

TEST(PropertyList, isRefusedUnreadBeyondItsLargestSize) {
    // One object, and then fill up to the offset table.
    constexpr std::size_t behindObjects = 1 + 32;
    BinaryObjects objects{
        .objects = {std::string(mostPropertyListBytes - 8 - behindObjects, '\x09')}, .offsetSize = 1};
    std::string list = objects.list();
    ASSERT_EQ(list.size(), mostPropertyListBytes);
    EXPECT_EQ(listValue(list, PropertyListForm::binary), Value(true));
    list += '\0';
    EXPECT_EQ(listFault(list), (PropertyListFault{mostPropertyListBytes, "the end of the list"}));
}

} // namespace
} // namespace tolvane::platform
