// Output selections that a user can make, and what the item stores.
#include "tables/output_boxes.h"

#include "logger/frm_port_tables.h"
#include "support/screen_driver.h"

namespace ostrand {
namespace {

using namespace testing;

class OutputBoxesTest : public ScreenTest {
 protected:
  OutputBoxesTest() {
    store->Tables[3].TableOn = kTrue;
    store->Tables[3].TableName = "Fast";
  }

  OutputSet output;
  Screen screen{context, "frmTest"};
  OutputBoxes boxes{screen, *store};
};

TEST_F(OutputBoxesTest, BoxesOfDisabledTableKeepTheirState) {
  output.OutputSelect[1][kMaximum] = 1;
  boxes.Show(output);
  EXPECT_EQ(Shown(screen, "Table"), "Table 3") << "the first that is on";
  EXPECT_EQ(Shown(screen, "TableName"), "Fast");
  EXPECT_FALSE(IsUsable(screen, "Hst")) << "nobody can ask for its parameters";
  Check(screen, "Smp", true);
  Check(screen, "Avg", true);
  Check(screen, "Avg", false);
  EXPECT_EQ(output.OutputSelect[3][kSample], 1);
  EXPECT_EQ(output.OutputSelect[3][kAverage], 0);

  Pick(screen, "Table", "Table 1");
  EXPECT_EQ(Shown(screen, "Max"), "on");
  EXPECT_FALSE(IsUsable(screen, "Max"));
  EXPECT_EQ(screen.Find("Max")->WhyDisabled, "Table 1 is off.");
  EXPECT_EQ(Shown(screen, "Smp"), "off");
  EXPECT_EQ(output.OutputSelect[1][kMaximum], 1);
}

TEST_F(OutputBoxesTest, UnavailableHistogramCanBeUnchecked) {
  output.OutputSelect[3][kHistogram] = 1;
  boxes.Show(output);
  Check(screen, "Hst", false);
  EXPECT_EQ(output.OutputSelect[3][kHistogram], 0);
  EXPECT_FALSE(IsUsable(screen, "Hst"));
}

TEST_F(OutputBoxesTest, SingleValuesAreEditedAsACopyUnderTheirTitles) {
  struct Case {
    SingleValue value;
    int number;
    std::string_view caption;
    OutputSet& kept;
    int codes;  // that can be chosen
  };
  store->Ports.Slot[1].Ports[kPorts].Include = kTrue;
  for (PortSlot& slot : store->Ports.Slot) slot.ReadMode = 1;
  const Case cases[] = {
      {SingleValue::kPortBytes, 0, "PORT TABLE SELECT, SLOT 1-8", store->Ports.Slot[0].Output, 5},
      {SingleValue::kPortBytes, 1, "PORT TABLE SELECT, SLOT 9-16", store->Ports.Slot[1].Output, 6},
      {SingleValue::kPanelRef, 0, "PANEL REFERENCE TEMPERATURE", store->TcRef.Output, 5},
      {SingleValue::kTK40MRef, 0, "TK40M REFERENCE TEMPERATURES", store->TK40MRef.Output, 5},
      {SingleValue::kCalcField, 7, "CALCULATED FIELDS  FORMULA 7",
       store->CalcFields.Field[7].Output, 8},
      {SingleValue::kBatteryVolts, 0, "LOGGER BATTERY VOLTAGE", store->PowerOut.Output, 7},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.caption);
    frmPortTables form(context, ValueOutputsRequest{row.value, row.number});
    EXPECT_EQ(form.Caption, row.caption);
    int codes = 0;
    for (const CheckBox& box : form.Output.Boxes) codes += box.Usable() ? 1 : 0;
    EXPECT_EQ(codes, row.codes);
    Check(form, "Min", true);
    EXPECT_EQ(row.kept.OutputSelect[3][kMinimum], 0) << "before Done";
    form.Done();
    EXPECT_EQ(form.Result(), ModalResult::kDone);
    EXPECT_EQ(row.kept.OutputSelect[3][kMinimum], 1);
    EXPECT_EQ(row.kept.OutputSelect[1][kMinimum], 0);
  }
}

}  // namespace
}  // namespace ostrand
