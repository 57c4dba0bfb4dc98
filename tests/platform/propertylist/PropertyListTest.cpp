#include "platform/propertylist/PropertyList.h"

#include "tests/platform/propertylist/Reading.h"
#include "tests/support/PropertyListWriters.h"

namespace tolvane::platform {
namespace {

using namespace tests;
using namespace std::string_view_literals;

TEST(PropertyList, isRecognisedByItsContent) {
    for (const std::string_view bytes :
         {"<plist><array/></plist>", " \n<data>AAEC</data>", "<date>2024-08-09T18:27:02Z</date>", "<dict/>",
          "\xEF\xBB\xBF<true/>"}) {
        listValue(bytes, PropertyListForm::xml);
    }
    for (const std::string_view bytes : {"<fade DADA>", "<>", "\xEF\xBB\xBF\n{}", "// <plist/>\n()"}) {
        listValue(bytes, PropertyListForm::text);
    }
}

TEST(PropertyList, isNoneWithoutAnythingToRecognise) {
    expectFaults(
        {{"", 0, "a value"},
         {" \n", 2, "a value"},
         {"\0\0\0"sv, 0, "a value"},
         {"[]", 0, "a value"},
         {"Not found", 4, "'=' after a key"},
         {"<html><body>Not found</body></html>", 0, "an element of property lists"},
         {"<", 0, "well-formed XML (unclosed token)"},
         {"bplist", 0, R"(the letters "bplist00")"}});
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
