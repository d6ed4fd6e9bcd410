#include "can/pick_list.h"

#include <algorithm>
#include <array>

#include "can/item_rules.h"
#include "controls/text_field.h"
#include "model/stored_text.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kCode = "ORVUSV5";
constexpr std::string_view kOldCode = "QRLVXMPTEN";
constexpr std::string_view kBaseHeader =
    "Description,Priority,Reserved,DataPage,PDUFormat,PDUSpecific,SourceAddress,DataType,StartBit,"
    "Numbits,Alias,Mult,Offset,Units";
constexpr std::string_view kLongHeader =
    "Description,Priority,Reserved,DataPage,PDUFormat,PDUSpecific,SourceAddress,DataType,StartBit,"
    "Numbits,Alias,Mult,Offset,Units,TxDataID,TxDataFrame,RxDataMatch,RxTimeout";

// Indexes of the fields in a line.
enum Column : std::size_t {
  kDescription,
  kPriority,  // or the whole identifier
  kReserved,
  kDataPage,
  kPduFormat,
  kPduSpecific,
  kSourceAddress,
  kDataType,
  kStartBit,
  kNumBits,
  kAlias,
  kMult,
  kOffset,
  kUnits,
  kBaseColumns,
  kTxDataID = kBaseColumns,
  kTxDataFrame,
  kRxDataMatch,
  kRxTimeout,
  kLongColumns
};

constexpr std::array<std::string_view, kLongColumns> kColumnNames = {
    "Description",   "Priority", "Reserved", "DataPage",    "PDUFormat",   "PDUSpecific",
    "SourceAddress", "DataType", "StartBit", "Numbits",     "Alias",       "Mult",
    "Offset",        "Units",    "TxDataID", "TxDataFrame", "RxDataMatch", "RxTimeout"};

// The fields have the order of the identifier's, from the priority on.
constexpr std::size_t columnOf(OrvusCanJ1939Fields field) {
  return kPriority + static_cast<std::size_t>(field);
}
constexpr std::array<OrvusCanJ1939Fields, 6> kJ1939Fields = {
    ORVUS_CAN_J1939_ID_PRIORITY,  ORVUS_CAN_J1939_ID_RESERVED,    ORVUS_CAN_J1939_ID_DATAPAGE,
    ORVUS_CAN_J1939_ID_PDUFORMAT, ORVUS_CAN_J1939_ID_PDUSPECIFIC, ORVUS_CAN_J1939_ID_SOURCEADDR};

constexpr std::string_view kHexMark = "&H";
constexpr std::string_view kNoFields = "-1,-1,-1,-1,";

struct Extension {
  std::string_view text;
  OrvusCanDataIDTypes type;
};
constexpr std::array<Extension, 4> kExtensions = {{{".11LST", ORVUS_CAN_DATAID_11BIT},
                                                   {".11PCK", ORVUS_CAN_DATAID_11BIT},
                                                   {".29LST", ORVUS_CAN_DATAID_29BIT},
                                                   {".29PCK", ORVUS_CAN_DATAID_29BIT}}};

using Cells = std::vector<std::string>;

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

bool transmits(const cCanConfig& item) { return item.MessageType() != ORVUS_CAN_MSGTYPE_RxOnly; }

// ---- Reading ------------------------------------------------------------------------------------

void skipBlanks(std::string_view& rest) {
  while (rest.starts_with(' ')) rest.remove_prefix(1);
}

// Takes a text in double quotes off `rest`; "" is a quote in it. Nothing when the closing quote is
// missing.
std::optional<std::string> takeQuoted(std::string_view& rest) {
  std::string text;
  rest.remove_prefix(1);
  while (!rest.empty()) {
    const bool quote = rest.front() == '"';
    if (quote && !rest.substr(1).starts_with('"')) {
      rest.remove_prefix(1);
      return text;
    }
    text += rest.front();
    rest.remove_prefix(quote ? 2 : 1);
  }
  return std::nullopt;
}

// The fields of a line. A comma between quotes does not separate fields.
Result<Cells> cellsOf(std::string_view rest) {
  Cells cells;
  for (;;) {
    skipBlanks(rest);
    if (rest.starts_with('"')) {
      auto text = takeQuoted(rest);
      if (!text) return Error{"a double quote is not closed"};
      cells.push_back(*std::move(text));
      skipBlanks(rest);
      if (!rest.empty() && rest.front() != ',') return Error{"text after a closing double quote"};
    } else {
      const std::string_view text = Before(rest, ",");
      cells.emplace_back(Trim(text));
      rest.remove_prefix(text.size());
    }
    if (rest.empty()) return cells;
    rest.remove_prefix(1);
  }
}

