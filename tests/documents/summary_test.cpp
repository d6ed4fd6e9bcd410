#include "documents/summary.h"

#include <gtest/gtest.h>

#include "model/defaults.h"
#include "model/new_store.h"
#include "support/scripted_forms.h"
#include "text/strings.h"

namespace ostrand {
namespace {

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
  SummaryLook look{.projectName = "Weather-Mast"};
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
      {"13/1/1999 1:00:00 AM", "13/1/1999 1:00:00 AM"},
      {"1/1/1999 13:00:00 PM", "1/1/1999 13:00:00 PM"},
      {"1/1/1999 1:00:00 AM ", "1/1/1999 1:00:00 AM "},
      {"1/1/1999 1:00:60 AM", "1/1/1999 1:00:60 AM"},
      {"1/1/1999 1:00", "1/1/1999 1:00"},
  };
  for (const auto& c : cases) {
    store.Gen.PCTime = c.saved;
    EXPECT_EQ(Before(After(summarize(), "Last Saved: "), "\r\n"), c.shown);
  }
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

}  // namespace
}  // namespace ostrand
