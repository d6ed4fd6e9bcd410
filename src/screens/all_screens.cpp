#include "screens/all_screens.h"

#include <array>

#include "blocks/frm_brdg_block.h"
#include "blocks/frm_brdg_setup.h"
#include "blocks/frm_graphs.h"
#include "blocks/frm_pulse_block.h"
#include "blocks/frm_pulse_setup.h"
#include "blocks/frm_temp_block.h"
#include "blocks/frm_temp_setup.h"
#include "blocks/frm_tk40m_block.h"
#include "blocks/frm_tk40m_setup.h"
#include "blocks/frm_volt_block.h"
#include "blocks/frm_volt_setup.h"
#include "calc/frm_calc_mult_off.h"
#include "calc/frm_calc_mv_per_volt.h"
#include "calc/frm_calculated.h"
#include "calc/frm_flow_calc.h"
#include "calc/frm_more_speed.h"
#include "calc/frm_rpm_calc.h"
#include "calc/frm_rs_calc.h"
#include "calc/frm_solve_list.h"
#include "calc/frm_spd_calc.h"
#include "can/frm_can_adv.h"
#include "can/frm_can_bus.h"
#include "can/frm_can_pick.h"
#include "conditions/frm_fld_name.h"
#include "logger/frm_config.h"
#include "logger/frm_excite.h"
#include "logger/frm_execute.h"
#include "logger/frm_flags.h"
#include "logger/frm_port_tables.h"
#include "logger/frm_ports.h"
#include "session/frm_opt_gen.h"
#include "session/frm_opt_orvus.h"
#include "tables/frm_histogram.h"
#include "tables/frm_level.h"
#include "tables/frm_out_int.h"
#include "tables/frm_rain_histo.h"
#include "tables/frm_table_times.h"
#include "tables/frm_trig_table.h"
#include "tables/frm_write_if.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using Made = std::unique_ptr<Screen>;

// The data of a request; null when it has another kind of data, or none.
template <class Data>
Data* dataOf(ScreenRequest& request) {
  auto* with = dynamic_cast<RequestWith<Data>*>(&request);
  return with == nullptr ? nullptr : &with->Get();
}

// A screen that needs only the project.
template <class Form>
Made plain(const ScreenContext& context, ScreenRequest&) {
  return std::make_unique<Form>(context);
}

template <class Form, class Data>
Made with(const ScreenContext& context, ScreenRequest& request) {
  Data* data = dataOf<Data>(request);
  return data == nullptr ? nullptr : std::make_unique<Form>(context, *data);
}

// A calculator, and the data it uses of the request.
template <class Form, auto... Member>
Made calculator(const ScreenContext& context, ScreenRequest& request) {
  auto* data = dataOf<CalculatorRequest>(request);
  if (data == nullptr) return nullptr;
  auto form = std::make_unique<Form>(context, data->*Member...);
  form->AnswerTo(*data);
  return form;
}

Made colors(const ScreenContext& context, ScreenRequest& request) {
  auto* data = dataOf<OptionsRequest>(request);
  if (data == nullptr) return nullptr;
  return std::make_unique<frmOptGen>(context, data->settings, data->applyColors);
}

Made settings(const ScreenContext& context, ScreenRequest& request) {
  auto* data = dataOf<OptionsRequest>(request);
  return data == nullptr ? nullptr : std::make_unique<frmOptOrvus>(context, data->settings);
}

struct Row {
  std::string_view name;
  Made (*make)(const ScreenContext& context, ScreenRequest& request);
};
constexpr auto kAxis = &CalculatorRequest::axis;
constexpr std::array kRows = {
    // Main buttons.
    Row{"frmConfig", plain<frmConfig>},
    Row{"frmExecute", plain<frmExecute>},
    Row{"frmOutInt", plain<frmOutInt>},
    Row{"frmTempBlock", plain<frmTempBlock>},
    Row{"frmVoltBlock", plain<frmVoltBlock>},
    Row{"frmBrdgBlock", plain<frmBrdgBlock>},
    Row{"frmPulseBlock", plain<frmPulseBlock>},
    Row{"frmTK40MBlock", plain<frmTK40MBlock>},
    Row{"frmCanBus", with<frmCanBus, CanRequest>},
    Row{"frmCalculated", with<frmCalculated, FormulaListPlace>},
    Row{"frmPorts", plain<frmPorts>},
    Row{"frmFlags", plain<frmFlags>},
    Row{"frmExcite", plain<frmExcite>},
    // Blocks.
    Row{"frmTempSetup", with<frmTempSetup, AnalogSetupRequest>},
    Row{"frmVoltSetup", with<frmVoltSetup, AnalogSetupRequest>},
    Row{"frmTK40MSetup", with<frmTK40MSetup, AnalogSetupRequest>},
    Row{"frmBrdgSetup", with<frmBrdgSetup, BrdgSetupRequest>},
    Row{"frmPulseSetup", with<frmPulseSetup, PulseSetupRequest>},
    Row{"frmFldName", with<frmFldName, FieldNamesRequest>},
    Row{"frmLogGraph", with<frmLogGraph, LogGraphRequest>},
    Row{"frmTK40Graph", with<frmTK40Graph, MuxMapRequest>},
    // Tables and their outputs.
    Row{"frmTrigTable", with<frmTrigTable, cOutputTable>},
    Row{"frmWriteIf", with<frmWriteIf, cOutputTable>},
    Row{"frmTableTimes", with<frmTableTimes, TableTimesRequest>},
    Row{"frmHistogram", with<frmHistogram, HistoTarget>},
    Row{"frmRainHisto", with<frmRainHisto, HistoTarget>},
    Row{"frmLevel", with<frmLevel, HistoTarget>},
    Row{"frmPortTables", with<frmPortTables, ValueOutputsRequest>},
    Row{"frmPortTables", with<frmPortTables, ItemOutputsRequest>},
    // Calculators.
    Row{"frmSolveList", with<frmSolveList, SolveRequest>},
    Row{"frmCalcMultOff", calculator<frmCalcMultOff, kAxis>},
    Row{"frmCalcPot", calculator<frmCalcPot, kAxis>},
    Row{"frmCalcmVPerVolt", calculator<frmCalcmVPerVolt, &CalculatorRequest::inVolts>},
    Row{"frmRsCalc", calculator<frmRsCalc>},
    Row{"frmSpdCalc", calculator<frmSpdCalc>},
    Row{"frmMoreSpeed", calculator<frmMoreSpeed>},
    Row{"frmRPMCalc", calculator<frmRPMCalc>},
    Row{"frmFlowCalc", calculator<frmFlowCalc>},
    // CAN.
    Row{"frmCanAdv", with<frmCanAdv, CanModuleData>},
    Row{"frmCanPick", with<frmCanPick, CanPickRequest>},
    // The user's options.
    Row{"frmOptOrvus", settings},
    Row{"frmOptGen", colors},
};

class AllScreensFactory final : public ScreenFactory {
 public:
  [[nodiscard]] std::unique_ptr<Screen> Make(const ScreenContext& context,
                                             ScreenRequest& request) const override {
    for (const Row& row : kRows) {
      if (!SameText(row.name, request.Screen())) continue;
      if (Made made = row.make(context, request)) return made;
    }
    return nullptr;
  }
};

}  // namespace

const ScreenFactory& AllScreens() {
  static const AllScreensFactory factory;
  return factory;
}

}  // namespace ostrand
