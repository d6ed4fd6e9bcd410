// The screens of the calculators: what they show as it is typed, what they hand back, and what they
// leave in the project.
#include "calc/frm_calc_mult_off.h"
#include "calc/frm_calc_mv_per_volt.h"
#include "calc/frm_flow_calc.h"
#include "calc/frm_more_speed.h"
#include "calc/frm_rpm_calc.h"
#include "calc/frm_rs_calc.h"
#include "calc/frm_solve_list.h"
#include "calc/frm_spd_calc.h"
#include "calc/screen_user.h"

namespace ostrand {
namespace {

using namespace testing;

class CalculatorScreens : public ScreenUser {
 protected:
  // One edit of a control.
  struct Edit {
    std::string_view control;
    std::string_view text;  // typed or picked, "on" or "off"
  };
  struct Shows {
    std::string_view control;
    std::string_view text;
  };

  static void edit(Screen& screen, const std::vector<Edit>& edits) {
    for (const Edit& step : edits) {
      const Control* control = screen.Find(step.control);
      ASSERT_NE(control, nullptr) << step.control;
      if (control->Kind() == ControlKind::kChoice) {
        pick(screen, step.control, step.text);
      } else if (control->Kind() == ControlKind::kCheck) {
        check(screen, step.control, step.text == "on");
      } else {
        type(screen, step.control, step.text);
      }
    }
  }

  static void expect(const Screen& screen, const std::vector<Shows>& shows) {
    for (const Shows& row : shows) {
      EXPECT_EQ(shown(screen, row.control), row.text) << row.control;
    }
  }