// Parses the fields of one line into an item. Stops at the first field that cannot be read.
class ItemReader {
 public:
  ItemReader(const Cells& cells, OrvusCanDataIDTypes type, std::vector<CanListRemark>& remarks)
      : cells_(cells), remarks_(remarks) {
    item_.Config.SetMode(type);
  }

  Result<CanListItem> Read() {
    readIdentifier();
    readValue();
    if (cells_.size() == kLongColumns) readTransmission();
    if (!fault_.empty()) return Error{fault_};
    return item_;
  }

 private:
  [[nodiscard]] const std::string& cell(std::size_t column) const { return cells_[column]; }

  [[nodiscard]] static std::string named(std::size_t column, std::string_view text) {
    return std::string(kColumnNames[column]) + " " + quoted(text);
  }

  void fail(std::size_t column, std::string_view why) {
    if (fault_.empty()) fault_ = named(column, cell(column)) + std::string(why);
  }
  void remark(std::size_t column, std::string_view what) {
    remarks_.push_back({false, named(column, cell(column)) + std::string(what)});
  }
  void demand(bool met, std::size_t column, std::string_view what) {
    if (!met) remarks_.push_back({true, named(column, cell(column)) + std::string(what)});
  }

  template <class Number>
  void take(std::size_t column, Number& to, std::optional<Number> (*parse)(std::string_view),
            std::string_view why) {
    const std::optional<Number> value = parse(cell(column));
    if (!value) return fail(column, why);
    to = *value;
  }
  void takeInt16(std::size_t column, i16& to) {
    take<std::int16_t>(column, to, ToInt16, " is not a 16-bit number");
  }
  void takeSingle(std::size_t column, float& to) {
    take<float>(column, to, ToSingle, " is not a number");
  }

  void readIdentifier() {
    std::string_view description = cell(kDescription);
    const bool hex = description.starts_with(kHexMark);
    if (hex) description.remove_prefix(kHexMark.size());
    item_.Config.Description = description;
    demand(!HoldsSectionMark(description), kDescription, " can't be kept in a project: no \"[\"");

    std::size_t absent = 0;
    for (std::size_t column = kReserved; column <= kPduSpecific; ++column) {
      if (ToDouble(cell(column)) == -1.0) ++absent;
    }
    constexpr std::size_t kAll = kPduSpecific - kReserved + 1;
    if (absent == kAll) {
      readPlainIdentifier();
    } else if (item_.Config.DataIDType() == ORVUS_CAN_DATAID_11BIT) {
      fail(kReserved, ": identifiers of 11 bits have no such field, it must be -1");
    } else {
      readJ1939Fields();
    }
    if (hex) showInHex();
  }

  void readPlainIdentifier() {
    const auto number = identifier(kPriority);
    if (!number) return;
    item_.Config.DataID(cell(kPriority));
    remarkLimit(kPriority, *number, item_.Config.DataID());
  }

  std::optional<std::int64_t> identifier(std::size_t column) {
    const auto number = IdentifierNumber(cell(column));
    if (!number) fail(column, " is not an identifier (a 32-bit number)");
    return number;
  }

  // An identifier is limited to its number of bits.
  void remarkLimit(std::size_t column, std::int64_t number, const std::string& held) {
    if (IdentifierNumber(held) == number) return;
    remark(column, " is out of range and is read as " + held);
  }

  void readJ1939Fields() {
    item_.J1939Fields = true;
    for (const OrvusCanJ1939Fields field : kJ1939Fields) {
      const std::size_t column = columnOf(field);
      const std::optional<std::int16_t> value = ToInt16(cell(column));
      if (!value || *value < 0 || *value > 255) {
        return fail(column, " is not a number from 0 to 255");
      }
      item_.Config.J1939_FieldVal(field, static_cast<std::uint8_t>(*value));
      const int held = item_.Config.J1939_FieldVal(field);
      if (held != *value) remark(column, " is too large and is read as " + NumberText(held));
    }
  }

  // Converts the identifier to the other form.
  void showInHex() {
    const std::int64_t value = IdentifierNumber(item_.Config.DataID()).value_or(0);
    item_.Config.DataID(std::string(kHexMark) + HexText(static_cast<std::uint64_t>(value)));
  }

