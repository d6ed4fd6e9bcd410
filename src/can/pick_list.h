// Lists of ready-made CAN items, one text file for each. The file extension determines the bus:
// .11LST and .11PCK for identifiers of 11 bits, .29LST and .29PCK for 29.
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

// An item of a list. The list stores Description, DataID, DataStyle, StartBit and NumBits of its
// configuration and, for transmitting items, TxDataID, TxDataFrame, RxDataMatch and RxTimeout.
struct CanListItem {
  cCanConfig Config;
  // The identifier is stored as J1939 fields, not as one number; never with 11 bits.
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

// The bus of a list, by its extension in any case; nothing for other files.
std::optional<OrvusCanDataIDTypes> CanListTypeOf(std::string_view path);

// Maximum size; a larger file is not a list.
inline constexpr std::uint64_t kMaxCanListBytes = 16U << 20U;

// Errors are the texts of their boxes; lines are separated by CR LF. After an error no items are
// returned, not even those before it.
Result<CanList> ReadCanList(platform::FileSystem& files, std::string_view path);

// The same for the content of a file.
Result<CanList> CanListOf(std::string_view path, std::string_view content);

// The content of a file that reads back as the same list, with two exceptions: a description that
// begins with "&H" makes its item show the identifier in hexadecimal, and a line feed in a text
// becomes a blank.
std::string CanListContent(const CanList& list);

Result<> WriteCanList(platform::FileSystem& files, std::string_view path, const CanList& list);

// A remark on a value that can be read but is invalid or suspicious.
struct CanListRemark {
  bool Wrong = false;  // the item can't be used
  std::string Text;
};

// A line with an item, from 1: the item, or why it cannot be read.
struct CanListLine {
  int Number = 0;
  Result<CanListItem> Item;
  std::vector<CanListRemark> Remarks;
};

// Why a file is not a list: the text of its box, and the line, 0 for the file itself.
struct CanListFault {
  int Line = 0;
  std::string Text;
};

// Visits the lines with items in order until `visit` returns false.
std::optional<CanListFault> VisitCanListLines(std::string_view path, std::string_view content,
                                              const std::function<bool(const CanListLine&)>& visit);

// The content of the file, or why it cannot be read.
Result<std::string> CanListFileContent(platform::FileSystem& files, std::string_view path);

}  // namespace ostrand
