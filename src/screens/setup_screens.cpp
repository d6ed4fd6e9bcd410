#include "screens/setup_screens.h"

#include <array>
#include <memory>
#include <type_traits>

#include "calc/frm_calculated.h"
#include "can/frm_can_bus.h"
#include "controls/screen_factory.h"
#include "platform/surroundings.h"
#include "screens/all_screens.h"
#include "session/settings.h"
#include "session/user_action.h"
#include "text/strings.h"
#include "verify/pick_var_checks.h"

namespace ostrand {
namespace {

ScreenContext contextOf(Ostrand& control, ScreenHost& host) {
  Settings& settings = control.UserSettings();
  return {control.Store(),
          control.Around().forms,
          host,
          AllScreens(),
          settings.Options(),
          settings.WarningMessageMask(),
          settings.UserVarListTypes(),
          &settings.View().ConditionFont};
}

// ---- The screens of the buttons -----------------------------------------------------------------

using Show = void (*)(Ostrand& control, const ScreenContext& context, std::string_view screen);

void show(Ostrand&, const ScreenContext& context, std::string_view screen) {
  OpenScreen(context, MakeScreen(context, screen));
}

// An edit of the blocks may remove variables that conditions name.
template <auto Blocks>
void showBlocks(Ostrand& control, const ScreenContext& context, std::string_view screen) {
  const auto& blocks = control.Store().*Blocks;
  const std::unique_ptr<Screen> form = MakeScreen(context, screen);
  const auto before = std::make_unique<std::decay_t<decltype(blocks)>>(blocks);
  if (OpenScreen(context, form) && !(blocks == *before)) {
    ORVUS_COMMON::VerifyPickVars(control.Checks(), kWarnVariablesAfterEdits);
  }
}

void showCan(Ostrand& control, const ScreenContext& context, std::string_view screen) {
  CanRequest request{control.Around().files, control.WorkDir()};
  OpenScreen(context, screen, request);
}

void showCalculated(Ostrand& control, const ScreenContext& context, std::string_view screen) {
  FormulaListPlace place{control.Around().files, control.Around().clock, control.WorkDir(),
                         control.BaseName()};
  OpenScreen(context, screen, place);
}

struct ScreenRow {
  int button;
  std::string_view name;
  Show show;
};

constexpr std::array<ScreenRow, 13> kScreens = {{
    {kConfigurationButton, "frmConfig", show},
    {kExecutionButton, "frmExecute", show},
    {kTablesButton, "frmOutInt", show},
    {kThermocoupleButton, "frmTempBlock", showBlocks<&ProjectStore::TempBlock>},
    {kVoltageButton, "frmVoltBlock", showBlocks<&ProjectStore::VoltBlock>},
    {kBridgeButton, "frmBrdgBlock", showBlocks<&ProjectStore::BridgeBlock>},
    {kPulseButton, "frmPulseBlock", showBlocks<&ProjectStore::PulseBlock>},
    {kTK40MButton, "frmTK40MBlock", showBlocks<&ProjectStore::TK40MBlock>},
    {kCanButton, "frmCanBus", showCan},
    {kCalcFieldsButton, "frmCalculated", showCalculated},
    {kPortsButton, "frmPorts", show},
    {kFlagsButton, "frmFlags", show},
    {kExciteButton, "frmExcite", show},
}};

// ---- The option screens -------------------------------------------------------------------------

// A new screen each time it is shown.
OptionDialog optionDialog(Ostrand& control, ScreenHost& host, std::string_view screen) {
  const auto shown = std::make_shared<Screen*>(nullptr);
  return {[&control, &host, shown, screen] {
            const ScreenContext context = contextOf(control, host);
            OptionsRequest request{control.UserSettings(), [&control] { control.ApplyColors(); }};
            const auto form = MakeScreen(context, screen, request);
            *shown = form.get();
            bool done = false;
            Finally([&] { done = OpenScreen(context, form); }, [&] { *shown = nullptr; });
            return done;
          },
          [shown] {
            if (*shown != nullptr) (*shown)->Cancel();
          }};
}

}  // namespace

void ConnectSetupScreens(Ostrand& control, ScreenHost& host) {
  for (const ScreenRow& row : kScreens) {
    control.Screens()[row.button] = [&control, &host, &row] {
      row.show(control, contextOf(control, host), row.name);
    };
  }
  control.SettingsScreen(optionDialog(control, host, kOptionScreens[0].name));
  control.ColorsScreen(optionDialog(control, host, kOptionScreens[1].name));
}

std::vector<std::string_view> MainScreenNames() {
  std::vector<std::string_view> names;
  names.reserve(std::size(kScreens) + std::size(kOptionScreens));
  for (const ScreenRow& row : kScreens) names.push_back(row.name);
  for (const OptionScreen& row : kOptionScreens) names.push_back(row.name);
  return names;
}

int ButtonOfScreen(std::string_view name) {
  for (const ScreenRow& row : kScreens) {
    if (SameText(row.name, name)) return row.button;
  }
  return -1;
}

}  // namespace ostrand
