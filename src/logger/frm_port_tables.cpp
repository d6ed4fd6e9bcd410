#include "logger/frm_port_tables.h"

#include <utility>

#include "logger/faces.h"
#include "model/names.h"
#include "text/number.h"

namespace ostrand {

ItemOutputsRequest frmPortTables::KeptOf(ProjectStore& store, SingleValue value, int number) {
  const auto reference = [](std::string caption, std::string_view source, ReferenceOutput& kept) {
    return ItemOutputsRequest{std::move(caption), std::string(source), kept.DataResolution,
                              kept.Public, kept.Output};
  };
  switch (value) {
    case SingleValue::kPortBytes: {
      PortSlot& slot = store.Ports.Slot[number];
      return {std::string("PORT TABLE SELECT, SLOT ") + (number == 0 ? "1-8" : "9-16"),
              std::string(slot.ReadMode != 0 ? kReadPort : kWritPort), slot.DataResolution,
              slot.Public, slot.Output};
    }
    case SingleValue::kTK40MRef:
      return reference("TK40M REFERENCE TEMPERATURES", kTK40Ref, store.TK40MRef);
    case SingleValue::kCalcField: {
      CalcFieldData& field = store.CalcFields.Field[number];
      return {"CALCULATED FIELDS  FORMULA " + NumberText(number), "Calc" + NumberText(number),
              field.DataResolution, field.Public, field.Output};
    }
    case SingleValue::kBatteryVolts:
      return reference("LOGGER BATTERY VOLTAGE", kBattVolt, store.PowerOut);
    case SingleValue::kPanelRef:
      break;
  }
  return reference("PANEL REFERENCE TEMPERATURE", kTRef, store.TcRef);
}

frmPortTables::frmPortTables(const ScreenContext& context, const ValueOutputsRequest& request)
    : frmPortTables(context, KeptOf(context.store, request.value, request.number)) {
  limit(request.value, request.number);
}

frmPortTables::frmPortTables(const ScreenContext& context, ItemOutputsRequest request)
    : Screen(context, "frmPortTables"),
      DataResolution(*this, "DataResolution"),
      Public(*this, "Public"),
      Output(*this, store()),
      kept_(std::move(request)),
      output_(kept_.output) {
  Caption = kept_.caption;
  DataResolution.SetItems({"FP2", "IEEE4"});
  Output.AskBy(context, DataResolution, kept_.source);
  Describe(*this, kPortTablesFaces);
  const Loading loading(*this);
  DataResolution.Pick(kept_.resolution);
  Public.Checked(kept_.isPublic != kFalse);
  Output.Show(output_);
}

// Outputs that the project cannot store or the program cannot measure are not offered: reference
// temperatures have no parameters, levels have arrays only in blocks, items and formulas, and ports
// are stored as they are except for a histogram of their byte, and only when they are read.
void frmPortTables::limit(SingleValue value, int number) {
  if (value != SingleValue::kCalcField) {
    Output.Offer(kLevelCrossing, "Only blocks, CAN items and formulas have level crossings.");
  }
  if (value == SingleValue::kPortBytes) {
    const PortSlot& slot = store().Ports.Slot[number];
    const std::string_view whyNot =
        slot.ReadMode != 0 ? "" : "Only ports that are read are stored.";
    for (int code = kSample; code <= kHistogram; ++code) {
      Output.Offer(static_cast<OutputCode>(code), whyNot);
    }
    if (whyNot.empty() && slot.Ports[kPorts].Include == kFalse) {
      Output.Offer(kHistogram, "Needs the byte of the ports to be included.");
    }
    Output.Offer(kRainFlow, "Ports have no rainflow histogram.");
  } else if (value == SingleValue::kPanelRef || value == SingleValue::kTK40MRef) {
    for (const OutputCode code : {kHistogram, kRainFlow}) {
      Output.Offer(code, "The project keeps no histogram of reference temperatures.");
    }
  }
}

bool frmPortTables::onDone() {
  if (DataResolution.Index() >= 0) kept_.resolution = DataResolution.Text();
  if (Public.Checked() != (kept_.isPublic != kFalse)) {
    kept_.isPublic = Public.Checked() ? kTrue : kFalse;
  }
  kept_.output = output_;
  return true;
}

}  // namespace ostrand
