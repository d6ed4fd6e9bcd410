#include "can/frm_can_bus.h"

#include <algorithm>
#include <tuple>

#include "can/check_value.h"
#include "can/faces.h"
#include "can/frm_can_pick.h"
#include "can/item_rules.h"
#include "conditions/screen_requests.h"
#include "controls/edits.h"
#include "model/defaults.h"
#include "model/name_limits.h"
#include "model/new_store.h"
#include "platform/box.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr double kMaxAddress = 32767;
constexpr std::string_view kNewName = "CANItem";

std::string whole(int number) { return NumberText(number); }

// The maximum of a J1939 field.
double maxOf(OrvusCanJ1939Fields field) {
  cCanConfig config;
  config.J1939_FieldVal(field, 255);
  return config.J1939_FieldVal(field);
}

auto valuesOf(const CanModuleData& m) {
  return std::tie(m.CanAddress, m.CanBaud, m.CanQuanta, m.CanSeg1, m.CanSeg2, m.CanDataIDType,
                  m.CanMessageType, m.CanEnableTransmit, m.CanNaNOldData, m.CanGetOSVerSig,
                  m.CanBusEnabled);
}

// The members of an item that can be edited here. Outputs and aliases have separate screens.
auto valuesOf(const CanItemData& i) {
  return std::tie(i.Name, i.DataStyle, i.Enabled, i.StartBit, i.NumBits, i.Reps, i.DataId,
                  i.TxDataId, i.TxDataFrame, i.RxDataMatch, i.RxDataMask, i.RxTimeout,
                  i.ItemMessageType, i.DefaultMult, i.DefaultOffset, i.Units, i.DataResolution,
                  i.Public, i.Description);
}

// A list of numbers with an extra entry for any other value.
void fillStyles(Choice& choice, int held) {
  choice.Items.clear();
  for (int style = kMinDataStyle; style <= kMaxDataStyle; ++style) {
    choice.Add(whole(style));
  }
  if (!IsDataStyle(held)) choice.Add(whole(held));
}

}  // namespace

frmCanBus::frmCanBus(const ScreenContext& context, const CanRequest& request)
    : Screen(context, "frmCanBus"),
      CanBusEnabled(*this, "CanBusEnabled"),
      CanAddress(*this, "CanAddress", NumberType::kInteger),
      CanBaud(*this, "CanBaud"),
      CanDataIDType(*this, "CanDataIDType"),
      Advanced(*this, "Advanced", "frmCanAdv"),
      CanCount(*this, "CanCount"),
      Item(*this, "Item"),
      Add(*this, "Add"),
      Delete(*this, "Delete"),
      ItemName(*this, "Name", ItemNameText),
      Description(*this, "Description"),
      ItemEnabled(*this, "Enabled"),
      Public(*this, "Public"),
      ItemMessageType(*this, "ItemMessageType"),
      DataId(*this, "DataId"),
      Priority(*this, "Priority", NumberType::kByte),
      Reserved(*this, "Reserved", NumberType::kByte),
      DataPage(*this, "DataPage", NumberType::kByte),
      PduFormat(*this, "PduFormat", NumberType::kByte),
      PduSpecific(*this, "PduSpecific", NumberType::kByte),
      SourceAddr(*this, "SourceAddr", NumberType::kByte),
      Pgn(*this, "Pgn"),
      DataStyle(*this, "DataStyle"),
      StartBit(*this, "StartBit", NumberType::kInteger),
      NumBits(*this, "NumBits", NumberType::kInteger),
      NumVals(*this, "NumVals", NumberType::kInteger),
      Mult(*this, "Mult", NumberType::kSingle),
      Offset(*this, "Offset", NumberType::kSingle),
      Units(*this, "Units"),
      DataType(*this, "DataType"),
      TxDataId(*this, "TxDataId"),
      TxDataFrame(*this, "TxDataFrame"),
      RxDataMask(*this, "RxDataMask"),
      RxDataMatch(*this, "RxDataMatch"),
      RxTimeout(*this, "RxTimeout"),
      Pick(*this, "Pick", "frmCanPick"),
      FieldNames(*this, "FieldNames", "frmFldName"),
      Outputs(*this, "Outputs", "frmPortTables"),
      files_(request.files),
      listFolder_(request.listFolder),
      work_(NewStore()),
      names_(store()) {
  Caption = "CAN BUS";
  work_->Can = store().Can;
  const Loading loading(*this);
  bindModule();
  bindItem();
  bindTransmission();
  bindJ1939();
  bindOpeners();
  showModule();
  current_ = can().CanCount > 0 ? 1 : 0;
  showList();
  Describe(*this, kCanBusFaces);
}

