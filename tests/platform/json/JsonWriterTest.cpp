#include "platform/json/JsonWriter.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>

namespace tolvane::tests {
namespace {

using platform::Array;
using platform::Date;
using platform::JsonWriter;
using platform::Value;

std::string writtenJson(const std::function<void(JsonWriter&)>& write, bool ascii = false) {
    std::string text;
    JsonWriter json([&text](std::string_view piece) { text += piece; }, ascii);
    write(json);
    json.finish();
    return text;
}

std::string valueText(const Value& value) {
    return writtenJson([&value](JsonWriter& json) { json.value(value); });
}

TEST(JsonWriter, putsCommasBetweenAndNowhereElse) {
    const std::string text = writtenJson([](JsonWriter& json) {
        json.beginObject().key("a").beginArray().endArray().key("b").beginArray();
        json.integer(1).beginObject().endObject().null().endArray();
        json.key("c").boolean(true).endObject();
    });
    EXPECT_EQ(text, R"({"a":[],"b":[1,{},null],"c":true})");
}

TEST(JsonWriter, writesIntegersExactly) {
    EXPECT_EQ(valueText(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(valueText(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(valueText(std::int8_t{-1}), "-1");
    EXPECT_EQ(valueText(std::uint8_t{65}), "65");
    EXPECT_EQ(valueText(true), "true");
}

TEST(JsonWriter, writesFractionsWithTheShortestDigitsThatReadBack) {
    EXPECT_EQ(valueText(0.1), "0.1");
    EXPECT_EQ(valueText(0.1F), "0.10000000149011612");
    EXPECT_EQ(valueText(252'423'995'392.0F), "252423995392.0");
    EXPECT_EQ(valueText(768'029'962.0), "768029962.0") << "it is no integer";
    EXPECT_EQ(valueText(700'000'000.0), "7e+08");
    EXPECT_EQ(valueText(-0.0), "-0.0");
    for (const double number : {1e300, 5e-324, 1.0 / 3, 768'029'962.382589, -1e22}) {
        EXPECT_EQ(nlohmann::json::parse(valueText(number)).get<double>(), number) << valueText(number);
        EXPECT_NE(valueText(number).find_first_of(".e"), std::string::npos);
    }
}

TEST(JsonWriter, namesNumbersThatJsonDoesNotHave) {
    EXPECT_EQ(valueText(std::nan("")), R"({"number":"nan"})");
    EXPECT_EQ(valueText(HUGE_VAL), R"({"number":"inf"})");
    EXPECT_EQ(valueText(-HUGE_VALF), R"({"number":"-inf"})");
}

// JsonPage has an example of every kind.
TEST(JsonWriter, distinguishesEveryOtherKindByAnObject) {
    EXPECT_EQ(valueText(platform::Data{}), R"({"data":""})");
    EXPECT_EQ(
        valueText(platform::Dictionary{{"data", "text"}, {"b", Array{Value(), "x"}}}),
        R"({"dictionary":{"b":[null,"x"],"data":"text"}})");
    EXPECT_EQ(valueText(Array{}), "[]");
}

TEST(JsonWriter, writesNoCalendarDateWhereThereIsNone) {
    EXPECT_EQ(valueText(Date(std::nan(""))), R"({"date":null,"seconds":"nan"})");
    EXPECT_EQ(valueText(Date(1e300)), R"({"date":null,"seconds":1e+300})");
    EXPECT_EQ(valueText(Date(-HUGE_VAL)), R"({"date":null,"seconds":"-inf"})");
}

TEST(JsonWriter, escapesTextsAsJsonRequiresAndBeyondAsciiIfAsked) {
    const auto text = [](JsonWriter& json) { json.text("a\"\\\n\x1B\u00E9\U0001F600\xFF"); };
    EXPECT_EQ(writtenJson(text), "\"a\\\"\\\\\\n\\u001b\u00E9\U0001F600\uFFFD\"");
    EXPECT_EQ(writtenJson(text, true), R"("a\"\\\n\u001b\u00e9\ud83d\ude00\ufffd")");
}

// Texts are read several characters at a time.
TEST(JsonWriter, escapesACharacterWhereverItStands) {
    const auto written = [](const std::string& text) {
        const std::string quoted = valueText(text);
        return quoted.substr(1, quoted.size() - 2);
    };
    for (int byte = 0; byte < 256; ++byte) {
        const std::string character(1, static_cast<char>(byte));
        const bool isPlain = byte >= 0x20 && byte <= 0x7F && character != "\"" && character != "\\";
        EXPECT_EQ(written(character) == character, isPlain) << byte;
        for (std::size_t place = 0; place < 20; ++place) {
            const std::string before(place, 'a');
            const std::string after(20 - place, '~');
            ASSERT_EQ(written(before + character + after), before + written(character) + after) << byte;
            ASSERT_EQ(written(before + character), before + written(character)) << byte;
        }
    }
}

TEST(JsonWriter, writesHexadecimalNumbersWithAsManyDigitsAsAskedFor) {
    const auto number = [](std::uint32_t given, std::size_t digits) {
        return writtenJson([&](JsonWriter& json) { json.hexNumber(given, digits); });
    };
    EXPECT_EQ(number(0x1004, 4), R"("0x1004")");
    EXPECT_EQ(number(1, 4), R"("0x0001")");
    EXPECT_EQ(number(0, 1), R"("0x0")");
    EXPECT_EQ(number(0xFFFF'FFFE, 4), R"("0xfffffffe")");
}

TEST(JsonWriter, holdsNoMoreThanAPiece) {
    std::string text;
    JsonWriter json([&text](std::string_view piece) { text += piece; }, false);
    json.beginArray();
    for (int i = 0; i < 100'000; ++i) {
        json.integer(i);
    }
    EXPECT_GT(text.size(), 400'000U) << "most of it is written already";
    json.endArray().finish();
    EXPECT_EQ(nlohmann::json::parse(text).size(), 100'000U);
}

} // namespace
} // namespace tolvane::tests
