#include "can/list_items.h"

#include <algorithm>
#include <iterator>

#include "can/item_rules.h"
#include "controls/text_field.h"
#include "model/record_layout.h"
#include "model/stored_text.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kHexMark = "&H";

std::string identifierIn(std::string_view before, std::string_view text, OrvusCanDataIDTypes type) {
  cCanConfig config;
  config.SetMode(type);
  config.DataID(before);
  config.DataID(text);
  return config.DataID();
}

// Whether the identifier is within the range of its bits.
bool isIdentifier(std::string_view text, OrvusCanDataIDTypes type) {
  const std::optional<std::string> held = IdentifierOf(text, type);
  return held && IdentifierNumber(*held) == IdentifierNumber(text);
}

}  // namespace

std::optional<std::string> IdentifierOf(std::string_view text, OrvusCanDataIDTypes type) {
  // A text that is not a number leaves the member unchanged.
  std::string identifier = identifierIn("1", text, type);
  if (identifier != identifierIn("2", text, type)) return std::nullopt;
  return identifier;
}

CanListItem ListItemOf(const CanItemData& item, OrvusCanDataIDTypes type) {
  CanListItem result;
  cCanConfig& config = result.Config;
  config.SetMode(type);
  config.DataID(item.DataId);
  config.TxDataID(item.TxDataId);
  config.Description = item.Description;
  if (item.Description.starts_with(kHexMark) && !config.DataIDIsHex()) {
    const std::int64_t number = IdentifierNumber(config.DataID()).value_or(0);
    config.DataID(std::string(kHexMark) + HexText(static_cast<std::uint64_t>(number)));
  }
  config.TxDataFrame = item.TxDataFrame;
  config.RxDataMatch = item.RxDataMatch;
  config.RxTimeout = item.RxTimeout;
  config.DataStyle = item.DataStyle;
  config.StartBit = item.StartBit;
  config.NumBits = item.NumBits;
  config.SetMsgMode(item.ItemMessageType == 0 ? ORVUS_CAN_MSGTYPE_RxOnly
                                              : ORVUS_CAN_MSGTYPE_TxRxPair);
  result.J1939Fields = type == ORVUS_CAN_DATAID_29BIT;
  result.Alias = item.Name;
  result.Mult = item.DefaultMult;
  result.Offset = item.DefaultOffset;
  result.Units = item.Units;
  return result;
}

bool CanBeKept(const CanListItem& item) {
  const cCanConfig& config = item.Config;
  const std::string_view texts[] = {item.Alias,        item.Units,        config.Description,
                                    config.DataID(),   config.TxDataID(), config.TxDataFrame,
                                    config.RxDataMatch};
  return std::none_of(std::begin(texts), std::end(texts), HoldsSectionMark);
}

void TakeOver(const CanListItem& from, CanItemData& item) {
  const cCanConfig& config = from.Config;
  if (!from.Alias.empty()) RenameItem(item, from.Alias);
  item.Description = config.Description;
  item.DataId = config.DataID();
  item.DataStyle = config.DataStyle;
  item.StartBit = config.StartBit;
  item.NumBits = config.NumBits;
  item.DefaultMult = from.Mult;
  item.DefaultOffset = from.Offset;
  item.Units = from.Units;
  item.ItemMessageType = static_cast<i16>(config.MessageType());
  if (config.MessageType() == ORVUS_CAN_MSGTYPE_RxOnly) return;
  item.TxDataId = config.TxDataID();
  item.TxDataFrame = config.TxDataFrame;
  item.RxDataMatch = config.RxDataMatch;
  item.RxTimeout = config.RxTimeout;
}

void RenameItem(CanItemData& item, std::string_view name) {
  RenameLevelArrays(item.Output, item.Name, name);
  item.Name = name;
}

std::optional<CanItemValue> InvalidValue(const CanItemData& item, OrvusCanDataIDTypes type) {
  using V = CanItemValue;
  const bool received = item.ItemMessageType != ORVUS_CAN_MSGTYPE_TxOnly;
  const bool sent = item.ItemMessageType != ORVUS_CAN_MSGTYPE_RxOnly;
  if (!IsItemName(item.Name)) return V::kName;
  if (!UnitNameText(item.Units)) return V::kUnits;
  if (!isIdentifier(item.DataId, type)) return V::kDataId;
  if (received && !IsDataStyle(item.DataStyle)) return V::kDataStyle;
  if (!IsBitNumber(item.StartBit)) return V::kStartBit;
  if (!IsBitNumber(item.NumBits)) return V::kNumBits;
  if (item.Reps < 0 || item.Reps > kCanValues) return V::kNumVals;
  if (!sent) return std::nullopt;
  if (!isIdentifier(item.TxDataId, type)) return V::kTxDataId;
  if (!TxDataFrameOf(item.TxDataFrame)) return V::kTxDataFrame;
  if (!RxDataMatchOf(item.RxDataMatch)) return V::kRxDataMatch;
  if (!IsRxTimeout(item.RxTimeout)) return V::kRxTimeout;
  return std::nullopt;
}

}  // namespace ostrand