frmCanBus::~frmCanBus() = default;

CanBus& frmCanBus::can() { return work_->Can; }
const CanBus& frmCanBus::can() const { return work_->Can; }

// Any value but 0 counts, as in the generator.
OrvusCanDataIDTypes frmCanBus::idType() const {
  return can().Module[1].CanDataIDType == 0 ? ORVUS_CAN_DATAID_11BIT : ORVUS_CAN_DATAID_29BIT;
}

CanItemData& frmCanBus::item() { return can().Item[current_]; }

cCanConfig frmCanBus::config() {
  cCanConfig result;
  result.SetMode(idType());
  result.DataID(item().DataId);
  return result;
}

// ---- What the controls do -----------------------------------------------------------------------

void frmCanBus::bindModule() {
  CanAddress.Limits(0, kMaxAddress);
  for (int code = 0; code < cCanModule::NumBaudRates(); ++code) {
    CanBaud.Add(cCanModule::BaudRateText(code));
  }
  CanDataIDType.SetItems({"11 bit", "29 bit"});
  CanBusEnabled.OnClick = [this] {
    if (!IsLoading()) TakeTruth(CanBusEnabled, module().CanBusEnabled);
  };
  CanAddress.OnTake = [this] { module().CanAddress = static_cast<i16>(CanAddress.Value()); };
  CanBaud.OnPick = [this] { takeBaud(); };
  CanDataIDType.OnPick = [this] { takeIdType(); };
}

void frmCanBus::bindItem() {
  ItemMessageType.SetItems({"Receive only", "Transmit and receive", "Transmit only"});
  ItemMessageType.Items[ORVUS_CAN_MSGTYPE_TxOnly].ToolTip =
      "Kept for items that had it when the project was opened.";
  DataType.SetItems({"FP2", "IEEE4"});
  StartBit.Limits(1, kFrameBits);
  NumBits.Limits(1, kFrameBits);
  NumVals.Limits(0, kCanValues);

  Add.OnPress = [this] { addItem(); };
  Delete.OnPress = [this] { deleteItem(); };
  Item.OnPick = [this] {
    if (IsLoading()) return;
    current_ = Item.Index() + 1;
    showItem();
  };
  ItemName.WhyNot = [this](std::string_view name) {
    CanItemData renamed = item();
    renamed.Name = name;
    return ItemFits(renamed, current_) ? "" : kTooLongHelp;
  };
  Units.WhyNot = [this](std::string_view units) {
    return UnitsFit(item().Name, units) ? "" : kTooLongHelp;
  };
  ItemName.OnTake = [this] { takeName(); };
  Description.OnTake = [this] { item().Description = Description.Text(); };
  // In the program, only 1 means enabled.
  ItemEnabled.OnClick = [this] {
    if (!IsLoading()) item().Enabled = ItemEnabled.Checked() ? 1 : 0;
  };
  Public.OnClick = [this] {
    if (!IsLoading()) TakeTruth(Public, item().Public);
  };
  DataStyle.OnPick = [this] {
    if (IsLoading()) return;
    item().DataStyle = static_cast<i16>(Val(DataStyle.Text()));
  };
  DataType.OnPick = [this] {
    if (!IsLoading()) item().DataResolution = DataType.Text();
  };
  Units.OnTake = [this] { item().Units = Units.Text(); };
  bindNumber(StartBit, &CanItemData::StartBit);
  bindNumber(NumBits, &CanItemData::NumBits);
  NumVals.OnTake = [this] { item().Reps = static_cast<i16>(NumVals.Value()); };
  bindScale(Mult, &MeasBlock::DefaultMult);
  bindScale(Offset, &MeasBlock::DefaultOffset);
}

void frmCanBus::bindNumber(NumericField& field, i16 CanItemData::*member) {
  field.OnTake = [this, &field, member] { item().*member = static_cast<i16>(field.Value()); };
}

void frmCanBus::bindScale(NumericField& field, float MeasBlock::*member) {
  field.OnTake = [this, &field, member] {
    item().*member = ToSingle(field.Text()).value_or(item().*member);
  };
}

void frmCanBus::bindTransmission() {
  DataId.OnTake = [this] { takeIdentifier(DataId, &CanItemData::DataId); };
  TxDataId.OnTake = [this] { takeIdentifier(TxDataId, &CanItemData::TxDataId); };
  ItemMessageType.OnPick = [this] {
    if (IsLoading()) return;
    item().ItemMessageType = static_cast<i16>(ItemMessageType.Index());
    enableItem();
  };
  TxDataFrame.OnTake = [this] { takeFrame(); };
  RxDataMask.OnTake = [this] { item().RxDataMask = RxDataMask.Text(); };
  RxDataMatch.OnTake = [this] { takeMatch(); };
  RxTimeout.OnTake = [this] { takeTimeout(); };
}

