// The way from a key to the control that sets it, by windows.
#include "guided_screens.h"

#include <gtest/gtest.h>

#include <QTest>

#include "desktop_session.h"
#include "places.h"
#include "screens/setup_screens.h"
#include "support/temp_folder.h"
#include "texts.h"

namespace ostrand {
namespace {

class Guided : public ::testing::Test {
 protected:
  Guided() {
    session_.files.files["/cell.VKG"] =
        testing::ReadDisk(OSTRAND_SOURCE_DIR "/examples/engine-test-cell.VKG");
    bool cancelled = true;
    ConnectSetupScreens(session_.control, screens_);
    session_.control.OpenFile("/cell.VKG", cancelled);
    EXPECT_FALSE(cancelled);
    session_.store->CalcFields.CalcFieldCount = 1;
    session_.store->CalcFields.Field[1].CalcField[1] = "Sum";
    session_.store->CalcFields.Field[1].CalcField[2] = "VBlk1(1)";
  }

  // "frmVoltSetup Range": the screen and the control where the way ends. All screens are left.
  std::string endOf(const ScreenPlace& place) {
    std::string end;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
      desktop::ScreenWindow* window = screens_.Top();
      if (window == nullptr || screens_.IsGuiding()) return;
      const Screen& screen = window->Shown();
      if (end.empty() && screen.Focused() != nullptr) {
        end = screen.Name() + " " + screen.Focused()->Name();
      }
      window->Shown().End(ModalResult::kCancel);
      window->done(QDialog::Rejected);
    });
    timer.start(0);
    screens_.Guide(place, [&] { desktop::OpenFirstScreen(session_.control, place); });
    return end;
  }
  std::string endOf(std::string_view section, std::string_view key) {
    return endOf(PlaceOfKey(section, key).screen);
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
      // There is no such block.
      {"[VOLTAGE BLOCKS]", "ZeroFlag(7)", "frmVoltBlock BlockCount"},
  };
  for (const Case& row : kCases) {
    SCOPED_TRACE(row.key);
    EXPECT_EQ(endOf(row.section, row.key), row.end);
    EXPECT_EQ(screens_.Top(), nullptr);
  }
}

TEST_F(Guided, OpensAnOptionOfTheUser) {
  EXPECT_TRUE(endOf({{{"frmOptGen"}}, {}}).starts_with("frmOptGen "));
}

TEST_F(Guided, EndsAtAButtonThatIsDisabled) {
  ASSERT_FALSE(session_.control.MainButtons().Enabled(kTK40MButton));
  EXPECT_EQ(endOf("[TK40M BLOCKS]", "Reps(1)"), "");
  EXPECT_FALSE(screens_.IsGuiding());
}

// A screen that is opened by hand afterwards goes nowhere.
TEST_F(Guided, ForgetsTheWayAtItsEnd) {
  EXPECT_EQ(endOf("[VOLTAGE BLOCKS]", "ZeroFlag(7)"), "frmVoltBlock BlockCount");
  bool opened = false;
  QTimer::singleShot(0, [&] {
    ASSERT_NE(screens_.Top(), nullptr);
    opened = screens_.Top()->Shown().Name() == "frmVoltBlock" && !screens_.IsGuiding();
    screens_.Top()->reject();
  });
  session_.control.Click(kVoltageButton);
  EXPECT_TRUE(opened);
}

TEST_F(Guided, GoesToAnItemOfAMainButton) {
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
