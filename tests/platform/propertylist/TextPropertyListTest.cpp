#include "platform/propertylist/PropertyListReaders.h"
#include "tests/platform/propertylist/Reading.h"

namespace tolvane::platform {
namespace {

using namespace tests;

TEST(TextPropertyList, isATextDataAnArrayADictionaryOrEntries) {
    expectValues(
        PropertyListForm::text,
        {{"\"a b\"", "a b"},
         {" 'a' // b", "a"},
         {"(/usr//lib, a/ /*b*/, -1.5, $x:y_Z0)", Array{"/usr//lib", "a/", "-1.5", "$x:y_Z0"}},
         {"''", ""},
         {"()", Array{}},
         {"(a)", Array{"a"}},
         {"(a,b,)", Array{"a", "b"}},
         {"( /*a*/ b /**/ , // c\n (d) )", Array{"b", Array{"d"}}},
         {"{}", Dictionary{}},
         {"{a=b;'c d' = (e);}", Dictionary{{"a", "b"}, {"c d", Array{"e"}}}},
         {"{a=b;a=c;}", Dictionary{{"a", "c"}}},
         {"a=b;", Dictionary{{"a", "b"}}},
         {"\"a\" = {b = c;}; d=<>;\n", Dictionary{{"a", Dictionary{{"b", "c"}}}, {"d", Data{}}}},
         {"<0f B\nd>", Data{std::byte{0x0F}, std::byte{0xBD}}}});
}

TEST(TextPropertyList, hasEscapesWithinQuotes) {
    expectValues(
        PropertyListForm::text, {{R"("\a\b\f\n\r\t\v\"\'\\")", "\a\b\f\n\r\t\v\"'\\"},
                                 {"'\\\n'", "\n"},
                                 {"\"a\nb'ü\"", "a\nb'ü"},
                                 {R"('\U20ac\U41,\UFc')", "€A,ü"},
                                 {R"('\U20ac0')", "€0"},
                                 {R"('\Ud83d\Ude00\Ud83d.\Ude00')", "😀\uFFFD.\uFFFD"},
                                 {R"('\101\7\60a\341\2011')", "A\a0aÆÀ1"},
                                 {R"('\0')", std::string(1, '\0')}});
}

TEST(TextPropertyList, isRefusedForItsFault) {
    expectFaults(
        {{"// a", 4, "a value"},
         {"a", 1, "'=' after a key"},
         {"'a' b", 4, "'=' after a key"},
         {"a = b", 5, "';' after an entry"},
         {"a = ;", 4, "a value"},
         {"a = b; c", 8, "'=' after a key"},
         {"a = b; (c)", 7, "the end of the list"},
         {"a;", 1, "'=' after a key"},
         {"{ a; }", 3, "'=' after a key"},
         {"{ (a) = b; }", 2, "a key or '}'"},
         {"{ a = b;", 8, "a key or '}'"},
         {"{} a", 3, "the end of the list"},
         {"(a b)", 3, "',' or ')' after an element"},
         {"(a", 2, "',' or ')' after an element"},
         {"(", 1, "a value"},
         {"(,)", 1, "a value"},
         {"(ü)", 1, "a value"},
         {"(a) b", 4, "the end of the list"},
         {"(<0>)", 3, "two hexadecimal digits for each byte"},
         {"(<0g>)", 3, "two hexadecimal digits for each byte"},
         {"(<*I5>)", 2, "two hexadecimal digits for each byte"},
         {"(<00", 4, "two hexadecimal digits for each byte"},
         {"<00> a", 5, "the end of the list"},
         {"('a)", 1, "a text whose quotes are closed"},
         {"('a\\')", 1, "a text whose quotes are closed"},
         {"'\\", 1, "an escape"},
         {"'\\x'", 1, "an escape"},
         {"'\\U'", 3, "a hexadecimal digit after \\U"},
         {"'\\U-1'", 3, "a hexadecimal digit after \\U"},
         {"'\\376'", 2, "a character of NextStep"},
         {"'\\400'", 2, "a character of NextStep"},
         {"'a\xC3'", 2, "text in UTF-8"},
         {"(a, /* b", 4, "a comment that is closed"},
         {"/*/", 0, "a comment that is closed"}});
}

TEST(TextPropertyList, isNestedUpToALimit) {
    EXPECT_TRUE(readList(copiesOf("(", 512) + copiesOf(")", 512)));
    const PropertyListFault fault{512, "containers at most 512 deep"};
    EXPECT_EQ(listFault(copiesOf("(", 513) + copiesOf(")", 513)), fault);
    EXPECT_EQ(listFault(copiesOf("(", 1'000'000)), fault);
    EXPECT_EQ(listFault(copiesOf("{a=", 1'000'000)), (PropertyListFault{3 * 512, fault.expected}));
    EXPECT_EQ(listFault(copiesOf("a={", 1'000)), (PropertyListFault{3 * 512 + 2, fault.expected}));
}

} // namespace
} // namespace tolvane::platform