std::array<NumericField*, 6> frmCanBus::j1939Fields() {
  return {&Priority, &Reserved, &DataPage, &PduFormat, &PduSpecific, &SourceAddr};
}

void frmCanBus::bindJ1939() {
  int number = 0;
  for (NumericField* field : j1939Fields()) {
    const auto kind = static_cast<OrvusCanJ1939Fields>(number++);
    field->Limits(0, maxOf(kind));
    field->OnTake = [this, field, kind] {
      cCanConfig changed = config();
      changed.J1939_FieldVal(kind, static_cast<std::uint8_t>(field->Value()));
      item().DataId = changed.DataID();
      showIdentifier();
    };
  }
}

void frmCanBus::bindOpeners() {
  Advanced.OnPress = [this] { openAdvanced(); };
  Pick.OnPress = [this] { openPick(); };
  FieldNames.OnPress = [this] { openFieldNames(); };
  Outputs.OnPress = [this] { openOutputs(); };
}

void frmCanBus::takeBaud() {
  if (IsLoading()) return;
  cCanModule timing;
  timing.BaudRate = static_cast<OrvusCanBaudRates>(CanBaud.Index());
  module().CanBaud = static_cast<i16>(timing.BaudRate);
  module().CanQuanta = timing.TimeQuanta();
  module().CanSeg1 = timing.TSeg1();
  module().CanSeg2 = timing.TSeg2();
}

// Enters all identifiers again, to limit those that became too large.
void frmCanBus::takeIdType() {
  if (IsLoading() || CanDataIDType.Index() == static_cast<int>(idType())) return;
  module().CanDataIDType = static_cast<i16>(CanDataIDType.Index());
  for (int n = 1; n <= can().CanCount; ++n) {
    CanItemData& one = can().Item[n];
    for (std::string* text : {&one.DataId, &one.TxDataId}) {
      *text = IdentifierOf(*text, idType()).value_or(*text);
    }
  }
  showItem();
}

// A text that is not a number is ignored.
void frmCanBus::takeIdentifier(TextField& field, std::string CanItemData::*member) {
  const std::optional<std::string> taken = IdentifierOf(field.Text(), idType());
  if (!taken) Refuse("An identifier is a number, or &H and hexadecimal digits.");
  item().*member = taken.value_or(item().*member);
  field.Text(item().*member);
  showIdentifier();
}

void frmCanBus::takeName() {
  if (ItemName.Text().empty()) {
    Refuse("An item needs a name.");
    ItemName.Text(item().Name);
    return;
  }
  RenameItem(item(), ItemName.Text());
  showList();
}

// An invalid frame stays for the user to correct; Done asks about it once more.
void frmCanBus::takeFrame() {
  const std::optional<std::string> frame = TxDataFrameOf(TxDataFrame.Text());
  if (!frame) {
    ShowWarning(Forms(), "Hex Validation Failed",
                JoinLines({"The 64-bit Tx Data Frame must begin with \"&H\" ",
                           "followed by 16 Hexadecimal characters (0-9,A-F).",
                           "Example: \"&H0123456789ABCDEF\""}));
  }
  item().TxDataFrame = frame.value_or(TxDataFrame.Text());
  TxDataFrame.Text(item().TxDataFrame);
}

void frmCanBus::takeMatch() {
  const std::optional<std::string> match = RxDataMatchOf(RxDataMatch.Text());
  if (!match) {
    ShowWarning(Forms(), "Match Validation Failed",
                JoinLines({"The 64-bit Rx Data Match string must begin with \"&H\" ",
                           "followed by 16 Hexadecimal characters (0-9,A-F)",
                           "or the Masking Pair  \"XX\" starting on even digits.",
                           "Example: \"&H0123XX67XXABCDEF\""}));
  }
  item().RxDataMatch = match.value_or(RxDataMatch.Text());
  RxDataMatch.Text(item().RxDataMatch);
}

// A text or fraction that the project cannot store is replaced by the previous value.
void frmCanBus::takeTimeout() {
  const std::optional<std::int32_t> value = ToInt32(RxTimeout.Text());
  const bool isWhole = value && ToDouble(RxTimeout.Text()) == *value;
  if (!isWhole || !IsRxTimeout(*value)) {
    ShowWarning(Forms(), "Invalid Timeout Value",
                JoinLines({"The Rx Timeout value (in milliseconds)",
                           "must be a numeric value from 1 to 20000."}));
  }
  if (isWhole) item().RxTimeout = *value;
  RxTimeout.Text(whole(item().RxTimeout));
}

