#include "logger/frm_ports.h"

#include <array>

#include "conditions/condition_row.h"
#include "conditions/flag_code.h"
#include "conditions/screen_requests.h"
#include "logger/faces.h"
#include "model/channels.h"
#include "model/port_mask.h"
#include "platform/box.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kDeselected = "*** Code Will Not be Generated for De-Selected Mode ***";
constexpr std::size_t kBits = PanelControlPorts;

constexpr TwoStateKeys kKeys = {.include = "Include",
                                .on = "Polarity",
                                .measurement = "MeasureVar",
                                .compare = "Compare",
                                .value = "Value",
                                .expression = "Expression"};

StateFields fieldsOf(PortState& state) {
  return {state.MeasureVar, state.Compare, state.Value, state.Expression};
}

bool isBinary(std::string_view text) {
  return !text.empty() && text.find_first_not_of("01") == std::string_view::npos;
}

// Any text that may become a number in one of the notations.
bool maskInTheMaking(std::string_view text) {
  return text.find_first_not_of("&0123456789ABCDEFHabcdefh") == std::string_view::npos;
}

std::string bitsOf(unsigned value) {
  std::string bits(kBits, '0');
  for (std::size_t at = 0; at < kBits; ++at) {
    if ((value >> (kBits - 1 - at) & 1U) != 0) bits[at] = '1';
  }
  return bits;
}

}  // namespace

std::string MaskBits(std::string_view text, std::string_view codeType) {
  std::string number = Upper(Trim(text));
  if (!number.empty() && number[0] != '&') {
    if (SameText(codeType, "BIN")) number.insert(0, "&B");
    if (SameText(codeType, "HEX")) number.insert(0, "&H");
  }
  if (number.starts_with("&B")) {
    const std::string bits = number.substr(2);
    const bool fits = isBinary(bits) && bits.size() <= kBits;
    return fits ? std::string(kBits - bits.size(), '0') + bits : std::string();
  }
  const std::optional<double> value = ToDouble(number);
  if (!value || *value < 0 || *value > 255 || *value != RoundHalfEven(*value)) return {};
  return bitsOf(static_cast<unsigned>(*value));
}

// A mask in the notation of the code type.
struct frmPorts::MaskField : TextField {
  MaskField(Screen& screen, std::string_view name, const std::string& codeType)
      : TextField(screen, name, maskInTheMaking), codeType_(codeType) {}

 protected:
  bool normalize(std::string& text) override {
    const std::string bits = MaskBits(text, codeType_);
    if (bits.empty()) return false;
    text = PortMaskText(bits, codeType_);
    return true;
  }

 private:
  const std::string& codeType_;
};

struct frmPorts::PortControls : TwoStateControls {
  PortControls(Screen& screen, const ConditionVariables& variables, int port)
      : TwoStateControls(screen, variables, kKeys, port) {
    if (port == kByte) {
      Describe(kPortByte);
    } else {
      Describe(kPortsTable, port);
    }
  }
};

frmPorts::frmPorts(const ScreenContext& context)
    : Screen(context, "frmPorts"),
      ByteMode(*this, "ByteMode"),
      ReadMode(*this, "ReadMode"),
      CodeType(*this, "CodeType"),
      ModeMessage(*this, "ModeMessage"),
      Output(*this, "Output", "frmPortTables"),
      variables_(context.store, context.UserVarListTypes),
      before_(context.store.Ports) {
  Caption = "PORTS";
  ByteMode.SetItems({"Bit-Write", "Byte"});
  ReadMode.SetItems({"Write", "Read"});
  CodeType.SetItems({"BIN", "HEX", "DEC"});
  ModeMessage.Text(kDeselected);
  for (int port = 1; port <= kPorts; ++port) {
    ports_[port] = std::make_unique<PortControls>(*this, variables_, port);
    bind(port);
  }
  for (int place = 0; place < kMasks; ++place) {
    masks_[place] = std::make_unique<MaskField>(*this, "BinaryMask" + NumberText(place + 1),
                                                store().Ports.CodeType);
    masks_[place]->OnTake = [this, place] { takeMask(place); };
  }
  bindModes();
  Describe(*this, kPortsFaces);
  const Loading loading(*this);
  ByteMode.PickAt(isByte() ? 1 : 0);
  ReadMode.PickAt(isRead() ? 1 : 0);
  CodeType.Pick(store().Ports.CodeType);
  for (int port = 1; port <= kPorts; ++port) load(port);
  showMasks();
  refresh();
}

frmPorts::~frmPorts() = default;

void frmPorts::bindModes() {
  ByteMode.OnPick = [this] {
    if (IsLoading()) return;
    slot().ByteMode = static_cast<i16>(ByteMode.Index());
    if (!isByte()) ReadMode.PickAt(0);  // single ports are only written
    refresh();
  };
  ReadMode.OnPick = [this] {
    if (IsLoading()) return;
    slot().ReadMode = static_cast<i16>(ReadMode.Index());
    refresh();
  };
  CodeType.OnPick = [this] {
    if (IsLoading()) return;
    store().Ports.CodeType = CodeType.Text();
    showMasks();
  };
  Output.OnPress = [this] {
    ValueOutputsRequest request{SingleValue::kPortBytes};
    OpenScreen(context(), Output.Opens(), request);
  };
}

