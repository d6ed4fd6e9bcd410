#include "documents/rich_text.h"

#include <gtest/gtest.h>

#include "documents/wire_rtf.h"

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

// Each box character becomes its Unicode form and a plain one; the same codes as text after a
// backslash do not.
TEST(WireRtf, ConvertsLineCharacters) {
  EXPECT_EQ(ConvertLineChars(R"(\'c4\'cd\'da\'bf\'c0\'d9\'c5\'b3\'c1\'db\'fe\'df\'e4\\'c4)"),
            R"(\u9472\'2d\u9552\'2d\u9484\'2b\u9488\'2b\u9492\'2b\u9496\'2b\u9532\'2b\u9474\'a6)"
            R"(\u9524\'2d\u9608\'a6\u9632\'2b\u9600\'af\'e4\\'c4)");
}

TEST(WireRtf, ReplacesFontAndRunsOfBlanks) {
  const std::string run(38, ' ');
  const std::string shorter = "x" + run.substr(1) + "Date written: 1" + run;
  const struct {
    std::string given, made;
  } cases[] = {{"{\\fonttbl{\\f0 MS LineDraw;}}", "{\\fonttbl{\\f0 Courier New;}}"},
               {"x" + run + "Date written: 1", "xDate written : 1"},
               {"x" + run + "Time written: 1", "xTime written : 1"},
               {"x" + run + "QUILLON Vers : 6", "xQUILLON Vers  : 6"},
               {"x  " + run + "Date written: 1", "x  Date written : 1"},
               {shorter, shorter}};
  for (const auto& c : cases) EXPECT_EQ(ConvertLineChars(c.given), c.made);
}

}  // namespace
}  // namespace ostrand
