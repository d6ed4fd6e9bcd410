#include "setup/frm_ports.h"

#include "model/channels.h"
#include "setup/flag_usage.h"
#include "setup/frm_port_tables.h"
#include "setup/state_rows.h"
#include "text/number.h"
#include "text/strings.h"
#include "verify/box.h"

namespace ostrand {
namespace {

constexpr std::string_view kViewTitle = "VIEW CODE";
constexpr std::string_view kDeselected = "*** Code Will Not be Generated for De-Selected Mode ***";
constexpr std::size_t kBits = PanelControlPorts;

ConditionControlNames stateNames(int state, const std::string& port) {
  const std::string head = "State" + NumberText(state);
  return {head + "MeasureVar" + port, head + "Compare" + port, head + "Value" + port,
          head + "Expression" + port};
}

bool isBinary(std::string_view text) {
  return !text.empty() && text.find_first_not_of("01") == std::string_view::npos;
}

// Any text that may become a number of one of the forms.
bool maskInTheMaking(std::string_view text) {
  return text.find_first_not_of("&0123456789ABCDEFHabcdefh") == std::string_view::npos;
}

unsigned valueOf(std::string_view bits) {
  unsigned value = 0;
  for (const char bit : bits) value = 2 * value + (bit == '1' ? 1 : 0);
  return value;
}

std::string bitsOf(unsigned value) {
  std::string bits(kBits, '0');
  for (std::size_t at = 0; at < kBits; ++at) {
    if ((value >> (kBits - 1 - at) & 1U) != 0) bits[at] = '1';
  }
  return bits;
}

std::string_view word(bool high) { return high ? "True" : "False"; }

}  // namespace

std::string MaskText(std::string_view bits, std::string_view codeType) {
  if (SameText(codeType, "BIN")) return "&B" + std::string(bits);
  if (SameText(codeType, "HEX")) return "&H" + HexText(valueOf(bits));
  return NumberText(static_cast<std::int64_t>(valueOf(bits)));
}

std::string MaskBits(std::string_view text, std::string_view codeType) {
  std::string number = Upper(Trim(text));
  if (!number.empty() && number[0] != '&') {
    if (SameText(codeType, "BIN")) number.insert(0, "&B");
    if (SameText(codeType, "HEX")) number.insert(0, "&H");
  }
  if (number.starts_with("&B")) {
    const std::string_view bits = std::string_view(number).substr(2);
    return isBinary(bits) && bits.size() <= kBits ? bitsOf(valueOf(bits)) : std::string();
  }
  const std::optional<double> value = ToDouble(number);
  if (!value || *value < 0 || *value > 255 || *value != RoundHalfEven(*value)) return {};
  return bitsOf(static_cast<unsigned>(*value));
}

// A mask in the form of the code type.
struct frmPorts::MaskField : TextField {
  MaskField(Screen& screen, std::string_view name, const std::string& codeType)
      : TextField(screen, name, maskInTheMaking), codeType_(codeType) {}

 protected:
  bool normalize(std::string& text) override {
    const std::string bits = MaskBits(text, codeType_);
    if (bits.empty()) return false;
    text = MaskText(bits, codeType_);
    return true;
  }

 private:
  const std::string& codeType_;
};

struct frmPorts::PortControls {
  PortControls(Screen& screen, const ConditionVariables& variables, const std::string& port)
      : Include(screen, "Include" + port),
        Polarity(screen, "Polarity" + port),
        Lite1(screen, "State1Lite" + port),
        Lite2(screen, "State2Lite" + port),
        State1(screen, variables, stateNames(1, port), {.compares = kStateCompares}),
        State2(screen, variables, stateNames(2, port), {.compares = kStateCompares}),
        Message(screen, "Message" + port),
        ViewCode(screen, "ViewCode" + port) {
    Include.Caption = "Include Port " + port;
    Polarity.Caption = "State 1 sets Port " + port;
    ViewCode.Caption = "View Code";
  }