// ---- The list -----------------------------------------------------------------------------------

void frmCanBus::addItem() {
  if (can().CanCount >= kCanItems) return;
  // Clears what an older item left there.
  ORVUS_COMMON::SetCanItemDefaults(*work_, can().CanCount);
  const auto isTaken = [this](std::string_view name) {
    for (int n = 1; n <= can().CanCount; ++n) {
      if (SameText(can().Item[n].Name, name)) return true;
    }
    return false;
  };
  current_ = can().CanCount + 1;
  int number = current_;
  while (isTaken(std::string(kNewName) + whole(number))) ++number;
  can().CanCount = static_cast<i16>(current_);
  item().Name = std::string(kNewName) + whole(number);
  showList();
}

void frmCanBus::deleteItem() {
  if (!hasItem()) return;
  const platform::Answer answer = Ask(Forms(), "DELETE ITEM",
                                      "Are you sure you want to delete item number " +
                                          whole(current_) + " for the selected CAN Module?",
                                      platform::Buttons::kYesNo);
  if (answer != platform::Answer::kYes) return;
  CanBus& bus = can();
  const auto items = bus.Item.Leading(bus.CanCount);
  std::copy(items.begin() + current_, items.end(), items.begin() + current_ - 1);
  ORVUS_COMMON::SetCanItemDefaults(*work_, bus.CanCount - 1);
  current_ = std::min<int>(current_, bus.CanCount);
  showList();
}

void frmCanBus::openAdvanced() { OpenScreen(context(), Advanced.Opens(), module()); }

void frmCanBus::openPick() {
  CanPickRequest request{files_, listFolder_, ListItemOf(item(), idType()), listPath_};
  OpenScreen(context(), Pick.Opens(), request);
  listPath_ = request.path;
  if (!request.picked) return;
  TakeOver(*request.picked, item());
  showList();
}

void frmCanBus::openFieldNames() {
  CanItemData& one = item();
  const auto before = one.Alias;
  FieldNamesRequest request{
      .kind = ORVUS_DOBJ_BLK_QBCAN,
      .block = current_,
      .name = one.Name,
      .defaults = DefaultScalingOf(one),
      .aliases = AliasesOf(one.Alias, one.Reps),
      .onRename = [this](const AliasRenames& renames) { renamed_.push_back(renames); }};
  OpenScreen(context(), FieldNames.Opens(), request);
  if (!(one.Alias == before)) changedElsewhere_ = true;
  showItem();
}

void frmCanBus::openOutputs() {
  CanItemData& one = item();
  ItemOutputsRequest request{.caption = "CAN ITEM " + whole(current_),
                             .source = one.Name,
                             .resolution = one.DataResolution,
                             .isPublic = one.Public,
                             .output = one.Output};
  if (OpenScreen(context(), Outputs.Opens(), request)) changedElsewhere_ = true;
  showItem();
}

// ---- What the controls show ---------------------------------------------------------------------

void frmCanBus::showModule() {
  CanBusEnabled.Check(module().CanBusEnabled != 0);
  CanAddress.Value(module().CanAddress);
  CanBaud.PickAt(module().CanBaud);
  CanDataIDType.PickAt(static_cast<int>(idType()));
}

void frmCanBus::showList() {
  const Loading loading(*this);
  CanCount.Text(whole(can().CanCount));
  Item.Items.clear();
  for (int n = 1; n <= can().CanCount; ++n) {
    Item.Add(whole(n) + ": " + can().Item[n].Name);
  }
  Item.PickAt(current_ - 1);
  showItem();
}

void frmCanBus::showItem() {
  const Loading loading(*this);
  enableItem();
  Pgn.Text({});
  if (hasItem()) showValues();
}

void frmCanBus::showValues() {
  const CanItemData& one = item();
  ItemName.Text(one.Name);
  Description.Text(one.Description);
  ItemEnabled.Check(one.Enabled != 0);
  Public.Check(one.Public != 0);
  ItemMessageType.Items[ORVUS_CAN_MSGTYPE_TxOnly].Visible =
      one.ItemMessageType == ORVUS_CAN_MSGTYPE_TxOnly;
  ItemMessageType.PickAt(one.ItemMessageType);
  fillStyles(DataStyle, one.DataStyle);
  DataStyle.Pick(whole(one.DataStyle));
  StartBit.Value(one.StartBit);
  NumBits.Value(one.NumBits);
  NumVals.Value(one.Reps);
  Mult.Value(DecimalValue(one.DefaultMult));
  Offset.Value(DecimalValue(one.DefaultOffset));
  Units.Text(one.Units);
  DataType.Index(-1);
  DataType.Pick(one.DataResolution);
  TxDataId.Text(one.TxDataId);
  TxDataFrame.Text(one.TxDataFrame);
  RxDataMask.Text(one.RxDataMask);
  RxDataMatch.Text(one.RxDataMatch);
  RxTimeout.Text(whole(one.RxTimeout));
  showIdentifier();
}