void frmPorts::bind(int port) {
  PortControls& controls = at(port);
  controls.Include.OnClick = [this, port] {
    if (IsLoading()) return;
    slot().Ports[port].Include = at(port).Include.Checked() ? kTrue : kFalse;
    refresh(port);
  };
  controls.On.OnClick = [this, port] {
    if (IsLoading()) return;
    slot().Ports[port].Polarity = at(port).On.Checked() ? kTrue : kFalse;
    refresh(port);
  };
  for (const int state : {1, 2}) {
    controls.State(state).OnEdit = [this, port, state] { takeState(port, state); };
    ReportPickedFlag(controls.State(state), Forms(), store());
  }
  controls.ViewCode.OnPress = [this, port] { viewCode(port); };
}

void frmPorts::load(int port) {
  Port& stored = slot().Ports[port];
  PortControls& controls = at(port);
  controls.Include.Check(stored.Include != kFalse);
  controls.On.Check(stored.Polarity != kFalse);
  for (const int state : {1, 2}) {
    LoadState(controls.State(state), fieldsOf(stored.State[state - 1]), kStateCompares);
  }
}

void frmPorts::takeState(int port, int state) {
  PortState& stored = slot().Ports[port].State[state - 1];
  KeepState(at(port).State(state), fieldsOf(stored), kNoCondition);
  refresh(port);
}

// The user cannot write or read the two ports of the multiplexers.
void frmPorts::takeMask(int place) {
  std::string bits = MaskBits(masks_[place]->Text(), store().Ports.CodeType);
  if (store().Config.TK40MQty > 0) bits.replace(0, 2, "00");
  slot().BinaryMask[place] = bits;
  showMasks();
}

void frmPorts::showMasks() {
  for (int place = 0; place < kMasks; ++place) {
    masks_[place]->Text(PortMaskText(slot().BinaryMask[place], store().Ports.CodeType));
  }
}

void frmPorts::refresh() {
  ReadMode.Enabled = isByte();
  Output.Enable(isByte(), "Only ports that are used as a byte can be stored.");
  for (int port = 1; port <= kPorts; ++port) refresh(port);
  for (int place = 0; place < kMasks; ++place) {
    const bool ofState = place < 2;
    masks_[place]->Enabled = isByte() && !(ofState && isRead());
  }
}

void frmPorts::refresh(int port) {
  PortControls& controls = at(port);
  const bool isTheByte = port == kByte;
  const bool selected = isTheByte == isByte();
  const bool ofMultiplexers =
      !isTheByte && port > PanelControlPorts - 2 && store().Config.TK40MQty > 0;
  const std::string number = NumberText(port);
  controls.ShowMessage(hasConditions(port));
  controls.ShowLites({"Red lite indicates the high state of port " + number + " (5 Volts).",
                      "Gray lite indicates the low state of port " + number + " (0 Volts)."});
  for (Control* control :
       std::initializer_list<Control*>{&controls.Include, &controls.Message, &controls.ViewCode}) {
    control->Visible = !ofMultiplexers;
  }
  for (Control* control :
       std::initializer_list<Control*>{&controls.On, &controls.Lite1, &controls.Lite2}) {
    control->Visible = !ofMultiplexers && !isTheByte;
  }
  controls.Include.Enabled = controls.On.Enabled = selected;
  for (const int state : {1, 2}) {
    ConditionControls& row = controls.State(state);
    ShowState(row, !ofMultiplexers && hasConditions(port));
    row.Enable(selected, isTheByte ? kNeedsByte : kNeedsBits);
  }
}

void frmPorts::viewCode(int port) {
  const bool mayView = at(port).MayView(
      Forms(), "You must Include this Port setup to view it.",
      "You must select a Measurement for both State 1 and State 2 to view this Port code.",
      hasConditions(port));
  if (!mayView) return;
  const bool isTheByte = port == kByte;
  std::string_view title = "PORTSET CODE";
  if (isTheByte) title = isRead() ? "READIO CODE" : "WRITEIO CODE";
  std::string code = isTheByte ? byteCode() : bitCode(port);
  if (isTheByte != isByte()) code = JoinLines({kDeselected, code});
  ShowCode(Forms(), title, std::move(code));
}

std::string frmPorts::bitCode(int port) const {
  const Port& stored = slot().Ports[port];
  const bool high = stored.Polarity != kFalse;
  const std::string set = "Portset(" + NumberText(port);
  return TwoStateCode(stored.State[0].Expression, set + (high ? ",1)" : ",0)"),
                      stored.State[1].Expression, set + (high ? ",0)" : ",1)"));
}

std::string frmPorts::byteCode() const {
  const auto mask = [this](int place) {
    return PortMaskText(slot().BinaryMask[place], store().Ports.CodeType);
  };
  if (isRead()) {
    return JoinLines({"ReadIO(ReadPort," + mask(2) + ")",
                      "''''The I/O ports have been read into variable ReadPort. ''''"});
  }
  const Port& stored = slot().Ports[kByte];
  return JoinLines({TwoStateCode(stored.State[0].Expression, "WritePort = " + mask(0),
                                 stored.State[1].Expression, "WritePort = " + mask(1)),
                    "WriteIO(" + mask(2) + ",WritePort)"});
}

bool frmPorts::onDone() {
  before_.Keep();
  return true;
}

bool frmPorts::onCancel() {
  before_.PutBack();
  return true;
}

}  // namespace ostrand
