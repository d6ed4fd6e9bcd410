// The way from a key to the control that sets it, by windows.
#include "guided_screens.h"

#include <gtest/gtest.h>

#include "desktop_session.h"
#include "places.h"
#include "screens/setup_screens.h"
#include "window_session.h"

namespace ostrand {
namespace {

class Guided : public ::testing::Test {
 protected:
  Guided() {
    ConnectSetupScreens(session_.control, screens_);
    session_.OpenExample("engine-test-cell");
    session_.store->CalcFields.CalcFieldCount = 1;
    session_.store->CalcFields.Field[1].CalcField[1] = "Sum";
    session_.store->CalcFields.Field[1].CalcField[2] = "VBlk1(1)";
  }

  // "frmVoltSetup Range": the screen and the control where the way ends. All screens are left.
  std::string endOf(const ScreenPlace& place) {
    std::string end;
    const testing::EachTurn leaver([&] {
      desktop::ScreenWindow* window = screens_.Top();
      if (window == nullptr || screens_.IsGuiding()) return;
      const Screen& screen = window->Shown();
      if (end.empty() && screen.Focused() != nullptr) {
        end = screen.Name() + " " + screen.Focused()->Name();
      }
      window->Shown().End(ModalResult::kCancel);
      window->done(QDialog::Rejected);
    });
    screens_.Guide(place, [&] { desktop::OpenFirstScreen(session_.control, place); });
    return end;
  }

  testing::DesktopSession session_;
  desktop::GuidedScreens screens_{session_.windows, nullptr};
};

TEST_F(Guided, GoesToTheControlOfAKey) {
  struct Case {
    std::string_view section;
    std::string_view key;
    std::string_view end;
  };
  constexpr Case kCases[] = {
      {"[SCAN SETUP]", "ExecutionTime", "frmExecute ExecutionTime"},
      {"[VOLTAGE BLOCKS]", "Range(2)", "frmVoltSetup Range"},
      {"[THERMOCOUPLE BLOCKS]", "AliasName(1,7)", "frmFldName AliasName7"},
      {"[TABLE SETUP]", "OutInt(2)", "frmOutInt OutInt"},
      {"[TABLE SETUP]", "StartMeasVar(1)", "frmTrigTable StartMeasVar1"},
      {"[VOLTAGE BLOCKS]", "Table(3,2,6)", "frmVoltSetup Hst"},
      {"[FLAG CONTROL]", "State2FlagVar(5)", "frmFlags State2FlagVar5"},
      {"[CALCULATED FIELDS]", "CalcField(1,2)", "frmCalculated EditMode"},
      // There is no such block, and a button that is disabled.
      {"[VOLTAGE BLOCKS]", "ZeroFlag(7)", "frmVoltBlock BlockCount"},
      {"[TK40M BLOCKS]", "Reps(1)", ""},
  };
  for (const Case& row : kCases) {
    SCOPED_TRACE(row.key);
    EXPECT_EQ(endOf(PlaceOfKey(row.section, row.key).screen), row.end);
    EXPECT_EQ(screens_.Top(), nullptr);
    EXPECT_FALSE(screens_.IsGuiding());
  }
}

TEST_F(Guided, GoesToAnItemOfAMainButton) {
  EXPECT_TRUE(endOf({{{"frmOptGen"}}, {}}).starts_with("frmOptGen ")) << "an option of the user";
  struct Case {
    int button;
    std::string_view end;
  };
  for (const Case& row : {Case{kThermocoupleButton, "frmTempSetup Reps"},
                          {kVoltageButton, "frmVoltSetup Reps"},
                          {kCalcFieldsButton, "frmCalculated Formulas"},
                          {kFlagsButton, "frmFlags FlagInclude1"},
                          {kPortsButton, "frmPorts Output"},  // in byte mode
                          {kTablesButton, "frmOutInt Table"}}) {
    EXPECT_EQ(endOf(desktop::PlaceOfItem(row.button, 1)), row.end);
    const ScreenPlace whole = desktop::PlaceOfButton(row.button);
    ASSERT_EQ(whole.steps.size(), 1U);
    EXPECT_EQ(ButtonOfScreen(whole.steps[0].screen), row.button);
  }
  EXPECT_EQ(endOf(desktop::PlaceOfSensor(kVoltageButton, 1, 2)), "frmFldName AliasName2");
}

}  // namespace
}  // namespace ostrand
