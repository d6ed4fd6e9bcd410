#include "documents/summary.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "documents/rtf_reader.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "support/project_random.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// The lines of the section after its heading, total included; empty without such a section.
std::string rowsOf(std::string_view text, std::string_view heading) {
  const std::string_view section = After(text, "\r\n\r\n " + std::string(heading) + " ");
  return std::string(After(Before(section, "\r\n\r\n"), "\r\n"));
}

class Summary : public ::testing::Test {
 protected:
  Summary() { ORVUS_COMMON::SetAllDefaults(store); }

  std::string summarize() {
    PlainText box;
    EXPECT_TRUE(Summarize(store, look, box, forms));
    return box.Text();
  }

  std::unique_ptr<ProjectStore> owned = NewStore();
  ProjectStore& store = *owned;
  SummaryLook look{.projectName = "Weather-Mast", .text = kWindowText, .heading = 0xFF0000};
  testing::ScriptedForms forms;
};

TEST_F(Summary, ShowsTheMomentOfTheLastSave) {
  const struct {
    const char *saved, *shown;
  } cases[] = {
      {"3/10/2003 2:05:00 PM", "03-10-2003 14:05:00"},
      {"12/1/1999 12:00:09 AM", "12-01-1999 00:00:09"},
      {"12/1/1999 12:00:09 PM", "12-01-1999 12:00:09"},
      {"11-24-2025 09:30:00", "11-24-2025 09:30:00"},  // unchanged, like all other forms
      {"24.11.2025 09:30", "24.11.2025 09:30"},
      {"13/1/1999 1:00:00 AM", "13/1/1999 1:00:00 AM"},
      {"1/1/1999 13:00:00 PM", "1/1/1999 13:00:00 PM"},
      {"1/1/1999 1:00:00 AM ", "1/1/1999 1:00:00 AM "},
      {"1/1/19999 1:00:00 AM", "1/1/19999 1:00:00 AM"},
      {"1/1/1999 1:00:60 AM", "1/1/1999 1:00:60 AM"},
      {"1/1/1999 1:00", "1/1/1999 1:00"},
      {"yesterday", "yesterday"},
  };
  for (const auto& c : cases) {
    store.Gen.PCTime = c.saved;
    EXPECT_EQ(Before(After(summarize(), "Last Saved: "), "\r\n"), c.shown);
  }
}

TEST_F(Summary, ShowsBothSlotsOfPulsesOutputsAndPorts) {
  for (PulseBlockGroup& group : store.PulseBlock) group.BlockCount = 1;
  store.PulseBlock[1][1].Reps = 2;
  store.PulseBlock[1][1].BlockTime = 250;
  for (auto& slot : store.ExciteOut.Slot) slot[2].Include = kTrue;
  for (PortSlot& slot : store.Ports.Slot) {
    slot.ByteMode = 0;
    slot.Ports[8].Include = kTrue;
  }
  store.Ports.Slot[1].Ports[8].Polarity = kFalse;
  const std::string text = summarize();
  EXPECT_EQ(rowsOf(text, "PULSES"),
            " 1 Block...   0 HiLev Freq     1.0e0   0.0e0    ....\r\n"
            " 1 Block...   2 HiLev Freq     1.0e0   0.0e0     250\r\n"
            "                      Total Pulse Time =         250");
  EXPECT_EQ(rowsOf(text, "CAO OUTPUT"),
            " Excite2              0         0               ....\r\n"
            " Excite2              0         0               ....\r\n"
            "                 Total CAO Output Time =           0");
  EXPECT_EQ(rowsOf(text, "PORT SET"),
            " Port 8             True     False              ....\r\n"
            " Port 8             False    True               ....\r\n"
            "                       Total Port Time =           0");
}

TEST_F(Summary, FailureIsReportedAndBoxKeepsItsText) {
  store.VoltBlock.BlockCount = kBlocks + 1;
  store.EstMeasTime = 5;
  forms.ExpectBoxWith("TROUBLE",
                      "Unexpected error 9, \"Subscript out of range\" has occurred in .Summarize.");
  PlainText box;
  box.SelText("an older summary");
  EXPECT_FALSE(Summarize(store, look, box, forms));
  EXPECT_TRUE(box.Text().starts_with(" Program Name: WEATHER-MAST\r\n"));
  EXPECT_TRUE(box.Text().ends_with("\r\n 7 Block...   0   50  Diff   1.0e0   0.0e0      ....\r\n"));
  EXPECT_EQ(store.EstMeasTime, 5);
}

TEST_F(Summary, HeadingsAreUnderlinedAndColoured) {
  ORVUS_GENFILE::ReadProjectText(
      store, testing::ReadDisk(OSTRAND_SOURCE_DIR "/examples/weather-mast.VKG"));
  std::string golden = testing::ReadDisk(OSTRAND_SOURCE_DIR "/tests/golden/weather-mast.summary");
  std::erase(golden, '\r');
  std::string headings;
  for (const std::string_view line : Split(golden, '\n')) {
    if (line.ends_with(" (uSec)") && line[1] != ' ') headings += line;
  }
  StyledText box;
  EXPECT_TRUE(Summarize(store, look, box, forms));
  EXPECT_TRUE(Holds(box.Rtf(), "{\\colortbl ;\\red0\\green0\\blue255;}"));
  const testing::RtfReader shown(box.Rtf());
  EXPECT_EQ(shown.text, golden);
  EXPECT_EQ(shown.underlined, headings);
  EXPECT_EQ(shown.coloured, headings);
}

// Number of rows in a section; a row with any other number of fields fails.
int countRows(const std::string& rows, std::ptrdiff_t fields) {
  int count = 0;
  for (const std::string_view line : Split(rows, '\n')) {
    if (rows.empty() || Holds(line, "Time =")) continue;
    const auto words = Split(Before(line, "\r"), ' ');
    EXPECT_EQ(std::count_if(words.begin(), words.end(), [](auto word) { return !word.empty(); }),
              fields)
        << line;
    ++count;
  }
  return count;
}

TEST_F(Summary, RowsOfRandomProjectsHaveAllFields) {
  for (std::uint32_t seed = 0; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    seed == 0 ? testing::MakeLargestProject(store) : testing::MakeRandomProject(store, seed);
    const std::string text = summarize();
    EXPECT_EQ(countRows(rowsOf(text, "VOLTS"), 8), store.VoltBlock.BlockCount);
    EXPECT_EQ(countRows(rowsOf(text, "BRIDGES"), 8), store.BridgeBlock.BlockCount);
    EXPECT_EQ(countRows(rowsOf(text, "PULSES"), 8), store.PulseBlock[0].BlockCount);
    EXPECT_EQ(countRows(rowsOf(text, "FLAGS"), 4),
              std::count_if(store.Flags.begin(), store.Flags.end(),
                            [](const FlagControl& flag) { return flag.FlagInclude != 0; }));
    // After the head of the times, each line reaches their column, and none ends in a blank.
    const std::string times(After(text, "(uSec)\r\n"));
    for (const std::string_view part : Split(times, '\n')) {
      const std::string_view line = Before(part, "\r");
      EXPECT_TRUE(line.empty() || line.size() >= 51) << line;
      EXPECT_FALSE(line.ends_with(' ')) << line;
    }
  }
}

}  // namespace
}  // namespace ostrand