  static void expectAnswer(const Calculator& screen, std::string_view multiplier,
                           std::string_view offset, std::string_view units) {
    ASSERT_TRUE(screen.Answer());
    EXPECT_EQ(screen.Answer()->multiplier, multiplier);
    EXPECT_EQ(screen.Answer()->offset.value_or("none"), offset);
    EXPECT_EQ(screen.Answer()->units, units);
  }
};

constexpr InputAxis kMillivolts = {"Input mV", "mVolts"};

TEST_F(CalculatorScreens, TwoPointSolvesKeyByKeyAndTriesOut) {
  frmCalcMultOff screen(context, kMillivolts);
  EXPECT_EQ(forms.helpLines.back(),
            "Fill in the X & Y Max and Min boxes. Enter the Units. The multiplier (M) and offset "
            "(B) will be computed. Scroll or enter (Y) and (X).");
  expect(screen, {{"XAxis", "Input mV"},
                  {"XUnits", "mVolts"},
                  {"M", "1.0"},
                  {"B", "0.0"},
                  {"YOut", "50"},
                  {"XOut", "50.0"},
                  {"Scroll", "500"}});
  edit(screen, {{"YMax", "500"}, {"XMax", "20"}, {"XMin", "4"}});
  // (500 - 0) / (20 - 4), 0 - 31.25 * 4, (50 + 125) / 31.25.
  expect(screen, {{"M", "31.25"}, {"B", "-125.0"}, {"XOut", "5.6"}, {"Scroll", "100"}});
  edit(screen, {{"XOut", "12"}});
  expect(screen, {{"YOut", "250.0"}, {"Scroll", "500"}});
  edit(screen, {{"Scroll", "1000"}});
  expect(screen, {{"YOut", "500.0"}, {"XOut", "20.0"}});
  at(screen, "Scroll").Spin(false);
  expect(screen, {{"YOut", "495.0"}, {"XOut", "19.84"}, {"Scroll", "990"}});
  edit(screen, {{"YOut", "0"}, {"Units", "psi"}});
  expect(screen, {{"XOut", "4.0"}, {"Scroll", "0"}});

  EXPECT_EQ(store->MultOffCalc.YMax, "100") << "written at Done only";
  screen.Done();
  expectAnswer(screen, "31.25", "-125.0", "psi");
  const LineCalcRecord& record = store->MultOffCalc;
  EXPECT_EQ(record.YMax + "," + record.YMin + "," + record.YOut, "500,0,0");
  EXPECT_EQ(record.XMax + "," + record.XMin + "," + record.Units, "20,4,psi");
  EXPECT_EQ(store->PotCalc.YMax, "100");
}

TEST_F(CalculatorScreens, WithoutASpanTheLastAnswerStays) {
  frmCalcPot screen(context, kMillivolts);
  edit(screen, {{"XMin", "4"}, {"XMax", "24"}});  // 100 / 20
  expect(screen, {{"M", "5.0"}, {"B", "-20.0"}});
  // The 2 of 24 alone would give a span of 22.
  edit(screen, {{"XMin", "24"}});
  expect(screen, {{"M", "5.0"}, {"B", "-20.0"}});
  edit(screen, {{"YMax", "7"}});
  expect(screen, {{"M", "5.0"}, {"B", "-20.0"}});
  screen.Done();
  expectAnswer(screen, "5.0", "-20.0", "");
  EXPECT_EQ(store->PotCalc.XMin, "24");
}

TEST_F(CalculatorScreens, ARecordWithoutAnAnswerHandsNothingBack) {
  store->MultOffCalc.XMin = "100";
  frmCalcMultOff screen(context, kMillivolts);
  expect(screen, {{"M", ""}, {"B", ""}});
  screen.Done();
  EXPECT_EQ(screen.Result(), ModalResult::kDone);
  EXPECT_FALSE(screen.Answer());
}

TEST_F(CalculatorScreens, BridgeOutputGoesThroughItsThreeStates) {
  frmCalcmVPerVolt screen(context, false);
  EXPECT_EQ(screen.mVPerV.Caption, "mV/V f.s.");
  expect(screen, {{"Multiplier", "10.000000"},
                  {"Solves", "UNITS"},
                  {"Formula", "U = V / (E / 1000) * M"},
                  {"mVOut", "100"},
                  {"Excite", "5000"},
                  {"TestUnits", "200.0"}});
  EXPECT_FALSE(screen.TestUnits.Enabled);
  edit(screen, {{"mVPerV", "2"}, {"FullScale", "1000"}, {"Units", "lbs"}, {"mVOut", "10"}});
  expect(screen, {{"Multiplier", "500.00000"}, {"TestUnits", "1000.0"}});
  press(screen, "Solves");
  expect(screen, {{"Solves", "MVOUT"}, {"Formula", "V = U * (E / 1000) / M"}, {"mVOut", "10.0"}});
  edit(screen, {{"TestUnits", "250"}, {"Excite", "2500"}});
  expect(screen, {{"mVOut", "1.25"}});
  press(screen, "Solves");
  expect(screen, {{"Solves", "EXCITE"}, {"Formula", "E = V / U * M * 1000"}});
  edit(screen, {{"TestUnits", "0"}});
  expect(screen, {{"Excite", "ERROR"}});
  edit(screen, {{"TestUnits", "125"}});
  expect(screen, {{"Excite", "5000.0"}});
  screen.Done();
  expectAnswer(screen, "500.00000", "none", "lbs");
  EXPECT_EQ(store->MVPerVoltCalc.mVPerV + "," + store->MVPerVoltCalc.FullScale, "2,1000");
  EXPECT_EQ(store->MVPerVoltCalc.Units + "," + store->MVPerVoltCalc.mVOut, "lbs,1.25");
}

TEST_F(CalculatorScreens, AnExcitationAboveTheLimitIsAsked) {
  const std::string question =
      "Excitation voltage is 5001 mV which is greater than the 5000 mV limit of the logger.\r\n"
      "Do you want to go back and edit the values?";
  frmCalcmVPerVolt screen(context, true);
  EXPECT_EQ(screen.mVPerV.Caption, "V/V f.s.");
  edit(screen, {{"Excite", "5001"}, {"FullScale", "0.5"}});
  forms.ExpectBox("VALUE TOO LARGE", question, platform::Answer::kYes);
  screen.Done();
  EXPECT_EQ(screen.Result(), ModalResult::kNone);
  EXPECT_EQ(store->MVPerVoltCalc.FullScale, "500");
  forms.ExpectBox("VALUE TOO LARGE", question, platform::Answer::kNo);
  screen.Done();
  expectAnswer(screen, "0.0100000", "none", "");
}

TEST_F(CalculatorScreens, AMultiplierThatIsAnErrorStaysHere) {
  frmCalcmVPerVolt screen(context, false);
  edit(screen, {{"mVPerV", "0"}});
  expect(screen, {{"Multiplier", "ERROR"}, {"TestUnits", "ERROR"}});
  screen.Done();
  EXPECT_FALSE(screen.Answer());
  EXPECT_EQ(store->MVPerVoltCalc.mVPerV, "0");
}

TEST_F(CalculatorScreens, ResistorInEitherUnit) {
  frmRsCalc screen(context);
  expect(screen, {{"Units", "Ohms"}, {"Multiplier", "1000.0"}});
  edit(screen, {{"Units", "kOhms"}});
  expect(screen, {{"Multiplier", "1.0"}});
  edit(screen, {{"RsOhms", "120.5"}});
  expect(screen, {{"Multiplier", "0.1205"}});
  screen.Done();
  expectAnswer(screen, "0.1205", "none", "kOhms");
  EXPECT_EQ(store->RsCalc.RsOhms + store->RsCalc.Units, "120.5kOhms");
}

TEST_F(CalculatorScreens, RpmOfAToothedWheel) {
  frmRPMCalc screen(context);
  expect(screen, {{"Multiplier", "0.6"}, {"RPM", "60.0"}});
  edit(screen, {{"Pulses", "60"}, {"WhatIf", "250"}});
  expect(screen, {{"Multiplier", "1.0"}, {"RPM", "250.0"}});
  edit(screen, {{"Pulses", ""}});
  expect(screen, {{"Multiplier", "1.0"}, {"RPM", "250.0"}});
  edit(screen, {{"Pulses", "7"}});
  screen.Done();
  expectAnswer(screen, "8.571429", "none", "RPM");
  EXPECT_EQ(store->RpmCalc.Pulses + "," + store->RpmCalc.WhatIf, "7,250");
}

TEST_F(CalculatorScreens, FlowConvertsAndHandsBackWithoutSeparators) {
  store->FlowCalc.Pulses = 100.00000000001;
  {
    frmFlowCalc screen(context);
    expect(screen, {{"OutUnits", "Second"}, {"Multiplier", "0.01"}, {"Units", "Gal/Sec"}});
    edit(screen, {{"OutSystem", "Metric"}});
    // 3.785411784 / 100
    expect(screen, {{"Multiplier", "0.037854"}, {"Units", "L/Sec"}, {"Flow", "3.785"}});
    screen.Done();
    EXPECT_EQ(store->FlowCalc.OutUnits, 100) << "nobody picked a time base";
    EXPECT_EQ(store->FlowCalc.OutSystem, 2);
    EXPECT_EQ(store->FlowCalc.Pulses, 100.00000000001) << "nor edited the calibration";
  }
  frmFlowCalc screen(context);
  edit(screen, {{"OutUnits", "Hour"}, {"OutSystem", "English"}, {"Pulses", "1"}});
  expect(screen, {{"Multiplier", "3,600.0"}, {"Flow", "360,000.0"}});
  edit(screen, {{"Pulses", "0"}, {"OutUnits", "Minute"}});
  expect(screen, {{"Multiplier", "3,600.0"}, {"Units", "Gal/Hour"}});
  screen.Done();
  expectAnswer(screen, "3600.0", "none", "Gal/Hour");
  EXPECT_EQ(store->FlowCalc.OutUnits, 2);
  EXPECT_EQ(store->FlowCalc.Pulses, 0);
}

TEST_F(CalculatorScreens, SpeedByPulsesOfALength) {
  frmMoreSpeed screen(context);
  expect(screen, {{"InUnits", "Pulses/Meter"},
                  {"OutUnits", "Meter/Second"},
                  {"OutName", "Meters/Sec"},
                  {"Multiplier", "0.02"},
                  {"Units", "M/Sec"},
                  {"Speed", "2.0"}});
  edit(screen, {{"InSystem", "English"}});
  expect(screen, {{"InUnits", "Pulses/Foot"}});
  edit(screen, {{"InUnits", "Pulses/Inch"},
                {"InPulses", "20"},
                {"UseMins", "on"},
                {"OutUnits", "CM/Minute"}});
  expect(screen, {{"Multiplier", "7.62"}, {"OutName", "cM/Min"}});
  edit(screen, {{"InUnits", "Pulses/Mile"}, {"OutUnits", "KM/Hour"}, {"InPulses", "8000"}});
  expect(screen, {{"Multiplier", "0.724205"}, {"Units", "KM/Hour"}, {"OutName", "kM/Hour"}});
  edit(screen, {{"OutSystem", "English"}});
  expect(screen, {{"OutUnits", "Miles/Hour"}, {"Multiplier", "0.45"}});
  screen.Done();
  expectAnswer(screen, "0.45", "none", "Mi/Hour");
  const MoreSpeedCalcRecord& record = store->MoreSpeedCalc;
  EXPECT_EQ(record.InSystem * 10 + record.InUnits, 21);
  EXPECT_EQ(record.OutSystem * 100 + record.OutUnits * 10 + record.UseMins, 211);
}

TEST_F(CalculatorScreens, SpeedOfAWheelBehindGears) {
  frmSpdCalc screen(context);
  expect(screen, {{"MKSSpd", "English"},
                  {"LengthOption", "Inches"},
                  {"LengthPerPulse", "0.15708"},
                  {"LengthPerPulseUnits", "inches/pulse"},
                  {"PulsesPerLength", "403,362.29"},
                  {"PulsesPerLengthUnits", "pulses/mile"},
                  {"Multiplier", "9.424778"},
                  {"Units", "In/Min"}});
  edit(screen, {{"MKSSpd", "Metric"},
                {"RevSpeed", "300"},
                {"PulsesSec", "200"},
                {"WheelSize", "60"},
                {"GearRatio(1)", "3"},
                {"LengthOption", "Kilometers"}});
  expect(screen, {{"LengthPerPulse", "1.5708"},
                  {"LengthPerPulseUnits", "cm/pulse"},
                  {"PulsesPerLength", "63,661.98"},
                  {"PulsesPerLengthUnits", "pulses/km"},
                  {"Multiplier", "0.056549"},
                  {"Units", "KM/Hour"}});
  // A wheel of no size has no pulses on a length; that figure stays with its units.
  edit(screen, {{"WheelSize", "0"}, {"MKSSpd", "English"}});
  expect(screen, {{"LengthPerPulse", "0.0"},
                  {"LengthPerPulseUnits", "inches/pulse"},
                  {"PulsesPerLength", "63,661.98"},
                  {"PulsesPerLengthUnits", "pulses/km"}});
  edit(screen, {{"WheelSize", "60"}, {"MKSSpd", "Metric"}, {"SizeOption", "Circumference"}});
  expect(screen, {{"LengthPerPulse", "0.5"}});
  screen.Done();
  expectAnswer(screen, "0.018", "none", "KM/Hour");
  EXPECT_EQ(store->SpeedCalc.MKSSpd, 1);
  EXPECT_EQ(store->SpeedCalc.GearRatio[1] + store->SpeedCalc.WheelSize, "360");
  EXPECT_EQ(store->SpeedCalc.SizeOption * 10 + store->SpeedCalc.LengthOption, 11);
}

TEST_F(CalculatorScreens, SwitchesOfTheProjectThatMeanTheSameStay) {
  store->SpeedCalc.MKSSpd = -1;
  store->SpeedCalc.UseMins = -1;
  frmSpdCalc screen(context);
  expect(screen, {{"MKSSpd", "Metric"}, {"UseMins", "on"}});
  check(screen, "UseMins", false);
  check(screen, "UseMins", true);
  screen.Done();
  EXPECT_EQ(store->SpeedCalc.MKSSpd, -1);
  EXPECT_EQ(store->SpeedCalc.UseMins, 1);
}

// ---- The list -----------------------------------------------------------------------------------

TEST_F(CalculatorScreens, TheListOffersWhatFitsTheSource) {
  const struct {
    CalculatorSource source;
    std::vector<std::string> captions;
  } cases[] = {
      {{"Volts"}, {"X-&Y Calculator"}},
      {{"TK40M", "", true}, {"X-&Y Calculator"}},
      {{"Brdg"}, {"mV/&Volt Calculator", "mV/Volt X-Y Calculator"}},
      {{"Brdg", "", false, true}, {"Volt/Volt Calculator", "Volt/Volt X-Y Calculator"}},
      {{"Brdg", "", false, false, true}, {"&Resistor Calculator"}},
      {{"FieldGrid", "Brdg"}, {"mV/&Volt Calculator", "mV/Volt X-Y Calculator"}},
      {{"Pulse"},
       {"X-&Y Calculator", "&Speed Calculator", "&More Speed Calculator", "&RPM Calculator",
        "&Flow Calculator"}},
  };
  for (const auto& c : cases) {
    const frmSolveList list(context, c.source);
    std::vector<std::string> captions;
    for (const Control* button : list.Controls()) {
      if (button->Visible) captions.push_back(button->Caption);
    }
    EXPECT_EQ(captions, c.captions) << c.source.kind;
    EXPECT_EQ(list.Openers().size(), captions.size()) << c.source.kind;
  }
}

TEST_F(CalculatorScreens, AnAnswerGoesBackByOneCall) {
  host.acts = {[](Screen& list) {
                 press(list, "Pot");
                 EXPECT_EQ(list.Result(), ModalResult::kDone);
               },
               [](Screen& screen) {
                 EXPECT_EQ(screen.Name(), "frmCalcPot");
                 EXPECT_EQ(shown(screen, "XAxis"), "Input V/V");
                 EXPECT_EQ(shown(screen, "XUnits"), "Volts/Volt");
                 type(screen, "XMax", "1");
                 type(screen, "YMax", "360");
                 type(screen, "Units", "deg");
                 screen.Done();
               }};
  const auto answer = SolveScaling(context, {"Brdg", "", false, true});
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->multiplier + "," + *answer->offset + "," + answer->units, "360.0,0.0,deg");
}

// Every calculator, with an edit of all its inputs: after Cancel the project is as it was.
TEST_F(CalculatorScreens, CancelLeavesTheProjectAndHandsNothingBack) {
  const auto texts = [&] {
    std::string all;
    for (const std::string_view name : {"Pulse", "Brdg", "Volts"}) {
      for (const bool inOhms : {false, true}) {
        const frmSolveList list(context, {std::string(name), "", false, false, inOhms});
        for (const auto& opener : list.Openers()) {
          host.acts.push_back([&](Screen& screen) {
            for (const Control* control : screen.Controls()) all += control->Text() + ";";
            screen.Cancel();
          });
          opener.open("");
        }
      }
    }
    return all;
  };
  const std::string before = texts();
  for (const auto& [source, calculators] : std::vector<std::pair<CalculatorSource, int>>{
           {{"Pulse"}, 5}, {{"Brdg"}, 2}, {{"Brdg", "", false, false, true}, 1}}) {
    for (int nth = 0; nth < calculators; ++nth) {
      host.acts = {[&](Screen& list) {
                     const auto& opener = list.Openers()[static_cast<std::size_t>(nth)];
                     EXPECT_TRUE(opener.open(""));
                     EXPECT_EQ(list.Result(), ModalResult::kNone) << "another can be opened";
                     list.Cancel();
                   },
                   [](Screen& screen) {
                     for (Control* control : screen.Controls()) {
                       if (!control->Usable() || !screen.MoveFocus(control)) continue;
                       control->TypeText("37");
                       control->Check(control->Text() == "off");
                       if (const auto* choice = dynamic_cast<const Choice*>(control)) {
                         control->Pick(choice->Items.back().Text);
                       }
                     }
                     screen.Cancel();
                   }};
      EXPECT_FALSE(SolveScaling(context, source));
    }
  }
  EXPECT_EQ(texts(), before);
}

}  // namespace
}  // namespace ostrand
