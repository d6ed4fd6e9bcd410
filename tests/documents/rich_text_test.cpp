#include "documents/rich_text.h"

#include <gtest/gtest.h>

namespace ostrand {
namespace {

constexpr std::string_view kRtfHead =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fmodern\\fprq1\\fcharset0 Courier "
    "New;}}\r\n";
constexpr std::string_view kRtfBody = "\r\n\\pard\\plain\\f0\\fs20\r\n";

std::string rtf(std::string_view colours, std::string_view body) {
  return std::string(kRtfHead) + "{\\colortbl ;" + std::string(colours) + "}" +
         std::string(kRtfBody) + std::string(body) + "}\r\n";
}

TEST(PlainText, InsertsTextAtTheInsertionPoint) {
  PlainText box;
  box.SelText("one");
  box.SelUnderline(true);
  box.SelText(" three");
  EXPECT_EQ(box.Text(), "one three");
  box.SelStart(3);
  box.SelText(" two");
  EXPECT_EQ(box.SelStart(), 7U);
  box.SelStart(99);  // positions past the end mean the end
  box.SelText("!");
  EXPECT_EQ(box.Text(), "one two three!");
  box.Text("new\r\n");
  EXPECT_EQ(box.SelStart(), 0U);
  box.SelText("a ");
  EXPECT_EQ(box.Text(), "a new\r\n");
}

TEST(StyledText, EmptyBoxGivesACompleteDocument) { EXPECT_EQ(StyledText().Rtf(), rtf("", "")); }

TEST(StyledText, KeepsTheLookOfEachRun) {
  StyledText box;
  box.SelText(" plain\r\n");
  box.SelUnderline(true);
  box.SelColor(0x00102030);  // blue 16, green 32, red 48
  box.SelText(" HEAD");
  box.SelUnderline(false);
  box.SelText("!");
  box.SelColor(kWindowText);
  box.SelText("\r\n row\r\n");
  box.SelColor(255);
  box.SelStart(6);
  box.SelText("er");
  EXPECT_EQ(box.Text(), " plainer\r\n HEAD!\r\n row\r\n");
  EXPECT_EQ(box.Rtf(), rtf("\\red255\\green0\\blue0;\\red48\\green32\\blue16;",
                           " plain\\cf1 er\\par\r\n"
                           "\\cf2 \\ul  HEAD\\ulnone !\\par\r\n"
                           "\\cf0  row\\par\r\n"));
  box.Text("fresh");  // the old looks are gone
  box.SelText("ly ");
  EXPECT_EQ(box.Rtf(), rtf("", "ly fresh"));
}

TEST(StyledText, EscapesCharactersOfTheFormat) {
  StyledText box;
  box.SelText("C:\\VK\\{a}\t\x80 \xB5\x7F \r \n \r\n");
  box.SelText(std::string_view("\0.", 2));
  EXPECT_EQ(box.Rtf(), rtf("",
                           "C:\\\\VK\\\\\\{a\\}\\tab \\'80 \\'b5\\'7f \\'0d \\'0a \\par\r\n"
                           "\\'00."));
}

}  // namespace
}  // namespace ostrand
