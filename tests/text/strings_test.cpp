#include "text/strings.h"

#include <gtest/gtest.h>

#include "text/codepage.h"
#include "text/row.h"

namespace ostrand {
namespace {

TEST(Strings, UpperKnowsTheLettersOfTheCodePage) {
  EXPECT_EQ(Upper("abcz{`"), "ABCZ{`");
  EXPECT_EQ(Upper("\xE4\xFE\x9A\x9C\x9E\xFF"), "\xC4\xDE\x8A\x8C\x8E\x9F");
  EXPECT_EQ(Upper("\xDF\xF7\x99\xAA"), "\xDF\xF7\x99\xAA");  // no capital of their own
  EXPECT_EQ(Upper("/j\xC3\x9Crgen/20\xE2\x82\xAC"), "/J\xC3\x9CRGEN/20\xE2\x82\xAC");
  EXPECT_EQ(Upper("\xE2\x82"), "\xC2\x82");  // cut off: bytes of the code page
}

TEST(Strings, SameTextIgnoresOnlyTheCase) {
  EXPECT_TRUE(SameText("Harrier", "hARRIER"));
  EXPECT_TRUE(SameText("", ""));
  EXPECT_FALSE(SameText("Harrier", "Harrie"));
  EXPECT_FALSE(SameText("Harrie", "Harrier"));
}

TEST(Strings, SplitKeepsEmptyParts) {
  using Parts = std::vector<std::string_view>;
  EXPECT_EQ(Split("", ','), Parts({""}));
  EXPECT_EQ(Split("3,4", ','), Parts({"3", "4"}));
  EXPECT_EQ(Split(",a,,", ','), Parts({"", "a", "", ""}));
}

TEST(Strings, CutsAtTheFirstMarkAndAtBlanks) {
  EXPECT_EQ(Before("a=b=c", "="), "a");
  EXPECT_EQ(After("a=b=c", "="), "b=c");
  EXPECT_EQ(Before("abc", "="), "abc");
  EXPECT_EQ(After("abc", "="), "");
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("   "), "");
}

TEST(CodePage, EveryByteWithACharacterComesBack) {
  const std::string without = "\x81\x8D\x8F\x90\x9D";
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    const bool held = without.find(text) == std::string::npos;
    EXPECT_EQ(Windows1252FromUtf8(Utf8FromWindows1252(text)), held ? text : "?") << byte;
  }
  EXPECT_EQ(Utf8FromWindows1252("20\xB0 \x80"), "20\xC2\xB0 \xE2\x82\xAC");
  EXPECT_EQ(Utf8FromWindows1252("\x81"), "\xEF\xBF\xBD");
}

TEST(CodePage, BrokenUtf8BecomesQuestionMarks) {
  EXPECT_EQ(Windows1252FromUtf8("a\xE2\x82"), "a??");         // cut off
  EXPECT_EQ(Windows1252FromUtf8("\xC3(b"), "?(b");            // no second byte
  EXPECT_EQ(Windows1252FromUtf8("\xF0\x9F\x98\x80!"), "?!");  // not in the code page
  EXPECT_EQ(Windows1252FromUtf8("\xC0\xAF"), "??");           // "/" in too many bytes
  EXPECT_EQ(Windows1252FromUtf8("\xE0\x83\xA9"), "???");      // the same for an accented letter
}

TEST(Row, RaisesFaultNineOutsideOfItsSubscripts) {
  Row<int, 1, 6> row;
  row[1] = 10;
  row[6] = 60;
  EXPECT_EQ(row[1] + row[6], 70);
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

}  // namespace
}  // namespace ostrand
