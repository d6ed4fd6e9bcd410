// The wiring diagram as rich text.
#include "documents/wire_rtf.h"

#include <gtest/gtest.h>

#include <string>

#include "documents/makewire.h"
#include "documents/rtf_reader.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "support/project_random.h"

namespace ostrand::testing {
namespace {

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

// The document shows the same text as the terminal.
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
    EXPECT_EQ(RtfReader(rtf).text, WiringUtf8(diagram));
  }
}

}  // namespace
}  // namespace ostrand::testing
