#include "platform/propertylist/XMLPropertyListValues.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

namespace tolvane::platform {
namespace {

TEST(IntegerInPropertyList, hasSignsAndBases) {
    using Limits = std::numeric_limits<std::int64_t>;
    for (const auto& [text, number] :
         {std::pair<std::string_view, std::int64_t>{"0", 0},
          {" \t\r\n42 ", 42},
          {"+7", 7},
          {"-0", 0},
          {"007", 7},
          {"0x1F", 31},
          {"-0Xff", -255},
          {"+0x0", 0},
          {"9223372036854775807", Limits::max()},
          {"0x7FFFFFFFFFFFFFFF", Limits::max()},
          {"-9223372036854775808", Limits::min()},
          {"-0x8000000000000000", Limits::min()}}) {
        EXPECT_EQ(integerInPropertyList(text), Value(number)) << text;
    }
    EXPECT_EQ(integerInPropertyList("9223372036854775808"), Value(std::uint64_t{1} << 63U));
    EXPECT_EQ(integerInPropertyList("0xffffffffffffffff"), Value(std::numeric_limits<std::uint64_t>::max()));
    for (const std::string_view text :
         {"", " ", "-", "+", "--1", "+-1", "1.0", "1e3", "0x", "0x-1", "0xg", "1 2", "a",
          "18446744073709551616", "-9223372036854775809", "0x10000000000000000", "\v1"}) {
        EXPECT_EQ(integerInPropertyList(text), std::nullopt) << text;
    }
}

TEST(RealInPropertyList, isADoubleOfAnyKind) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const auto& [text, number] :
         {std::pair<std::string_view, double>{"0", 0},
          {" -1.5e3\n", -1500},
          {"+.5", 0.5},
          {"1.", 1},
          {"0.1", 0.1},
          {"1.7976931348623157e308", std::numeric_limits<double>::max()},
          {"inf", infinity},
          {"-INF", -infinity},
          {"+Infinity", infinity}}) {
        EXPECT_EQ(realInPropertyList(text), Value(number)) << text;
    }
    const auto isNan = [](std::string_view text) {
        return std::isnan(*realInPropertyList(text)->as<double>());
    };
    EXPECT_TRUE(isNan("nan"));
    EXPECT_TRUE(isNan("+NaN"));
    EXPECT_TRUE(std::signbit(*realInPropertyList("-0")->as<double>()));
    for (const std::string_view text :
         {"", ".", "-", "--1", "+-1", "e5", "1,5", "1.5x", "1 2", "nan(1)", "0x1p3", "infinite", "1e999"}) {
        EXPECT_EQ(realInPropertyList(text), std::nullopt) << text;
    }
}

TEST(DateInPropertyList, isAMomentThatExists) {
    for (const auto& [text, seconds] :
         {std::pair<std::string_view, std::int64_t>{"1970-01-01T00:00:00Z", 0},
          {" 2024-08-09T18:27:02Z\n", 1'723'228'022},
          {"2024-02-29T23:59:59Z", 1'709'251'199},
          {"0001-01-01T00:00:00Z", -62'135'596'800},
          {"0000-03-01T00:00:00Z", -62'162'035'200},
          {"-0001-12-31T00:00:00Z", -62'167'305'600},
          {"10000-01-01T00:00:00Z", 253'402'300'800}}) {
        EXPECT_EQ(dateInPropertyList(text), Value(Date::fromUnixTime(seconds, 0))) << text;
    }
    for (const std::string_view text :
         {"",
          "Z",
          "2024-08-09",
          "2024-08-09T18:27:02",
          "2024-08-09 18:27:02Z",
          "2024-08-09T18:27:02.5Z",
          "2024-08-09T18:27:02z",
          "2024-8-9T18:27:02Z",
          "24-08-09T18:27:02Z",
          "2023-02-29T00:00:00Z",
          "2024-00-09T00:00:00Z",
          "2024-13-09T00:00:00Z",
          "2024-08-00T00:00:00Z",
          "2024-08-32T00:00:00Z",
          "2024-08-09T24:00:00Z",
          "2024-08-09T18:60:00Z",
          "2024-08-09T18:27:60Z",
          "2024-08-09T-8:27:02Z",
          "+2024-08-09T18:27:02Z",
          "99999-01-01T00:00:00Z",
          "100000-01-01T00:00:00Z"}) {
        EXPECT_EQ(dateInPropertyList(text), std::nullopt) << text;
    }
}

TEST(DataInPropertyList, mayHaveWhiteSpaceAnywhere) {
    const Data bytes{std::byte{0}, std::byte{1}, std::byte{2}, std::byte{255}};
    EXPECT_EQ(dataInPropertyList("AAEC/w=="), Value(bytes));
    EXPECT_EQ(dataInPropertyList("\n\tA A\r\nEC/\tw=\n="), Value(bytes));
    EXPECT_EQ(dataInPropertyList(" \n"), Value(Data()));
    for (const std::string_view text : {"AAEC/w", "AAEC/w=", "AAEC/x==", "AA-_", "====", "AAEC/w==AA"}) {
        EXPECT_EQ(dataInPropertyList(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace tolvane::platform