void frmCanBus::showIdentifier() {
  DataId.Text(item().DataId);
  const cCanConfig shown = config();
  Pgn.Text(shown.PGNVal());
  int number = 0;
  for (NumericField* field : j1939Fields()) {
    const auto kind = static_cast<OrvusCanJ1939Fields>(number++);
    field->Value(shown.J1939_FieldVal(kind));
    field->ToolTip = shown.J1939_FieldBinString(kind);
  }
}

void frmCanBus::enableItem() {
  const bool sends = hasItem() && item().ItemMessageType != ORVUS_CAN_MSGTYPE_RxOnly;
  const std::initializer_list<Control*> ofItem = {
      &Item,   &Delete,    &ItemName, &Description, &ItemEnabled, &Public, &ItemMessageType,
      &DataId, &DataStyle, &StartBit, &NumBits,     &NumVals,     &Mult,   &Offset,
      &Units,  &DataType,  &Pick,     &FieldNames,  &Outputs};
  for (Control* control : ofItem) control->Enable(hasItem(), "There is no item.");
  for (TextField* field : {&TxDataId, &TxDataFrame, &RxDataMask, &RxDataMatch, &RxTimeout}) {
    field->Enabled = sends;
  }
  for (NumericField* field : j1939Fields()) {
    field->Enabled = hasItem() && idType() == ORVUS_CAN_DATAID_29BIT;
  }
  Add.Enabled = can().CanCount < kCanItems;
}

// ---- The ways out -------------------------------------------------------------------------------

Control& frmCanBus::controlOf(CanItemValue value) {
  const std::array<Control*, 11> controls = {&ItemName,    &Units,       &DataId,   &DataStyle,
                                             &StartBit,    &NumBits,     &NumVals,  &TxDataId,
                                             &TxDataFrame, &RxDataMatch, &RxTimeout};
  return *controls[static_cast<std::size_t>(value)];
}

std::optional<CanItemValue> frmCanBus::invalidValue(int number) const {
  const CanItemData& one = can().Item[number];
  if (const auto value = InvalidValue(one, idType())) return value;
  if (!ItemFits(one, number)) {
    CanItemData bare = one;
    bare.Units.clear();
    return ItemFits(bare, number) ? CanItemValue::kUnits : CanItemValue::kName;
  }
  for (int n = 1; n < number; ++n) {
    if (SameText(can().Item[n].Name, one.Name)) return CanItemValue::kName;
  }
  return std::nullopt;
}

// Whether all items can be measured, or the user accepts those that cannot; otherwise the first
// one is shown with the focus on its value at fault.
bool frmCanBus::acceptItems() {
  int number = 1;
  std::optional<CanItemValue> invalid;
  while (number <= can().CanCount && !(invalid = invalidValue(number))) ++number;
  if (!invalid) return true;
  if (Ask(Forms(), "CONTINUE WITH IMPROPER VALUES ?",
          "Some of the current CAN values are not valid. Proceed Anyway ?",
          platform::Buttons::kYesNo) == platform::Answer::kYes) {
    return true;
  }
  current_ = number;
  showList();
  MoveFocus(&controlOf(*invalid));
  return false;
}

bool frmCanBus::changed() const {
  const CanBus& before = store().Can;
  if (changedElsewhere_ || before.CanCount != can().CanCount) return true;
  if (valuesOf(before.Module[1]) != valuesOf(can().Module[1])) return true;
  for (int n = 1; n <= can().CanCount; ++n) {
    if (valuesOf(before.Item[n]) != valuesOf(can().Item[n])) return true;
  }
  return false;
}

bool frmCanBus::onDone() {
  if (!acceptItems()) return false;
  store().Can = can();
  names_.Keep();
  for (const AliasRenames& renames : renamed_) {
    for (CanItemData& one : store().Can.Item.Made()) RenameInLevels(one.Output, renames);
  }
  return true;
}

// Saving on the way out is the same as Done, with its question.
bool frmCanBus::onCancel() {
  if (!changed()) return true;
  const platform::Answer answer = AskSaveEdits(Forms());
  if (answer == platform::Answer::kYes) Done();
  return answer == platform::Answer::kNo;
}

}  // namespace ostrand
