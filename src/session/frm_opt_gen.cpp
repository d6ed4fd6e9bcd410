#include "session/frm_opt_gen.h"

#include <algorithm>
#include <utility>

#include "controls/faces.h"
#include "documents/summary.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr std::string_view kNumbers = "Numbers in the summary";
constexpr Face kColorFaces[] = {
    {"ColorRow", "Colors", "Item"},
    {"StandardColor", "Colors", "Standard color"},
    {"SystemColor", "Colors", "System color"},
    {"ColorValue", "Colors", "Color number", ControlKind::kFigure},
    {"NumberForm", kNumbers, "Format", ControlKind::kOptions},
    {"NumberDigits", kNumbers, "Digits", {}, "Needs a format other than General."},
    {"NumberExample", kNumbers, "Example", ControlKind::kFigure},
};

constexpr float kExampleNumber = 1234.5678F;
constexpr std::size_t kValueColumn = 1;

struct NamedColor {
  std::string_view name;
  i32 value;  // 0x00BBGGRR
};
constexpr std::array<NamedColor, 16> kStandardColors = {{
    {"Black", 0x000000},
    {"Maroon", 0x000080},
    {"Green", 0x008000},
    {"Olive", 0x008080},
    {"Navy", 0x800000},
    {"Purple", 0x800080},
    {"Teal", 0x808000},
    {"Gray", 0x808080},
    {"Silver", 0xC0C0C0},
    {"Red", 0x0000FF},
    {"Lime", 0x00FF00},
    {"Yellow", 0x00FFFF},
    {"Blue", 0xFF0000},
    {"Fuchsia", 0xFF00FF},
    {"Aqua", 0xFFFF00},
    {"White", 0xFFFFFF},
}};
// In numerical order.
constexpr std::array<std::string_view, 25> kSystemColors = {"Scroll Bars",
                                                            "Desktop",
                                                            "Active Title Bar",
                                                            "Inactive Title Bar",
                                                            "Menu Bar",
                                                            "Window",
                                                            "Window Frame",
                                                            "Menu Text",
                                                            "Window Text",
                                                            "Title Bar Text",
                                                            "Active Border",
                                                            "Inactive Border",
                                                            "Application Workspace",
                                                            "Highlight",
                                                            "Highlight Text",
                                                            "Button Face",
                                                            "Button Shadow",
                                                            "Disabled Text",
                                                            "Button Text",
                                                            "Inactive Title Text",
                                                            "Button Highlight",
                                                            "Button Dark Edge",
                                                            "Button Light",
                                                            "Tool Tip Text",
                                                            "Tool Tip"};

constexpr i32 systemColor(int place) {
  return static_cast<i32>(0x80000000U | static_cast<std::uint32_t>(place));
}

int standardPlace(i32 color) {
  const auto* at = std::find_if(kStandardColors.begin(), kStandardColors.end(),
                                [color](const NamedColor& there) { return there.value == color; });
  return at == kStandardColors.end() ? -1 : static_cast<int>(at - kStandardColors.begin());
}

int systemPlace(i32 color) {
  for (int place = 0; place < static_cast<int>(kSystemColors.size()); ++place) {
    if (systemColor(place) == color) return place;
  }
  return -1;
}

}  // namespace

frmOptGen::frmOptGen(const ScreenContext& context, Settings& settings,
                     std::function<void()> onChange)
    : Screen(context, "frmOptGen"),
      ColorRow(*this, "ColorRow"),
      StandardColor(*this, "StandardColor"),
      SystemColor(*this, "SystemColor"),
      ColorValue(*this, "ColorValue"),
      NumberForm(*this, "NumberForm"),
      NumberDigits(*this, "NumberDigits", NumberType::kInteger),
      NumberExample(*this, "NumberExample"),
      settings_(settings),
      onChange_(std::move(onChange)),
      colorsBefore_(settings.GetSelectedColors()),
      numbersBefore_(settings.View().SummaryNumbers) {
  Caption = "COLORS";
  for (int color = 0; color < kColors; ++color) {
    ColorRow.Add(Settings::ColorName(color));
  }
  for (const NamedColor& color : kStandardColors) {
    StandardColor.Add(color.name);
  }
  for (const std::string_view name : kSystemColors) {
    SystemColor.Add(name);
  }
  NumberForm.SetItems({"General", "Number", "Scientific", "Custom"});
  NumberDigits.Limits(0, kMaxFormDigits);
  ColorRow.OnPick = [this] { showRow(); };
  StandardColor.OnPick = [this] {
    if (IsLoading()) return;
    takeColor(kStandardColors[static_cast<std::size_t>(StandardColor.Index())].value);
  };
  SystemColor.OnPick = [this] {
    if (!IsLoading()) takeColor(systemColor(SystemColor.Index()));
  };
  NumberForm.OnPick = [this] {
    if (!IsLoading()) takeNumbers();
  };
  NumberDigits.OnTake = [this] { takeNumbers(); };
  const Loading loading(*this);
  ColorRow.PickAt(0);
  NumberForm.PickAt(static_cast<int>(numbersBefore_.form));
  NumberDigits.Value(numbersBefore_.digits);
  showNumbers();
  Describe(*this, kColorFaces);
}

void frmOptGen::takeColor(i32 color) {
  ColorTable colors = settings_.GetSelectedColors();
  colors[static_cast<std::size_t>(ColorRow.Index())][kValueColumn] = NumberText(color);
  settings_.SetSelectedColors(colors);
  showRow();
  if (onChange_) onChange_();
}

void frmOptGen::showRow() {
  const Loading loading(*this);
  const i32 color = settings_.ColorValue(ColorRow.Index());
  StandardColor.PickAt(standardPlace(color));
  SystemColor.PickAt(systemPlace(color));
  ColorValue.Text(NumberText(color));
}

void frmOptGen::takeNumbers() {
  settings_.View().SummaryNumbers = {static_cast<ostrand::NumberForm>(NumberForm.Index()),
                                     static_cast<i32>(NumberDigits.Value())};
  showNumbers();
  if (onChange_) onChange_();
}

void frmOptGen::showNumbers() {
  const NumberFormat& numbers = settings_.View().SummaryNumbers;
  NumberDigits.Enabled = numbers.form != ostrand::NumberForm::kGeneral;
  NumberExample.Text(FormattedNumber(kExampleNumber, numbers));
}

bool frmOptGen::onCancel() {
  settings_.SetSelectedColors(colorsBefore_);
  settings_.View().SummaryNumbers = numbersBefore_;
  if (onChange_) onChange_();
  return true;
}

}  // namespace ostrand
