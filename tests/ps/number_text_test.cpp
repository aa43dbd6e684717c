// The number rule, against printf and the rule applied to its text.
#include "ps/number_text.h"

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <locale>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace zorvan::test {
namespace {

/// As "%f" prints it; not every C library tells the sign of what is no number.
std::string Printed(float value) {
    if (std::isnan(value)) {
        return std::signbit(value) ? "-nan" : "nan";
    }
    char text[kMaxNumberText];
    const int length = std::snprintf(text, sizeof text, "%f", static_cast<double>(value));
    return {text, static_cast<std::size_t>(length)};
}

/// The rule, step by step.
std::string TrimmedAndCut(float value) {
    const std::string printed = Printed(value);
    std::string text = printed;
    while (text.size() > 1 && text.back() == '0') {
        text.pop_back();
    }
    if (text.back() == '.') {
        text.pop_back();
    }
    if (text == "-0") {
        text = "0";
    }
    return printed.size() >= 32 ? text.substr(0, 31) : text;
}

std::string Fixed(float value) {
    char text[kMaxNumberText];
    return {text, WriteFixed(text, value)};
}

/// Compares without composing a message for each of millions of values; false at the first difference.
bool Agrees(float value) {
    const bool agrees = FormatReal(value) == TrimmedAndCut(value) && Fixed(value) == Printed(value);
    EXPECT_TRUE(agrees) << Printed(value) << " gives " << FormatReal(value) << " and " << Fixed(value);
    return agrees;
}

TEST(FormatReal, RemovesTrailingZerosAndADanglingPoint) {
    EXPECT_EQ(FormatReal(1.5F), "1.5");
    EXPECT_EQ(FormatReal(100.0F), "100");
    EXPECT_EQ(FormatReal(612.0F), "612");
    EXPECT_EQ(FormatReal(0.0F), "0");
    EXPECT_EQ(FormatReal(0.3333333F), "0.333333");
    EXPECT_EQ(FormatReal(0.1F), "0.1");
}

TEST(FormatReal, ShowsTheNearestFloatAndNotTheDecimalOfTheFile) {
    EXPECT_EQ(FormatReal(123.456F), "123.456001");
}

TEST(FormatReal, RoundsToZeroNeverToMinusZero) {
    EXPECT_EQ(FormatReal(-0.0000001F), "0");
    EXPECT_EQ(FormatReal(-0.0F), "0");
    EXPECT_EQ(FormatReal(1e-7F), "0");
    EXPECT_EQ(FormatReal(-0.0000004F), "0");
    EXPECT_EQ(FormatReal(-0.0000006F), "-0.000001");
}

TEST(FormatReal, CutsTextsOf32CharactersAndMoreTo31) {
    EXPECT_EQ(FormatReal(1e30F), "1000000015047466219876688855040");
    EXPECT_EQ(FormatReal(1e25F), "9999999562023526247432192");
    EXPECT_EQ(FormatReal(-1e30F), "-100000001504746621987668885504");
    EXPECT_EQ(FormatReal(std::numeric_limits<float>::max()), "3402823466385288598117041834845");
}

TEST(FormatReal, RoundsTiesToTheEvenDigit) {
    EXPECT_EQ(FormatReal(0.0078125F), "0.007812");
    EXPECT_EQ(FormatReal(0.0234375F), "0.023438");
    for (int count = 0; count < 200000; ++count) {
        ASSERT_TRUE(Agrees(static_cast<float>(count) / 128.0F));
        ASSERT_TRUE(Agrees(static_cast<float>(-count) / 2097152.0F));
    }
}

TEST(FormatReal, AgreesWithPrintfForEveryExponent) {
    constexpr std::uint32_t kMantissas[] = {0,        1,        2,        3,        0x200000,
                                            0x3FFFFF, 0x400000, 0x400001, 0x7FFFFE, 0x7FFFFF};
    std::mt19937 random(1);
    for (std::uint32_t exponent = 0; exponent < 256; ++exponent) {
        for (int i = 0; i < 500; ++i) {
            const std::uint32_t mantissa = i < 10 ? kMantissas[i] : random() & 0x7FFFFFU;
            const std::uint32_t bits = (exponent << 23U) | mantissa;
            ASSERT_TRUE(Agrees(std::bit_cast<float>(bits)));
            ASSERT_TRUE(Agrees(std::bit_cast<float>(bits | 0x80000000U)));
        }
    }
}

TEST(FormatReal, AgreesWithPrintfForAMillionFloatsOfEveryKind) {
    std::mt19937 random(2);
    for (int i = 0; i < 1000000; ++i) {
        ASSERT_TRUE(Agrees(std::bit_cast<float>(static_cast<std::uint32_t>(random()))));
    }
}

TEST(FormatReal, AgreesWithPrintfForAMillionCoordinates) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> coordinate(-32767.0F, 32767.0F);
    std::uniform_real_distribution<float> fraction(-1.0F, 1.0F);
    for (int i = 0; i < 500000; ++i) {
        ASSERT_TRUE(Agrees(coordinate(random)));
        ASSERT_TRUE(Agrees(fraction(random)));
    }
}

TEST(WriteFixed, KeepsSixDecimals) {
    EXPECT_EQ(Fixed(612.0F), "612.000000");
    EXPECT_EQ(Fixed(0.0F), "0.000000");
    EXPECT_EQ(Fixed(-0.5F), "-0.500000");
    EXPECT_EQ(Fixed(-0.0F), "-0.000000");
    EXPECT_EQ(Fixed(123.456F), "123.456001");
}

TEST(WriteInteger, WritesEvery32BitValueInDecimal) {
    const auto written = [](std::int32_t value) {
        char text[kMaxNumberText];
        return std::string(text, WriteInteger(text, value));
    };
    EXPECT_EQ(written(0), "0");
    EXPECT_EQ(written(-7), "-7");
    EXPECT_EQ(written(std::numeric_limits<std::int32_t>::max()), "2147483647");
    EXPECT_EQ(written(std::numeric_limits<std::int32_t>::min()), "-2147483648");
}

TEST(WriteUnsigned, WritesTheHighestValueWithoutASign) {
    char text[kMaxNumberText];
    EXPECT_EQ(std::string(text, WriteUnsigned(text, 4294967295U)), "4294967295");
}

class CommaPunctuation : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

/// Sets a locale with a decimal comma for both libraries: the C++ one always, the C one where the system has
/// one.
class CommaLocale {
public:
    CommaLocale() : before_(std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation))) {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "de_DE"}) {
            if (std::setlocale(LC_ALL, name) != nullptr) {
                return;
            }
        }
    }
    ~CommaLocale() {
        std::locale::global(before_);
        std::setlocale(LC_ALL, "C");
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

private:
    std::locale before_;
};

TEST(FormatReal, WritesAPointUnderALocaleWithADecimalComma) {
    const CommaLocale comma;
    EXPECT_EQ(FormatReal(1.5F), "1.5");
    EXPECT_EQ(FormatReal(1e10F), "10000000000");
    EXPECT_EQ(Fixed(1.5F), "1.500000");
    EXPECT_EQ(Fixed(1e10F), "10000000000.000000");
}

}  // namespace
}  // namespace zorvan::test
