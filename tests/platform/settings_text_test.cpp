#include "platform/settings_text.h"

#include <gtest/gtest.h>

namespace ostrand::platform {
namespace {

using Kind = SettingsValue::Kind;
using namespace std::string_view_literals;

SettingsText parsed(std::string_view bytes) {
  auto text = SettingsText::FromBytes(bytes);
  EXPECT_TRUE(text) << bytes;
  return text ? text.Value() : SettingsText();
}

TEST(SettingsText, ReadsHandwrittenLines) {
  constexpr std::tuple<std::string_view, Kind, std::string_view> cases[] = {
      {"  A \t=  two words \t\r", Kind::kText, "two words"},
      {"a = 8191", Kind::kWhole, "8191"},
      {"a = -2147483648", Kind::kWhole, "-2147483648"},
      {"a = 2147483648", Kind::kTooWide, "2147483648"},
      {"a = 1.5", Kind::kText, "1.5"},
      {"a = \"8191\"", Kind::kText, "8191"},
      {"a = \"the \"\"big\"\" one \"", Kind::kText, "the \"big\" one "},
      {"a = bytes: 41 0d0A", Kind::kBytes, "A\r\n"},
      {"a =", Kind::kText, ""},
      {"a = x = y ; z", Kind::kText, "x = y ; z"},
      {"a = 1\na = \xC3\xA9", Kind::kText, "\xC3\xA9"},  // the last one counts
      {"a = 1\n[other]\na = 2\n[S]", Kind::kWhole, "1"},
  };
  for (const auto& [row, kind, shown] : cases) {
    const SettingsText text = parsed("\xEF\xBB\xBF# mine\n\n [ s ]\n" + std::string(row));
    EXPECT_EQ(text.StrangeLine(), 0) << row;
    const auto value = text.Find("s", "a");
    ASSERT_TRUE(value) << row;
    EXPECT_EQ(value->kind, kind) << row;
    EXPECT_EQ(value->text, shown);
  }
}

TEST(SettingsText, IgnoresInvalidLinesAndReportsTheFirst) {
  constexpr std::pair<std::string_view, int> cases[] = {
      {"a = 1\n[s]\n", 1},       {"[s]\nb = 1\na\n", 3},     {"[s]\n = 1\n", 2},
      {"[s]\n\n[t\na = 1\n", 3}, {"[s]\n[ ]\na = 1\n", 2},   {"[s]\na = \"open\n", 2},
      {"[s]\na = \"x\" y\n", 2}, {"[s]\na = bytes: 4\n", 2}, {"[s]\na = bytes: 4g\n", 2},
  };
  for (const auto& [bytes, line] : cases) {
    SettingsText text = parsed(bytes);
    EXPECT_EQ(text.StrangeLine(), line) << bytes;
    EXPECT_FALSE(text.Find("s", "a")) << bytes;
    // The old content stays unchanged.
    ASSERT_TRUE(text.Set("u", "n", "v"));
    EXPECT_EQ(text.Bytes(), std::string(bytes) + "\n[u]\nn = v\n");
  }
}

TEST(SettingsText, RefusesBinaryContent) {
  const std::string large(SettingsText::kMaxBytes + 1, '\n');
  for (const std::string_view bytes : {"[s]\na = \0"sv, "\xFF\xFE[\0s\0"sv, "\x7F\x45LF\x02"sv,
                                       "\x1B[2J"sv, std::string_view(large)}) {
    const auto text = SettingsText::FromBytes(bytes);
    ASSERT_FALSE(text);
    EXPECT_EQ(text.ErrorText(), bytes == large ? "File too large" : "Not a text file");
  }
}

TEST(SettingsText, ChangesOneRowOnly) {
  SettingsText text = parsed("; top\r\n[S]\r\nOld = 1\r\nMine=kept  \r\n\r\n[t]\nx = 1");
  ASSERT_TRUE(text.Set("s", "OLD", "2"));
  ASSERT_TRUE(text.Set("s", "mine", "kept"));
  ASSERT_TRUE(text.Set("S", "new", " 3"));
  ASSERT_TRUE(text.Set("t", "y", "4"));
  EXPECT_EQ(text.Bytes(),
            "; top\r\n[S]\r\nOLD = 2\r\nMine=kept  \r\nnew = \" 3\"\n\r\n[t]\nx = 1\ny = 4\n");
}

TEST(SettingsText, EveryValueSurvivesWritingAndReading) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  const std::string values[] = {"",         " ",    "\t",  "\"",           "\"\"", "\"a\"",
                                "bytes: x", "a\nb", "x\r", "[section]",    "= 1",  "# no",
                                "C:\\a\\",  " \" ", "-5",  "\xC3\xA9\x80", all};
  for (const std::string& value : values) {
    SettingsText text;
    ASSERT_TRUE(text.Set("QUILLON\\QUILLON", "Form Background", value));
    ASSERT_TRUE(text.Set("QUILLON\\QUILLON", "Next", "5"));
    const SettingsText again = parsed(text.Bytes());
    EXPECT_EQ(again.StrangeLine(), 0);
    ASSERT_TRUE(again.Find("QUILLON\\QUILLON", "Form Background")) << text.Bytes();
    EXPECT_EQ(again.Find("QUILLON\\QUILLON", "Form Background")->text, value);
    EXPECT_EQ(again.Rows("quillon\\quillon").size(), 2U);
  }
}

TEST(SettingsText, RefusesAmbiguousNames) {
  SettingsText text;
  for (const std::string_view name : {"", " a", "a ", "a=b", "#a", ";a", "[a", "a\nb"}) {
    EXPECT_FALSE(text.Set("s", name, "1")) << name;
  }
  for (const std::string_view section : {"", " s", "s]\n[t", "s\r"}) {
    EXPECT_FALSE(text.Set(section, "a", "1")) << section;
  }
  EXPECT_EQ(text.Bytes(), "");
  EXPECT_TRUE(text.Set("s]", "a]", "1"));
  EXPECT_TRUE(parsed(text.Bytes()).Find("s]", "a]"));
}

}  // namespace
}  // namespace ostrand::platform
