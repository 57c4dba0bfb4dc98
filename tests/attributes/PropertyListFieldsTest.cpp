#include "attributes/PropertyListFields.h"

#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using platform::Array;
using platform::Dictionary;
using platform::Value;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* openWith = "com.apple.LaunchServices.OpenWith";

std::string written(const Value& value) {
    return binaryPropertyList(value).value();
}

platform::Data dataOf(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

TEST(PropertyListFields, haveThePathOfTheirKeys) {
    const Value value = Dictionary{
        {"bundleidentifier", "org.example.editor"},
        {"nested", Dictionary{{"a", Array{true, "x"}}, {"b", Dictionary{}}}},
        {"version", std::int64_t{0}}};
    expectLines(
        openWith, written(value),
        {"bundleidentifier: org.example.editor", "nested › a: yes", "nested › a: x", "nested › b: none",
         "version: 0"});
}

TEST(PropertyListFields, ofASingleValueHaveAName) {
    expectLines(openWith, written("x"), {"Value: x"});
    expectLines(openWith, written(Array{"x"}), {"Item: x"});
    expectRefused(openWith, {"bplist00 and more"});
}

TEST(PropertyListFields, takeListsWithinDataApart) {
    const std::string inner = written(Dictionary{{"k", "v"}});
    expectLines(
        openWith, written(Dictionary{{"d", dataOf(inner)}, {"e", dataOf("xy")}}),
        {"d: A property list, the form in which programs of Macs keep values.", "d › k: v", "e: 7879"});
}

TEST(PropertyListFields, stopTakingApartAtADepth) {
    std::string value = written("core");
    for (unsigned i = 0; i < 10; ++i) {
        value = written(Dictionary{{"d", dataOf(value)}});
    }
    const std::vector<std::string> lines = explainedLines(openWith, value);
    EXPECT_THAT(lines.back(), HasSubstr("62706c697374"));
}

TEST(PropertyListFields, stopAtALevel) {
    Value value = "core";
    for (unsigned i = 0; i < attributes::deepestListLevel; ++i) {
        value = Value(Array{value});
    }
    expectLines(openWith, written(value), {"Item: core"});
    const auto deeper = explained(openWith, written(Value(Array{value})));
    EXPECT_THAT(deeper.fields, testing::IsEmpty());
    EXPECT_THAT(deeper.notes, ElementsAre("Item… lies deeper than 32 levels"));
}

TEST(PropertyListFields, haveDatesToTheMicrosecond) {
    expectLines(
        openWith, written(platform::Date(499528521.0456029772)), {"Value: 2016-10-30 13:55:21.045603 UTC"});
    expectLines(openWith, written(platform::Date(0.9999999)), {"Value: 2001-01-01 00:00:01 UTC"});
}

} // namespace
} // namespace tolvane::tests
