#include "blocks/thermocouple_controls.h"

#include <array>

#include "blocks/analog_setup.h"

namespace ostrand {
namespace {

// Texts hold the degree sign of Windows-1252.
struct Type {
  std::string_view letter;
  std::string_view toolTip;
  bool keepsRange;                        // others measure on "50 mV" only
  std::array<std::string_view, 4> split;  // temperature between the ranges by scale; empty for none
};

constexpr std::array<Type, 8> kTypes = {{
    {"T", "T (Copper-Constantan).  Range is -270 to 400 C, -454 to 752 F", false, {}},
    {"E",
     "E (Chromel-Constantan).  Range is -270 to 1000 C, -454 to 1832 F",
     true,
     {"660\xB0"
      "C",
      "1220\xB0"
      "F",
      "933 K", "1680 R"}},
    {"K",
     "K (Chromel-Alumel).  Range is -270 to 1372 C, -454 to 2500 F",
     true,
     {"1230\xB0"
      "C",
      "2250\xB0"
      "F",
      "1505 K", "2710 R"}},
    {"J", "J (Iron-Constantan).  Range is -210 to 760 C, -350 to 1400 F", false, {}},
    {"B", "B (Platinum-Rhodium).  Range is 50 to 1820 C, 122 to 3308 F", false, {}},
    {"R", "R (Platinum-Rhodium).  Range is 0 to 1768 C, 0 to 3214 F", false, {}},
    {"S", "S (Platinum-Rhodium).  Range is 0 to 1768 C, 0 to 3214 F", false, {}},
    // Keeps a range that is not in the list.
    {"N", "N (NiCrSi-NiSi).  Range is -270 to 1372 C, -454 to 2500 F", true, {}},
}};

constexpr std::array<std::string_view, 4> kMinOfTypeB = {"50\xB0 C.", "122\xB0 F.", "323 Kelvin.",
                                                         "581 Rankine."};

// The two ranges of the screen, numbered as in the list of all ranges.
constexpr int kFirstRange = 3;   // "200 mV"
constexpr int kSecondRange = 4;  // "50 mV"

const Type* typeOf(const cAnalogConfig& analog) {
  const int type = analog.TCType;
  return type >= 0 && type < static_cast<int>(kTypes.size())
             ? &kTypes[static_cast<std::size_t>(type)]
             : nullptr;
}

}  // namespace

ThermocoupleControls::ThermocoupleControls(AnalogSetup& screen, std::string_view scaleName,
                                           std::string_view rangeName)
    : TypeNo(screen, "TypeNo"),
      Scale(screen, scaleName),
      Range(screen, rangeName),
      TypeInfo(screen, "TypeInfo"),
      screen_(screen) {
  using enum ControlKind;
  const Face faces[] = {
      {"TypeNo", "Sensors", "Thermocouple type", kOptions},
      {scaleName, "Sensors", "Temperature units", kOptions},
      {rangeName, "Sensors", "Temperature range", kOptions},
      {"TypeInfo", "Sensors"},
  };
  Describe(screen, faces);
  for (const Type& type : kTypes) {
    TypeNo.Add(type.letter, type.toolTip);
  }
  Scale.SetItems({"Deg_C", "Deg_F", "Kelvin", "Rankine"});
  Range.SetItems({"", ""});
  TypeNo.OnPick = [this] { onType(); };
  Scale.OnPick = [this] { onScale(); };
  Range.OnPick = [this] {
    screen_.Analog().RangeIndex(kFirstRange + Range.Index());
    screen_.TakeSettleTime();
  };
}

void ThermocoupleControls::onType() {
  cAnalogConfig& analog = screen_.Analog();
  analog.TCType = static_cast<OrvusTCTypes>(TypeNo.Index());
  const Type* type = typeOf(analog);
  if (type == nullptr || type->keepsRange || analog.RangeIndex() == kSecondRange) {
    return screen_.Changed();
  }
  analog.RangeIndex(kSecondRange);
  screen_.TakeSettleTime();
}

void ThermocoupleControls::onScale() {
  screen_.Analog().TempScale(static_cast<OrvusTemperatureScales>(Scale.Index()));
  if (screen_.OnThermocouples()) screen_.GiveScaling();
  screen_.Changed();
}

void ThermocoupleControls::Show() {
  TypeNo.Index(screen_.Analog().TCType);
  Scale.Index(screen_.Analog().TempScale());
  Range.Index(screen_.Analog().RangeIndex() - kFirstRange);
  for (Choice* choice : {&TypeNo, &Scale}) {
    choice->Show(screen_.OnThermocouples(), "Needs thermocouples.");
  }
  setTypeInfo();
}

void ThermocoupleControls::setTypeInfo() {
  const cAnalogConfig& analog = screen_.Analog();
  const Type* type = typeOf(analog);
  const int scale = analog.TempScale();
  const bool knownScale = scale >= 0 && scale < 4;
  const std::size_t at = knownScale ? static_cast<std::size_t>(scale) : 0;
  const bool ranges = type != nullptr && !type->split[0].empty() && knownScale;
  Range.Show(ranges && screen_.OnThermocouples(),
             screen_.OnThermocouples() ? "This type has one range." : "Needs thermocouples.");
  TypeInfo.Visible = !ranges && screen_.OnThermocouples();
  if (ranges) {
    Range.Items[0].Text = "> " + std::string(type->split[at]);
    Range.Items[1].Text = "< " + std::string(type->split[at]);
  }
  const bool typeB = analog.TCType == ORVUS_TCTYPE_B && knownScale;
  TypeInfo.Caption = typeB ? "TYPE B INFO" : "";
  TypeInfo.Text(typeB ? "Not useful below\r\n" + std::string(kMinOfTypeB[at]) : std::string());
}

}  // namespace ostrand
