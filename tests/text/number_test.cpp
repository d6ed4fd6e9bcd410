#include "text/number.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "text/mask.h"

namespace ostrand {
namespace {

TEST(NumberText, ShowsSinglesWithTheDigitsTheyNeed) {
  const struct {
    float value;
    const char* text;
  } cases[] = {
      {0.0F, "0"},
      {-0.0F, "0"},
      {10.0F, "10"},
      {11.5F, "11.5"},
      {0.1F, "0.1"},
      {-0.5F, "-0.5"},
      {1.0F / 3, "0.33333334"},
      {123456.78F, "123456.78"},
      {0.0001F, "0.0001"},
      {0.00012345F, "0.00012345"},
      {0.00009999F, "9.999E-05"},
      {9999999.0F, "9999999"},
      {1e7F, "1E+07"},
      {-12345678.0F, "-1.2345678E+07"},
      {std::numeric_limits<float>::max(), "3.4028235E+38"},
      {std::numeric_limits<float>::denorm_min(), "1E-45"},
  };
  for (const auto& c : cases) EXPECT_EQ(NumberText(c.value), c.text);
}

TEST(NumberText, ShowsDoublesPlainBelowTenToTheFifteenth) {
  const struct {
    double value;
    const char* text;
  } cases[] = {
      {0.1, "0.1"},
      {1e7, "10000000"},
      {999999999999999.0, "999999999999999"},
      {100000000000000.5, "100000000000000.5"},
      {1e15, "1E+15"},
      {-1.5e-5, "-1.5E-05"},
      {0.0001, "0.0001"},
      {1e100, "1E+100"},
      {std::numeric_limits<double>::max(), "1.7976931348623157E+308"},
      {std::numeric_limits<double>::denorm_min(), "5E-324"},
  };
  for (const auto& c : cases) EXPECT_EQ(NumberText(c.value), c.text);
}

TEST(NumberText, LeadingBlankStandsForThePlusSign) {
  EXPECT_EQ(StrText(0), " 0");
  EXPECT_EQ(StrText(-5), "-5");
  EXPECT_EQ(StrText(0.1F), " 0.1");
  EXPECT_EQ(StrText(-0.5F), "-0.5");
  EXPECT_EQ(NumberText(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(HexText(0), "0");
  EXPECT_EQ(HexText(0x1FFABCDE), "1FFABCDE");
}

// Significant digits of a general text.
int digitsOf(std::string text) {
  text.resize(std::min(text.find('E'), text.size()));
  const bool fraction = text.find('.') != std::string::npos;
  std::erase_if(text, [](char c) { return c == '-' || c == '.'; });
  text.erase(0, text.find_first_not_of('0'));
  while (!fraction && text.size() > 1 && text.back() == '0') text.pop_back();
  return static_cast<int>(text.size());
}

// Whether the value survives being written with so many significant digits.
template <class Real>
bool readsBackWith(Real value, int digits) {
  char room[64];
  const auto end =
      std::to_chars(room, room + 64, value, std::chars_format::scientific, digits - 1).ptr;
  Real back = 0;
  return std::from_chars(room, end, back).ec == std::errc() && back == value;
}

template <class Real, class Bits, class Read>
void expectShortestRoundTrip(Bits bits, Read read) {
  const Real value = std::bit_cast<Real>(bits);
  if (!std::isfinite(value)) return;
  const std::string text = NumberText(value);
  ASSERT_LT(text.size(), static_cast<std::size_t>(kNumberTextRoom)) << text;
  ASSERT_EQ(read(text), value) << text;
  ASSERT_EQ(read(" " + text + " "), value) << text;
  ASSERT_EQ(static_cast<Real>(Val(text + "x")), value) << text;
  const int digits = digitsOf(text);
  ASSERT_TRUE(digits == 1 || !readsBackWith(value, digits - 1)) << text;
}

TEST(NumberText, ReadsBackToTheSameValueWithTheFewestDigits) {
  std::mt19937_64 random(7300);
  for (int i = 0; i < 50000; ++i) {
    const std::uint64_t bits = random();
    expectShortestRoundTrip<float>(static_cast<std::uint32_t>(bits), ToSingle);
    expectShortestRoundTrip<double>(bits, ToDouble);
    // Denormals are rare among random bits.
    expectShortestRoundTrip<float>(static_cast<std::uint32_t>(bits & 0x807FFFFF), ToSingle);
    expectShortestRoundTrip<double>(bits & 0x800FFFFFFFFFFFFF, ToDouble);
  }
}

TEST(NumberText, FewDigitsAreTheSearchedOnes) {
  const auto expectSearched = [](auto value) {
    std::array<char, 48> room{};
    const auto end =
        std::to_chars(room.data(), room.data() + room.size(), value, std::chars_format::fixed).ptr;
    ASSERT_EQ(NumberText(value), std::string(room.data(), end));
  };
  for (int hundredths = 1; hundredths < 1000100; hundredths += 13) {
    const double value = hundredths / 100.0;
    const auto single = static_cast<float>(value);
    expectSearched(value);
    expectSearched(-std::nextafter(value, 0.0));
    expectSearched(-single);
    expectSearched(std::nextafter(single, 1e6F));
  }
}

TEST(PlainConversion, TakesTheWholeTextOrNothing) {
  const std::string zeros(400, '0');
  const struct {
    std::string text;
    std::optional<double> value;
  } cases[] = {
      {"", {}},
      {" ", {}},
      {".", {}},
      {"-", {}},
      {"e5", {}},
      {"1e", {}},
      {"1 2", {}},
      {"12 V", {}},
      {"1,5", {}},
      {"--5", {}},
      {"1.2.3", {}},
      {"inf", {}},
      {"nan", {}},
      {"0x10", {}},
      {"&H", {}},
      {"&HG", {}},
      {"&O8", {}},
      {std::string("1\0", 2), {}},
      {" 5 ", 5.0},
      {"+5", 5.0},
      {"5.", 5.0},
      {"-.5", -0.5},
      {"1.5E+2", 150.0},
      {"1.5d-2", 0.015},
      {"&hFF", 255.0},
      {"&O17", 15.0},
      {"1E400", {}},
      {"-1E400", {}},
      {"1E-400", 0.0},
      {"1" + zeros + "e-300", 1e100},
      {"1" + zeros + "e-10", {}},
      {"1" + zeros, {}},
      {"0." + zeros + "1e10", 0.0},
      {"0." + zeros + "1", 0.0},
      {"1e99999999999999999999", {}},
      {"1e-99999999999999999999", 0.0},
      {"0e99999999999999999999", 0.0},
      {"&H" + std::string(400, 'F'), {}},
  };
  for (const auto& c : cases) EXPECT_EQ(ToDouble(c.text), c.value) << c.text;
}

TEST(PlainConversion, RoundsHalfToEvenIntoWholeNumbersAndStaysInsideTheType) {
  const struct {
    const char* text;
    std::optional<int> value;
  } cases[] = {
      {"2.5", 2},     {"3.5", 4},         {"-2.5", -2},    {"-3.5", -4},  {"0.5", 0},
      {"1E2", 100},   {"32767.4", 32767}, {"32767.5", {}}, {"32768", {}}, {"-32768.5", -32768},
      {"-32769", {}}, {"&H7FFF", 32767},  {"1E300", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(ToInt16(c.text), c.value) << c.text;
  EXPECT_EQ(ToInt32("2147483647.5"), std::nullopt);
  EXPECT_EQ(ToInt32("-2147483648.5"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ToSingle("1E39"), std::nullopt);
  EXPECT_EQ(ToSingle("1E-60"), 0.0F);
  EXPECT_EQ(RoundHalfEven(0.49999999999999994), 0);
  EXPECT_EQ(RoundHalfEven(-0.5), 0);
  EXPECT_EQ(RoundToInt32(std::nan("")), std::nullopt);
}

TEST(Val, TakesTheLongestNumberAtTheHead) {
  const struct {
    const char* text;
    double value;
  } cases[] = {
      {"", 0},        {"abc", 0},     {"-", 0},      {".", 0},      {"  12 V", 12}, {"50 mV", 50},
      {"10,2,3", 10}, {"1.5.2", 1.5}, {"1e", 1},     {"1e+", 1},    {"1D3x", 1000}, {"-.5e1", -5},
      {"&HFFg", 255}, {"&H", 0},      {"&O178", 15}, {"1E-400", 0}, {"+7", 7},
  };
  for (const auto& c : cases) EXPECT_EQ(Val(c.text), c.value) << c.text;
}

TEST(DecimalValue, IsWhatTheSingleShows) {
  EXPECT_EQ(DecimalValue(0.1F), 0.1);
  EXPECT_EQ(DecimalValue(273.16F), 273.16);
  EXPECT_EQ(DecimalValue(1e10F), 1e10);
  EXPECT_EQ(DecimalValue(-1.003F, 3), -1003);
  EXPECT_EQ(DecimalValue(0, 6), 0);
  // Whole numbers of thousandths shift to whole numbers.
  for (int n = 1; n < 100000; ++n) {
    const float value =
        *ToSingle(NumberText(n / 1000) + "." + NumberText(1000 + n % 1000).substr(1));
    ASSERT_EQ(DecimalValue(value, 3), n);
    ASSERT_EQ(DecimalValue(value, 6), n * 1000.0);
  }
}

TEST(FormatNumber, LaysOutByTheMask) {
  const struct {
    double value;
    const char* mask;
    const char* text;
  } cases[] = {
      {0, "0.00", "0.00"},
      {12.5, "0.00", "12.50"},
      {0.005, "0.00", "0.01"},
      {1.005, "0.00", "1.01"},
      {999.995, "0.00", "1000.00"},
      {-0.005, "0.00", "-0.01"},
      {-0.004, "0.00", "0.00"},
      {1e-300, "0.00", "0.00"},
      {1e15, "0.00", "1000000000000000.00"},
      {0, "#,##0", "0"},
      {0.5, "#,##0", "1"},
      {999, "#,##0", "999"},
      {999999.5, "#,##0", "1,000,000"},
      {-1234567, "#,##0", "-1,234,567"},
      {0, "###0", "0"},
      {1000, "###0", "1000"},
      {0, "#0.0###0", "0.00000"},
      {1.5, "#0.0###0", "1.50000"},
      {12.345678, "#0.0###0", "12.34568"},
      {2.5, "#,##0.0##", "2.5"},
      {1234.5678, "#,##0.0##", "1,234.568"},
      {5, "0.######", "5."},
      {0.1234567, "0.######", "0.123457"},
      {0, "0.#####e+00", "0.e+00"},
      {12345678, "0.#####e+00", "1.23457e+07"},
      {9999999.6, "0.#####e+00", "1.e+07"},
      {1e-7, "0.#####e+00", "1.e-07"},
      {-1.5e120, "0.#####e+00", "-1.5e+120"},
      {1234.5, "0.####0e-##", "1.23450e3"},
      {0.00012, "0.####0e-##", "1.20000e-4"},
      {1.8, "0.0e-##", "1.8e0"},
      {99.96, "0.0e-##", "1.0e2"},
  };
  for (const auto& c : cases) EXPECT_EQ(FormatNumber(c.value, c.mask), c.text) << c.mask;
}

TEST(SignificantText, ShowsWhatANumericFieldShows) {
  const struct {
    double value;
    int digits;
    const char* text;
  } cases[] = {
      {0, 7, "0"},
      {5, 7, "5"},
      {-0.5, 7, "-0.5"},
      {1234.5678, 7, "1234.568"},
      {1234567.8, 7, "1234568"},
      {9999999, 7, "9999999"},
      {9999999.6, 7, "1e+07"},  // rounding makes it one that needs an exponent
      {1e7, 7, "1e+07"},
      {15000000, 7, "1.5e+07"},
      {-12345678, 7, "-1.23457e+07"},
      {3.402e38, 7, "3.402e+38"},
      {1e-6, 7, "0.000001"},
      {0.00012345678, 7, "0.000123"},  // places behind the point are limited, too
      {0.0012367, 7, "0.001237"},      // and are rounded
      {9.9999996e-7, 7, "0.000001"},
      {9e-7, 7, "9e-07"},
      {-1.25e-7, 7, "-1.25e-07"},
      {1e-300, 10, "1e-300"},
      {1e9, 10, "1000000000"},
      {1e10, 10, "1e+10"},
      {1e-9, 10, "0.000000001"},
      {0.1, 15, "0.1"},
      {2.0 / 3, 10, "0.666666667"},
      {99, 2, "99"},
      {100, 2, "1e+02"},
      {0.15, 2, "0.2"},
      {0.05, 2, "5e-02"},
  };
  for (const auto& c : cases) EXPECT_EQ(SignificantText(c.value, c.digits), c.text) << c.value;
  EXPECT_EQ(SignificantText(0.1F), "0.1");
  EXPECT_EQ(SignificantText(0.1F, 9), "0.1");
  EXPECT_EQ(SignificantText(16777216.0F), "1.67772e+07");
  EXPECT_EQ(SignificantText(1.0 / 3), "0.333333333");
}

}  // namespace
}  // namespace ostrand