  void readValue() {
    cCanConfig& config = item_.Config;
    takeInt16(kDataType, config.DataStyle);
    takeInt16(kStartBit, config.StartBit);
    takeInt16(kNumBits, config.NumBits);
    item_.Alias = cell(kAlias);
    takeSingle(kMult, item_.Mult);
    takeSingle(kOffset, item_.Offset);
    item_.Units = cell(kUnits);
    demand(IsDataStyle(config.DataStyle), kDataType, " is out of the range from 1 to 6");
    demand(IsBitNumber(config.StartBit), kStartBit, " is out of the range from 1 to 64");
    demand(IsBitNumber(config.NumBits), kNumBits, " is out of the range from 1 to 64");
    demand(ItemNameText(item_.Alias), kAlias, " can't be a name in a program");
    demand(UnitNameText(item_.Units), kUnits, " can't be a unit in a program");
  }

  // All four are blank for a receive-only item in a list with transmitting items.
  void readTransmission() {
    if (std::all_of(cells_.begin() + kBaseColumns, cells_.end(),
                    [](const std::string& text) { return text.empty(); })) {
      return;
    }
    cCanConfig& config = item_.Config;
    const auto number = identifier(kTxDataID);
    if (!number) return;
    config.TxDataID(cell(kTxDataID));
    config.TxDataFrame = cell(kTxDataFrame);
    config.RxDataMatch = cell(kRxDataMatch);
    take<std::int32_t>(kRxTimeout, config.RxTimeout, ToInt32, " is not a 32-bit number");
    config.SetMsgMode(ORVUS_CAN_MSGTYPE_TxRxPair);

    remarkLimit(kTxDataID, *number, config.TxDataID());
    demand(TxDataFrameOf(config.TxDataFrame).has_value(), kTxDataFrame, " is not a 64-bit frame");
    demand(RxDataMatchOf(config.RxDataMatch).has_value(), kRxDataMatch, " is not a 64-bit match");
    demand(IsRxTimeout(config.RxTimeout), kRxTimeout, " is out of the range from 1 to 20000");
  }

  const Cells& cells_;
  std::vector<CanListRemark>& remarks_;
  CanListItem item_;
  std::string fault_;
};

Result<CanListItem> itemOf(std::string_view line, std::size_t columns, OrvusCanDataIDTypes type,
                           std::vector<CanListRemark>& remarks) {
  const Result<Cells> cells = cellsOf(line);
  if (!cells) return Error{cells.ErrorText()};
  if (cells.Value().size() != columns) {
    return Error{NumberText(static_cast<std::int64_t>(cells.Value().size())) +
                 " fields where the header has " + NumberText(static_cast<std::int64_t>(columns))};
  }
  return ItemReader(cells.Value(), type, remarks).Read();
}

// The non-blank lines of a file, numbered as in an editor.
class ListLines {
 public:
  explicit ListLines(std::string_view content) : rest_(content) {}

  std::optional<std::string_view> Next() {
    while (!rest_.empty()) {
      ++number_;
      std::string_view line = TakeLine(rest_);
      if (line.ends_with('\r')) line.remove_suffix(1);
      const bool blank = line.find_first_not_of(" \t") == std::string_view::npos;
      if (!blank && line.front() != '\'') return line;
    }
    return std::nullopt;
  }
  [[nodiscard]] int Number() const { return number_; }

 private:
  std::string_view rest_;
  int number_ = 0;
};

std::string messageOf(std::string_view path, std::string_view what) {
  return "The file " + std::string(path) + std::string(what);
}

// ---- Writing ------------------------------------------------------------------------------------

std::string quotedCell(std::string_view text) {
  std::string cell = "\"";
  for (const char letter : text) {
    if (letter == '"') cell += '"';
    cell += letter == '\n' ? ' ' : letter;
  }
  return cell + "\"";
}

// Texts that would not read back unchanged are quoted.
std::string textCell(std::string_view text) {
  const bool plain = text.find_first_of(",\"\r\n") == std::string_view::npos && Trim(text) == text;
  return plain ? std::string(text) : quotedCell(text);
}

std::string identifierCells(const CanListItem& item) {
  std::string line;
  if (!item.J1939Fields) return item.Config.DataID() + "," + std::string(kNoFields) + "0,";
  for (const OrvusCanJ1939Fields field : kJ1939Fields) {
    line += NumberText(static_cast<int>(item.Config.J1939_FieldVal(field))) + ",";
  }
  return line;
}

