#include "logger/frm_config.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "conditions/flag_usage.h"
#include "conditions/screen_requests.h"
#include "logger/faces.h"
#include "logger/state_rows.h"
#include "model/channel_chart.h"
#include "model/channels.h"
#include "model/defaults.h"
#include "platform/box.h"
#include "tables/table_objects.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr int kAutomatic = 0;
constexpr int kManual = 1;
constexpr int kMBytes = 0;
constexpr int kGBytes = 1;
constexpr double kMBytesOfGByte = 1024;
constexpr int kFirstMultiplexerPort = 7;  // C7 and C8 drive the multiplexers

template <std::size_t... I>
std::array<CheckBox, sizeof...(I)> makeBoxes(Screen& screen, std::index_sequence<I...>) {
  return {CheckBox(screen, "MonitorPower" + NumberText(static_cast<int>(I) + 1))...};
}

bool anyPortIncluded(const ProjectStore& store) {
  return std::any_of(store.Ports.Slot.begin(), store.Ports.Slot.end(), [](const PortSlot& slot) {
    return std::any_of(slot.Ports.begin(), slot.Ports.end(),
                       [](const Port& port) { return port.Include != kFalse; });
  });
}

}  // namespace

frmConfig::frmConfig(const ScreenContext& context)
    : Screen(context, "frmConfig"),
      variables_(context.store, context.UserVarListTypes),
      CanBusQty(*this, "CanBusQty"),
      TK40MQty(*this, "TK40MQty"),
      AutoChan(*this, "AutoChan"),
      SizeCard(*this, "SizeCard", NumberType::kSingle),
      SizeCardUnits(*this, "SizeCardUnits"),
      MonitorPower(makeBoxes(*this, std::make_index_sequence<5>())),
      BatteryOutput(*this, "BatteryOutput", "frmPortTables", {"BatteryOutput", {}}),
      PanelOutput(*this, "PanelOutput", "frmPortTables", {"PanelOutput", {}}),
      Power(*this, context.store.Config, variables_),
      Saver(*this, context.store.Config),
      Status(*this, context.store.Config),
      before_(context.store.Config),
      batteryBefore_(context.store.PowerOut),
      panelBefore_(context.store.TcRef) {
  Caption = "CONFIGURATION";
  AutoChan.SetItems({"Auto Channel Selection", "Manual Channel Selection"});
  SizeCard.Limits(0, SizeCard.Max());
  SizeCardUnits.SetItems({"M bytes", "G bytes"});
  CanBusQty.WhyChanged = [] { return "it takes 0 to " + NumberText(kMaxCanModules); };
  CanBusQty.OnTake = [this] { takeCanBusQty(); };
  TK40MQty.OnTake = [this] { takeTK40MQty(); };
  AutoChan.OnPick = [this] {
    if (!IsLoading()) takeAutoChan();
  };
  SizeCard.OnTake = [this] { takeSizeCard(); };
  SizeCardUnits.OnPick = [this] {
    if (!IsLoading()) takeSizeCard();
  };
  ReportPickedFlag(Power.Condition, Forms(), store());
  Status.OnRows = [this] { listVariables(); };
  Status.OnFlag = [this](int flagNumber) {
    CheckFlagUsage(Forms(), store(), flagNumber, kStatusMonitorUser);
  };
  bindBoxes();
  Describe(*this, kConfigFaces);
  load();
}

void frmConfig::bindBoxes() {
  for (int entry = kMonitorBattery; entry <= kMonitorStatus; ++entry) {
    box(entry).OnClick = [this, entry] {
      if (!IsLoading()) takeBox(entry);
    };
  }
  BatteryOutput.OnPress = [this] { showOutput(kMonitorBattery); };
  PanelOutput.OnPress = [this] { showOutput(kMonitorPanel); };
}

void frmConfig::showOutput(int entry) {
  ValueOutputsRequest request{entry == kMonitorBattery ? SingleValue::kBatteryVolts
                                                       : SingleValue::kPanelRef};
  OpenScreen(context(), "frmPortTables", request);
}

void frmConfig::load() {
  const Loading loading(*this);
  CanBusQty.Text(NumberText(config().CanBusQty));
  TK40MQty.Text(NumberText(config().TK40MQty));
  AutoChan.PickAt(config().AutoChan != kFalse ? kAutomatic : kManual);
  showSizeCard();
  for (int entry = kMonitorBattery; entry <= kMonitorStatus; ++entry) {
    box(entry).Check(config().MonitorPower[entry] != kFalse);
  }
  Power.Load();
  Saver.Load();
  Status.Load();
  showPanels();
}

// The count in a field; 0 for anything else.
int frmConfig::countIn(TextField& field, int max) {
  const std::string& text = field.Text();
  const bool isCount = text.size() == 1 && text[0] >= '0' && text[0] <= '0' + max;
  if (isCount) return text[0] - '0';
  Forms().Beep();
  return 0;
}

void frmConfig::takeCanBusQty() {
  config().CanBusQty = static_cast<i16>(countIn(CanBusQty, kMaxCanModules));
  CanBusQty.Text(NumberText(config().CanBusQty));
}

