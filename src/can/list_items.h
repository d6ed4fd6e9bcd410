// Between the items of a project and those of lists, and what an identifier becomes on a bus.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "can/pick_list.h"
#include "model/store.h"

namespace ostrand {

// An item of a project as one of a list. A list can't hold a description that begins with "&H"
// with a decimal identifier; there it is in hexadecimal.
CanListItem ListItemOf(const CanItemData& item, OrvusCanDataIDTypes type);

// Whether a project can keep all texts of an item.
bool CanBeKept(const CanListItem& item);

// An item of a project takes what one of a list has. It keeps its name when the list has none, and
// what is transmitted when the other one transmits nothing.
void TakeOver(const CanListItem& from, CanItemData& item);

// The name of an item changes, and with it those of its arrays in its own level crossings.
void RenameItem(CanItemData& item, std::string_view name);

// A text as an identifier of so many bits, in its own form; nothing for one that is no number.
std::optional<std::string> IdentifierOf(std::string_view text, OrvusCanDataIDTypes type);

// Whether an item can be measured: values within their ranges, texts in their forms.
bool IsValidItem(const CanItemData& item, OrvusCanDataIDTypes type);

}  // namespace ostrand