std::string lineOf(const CanListItem& item, bool longHeader) {
  const cCanConfig& config = item.Config;
  std::string line = quotedCell((config.DataIDIsHex() ? "&H" : "") + config.Description) + "," +
                     identifierCells(item);
  line += NumberText(static_cast<int>(config.DataStyle)) + ",";
  line += NumberText(static_cast<int>(config.StartBit)) + ",";
  line += NumberText(static_cast<int>(config.NumBits)) + ",";
  line += textCell(item.Alias) + ",";
  line += NumberText(item.Mult) + "," + NumberText(item.Offset) + ",";
  line += textCell(item.Units);
  if (!longHeader) return line;
  if (!transmits(config)) return line + ",,,,";
  line += "," + textCell(config.TxDataID()) + "," + textCell(config.TxDataFrame) + ",";
  line += textCell(config.RxDataMatch) + "," + NumberText(static_cast<int>(config.RxTimeout));
  return line;
}

}  // namespace

std::optional<OrvusCanDataIDTypes> CanListTypeOf(std::string_view path) {
  for (const Extension& extension : kExtensions) {
    if (path.size() < extension.text.size()) continue;
    if (SameText(path.substr(path.size() - extension.text.size()), extension.text)) {
      return extension.type;
    }
  }
  return std::nullopt;
}

std::optional<CanListFault> VisitCanListLines(
    std::string_view path, std::string_view content,
    const std::function<bool(const CanListLine&)>& visit) {
  const std::optional<OrvusCanDataIDTypes> type = CanListTypeOf(path);
  if (!type) {
    return CanListFault{
        0, messageOf(path,
                     " is not a pick list: its name must end in .11LST, .11PCK, .29LST or "
                     ".29PCK.")};
  }
  ListLines lines(content);
  const auto code = lines.Next();
  if (!code || (*code != kCode && *code != kOldCode)) {
    return CanListFault{lines.Number(),
                        messageOf(path, " is available but the code is incorrect.")};
  }
  const auto header = lines.Next();
  if (!header || (*header != kBaseHeader && *header != kLongHeader)) {
    return CanListFault{lines.Number(),
                        messageOf(path, " is available but the header is incorrect.")};
  }
  const std::size_t columns = *header == kLongHeader ? kLongColumns : kBaseColumns;
  while (const auto line = lines.Next()) {
    std::vector<CanListRemark> remarks;
    Result<CanListItem> item = itemOf(*line, columns, *type, remarks);
    if (!visit({lines.Number(), std::move(item), std::move(remarks)})) break;
  }
  return std::nullopt;
}

Result<CanList> CanListOf(std::string_view path, std::string_view content) {
  CanList list;
  list.DataIDType = CanListTypeOf(path).value_or(list.DataIDType);
  int faulty = 0;
  const auto fault = VisitCanListLines(path, content, [&](const CanListLine& line) {
    if (!line.Item) {
      faulty = line.Number;
      return false;
    }
    list.Items.push_back(line.Item.Value());
    return true;
  });
  if (fault) return Error{fault->Text};
  if (faulty > 0) {
    return Error{
        "An error occurred while reading the pick list.\r\n"
        "Check Line Number : " +
        NumberText(faulty)};
  }
  return list;
}

Result<std::string> CanListFileContent(platform::FileSystem& files, std::string_view path) {
  const std::string message = messageOf(path, " is not available.");
  if (!files.Exists(path)) return Error{message};
  if (files.Size(path) > kMaxCanListBytes) {
    return Error{messageOf(path, " is too large for a pick list.")};
  }
  Result<std::string> content = files.Read(path);
  if (!content) return Error{message + "\r\n" + content.ErrorText()};
  return content;
}

Result<CanList> ReadCanList(platform::FileSystem& files, std::string_view path) {
  const Result<std::string> content = CanListFileContent(files, path);
  if (!content) return Error{content.ErrorText()};
  return CanListOf(path, content.Value());
}

std::string CanListContent(const CanList& list) {
  const bool longHeader =
      std::any_of(list.Items.begin(), list.Items.end(),
                  [](const CanListItem& item) { return transmits(item.Config); });
  std::string content(kCode);
  content += "\r\n";
  content += longHeader ? kLongHeader : kBaseHeader;
  content += "\r\n";
  for (const CanListItem& item : list.Items) content += lineOf(item, longHeader) + "\r\n";
  return content;
}

Result<> WriteCanList(platform::FileSystem& files, std::string_view path, const CanList& list) {
  return platform::WriteWhole(files, path, CanListContent(list));
}

}  // namespace ostrand
