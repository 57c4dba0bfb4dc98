#include "platform/values/DecimalNumber.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>
#include <memory>
#include <optional>
#include <string>

namespace tolvane {
namespace {

using platform::decimalNumber;

TEST(DecimalNumber, readsDigitsPointsAndExponents) {
    EXPECT_EQ(decimalNumber("0"), 0.0);
    EXPECT_EQ(decimalNumber("12"), 12.0);
    EXPECT_EQ(decimalNumber("-12.5"), -12.5);
    EXPECT_EQ(decimalNumber(".5"), 0.5);
    EXPECT_EQ(decimalNumber("5."), 5.0);
    EXPECT_EQ(decimalNumber("1e3"), 1000.0);
    EXPECT_EQ(decimalNumber("2.5E-3"), 0.0025);
    EXPECT_EQ(decimalNumber("1e+2"), 100.0);
    EXPECT_EQ(decimalNumber("745340822.1234567"), 745340822.1234567);
    EXPECT_EQ(decimalNumber("1.7976931348623157e308"), std::numeric_limits<double>::max());
    EXPECT_EQ(decimalNumber("2.2250738585072014e-308"), std::numeric_limits<double>::min());
}

TEST(DecimalNumber, keepsTheSignOfZero) {
    const auto zero = decimalNumber("-0.0");
    ASSERT_TRUE(zero);
    EXPECT_EQ(*zero, 0.0);
    EXPECT_TRUE(std::signbit(*zero));
    EXPECT_EQ(decimalNumber("0e5"), 0.0);
}

TEST(DecimalNumber, readsInfinityAndNaNInAnyCase) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(decimalNumber("inf"), infinity);
    EXPECT_EQ(decimalNumber("-Infinity"), -infinity);
    const auto nan = decimalNumber("NaN");
    ASSERT_TRUE(nan);
    EXPECT_TRUE(std::isnan(*nan));
}

TEST(DecimalNumber, takesNothingButAWholeNumberInADoublesRange) {
    for (const char* text :
         {"", "-", "--1", "+1", " 1", "1 ", "1,5", "1.2.3", "1e", "1e+", "1-2", "e5", ".", "0x10", "1f",
          "1\n", "infinit", "nan(1)", "one",
          // These are out of a double's range.
          "1e400", "-1e400", "1e-400"}) {
        EXPECT_EQ(decimalNumber(text), std::nullopt) << text;
    }
    EXPECT_EQ(decimalNumber(std::string("1\0", 2)), std::nullopt);
}

/// Writes the decimal point as a comma, as German does.
class CommaPoint final : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
};

TEST(DecimalNumber, doesNotDependOnTheLocale) {
    const std::locale german(std::locale::classic(), std::make_unique<CommaPoint>().release());
    const std::locale before = std::locale::global(german);
    EXPECT_EQ(decimalNumber("1.5"), 1.5);
    EXPECT_EQ(decimalNumber("1,5"), std::nullopt);
    std::locale::global(before);
}

} // namespace
} // namespace tolvane