void frmConfig::takeTK40MQty() {
  int quantity = countIn(TK40MQty, kMaxMultiplexers);
  if (quantity > config().TK40MQty && anyPortIncluded(store()) &&
      Ask(Forms(), "Change of Port Use",
          "If You Press OK, changes may occur in the PORTS setup to accomodate this new "
          "configuration.",
          platform::Buttons::kOkCancel) != platform::Answer::kOk) {
    quantity = config().TK40MQty;
  }
  if (quantity > config().TK40MQty) {
    const int fitting = std::max(FittingTK40MQty(store(), quantity), 0);
    if (fitting < quantity) {
      ShowWarning(Forms(), "NOT ENOUGH ANALOG CHANNELS", "Please Remove Some Measurements.");
      quantity = fitting;
    }
  }
  config().TK40MQty = static_cast<i16>(quantity);
  TK40MQty.Text(NumberText(quantity));
}

void frmConfig::takeAutoChan() {
  const int total = AutoSelectionTotal(store());
  const bool refused =
      AutoChan.Index() == kAutomatic && config().AutoChan == kFalse && !AutoSelectionFits(total);
  if (refused) {
    platform::MessageBox refusal;
    refusal.title = "MEASURE COUNT TOO HIGH";
    refusal.text = JoinLines({NumberText(total) + " single-ended channels currently in use.",
                              "Auto Channel Selection works for 40 or less selected.",
                              "Reduce measurement count and try again."});
    refusal.icon = platform::Icon::kInformation;
    Forms().ShowBox(refusal);
    const Loading putBack(*this);
    AutoChan.PickAt(kManual);
  }
  config().AutoChan = AutoChan.Index() == kAutomatic ? kTrue : kFalse;
}

void frmConfig::takeSizeCard() {
  const double factor = SizeCardUnits.Index() == kGBytes ? kMBytesOfGByte : 1;
  const double size = SizeCard.Value() * factor;
  if (size != 0) {
    offCard_ = false;
  } else if (!offCard_ && IsCardInUse(store())) {
    if (Ask(Forms(), "WARNING", "All Table Ouputs Will be On RAM, Continue?",
            platform::Buttons::kYesNo) != platform::Answer::kYes) {
      const Loading putBack(*this);
      showSizeCard();
      return;
    }
    offCard_ = true;
  }
  config().SizeCard = static_cast<float>(size);
}

// Whole G bytes are shown as such.
void frmConfig::showSizeCard() {
  const double size = DecimalValue(config().SizeCard);
  const bool inGBytes = size >= kMBytesOfGByte && std::fmod(size, kMBytesOfGByte) == 0;
  SizeCardUnits.PickAt(inGBytes ? kGBytes : kMBytes);
  SizeCard.Value(inGBytes ? size / kMBytesOfGByte : size);
}

void frmConfig::takeBox(int entry) {
  config().MonitorPower[entry] = box(entry).Checked() ? kTrue : kFalse;
  if (entry == kMonitorBattery) listVariables();
  showPanels();
  const bool hasOutput = entry == kMonitorBattery || entry == kMonitorPanel;
  if (hasOutput && box(entry).Checked()) showOutput(entry);
}

// The battery and the fields of the status monitor are variables that conditions can name.
void frmConfig::listVariables() {
  variables_ = ConditionVariables(store(), context().UserVarListTypes);
  const Loading loading(*this);
  Power.ListVariables();
}

void frmConfig::showPanels() {
  BatteryOutput.Show(box(kMonitorBattery).Checked(), "The battery voltage is not measured.");
  PanelOutput.Show(box(kMonitorPanel).Checked(), "The panel temperature is not measured.");
  Power.Show(box(kMonitorPowerControl).Checked());
  Saver.Show(box(kMonitorBatterySaver).Checked());
  Status.Show(box(kMonitorStatus).Checked());
}

bool frmConfig::onDone() {
  const int before = before_.Before().TK40MQty;
  const int now = config().TK40MQty;
  if (now == 0 && before > 0 && store().TK40MBlock.BlockCount > 0 && !askToDeleteBlocks()) {
    config().TK40MQty = static_cast<i16>(before);
    TK40MQty.Text(NumberText(before));
    return false;
  }
  if (now > before) freeMultiplexerPorts();
  if (offCard_) MoveTablesOffCard(store());
  // The blocks stay where automatic selection put them.
  if (before_.Before().AutoChan != kFalse && config().AutoChan == kFalse) {
    TakeAutomaticStarts(store());
  }
  before_.Keep();
  batteryBefore_.Keep();
  panelBefore_.Keep();
  return true;
}

bool frmConfig::askToDeleteBlocks() {
  const std::string text = JoinLines(
      {"Warning:", "If you proceed with this change, all TK40M blocks will be deleted. Continue?"});
  if (Ask(Forms(), "Delete TK40M?", text, platform::Buttons::kYesNo) != platform::Answer::kYes) {
    return false;
  }
  ORVUS_COMMON::SetTK40MDefaults(store(), 0);
  config().TcConfigOpts[1] = 0;  // without thermocouples there is no reference to store
  return true;
}

// The multiplexers' ports are taken from the user, as single ports and within the byte.
void frmConfig::freeMultiplexerPorts() {
  PortSlot& slot = store().Ports.Slot[0];
  for (int port = kFirstMultiplexerPort; port <= PanelControlPorts; ++port) {
    slot.Ports[port].Include = kFalse;
    std::string& mask = slot.BinaryMask[2];
    const auto digit = static_cast<std::size_t>(port);  // from the right
    if (mask.size() >= digit) mask[mask.size() - digit] = '0';
  }
}

bool frmConfig::onCancel() {
  before_.PutBack();
  batteryBefore_.PutBack();
  panelBefore_.PutBack();
  return true;
}

}  // namespace ostrand
