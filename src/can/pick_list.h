// Lists of ready-made CAN items, one text file for each. The extension of the file tells what bus
// they are for: .11LST and .11PCK for identifiers of 11 bits, .29LST and .29PCK for 29.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/can_config.h"
#include "platform/filesystem.h"
#include "text/result.h"

namespace ostrand {

// An item of a list. Of its configuration a list keeps Description, DataID, DataStyle, StartBit,
// NumBits and, when it transmits, TxDataID, TxDataFrame, RxDataMatch and RxTimeout.
struct CanListItem {
  cCanConfig Config;
  // The identifier is kept by its J1939 fields and not as one number; never with 11 bits.
  bool J1939Fields = false;
  std::string Alias;
  float Mult = 1;
  float Offset = 0;
  std::string Units;
};

struct CanList {
  OrvusCanDataIDTypes DataIDType = ORVUS_CAN_DATAID_29BIT;
  std::vector<CanListItem> Items;
};

// What bus a list is for, by its extension in any case; nothing for other files.
std::optional<OrvusCanDataIDTypes> CanListTypeOf(std::string_view path);

// A list is small; a larger file is none.
inline constexpr std::uint64_t kMaxCanListBytes = 16U << 20U;

// The errors of reading are the texts of their boxes; lines are parted by CR LF. After one no item
// is given, not even those before it.
Result<CanList> ReadCanList(platform::FileSystem& files, std::string_view path);

// The same of the content of a file.
Result<CanList> CanListOf(std::string_view path, std::string_view content);

// The content of a file that reads back as the same list. The one thing that a line has no room
// for: a description that begins with "&H" makes its item show the identifier in hexadecimal. A
// line feed in a text becomes a blank.
std::string CanListContent(const CanList& list);

Result<> WriteCanList(platform::FileSystem& files, std::string_view path, const CanList& list);

// Of a value that is read, and yet can't be used as it is or may not be as meant.
struct CanListRemark {
  bool Wrong = false;  // the item can't be used
  std::string Text;
};

// A line with an item, from 1: the item, or why it can't be read.
struct CanListLine {
  int Number = 0;
  Result<CanListItem> Item;
  std::vector<CanListRemark> Remarks;
};

// Why a file is no list at all: the text of its box, and the line, 0 for the file itself.
struct CanListFault {
  int Line = 0;
  std::string Text;
};

// Visits the lines with items in their order until `visit` gives false.
std::optional<CanListFault> VisitCanListLines(std::string_view path, std::string_view content,
                                              const std::function<bool(const CanListLine&)>& visit);

// The content of the file, or why there is none to read.
Result<std::string> CanListFileContent(platform::FileSystem& files, std::string_view path);

}  // namespace ostrand
