#include "script/setup_screens.h"

#include <array>
#include <memory>
#include <type_traits>

#include "blocks/frm_brdg_block.h"
#include "blocks/frm_pulse_block.h"
#include "blocks/frm_temp_block.h"
#include "blocks/frm_tk40m_block.h"
#include "blocks/frm_volt_block.h"
#include "calc/frm_calculated.h"
#include "calc/frm_solve_list.h"
#include "can/frm_can_bus.h"
#include "conditions/frm_fld_name.h"
#include "conditions/names_backup.h"
#include "logger/frm_config.h"
#include "logger/frm_excite.h"
#include "logger/frm_execute.h"
#include "logger/frm_flags.h"
#include "logger/frm_port_tables.h"
#include "logger/frm_ports.h"
#include "platform/surroundings.h"
#include "session/frm_opt_gen.h"
#include "session/frm_opt_orvus.h"
#include "session/user_action.h"
#include "tables/frm_out_int.h"
#include "text/number.h"
#include "text/strings.h"
#include "verify/pick_var_checks.h"

namespace ostrand {
namespace {

ScreenContext contextOf(Ostrand& control, ScreenHost& host) {
  Settings& settings = control.UserSettings();
  return {control.Store(),
          control.Around().forms,
          host,
          settings.Options(),
          settings.WarningMessageMask(),
          settings.UserVarListTypes(),
          &settings.View().ConditionFont};
}

// ---- What the screens of one room call up of another --------------------------------------------

bool solve(const ScreenContext& context, const CalculatorSource& source, DefaultScaling& scaling) {
  const std::optional<ScalingAnswer> answer = SolveScaling(context, source);
  if (!answer) return false;
  scaling.Mult = ToSingle(answer->multiplier).value_or(scaling.Mult);
  if (answer->offset) scaling.Offset = ToSingle(*answer->offset).value_or(scaling.Offset);
  if (!answer->units.empty()) scaling.Units = answer->units;
  return true;
}

CalculatorSource calculatorSource(const SolveSource& source) {
  return {.kind = std::string(source.kind),
          .onTemperature = source.onTemperature,
          .inVolts = source.inVolts,
          .inOhms = source.inOhms};
}

struct SourceKind {
  OrvusDataObjTypes type;
  std::string_view kind;  // to the calculators
};
constexpr std::array<SourceKind, 5> kSourceKinds = {{
    {ORVUS_DOBJ_BLK_TEMP, "Temp"},
    {ORVUS_DOBJ_BLK_VOLT, "Volts"},
    {ORVUS_DOBJ_BLK_BRIDGE, "Brdg"},
    {ORVUS_DOBJ_BLK_PULSE, "Pulse"},
    {ORVUS_DOBJ_BLK_TK40M, "TK40M"},
}};

std::string sourceKindOf(OrvusDataObjTypes type) {
  for (const SourceKind& row : kSourceKinds) {
    if (row.type == type) return std::string(row.kind);
  }
  return {};
}

void editFieldNames(const ScreenContext& context, const FieldNamesRequest& request) {
  frmFldName::Calculator calculator;
  CalculatorSource source = calculatorSource(request.solveSource);
  source.blockKind = source.kind.empty() ? sourceKindOf(request.kind) : source.kind;
  source.kind = "FieldGrid";
  // CAN items bring scaled values of their own, and no calculator finds a gauge factor.
  if (!source.blockKind.empty() && !request.gaugeFactor) {
    calculator = [&context, source](DefaultScaling& scaling) {
      return solve(context, source, scaling);
    };
  }
  frmFldName names(context, request, std::move(calculator));
  context.host.ShowModal(names);
}

SetupHooks hooksOf(const ScreenContext& context) {
  SetupHooks hooks;
  hooks.Solve = [context](const SolveSource& source, DefaultScaling& scaling) {
    return solve(context, calculatorSource(source), scaling);
  };
  hooks.FieldNames = [context](const FieldNamesRequest& request) {
    editFieldNames(context, request);
  };
  hooks.ReferenceOutput = [context] {
    frmPortTables output(context, SingleValue::kTK40MRef);
    context.host.ShowModal(output);
  };
  return hooks;
}

// `renamed` gets the names that values of items were given.
CanHooks canHooksOf(const ScreenContext& context, std::vector<AliasRenames>& renamed) {
  CanHooks hooks;
  hooks.Outputs = [context](CanItemData& item, int number) {
    frmPortTables output(context, {.caption = "CAN ITEM " + NumberText(number),
                                   .source = item.Name,
                                   .resolution = item.DataResolution,
                                   .isPublic = item.Public,
                                   .output = item.Output});
    context.host.ShowModal(output);
    return output.Result() == ModalResult::kDone;
  };
  hooks.FieldNames = [context, &renamed](CanItemData& item, int number) {
    const auto before = item.Alias;
    editFieldNames(context, {.kind = ORVUS_DOBJ_BLK_QBCAN,
                             .block = number,
                             .name = item.Name,
                             .defaults = DefaultScalingOf(item),
                             .aliases = AliasesOf(item.Alias, item.Reps),
                             .onRename = [&renamed](const AliasRenames& renames) {
                               renamed.push_back(renames);
                             }});
    return !(item.Alias == before);
  };
  return hooks;
}

// ---- The screens of the buttons -----------------------------------------------------------------

template <class Form>
void show(Ostrand& control, ScreenHost& host) {
  Form form(contextOf(control, host));
  host.ShowModal(form);
}

// Variables that conditions name may be gone after an edit of the blocks.
template <class Form, auto Blocks>
void showBlocks(Ostrand& control, ScreenHost& host) {
  const ScreenContext context = contextOf(control, host);
  const auto& blocks = control.Store().*Blocks;
  Form form(context, hooksOf(context));
  const auto before = std::make_unique<std::decay_t<decltype(blocks)>>(blocks);
  host.ShowModal(form);
  if (form.Result() == ModalResult::kDone && !(blocks == *before)) {
    ORVUS_COMMON::VerifyPickVars(control.Checks(), kWarnVariablesAfterEdits);
  }
}

void showCan(Ostrand& control, ScreenHost& host) {
  const ScreenContext context = contextOf(control, host);
  // Names of values go into the project at once, and out again with the items; those into which
  // the screen's own items go come with Done.
  NamesBackup names(control.Store());
  std::vector<AliasRenames> renamed;
  frmCanBus form(context, control.Around().files, control.WorkDir(), canHooksOf(context, renamed));
  host.ShowModal(form);
  if (form.Result() != ModalResult::kDone) return;
  names.Keep();
  for (const AliasRenames& renames : renamed) {
    for (CanItemData& item : control.Store().Can.Item.Made()) RenameInLevels(item.Output, renames);
  }
}

void showCalculated(Ostrand& control, ScreenHost& host) {
  const ScreenContext context = contextOf(control, host);
  const FormulaListPlace place{control.Around().files, control.Around().clock, control.WorkDir(),
                               control.BaseName()};
  frmCalculated form(context, place, [&context](int field) {
    frmPortTables output(context, SingleValue::kCalcField, field);
    context.host.ShowModal(output);
  });
  host.ShowModal(form);
}

struct ScreenRow {
  int button;
  std::string_view name;
  void (*show)(Ostrand& control, ScreenHost& host);
};

constexpr std::array<ScreenRow, 13> kScreens = {{
    {kConfigurationButton, "frmConfig", show<frmConfig>},
    {kExecutionButton, "frmExecute", show<frmExecute>},
    {kTablesButton, "frmOutInt", show<frmOutInt>},
    {kThermocoupleButton, "frmTempBlock", showBlocks<frmTempBlock, &ProjectStore::TempBlock>},
    {kVoltageButton, "frmVoltBlock", showBlocks<frmVoltBlock, &ProjectStore::VoltBlock>},
    {kBridgeButton, "frmBrdgBlock", showBlocks<frmBrdgBlock, &ProjectStore::BridgeBlock>},
    {kPulseButton, "frmPulseBlock", showBlocks<frmPulseBlock, &ProjectStore::PulseBlock>},
    {kTK40MButton, "frmTK40MBlock", showBlocks<frmTK40MBlock, &ProjectStore::TK40MBlock>},
    {kCanButton, "frmCanBus", showCan},
    {kCalcFieldsButton, "frmCalculated", showCalculated},
    {kPortsButton, "frmPorts", show<frmPorts>},
    {kFlagsButton, "frmFlags", show<frmFlags>},
    {kExciteButton, "frmExcite", show<frmExcite>},
}};

// ---- The option screens -------------------------------------------------------------------------

// `make` makes a fresh one each time it is shown.
template <class Make>
OptionDialog optionDialog(ScreenHost& host, Make make) {
  const auto shown = std::make_shared<Screen*>(nullptr);
  return {[&host, shown, make] {
            const auto form = make();
            *shown = form.get();
            Finally([&] { host.ShowModal(*form); }, [&] { *shown = nullptr; });
            return form->Result() == ModalResult::kDone;
          },
          [shown] {
            if (*shown != nullptr) (*shown)->Cancel();
          }};
}

}  // namespace

void ConnectSetupScreens(Ostrand& control, ScreenHost& host) {
  for (const ScreenRow& row : kScreens) {
    control.Screens()[row.button] = [&control, &host, &row] { row.show(control, host); };
  }
  control.ColorsScreen(optionDialog(host, [&control, &host] {
    return std::make_unique<frmOptGen>(contextOf(control, host), control.UserSettings(),
                                       [&control] { control.ApplyColors(); });
  }));
  control.SettingsScreen(optionDialog(host, [&control, &host] {
    return std::make_unique<frmOptOrvus>(contextOf(control, host), control.UserSettings());
  }));
}

int ButtonOfScreen(std::string_view name) {
  for (const ScreenRow& row : kScreens) {
    if (SameText(row.name, name)) return row.button;
  }
  return -1;
}

}  // namespace ostrand
