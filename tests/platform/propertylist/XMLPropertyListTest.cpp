#include "platform/propertylist/PropertyListReaders.h"
#include "tests/platform/propertylist/Reading.h"

namespace tolvane::platform {
namespace {

using namespace tests;

TEST(XMLPropertyList, hasOneValueOnTop) {
    for (const auto& [element, value] :
         {std::pair<std::string, Value>{"<string>a</string>", "a"},
          {"<string/>", ""},
          {"<string> \n</string>", " \n"},
          {"<array/>", Array{}},
          {"<dict> </dict>", Dictionary{}},
          {"<data/>", Data{}},
          {"<true></true>", true},
          {"<false x='y'> </false>", false},
          {"<integer>5</integer>", std::int64_t{5}},
          {"<string><!-- a -->b<?c d?>&#x65;<![CDATA[&]]></string>", "be&"}}) {
        EXPECT_EQ(listValue(element), value) << element;
        EXPECT_EQ(listValue("<plist version='9'>\n" + element + "\n</plist>\n"), value) << element;
    }
}

TEST(XMLPropertyList, keepsTheLastOfSeveralValuesOfAKey) {
    EXPECT_EQ(
        listValue("<dict><key>a</key><true/><key/><false/><key>a</key><string>b</string></dict>"),
        Value(Dictionary{{"", false}, {"a", "b"}}));
}

TEST(XMLPropertyList, isRefusedForItsFault) {
    expectFaults(
        {{"<plist/>", 8, "a value"},
         {"<plist> </plist>", 8, "a value"},
         {"<plist><true/><true/></plist>", 14, "one value alone in the list"},
         {"<plist><key>a</key></plist>", 7, "one value alone in the list"},
         {"<key>a</key>", 0, "a value"},
         {"<array><key>a</key></array>", 7, "a value"},
         {"<array><plist/></array>", 7, "an element of property lists"},
         {"<array><null/></array>", 7, "an element of property lists"},
         {"<Array/>", 0, "an element of property lists"},
         {"<dict><key>a</key></dict>", 18, "a value for the key before"},
         {"<dict><key>a</key><key>b</key></dict>", 18, "a value for the key before"},
         {"<string>a<true/></string>", 9, "no element within a value"},
         {"<true><true/></true>", 6, "no element within a value"},
         {"<array>a</array>", 7, "no text outside of values"},
         {"<true>a</true>", 6, "no text outside of values"},
         {"<plist>&amp;</plist>", 7, "no text outside of values"},
         {"<integer>a</integer>", 0, "a whole number of 64 bits"},
         {"<array><integer/></array>", 7, "a whole number of 64 bits"},
         {"<real>a</real>", 0, "a fraction"},
         {"<date>today</date>", 0, "a date as YYYY-MM-DDTHH:MM:SSZ"},
         {"<data>A</data>", 0, "data in base-64"},
         {"<array></dict>", 9, "well-formed XML (mismatched tag)"},
         {"<true/>a", 7, "well-formed XML (junk after document element)"},
         {"<string>\xFF</string>", 8, "well-formed XML (not well-formed (invalid token))"},
         {"<string>&b;</string>", 8, "well-formed XML (undefined entity)"},
         {" <?xml version='1.0'?><true/>", 1,
          "well-formed XML (XML or text declaration not at start of entity)"},
         {"<?xml version='1.0' encoding='EBCDIC'?><true/>", 30, "well-formed XML (unknown encoding)"},
         {"<!DOCTYPE plist [<!ENTITY b SYSTEM 'b'>]><true/>", 38, "a document type without entities"}});
}

TEST(XMLPropertyList, isNestedUpToALimit) {
    const auto nested = [](std::size_t depth) {
        return "<plist>" + copiesOf("<array>", depth) + copiesOf("</array>", depth) + "</plist>";
    };
    EXPECT_TRUE(readList(nested(512)));
    const PropertyListFault fault{7 + 512 * 7, "containers at most 512 deep"};
    EXPECT_EQ(listFault(nested(513)), fault);
    EXPECT_EQ(listFault(nested(100'000)), fault);
    EXPECT_EQ(listFault("<plist>" + copiesOf("<array>", 200'000)), fault);
    EXPECT_EQ(
        listFault(copiesOf("<dict><key>a</key>", 50'000)),
        (PropertyListFault{512 * 18, "containers at most 512 deep"}));
}

TEST(XMLPropertyList, mayBeLongAndHaveManyElements) {
    const std::string text(900'000, 'a');
    EXPECT_EQ(listValue("<string>" + text + "</string>"), Value(text));
    const Value flags = listValue("<array>" + copiesOf("<true/>", 300'000) + "</array>");
    ASSERT_NE(flags.as<Array>(), nullptr);
    EXPECT_EQ(flags.as<Array>()->size(), 300'000U);
    std::string keys;
    for (int i = 0; i < 30'000; ++i) {
        keys += "<key>" + std::to_string(i) + "</key><true/>";
    }
    EXPECT_EQ(listValue("<dict>" + keys + "</dict>").as<Dictionary>()->size(), 30'000U);
}

} // namespace
} // namespace tolvane::platform
