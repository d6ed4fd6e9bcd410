#include "session/frm_opt_gen.h"

#include <algorithm>
#include <utility>

#include "text/mask.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr int kMostDigits = 8;
constexpr double kExampleNumber = 1234.5678;
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
// In the order of their numbers.
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

std::string SummaryNumberMask(SummaryNumbers form, int digits) {
  const auto places = static_cast<std::size_t>(std::clamp(digits, 0, kMostDigits));
  const std::string point = places > 0 ? "." : "";
  switch (form) {
    case SummaryNumbers::kNumber:
      return "#,##0" + point + std::string(places, '0');
    case SummaryNumbers::kScientific:
      return "0" + point + std::string(places, '0') + "e+00";
    case SummaryNumbers::kCustom:
      return "0" + point + std::string(places, '#');
    case SummaryNumbers::kGeneral:
      break;
  }
  return {};
}

frmOptGen::frmOptGen(const ScreenContext& context, Settings& settings,
                     std::function<void()> onChange)
    : Screen(context, "frmOptGen"),
      ColorRow(*this, "ColorRow"),
      StandardColor(*this, "StandardColor"),
      SystemColor(*this, "SystemColor"),
      ColorValue(*this, "ColorValue"),
      NumberFormat(*this, "NumberFormat"),
      NumberDigits(*this, "NumberDigits", NumberType::kInteger),
      NumberExample(*this, "NumberExample"),
      settings_(settings),
      onChange_(std::move(onChange)),
      before_(settings.GetSelectedColors()) {
  Caption = "COLORS";
  for (int color = 0; color < Settings::kColors; ++color) {
    ColorRow.Items.push_back({std::string(Settings::ColorName(color)), true, true, {}});
  }
  for (const NamedColor& color : kStandardColors) {
    StandardColor.Items.push_back({std::string(color.name), true, true, {}});
  }
  for (const std::string_view name : kSystemColors) {
    SystemColor.Items.push_back({std::string(name), true, true, {}});
  }
  NumberFormat.SetItems({"General", "Number", "Scientific", "Custom"});
  NumberDigits.Limits(0, kMostDigits);
  NumberDigits.Value(2);
  ColorRow.OnPick = [this] { showRow(); };
  StandardColor.OnPick = [this] {
    if (IsLoading()) return;
    takeColor(kStandardColors[static_cast<std::size_t>(StandardColor.Index())].value);
  };
  SystemColor.OnPick = [this] {
    if (!IsLoading()) takeColor(systemColor(SystemColor.Index()));
  };
  NumberFormat.OnPick = [this] { showNumbers(); };
  NumberDigits.OnTake = [this] { showNumbers(); };
  const Loading loading(*this);
  ColorRow.Index(0);
  NumberFormat.Index(0);
}

void frmOptGen::takeColor(i32 color) {
  Settings::ColorTable colors = settings_.GetSelectedColors();
  colors[static_cast<std::size_t>(ColorRow.Index())][kValueColumn] = NumberText(color);
  settings_.SetSelectedColors(colors);
  showRow();
  if (onChange_) onChange_();
}

void frmOptGen::showRow() {
  const Loading loading(*this);
  const i32 color = settings_.ColorValue(ColorRow.Index());
  StandardColor.Index(standardPlace(color));
  SystemColor.Index(systemPlace(color));
  ColorValue.Text(NumberText(color));
}

std::string frmOptGen::NumberMask() const {
  return SummaryNumberMask(static_cast<SummaryNumbers>(NumberFormat.Index()),
                           static_cast<int>(NumberDigits.Value()));
}

void frmOptGen::showNumbers() {
  const std::string mask = NumberMask();
  NumberDigits.Enabled = !mask.empty();
  NumberExample.Text(mask.empty() ? NumberText(kExampleNumber)
                                  : FormatNumber(kExampleNumber, mask));
}

bool frmOptGen::onCancel() {
  settings_.SetSelectedColors(before_);
  if (onChange_) onChange_();
  return true;
}

}  // namespace ostrand