  [[nodiscard]] ConditionControls& State(int state) { return state == 1 ? State1 : State2; }

  CheckBox Include;
  CheckBox Polarity;  // the level that the first condition sets; the second sets the other
  Label Lite1;
  Label Lite2;
  ConditionControls State1;
  ConditionControls State2;
  Label Message;
  Button ViewCode;
};

frmPorts::frmPorts(const ScreenContext& context)
    : Screen(context, "frmPorts"),
      ByteMode(*this, "ByteMode"),
      ReadMode(*this, "ReadMode"),
      CodeType(*this, "CodeType"),
      ModeMessage(*this, "ModeMessage"),
      variables_(context.store, context.UserVarListTypes),
      before_(context.store.Ports) {
  Caption = "PORTS";
  ByteMode.SetItems({"Bit-Write", "Byte"});
  ReadMode.SetItems({"Write", "Read"});
  CodeType.SetItems({"BIN", "HEX", "DEC"});
  ModeMessage.Text(kDeselected);
  for (int port = 1; port <= kPorts; ++port) {
    ports_[port] = std::make_unique<PortControls>(*this, variables_, NumberText(port));
    bind(port);
  }
  for (int place = 0; place < kMasks; ++place) {
    masks_[place] = std::make_unique<MaskField>(*this, "BinaryMask" + NumberText(place + 1),
                                                store().Ports.CodeType);
    masks_[place]->OnTake = [this, place] { takeMask(place); };
  }
  bindModes();
  const Loading loading(*this);
  ByteMode.Index(isByte() ? 1 : 0);
  ReadMode.Index(isRead() ? 1 : 0);
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
    if (!isByte()) ReadMode.Index(0);  // single ports are only written
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
  addOpener({"frmPortTables", "", [this](std::string_view) {
               if (!isByte()) return false;
               frmPortTables output(context(), SingleValue::kPortBytes);
               showModal(output);
               return true;
             }});
}

void frmPorts::bind(int port) {
  PortControls& controls = at(port);
  controls.Include.OnClick = [this, port] {
    if (IsLoading()) return;
    slot().Ports[port].Include = at(port).Include.Checked() ? kTrue : kFalse;
    refresh(port);
  };
  controls.Polarity.OnClick = [this, port] {
    if (IsLoading()) return;
    slot().Ports[port].Polarity = at(port).Polarity.Checked() ? kTrue : kFalse;
    refresh(port);
  };
  for (const int state : {1, 2}) {
    ConditionControls& row = controls.State(state);
    row.OnEdit = [this, port, state] { takeState(port, state); };
    row.AllowPick = [this, &row] {
      const int flagNumber = FlagOfVariable(row.MeasVar.Text());
      if (flagNumber > 0) CheckFlagUsage(Forms(), store(), flagNumber);
      return true;
    };
  }
  controls.ViewCode.OnPress = [this, port] { viewCode(port); };
}

void frmPorts::load(int port) {
  const Port& stored = slot().Ports[port];
  PortControls& controls = at(port);
  controls.Include.Checked(stored.Include != kFalse);
  controls.Polarity.Checked(stored.Polarity != kFalse);
  for (const int state : {1, 2}) {
    const PortState& row = stored.State[state - 1];
    controls.State(state).Load(
        StoredState(row.MeasureVar, row.Compare, row.Value, row.Expression, kStateCompares));
  }
}

void frmPorts::takeState(int port, int state) {
  const ConditionRow row = at(port).State(state).Stored();
  PortState& stored = slot().Ports[port].State[state - 1];
  stored.MeasureVar = row.MeasVar;
  stored.Compare = static_cast<i16>(row.Compare);
  stored.Value = row.Value;
  stored.Expression = row.MeasVar.empty() ? std::string(kNoCondition) : row.Expression;
  refresh(port);
}

// The two ports of the multiplexers are not the user's to write or read.
void frmPorts::takeMask(int place) {
  std::string bits = MaskBits(masks_[place]->Text(), store().Ports.CodeType);
  if (store().Config.TK40MQty > 0) bits.replace(0, 2, "00");
  slot().BinaryMask[place] = bits;
  showMasks();
}

void frmPorts::showMasks() {
  for (int place = 0; place < kMasks; ++place) {
    masks_[place]->Text(MaskText(slot().BinaryMask[place], store().Ports.CodeType));
  }
}

void frmPorts::refresh() {
  ReadMode.Enabled = isByte();
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
  const bool conditions = !(isTheByte && isRead());
  const bool include = controls.Include.Checked();
  controls.Message.Text(include && conditions ? MissingStates(controls.State1, controls.State2)
                                              : "");
  const auto showLite = [&](Label& lite, bool high) {
    lite.Text(high ? "Red" : "Gray");
    lite.ToolTip = (high ? "Red lite indicates the high state of port "
                         : "Gray lite indicates the low state of port ") +
                   NumberText(port) + (high ? " (5 Volts)." : " (0 Volts).");
  };
  showLite(controls.Lite1, controls.Polarity.Checked());
  showLite(controls.Lite2, !controls.Polarity.Checked());
  for (Control* control :
       std::initializer_list<Control*>{&controls.Include, &controls.Message, &controls.ViewCode}) {
    control->Visible = !ofMultiplexers;
  }
  for (Control* control :
       std::initializer_list<Control*>{&controls.Polarity, &controls.Lite1, &controls.Lite2}) {
    control->Visible = !ofMultiplexers && !isTheByte;
  }
  controls.Include.Enabled = controls.Polarity.Enabled = selected;
  for (const int state : {1, 2}) {
    ConditionControls& row = controls.State(state);
    ShowState(row, !ofMultiplexers && conditions);
    row.MeasVar.Enabled = selected;
    row.Compare.Enabled = row.Value.Enabled = selected && row.Valid();
  }
}

void frmPorts::viewCode(int port) {
  PortControls& controls = at(port);
  const bool isTheByte = port == kByte;
  const bool reads = isTheByte && isRead();
  if (!controls.Include.Checked()) {
    return ShowWarning(Forms(), kViewTitle, "You must Include this Port setup to view it.");
  }
  if (!reads && !(controls.State1.Valid() && controls.State2.Valid())) {
    return ShowWarning(Forms(), kViewTitle,
                       "You must select a Measurement for both State 1 and State 2 to view this "
                       "Port code.");
  }
  std::string code = isTheByte ? byteCode() : bitCode(port);
  if (isTheByte != isByte()) code = JoinLines({kDeselected, code});
  const std::string_view title = reads       ? "READIO CODE"
                                 : isTheByte ? "WRITEIO CODE"
                                             : "PORTSET CODE";
  ShowCode(Forms(), title, std::move(code));
}

std::string frmPorts::bitCode(int port) const {
  const Port& stored = slot().Ports[port];
  const std::string name = "Port(" + NumberText(port) + ")";
  const bool high = stored.Polarity != kFalse;
  const std::string assign = "    " + name + " = ";
  return JoinLines({"If " + stored.State[0].Expression + " Then", assign + std::string(word(high)),
                    "ElseIf " + stored.State[1].Expression + " Then",
                    assign + std::string(word(!high)), "End If",
                    "PortSet(" + NumberText(port) + "," + name + ")"});
}

std::string frmPorts::byteCode() const {
  const auto mask = [this](int place) {
    return MaskText(slot().BinaryMask[place], store().Ports.CodeType);
  };
  if (isRead()) {
    return JoinLines({"ReadIO(ReadPort," + mask(2) + ")",
                      "''''The I/O ports have been read into variable ReadPort. ''''"});
  }
  const Port& stored = slot().Ports[kByte];
  return JoinLines({"If " + stored.State[0].Expression + " Then", "    WritPort = " + mask(0),
                    "ElseIf " + stored.State[1].Expression + " Then", "    WritPort = " + mask(1),
                    "End If", "WriteIO(" + mask(2) + ",WritPort)"});
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
