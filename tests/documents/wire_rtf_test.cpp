// The wiring diagram as rich text, read back as a word processor reads it.
#include "documents/wire_rtf.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>

#include "documents/makewire.h"
#include "model/defaults.h"
#include "support/project_random.h"
#include "text/codepage.h"

namespace ostrand::testing {
namespace {

// The text of a document in UTF-8: what the reader shows that knows Unicode. Only what a diagram
// may hold is understood; anything else fails the test.
class RtfReader {
 public:
  explicit RtfReader(std::string_view rtf) : rest_(rtf) {}

  std::string Text() {
    while (!rest_.empty()) next();
    EXPECT_EQ(depth_, 0) << "groups that do not close";
    return text_;
  }

 private:
  char take() {
    const char c = rest_.empty() ? '\0' : rest_.front();
    rest_.remove_prefix(rest_.empty() ? 0 : 1);
    EXPECT_TRUE(c == '\r' || c == '\n' || (c >= ' ' && c < '\x7F')) << "not ASCII: " << int{c};
    return c;
  }
  void put(char32_t c) {
    if (depth_ == 1) AppendUtf8(text_, c);
  }
  char hexByte() {
    const std::string digits = {take(), take()};
    return static_cast<char>(std::stoi(digits, nullptr, 16));
  }
  void next() {
    const char c = take();
    if (c == '{' || c == '}') {
      depth_ += c == '{' ? 1 : -1;
    } else if (c == '\\') {
      control();
    } else if (c != '\r' && c != '\n') {
      put(static_cast<unsigned char>(c));
    }
  }
  void control() {
    if (rest_.starts_with("\\") || rest_.starts_with("{") || rest_.starts_with("}")) {
      put(static_cast<unsigned char>(take()));
    } else if (rest_.starts_with("'")) {
      take();
      put(CharacterOf(hexByte()));
    } else {
      word();
    }
  }
  void word() {
    std::string name;
    std::string number;
    while (std::isalpha(static_cast<unsigned char>(rest_.front())) != 0) name += take();
    while (std::isdigit(static_cast<unsigned char>(rest_.front())) != 0) number += take();
    if (rest_.starts_with(" ")) take();
    if (name == "par") put('\n');
    if (name != "u") return;
    put(static_cast<char32_t>(std::stoi(number)));
    if (!rest_.starts_with("\\")) {  // the fallback is passed over
      take();
    } else {
      rest_.remove_prefix(2);
      hexByte();
    }
  }

  std::string_view rest_;
  std::string text_;
  int depth_ = 0;
};

// Each box character becomes its Unicode form and a plain one; letters with such a code that stand
// as text behind a backslash do not.
TEST(WireRtf, LineCharacters) {
  EXPECT_EQ(ConvertLineChars(R"(\'c4\'cd\'da\'bf\'c0\'d9\'c5\'b3\'c1\'db\'fe\'df\'e4\\'c4)"),
            R"(\u9472\'2d\u9552\'2d\u9484\'2b\u9488\'2b\u9492\'2b\u9496\'2b\u9532\'2b\u9474\'a6)"
            R"(\u9524\'2d\u9608\'a6\u9632\'2b\u9600\'af\'e4\\'c4)");
}

TEST(WireRtf, FontAndRunsOfBlanks) {
  const std::string run(38, ' ');
  EXPECT_EQ(ConvertLineChars("{\\fonttbl{\\f0 MS LineDraw;}}"), "{\\fonttbl{\\f0 Courier New;}}");
  EXPECT_EQ(ConvertLineChars("x" + run + "Date written: 1"), "xDate written : 1");
  EXPECT_EQ(ConvertLineChars("x" + run + "Time written: 1"), "xTime written : 1");
  EXPECT_EQ(ConvertLineChars("x" + run + "QUILLON Vers : 6"), "xQUILLON Vers  : 6");
  EXPECT_EQ(ConvertLineChars("x  " + run + "Date written: 1"), "x  Date written : 1");
  const std::string shorter = "x" + run.substr(1) + "Date written: 1" + run;
  EXPECT_EQ(ConvertLineChars(shorter), shorter);
}

// Nothing is lost on the way: the document shows what the terminal shows.
TEST(WireRtf, ShowsTheWholeDiagram) {
  const auto store = NewStore();
  for (std::uint32_t seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    MakeRandomProject(*store, seed);
    store->Config.AutoChan = kFalse;
    store->Gen.Operator = "{\\'c4} \xC4\xFE\x80";
    store->Gen.IDNumber = "C:\\rigs\\7";
    store->TempBlock.BlockCount = 1;
    store->TempBlock[1].StartChan = 1;
    store->TempBlock[1].Reps = 2;
    store->TempBlock[1].Alias[1].AliasName = "\\par}\xB3\x95";
    const std::string diagram = WiringText(*store, {}, {"PUMP", {}});
    const std::string rtf = ConvertWireDiagToRTF(diagram);
    EXPECT_TRUE(rtf.starts_with("{\\rtf1\\ansi"));
    EXPECT_NE(rtf.find("Courier New;"), std::string::npos);
    EXPECT_EQ(RtfReader(rtf).Text(), WiringUtf8(diagram));
  }
}

}  // namespace
}  // namespace ostrand::testing
