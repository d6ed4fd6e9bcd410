#include "places.h"

#include <array>
#include <string_view>

#include "session/main_buttons.h"
#include "text/number.h"
#include "text/strings.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// What is edited behind a main button: blocks with a setup screen, items of a choice, or items with
// controls of their own.
struct ButtonScreen {
  int button;
  std::string_view screen;
  std::string_view setup = {};
  const char* block = "";
  std::string_view pick = {};
  std::string_view control = {};  // the stem of the controls of an item
};
constexpr std::array<ButtonScreen, 13> kButtonScreens = {{
    {kConfigurationButton, "frmConfig"},
    {kExecutionButton, "frmExecute"},
    {kThermocoupleButton, "frmTempBlock", "frmTempSetup", "Thermocouple block"},
    {kVoltageButton, "frmVoltBlock", "frmVoltSetup", "Voltage block"},
    {kBridgeButton, "frmBrdgBlock", "frmBrdgSetup", "Bridge block"},
    {kPulseButton, "frmPulseBlock", "frmPulseSetup", "Pulse block"},
    {kTK40MButton, "frmTK40MBlock", "frmTK40MSetup", "Multiplexer block"},
    {kTablesButton, "frmOutInt", {}, "", "Table"},
    {kCanButton, "frmCanBus", {}, "", "Item"},
    {kCalcFieldsButton, "frmCalculated", {}, "", "Formulas"},
    {kFlagsButton, "frmFlags", {}, "", {}, "FlagInclude"},
    {kPortsButton, "frmPorts", {}, "", {}, "Include"},
    {kExciteButton, "frmExcite", {}, "", {}, "Include"},
}};

const ButtonScreen* rowOf(int button) {
  for (const ButtonScreen& row : kButtonScreens) {
    if (row.button == button) return &row;
  }
  return nullptr;
}

}  // namespace

ScreenPlace PlaceOfButton(int button) {
  const ButtonScreen* row = rowOf(button);
  if (row == nullptr) return {};
  return {{{row->screen}}, {}};
}

ScreenPlace PlaceOfBlock(int button, int block, int sensor) {
  const ButtonScreen* row = rowOf(button);
  if (row == nullptr) return {};
  ScreenPlace place{{{row->screen}, {row->setup, NumberText(block)}}, {}};
  if (sensor > 0) {
    place.steps.push_back({"frmFldName"});
    place.control = "AliasName" + NumberText(sensor);
  }
  return place;
}

ScreenPlace PlaceOfItem(int button, int item) {
  const ButtonScreen* row = rowOf(button);
  if (row == nullptr) return {};
  if (row->control.empty()) return {{{row->screen, {}, row->pick, item - 1}}, {}};
  return {{{row->screen}}, std::string(row->control) + NumberText(item)};
}

QString BlockOf(const Screen& screen) {
  for (const ButtonScreen& row : kButtonScreens) {
    if (row.setup.empty() || screen.Name() != row.setup) continue;
    const int block = ToInt16(Before(screen.Caption, " ")).value_or(0);
    return QStringLiteral("%1 %2").arg(QString::fromLatin1(row.block)).arg(block);
  }
  return {};
}

}  // namespace ostrand::desktop
