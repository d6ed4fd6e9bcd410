// Converts between items of a project and items of lists, and gives identifiers their form on a
// bus.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "can/pick_list.h"
#include "model/store.h"

namespace ostrand {

// Converts an item of a project to one of a list. A list cannot hold a description that begins with
// "&H" with a decimal identifier; the identifier then becomes hexadecimal.
CanListItem ListItemOf(const CanItemData& item, OrvusCanDataIDTypes type);

// Whether a project can store all texts of an item.
bool CanBeKept(const CanListItem& item);

// Copies a list item into an item of a project. The name stays when the list gives none, and the
// transmit settings stay when the list item transmits nothing.
void TakeOver(const CanListItem& from, CanItemData& item);

// Renames an item, and its arrays in its level crossings.
void RenameItem(CanItemData& item, std::string_view name);

// A text as an identifier of `bits` bits, in normal form; nothing for a text that is not a number.
std::optional<std::string> IdentifierOf(std::string_view text, OrvusCanDataIDTypes type);

// The values of an item that have a range or a form.
enum class CanItemValue {
  kName,
  kUnits,
  kDataId,
  kDataStyle,
  kStartBit,
  kNumBits,
  kNumVals,
  kTxDataId,
  kTxDataFrame,
  kRxDataMatch,
  kRxTimeout,
};

// The first value that is outside its range or form; nothing for an item that can be measured.
std::optional<CanItemValue> InvalidValue(const CanItemData& item, OrvusCanDataIDTypes type);

}  // namespace ostrand
