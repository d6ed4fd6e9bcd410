#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <utility>

#include "text/codepage.h"
#include "text/late_row.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/row.h"
#include "text/strings.h"

namespace ostrand {
namespace {

TEST(Strings, UpperConvertsLettersOfTheCodePage) {
  constexpr std::pair<std::string_view, std::string_view> cases[] = {
      {"abcz{`", "ABCZ{`"},
      {"\xE4\xFE\x9A\x9C\x9E\xFF", "\xC4\xDE\x8A\x8C\x8E\x9F"},
      {"\xDF\xF7\x99\xAA", "\xDF\xF7\x99\xAA"},  // no upper case
      {"/j\xC3\x9Crgen/20\xE2\x82\xAC", "/J\xC3\x9CRGEN/20\xE2\x82\xAC"},
      {"\xE2\x82", "\xC2\x82"}};  // incomplete: bytes of the code page
  for (const auto& [text, upper] : cases) EXPECT_EQ(Upper(text), upper);
}

TEST(CodePage, EveryByteWithACharacterSurvivesConversion) {
  const std::string without = "\x81\x8D\x8F\x90\x9D";
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    const bool held = without.find(text) == std::string::npos;
    EXPECT_EQ(Windows1252FromUtf8(Utf8FromWindows1252(text)), held ? text : "?") << byte;
  }
  EXPECT_EQ(Utf8FromWindows1252("\xB0 \x80 \x81"), "\xC2\xB0 \xE2\x82\xAC \xEF\xBF\xBD");
}

TEST(CodePage, BrokenUtf8BecomesQuestionMarks) {
  EXPECT_EQ(Windows1252FromUtf8("a\xE2\x82"), "a??");         // incomplete
  EXPECT_EQ(Windows1252FromUtf8("\xC3(b"), "?(b");            // no second byte
  EXPECT_EQ(Windows1252FromUtf8("\xF0\x9F\x98\x80!"), "?!");  // not in the code page
  EXPECT_EQ(Windows1252FromUtf8("\xC0\xAF"), "??");           // overlong "/"
  EXPECT_EQ(Windows1252FromUtf8("\xE0\x83\xA9"), "???");      // overlong accented letter
}

TEST(Row, RaisesFaultNineOutsideOfItsSubscripts) {
  Row<int, 1, 6> row;
  row[1] = row[6] = 10;
  for (const int outside : {0, 7, -1}) {
    try {
      row[outside] = 1;
      ADD_FAILURE() << outside;
    } catch (const Fault& fault) {
      EXPECT_EQ(fault.number, 9);
      EXPECT_EQ(fault.description, "Subscript out of range");
    }
  }
}

// ---- Late rows

using Letters = LateRow<std::string, 1, 4>;

// All elements, and the number of made ones.
std::string shown(const Letters& row) {
  std::string text;
  for (const std::string& element : row) text += element + ",";
  return text + std::to_string(row.Made().size());
}

TEST(LateRow, KeepsWrittenElements) {
  static const std::string blank = "b";
  Letters row;
  EXPECT_EQ(shown(row), ",,,,0");
  row.Reset(blank);
  EXPECT_EQ(shown(row), "b,b,b,b,0");
  row[2] = "two";
  EXPECT_EQ(shown(row), "b,two,b,b,2");
  EXPECT_EQ(row.Leading(3).size(), 3U);
  EXPECT_EQ(shown(row), "b,two,b,b,3");
  EXPECT_EQ(row.Leading(-1).size(), 0U);
  EXPECT_EQ(row.Leading(9).size(), 4U);
  for (std::string& element : row) element += "!";
  EXPECT_EQ(shown(row), "b!,two!,b!,b!,4");
  for (const int outside : {0, 5}) {
    EXPECT_THROW(row[outside], Fault);
    EXPECT_THROW(std::as_const(row)[outside], Fault);
  }
}

TEST(LateRow, AssignmentMovesNoElement) {
  static const std::string blank = "b";
  Letters row;
  row[1] = "one";
  std::string& first = row[1];
  std::string& second = row[2];
  Letters longer;
  longer.Reset(blank);
  longer[3] = "three";
  row = longer;
  EXPECT_EQ(shown(row), "b,b,three,b,3");
  EXPECT_EQ(&first, &row[1]);
  row[4] = "four";
  EXPECT_EQ(&second, &row[2]);
  row = Letters();
  EXPECT_EQ(shown(row), ",,,,4");
  EXPECT_EQ(&first, &row[1]);
  Letters copy = longer;
  std::string& third = copy[3];
  copy[4] = "four";
  EXPECT_EQ(&third, &copy[3]);
  EXPECT_EQ(shown(copy), "b,b,three,four,4");
  EXPECT_EQ(shown(longer), "b,b,three,b,3");
}

// ---- Numbers

TEST(NumberText, ShowsPlainNumbersUpToAPower) {
  std::string singles;
  for (const float value : {-0.0F, 11.5F, 1.0F / 3, 123456.78F, 0.0001F, 9.999E-5F, 9999999.0F,
                            1e7F, -12345678.0F, 3.4028235E38F, 1.4E-45F}) {
    singles += " " + NumberText(value);
  }
  EXPECT_EQ(singles,
            " 0 11.5 0.33333334 123456.78 0.0001 9.999E-05 9999999 1E+07 -1.2345678E+07 "
            "3.4028235E+38 1E-45");
  std::string doubles;
  for (const double value : {1e7, 999999999999999.0, 1e15, -1.5e-5, 1e100, 5e-324}) {
    doubles += " " + NumberText(value);
  }
  EXPECT_EQ(doubles, " 10000000 999999999999999 1E+15 -1.5E-05 1E+100 5E-324");
  EXPECT_EQ(StrText(0) + StrText(-5) + StrText(0.1F) + StrText(-0.5F), " 0-5 0.1-0.5");
  EXPECT_EQ(NumberText(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(HexText(0) + HexText(0x1FFABCDE), "01FFABCDE");
}

// Significant digits of a number's text.
int digitsOf(std::string text) {
  text.resize(std::min(text.find_first_of("Ee"), text.size()));
  const bool fraction = text.find('.') != std::string::npos;
  std::erase_if(text, [](char c) { return c == '-' || c == '.'; });
  text.erase(0, text.find_first_not_of('0'));
  while (!fraction && text.size() > 1 && text.back() == '0') text.pop_back();
  return static_cast<int>(text.size());
}

template <class Real, class Bits, class Read>
void expectShortestRoundTrip(Bits bits, Read read) {
  const Real value = std::bit_cast<Real>(bits);
  if (!std::isfinite(value)) return;
  const std::string text = NumberText(value);
  ASSERT_LT(text.size(), static_cast<std::size_t>(kMaxNumberText)) << text;
  ASSERT_EQ(read(" " + text + " "), value) << text;
  ASSERT_EQ(static_cast<Real>(Val(text + "x")), value) << text;
  char shortest[64];
  const auto end = std::to_chars(shortest, shortest + 64, value, std::chars_format::scientific).ptr;
  ASSERT_EQ(digitsOf(text), digitsOf({shortest, end})) << text;
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
    // So are short numbers and their neighbours.
    const double hundredths = i / 50.0;
    for (const double value : {hundredths, -std::nextafter(hundredths, 1e6)}) {
      expectShortestRoundTrip<double>(std::bit_cast<std::uint64_t>(value), ToDouble);
      expectShortestRoundTrip<float>(std::bit_cast<std::uint32_t>(static_cast<float>(value)),
                                     ToSingle);
    }
  }
}

TEST(PlainConversion, TakesTheWholeTextOrNothing) {
  const std::string zeros(400, '0');
  for (const auto bad : {"",      " ",   ".",     "-",      "e5",
                         "1e",    "1 2", "12 V",  "1,5",    "--5",
                         "1.2.3", "inf", "nan",   "0x10",   "&H",
                         "&HG",   "&O8", "1E400", "-1E400", "1e99999999999999999999"}) {
    EXPECT_EQ(ToDouble(bad), std::nullopt) << bad;
  }
  EXPECT_EQ(ToDouble(std::string_view("1\0", 2)), std::nullopt);
  EXPECT_EQ(ToDouble("1" + zeros + "e-10"), std::nullopt);
  constexpr std::pair<std::string_view, double> cases[] = {
      {" 5 ", 5},        {"+5", 5},     {"5.", 5},    {"-.5", -0.5}, {"1.5E+2", 150},
      {"1.5d-2", 0.015}, {"&hFF", 255}, {"&O17", 15}, {"1E-400", 0}};
  for (const auto& [text, value] : cases) EXPECT_EQ(ToDouble(text), value) << text;
  EXPECT_EQ(ToDouble("1e-99999999999999999999"), 0);
  EXPECT_EQ(ToDouble("1" + zeros + "e-300"), 1e100);
  EXPECT_EQ(ToDouble("0." + zeros + "1e10"), 0);
}

TEST(PlainConversion, RoundsHalfToEvenAndChecksTheRange) {
  constexpr std::pair<std::string_view, std::optional<int>> cases[] = {
      {"2.5", 2},     {"3.5", 4},         {"-2.5", -2},    {"0.5", 0},
      {"1E2", 100},   {"32767.4", 32767}, {"32767.5", {}}, {"-32768.5", -32768},
      {"-32769", {}}, {"&H7FFF", 32767},  {"1E300", {}},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(ToInt16(text), value) << text;
  EXPECT_EQ(ToInt32("2147483647.5"), std::nullopt);
  EXPECT_EQ(ToInt32("-2147483648.5"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ToSingle("1E39"), std::nullopt);
  EXPECT_EQ(ToSingle("1E-60"), 0.0F);
  EXPECT_EQ(RoundHalfEven(0.49999999999999994), 0);
  EXPECT_EQ(RoundToInt32(std::nan("")), std::nullopt);
}

TEST(Val, TakesTheLongestNumberAtTheStart) {
  constexpr std::pair<std::string_view, double> cases[] = {
      {"", 0},        {"abc", 0},    {"-", 0},      {".", 0},       {"  12 V", 12}, {"10,2,3", 10},
      {"1.5.2", 1.5}, {"1e", 1},     {"1e+", 1},    {"1D3x", 1000}, {"-.5e1", -5},  {"&HFFg", 255},
      {"&H", 0},      {"&O178", 15}, {"1E-400", 0}, {"+7", 7},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(Val(text), value) << text;
}

// Texts of few digits take a fast path.
TEST(ToSingle, GivesTheNearestValueOfShortTexts) {
  std::mt19937 random(13);
  for (int n = 0; n < 20000; ++n) {
    std::string text = std::to_string(random() % 100000000);
    text.resize(1 + random() % text.size());
    if (random() % 2 == 0) text.insert(random() % (text.size() + 1), ".");
    if (random() % 2 == 0) text.insert(0, "-");
    float single = 0;
    double number = 0;
    const char* const end = text.data() + text.size();
    if (std::from_chars(text.data(), end, single).ptr != end) continue;
    std::from_chars(text.data(), end, number);
    ASSERT_EQ(ToSingle(text), single) << text;
    ASSERT_EQ(ToDouble(text), number) << text;
  }
  for (const char* text : {"1.2.3", "-", "--1", "1-", "", "12345x", "0x1"}) {
    EXPECT_FALSE(ToSingle(text)) << text;
  }
}

TEST(DecimalValue, MatchesTheTextOfTheSingle) {
  EXPECT_EQ(DecimalValue(0.1F), 0.1);
  EXPECT_EQ(DecimalValue(-1.003F, 3), -1003);
  // Whole thousandths shifted by three digits give whole numbers.
  for (int n = 0; n < 100000; ++n) {
    const float value =
        *ToSingle(NumberText(n / 1000) + "." + NumberText(1000 + n % 1000).substr(1));
    ASSERT_EQ(DecimalValue(value, 3), n);
    ASSERT_EQ(DecimalValue(value, 6), n * 1000.0);
  }
}

struct Row {
  std::string_view mask;
  int digits;
  std::vector<double> values;
  std::string texts;  // a blank before each
};

TEST(FormatNumber, FollowsTheMask) {
  const Row rows[] = {
      {"0.00", 0, {0, 12.5, 1.005, 999.995, -0.005}, " 0.00 12.50 1.01 1000.00 -0.01"},
      {"0.00", 0, {-0.004, 1e-300, 1e15}, " 0.00 0.00 1000000000000000.00"},
      {"#,##0", 0, {0, 0.5, 999, 999999.5, -1234567}, " 0 1 999 1,000,000 -1,234,567"},
      {"###0", 0, {0, 1000}, " 0 1000"},
      {"#0.0###0", 0, {0, 12.345678}, " 0.00000 12.34568"},
      {"#,##0.0##", 0, {2.5, 1234.5678}, " 2.5 1,234.568"},
      {"0.######", 0, {5, 0.1234567}, " 5. 0.123457"},
      {"0.#####e+00", 0, {0, 12345678, 9999999.6}, " 0.e+00 1.23457e+07 1.e+07"},
      {"0.#####e+00", 0, {1e-7, -1.5e120}, " 1.e-07 -1.5e+120"},
      {"0.####0e-##", 0, {1234.5, 0.00012}, " 1.23450e3 1.20000e-4"},
      {"0.0e-##", 0, {1.8, 99.96}, " 1.8e0 1.0e2"},
  };
  for (const Row& row : rows) {
    std::string texts;
    for (const double value : row.values) texts += " " + FormatNumber(value, row.mask);
    EXPECT_EQ(texts, row.texts) << row.mask;
  }
}

TEST(SignificantText, RoundsToSignificantDigits) {
  const Row rows[] = {
      // Rounding makes the last one that needs an exponent.
      {"", 7, {0, -0.5, 1234.5678, 9999999, 9999999.6}, " 0 -0.5 1234.568 9999999 1e+07"},
      {"", 7, {15000000, -12345678, 3.402e38}, " 1.5e+07 -1.23457e+07 3.402e+38"},
      {"", 7, {1e-6, 9.9999996e-7, -1.25e-7}, " 0.000001 0.000001 -1.25e-07"},
      // Places after the point are limited and rounded too.
      {"", 7, {0.00012345678, 0.0012367}, " 0.000123 0.001237"},
      {"", 10, {1e-300, 1e9, 1e10, 1e-9}, " 1e-300 1000000000 1e+10 0.000000001"},
      {"", 2, {99, 100, 0.15, 0.05}, " 99 1e+02 0.2 5e-02"},
  };
  for (const Row& row : rows) {
    std::string texts;
    for (const double value : row.values) texts += " " + SignificantText(value, row.digits);
    EXPECT_EQ(texts, row.texts);
  }
  EXPECT_EQ(SignificantText(0.1F, 9), "0.1");
  EXPECT_EQ(SignificantText(16777216.0F) + SignificantText(1.0 / 3), "1.67772e+070.333333333");
}

}  // namespace
}  // namespace ostrand
