#include "can/pick_list_report.h"

#include <algorithm>
#include <array>
#include <map>

#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::size_t kListColumns = 12;
using ListRow = std::array<std::string, kListColumns>;

std::string count(std::size_t number) { return NumberText(static_cast<std::int64_t>(number)); }

ListRow rowOf(std::size_t number, const CanListItem& item) {
  const cCanConfig& config = item.Config;
  const bool sends = config.MessageType() != ORVUS_CAN_MSGTYPE_RxOnly;
  return {count(number),
          config.DataID(),
          config.PGNVal(),
          sends ? "Tx/Rx" : "Rx",
          NumberText(static_cast<int>(config.DataStyle)),
          NumberText(static_cast<int>(config.StartBit)),
          NumberText(static_cast<int>(config.NumBits)),
          NumberText(item.Mult),
          NumberText(item.Offset),
          item.Units,
          item.Alias,
          config.Description};
}

std::string paddedLine(const ListRow& row, const std::array<std::size_t, kListColumns>& widths) {
  std::string line;
  for (std::size_t column = 0; column < kListColumns; ++column) {
    line += row[column];
    if (column + 1 < kListColumns) line.append(widths[column] + 2 - row[column].size(), ' ');
  }
  line.erase(line.find_last_not_of(' ') + 1);
  return line + "\n";
}

std::string transmission(const cCanConfig& config) {
  return "     sends " + config.TxDataFrame + " to " + config.TxDataID() + ", takes " +
         config.RxDataMatch + " within " + NumberText(static_cast<int>(config.RxTimeout)) + " ms\n";
}

// Items that look alike in the list, or that get the same name in a project.
class Duplicates {
 public:
  explicit Duplicates(std::string_view what) : what_(what) {}

  void Look(int line, std::string_view text, std::vector<CanListFinding>& findings) {
    if (Trim(text).empty()) return;
    const auto [first, isNew] = lines_.emplace(Upper(Trim(text)), line);
    if (isNew) return;
    findings.push_back({line, false,
                        std::string(what_) + " \"" + std::string(text) + "\" is in line " +
                            NumberText(first->second) + " too"});
  }

 private:
  std::string_view what_;
  std::map<std::string, int> lines_;
};

}  // namespace

std::string CanListListing(std::string_view path, const CanList& list) {
  std::vector<ListRow> rows = {{"No.", "Identifier", "PGN", "Message", "Type", "Bit", "Bits",
                                "Mult", "Offset", "Units", "Alias", "Description"}};
  for (const CanListItem& item : list.Items) rows.push_back(rowOf(rows.size(), item));
  std::array<std::size_t, kListColumns> widths{};
  for (const ListRow& row : rows) {
    for (std::size_t column = 0; column < kListColumns; ++column) {
      widths[column] = std::max(widths[column], row[column].size());
    }
  }
  const bool isShort = list.DataIDType == ORVUS_CAN_DATAID_11BIT;
  std::string text = std::string(path) + ": " + count(list.Items.size()) +
                     (list.Items.size() == 1 ? " item" : " items") + ", identifiers of " +
                     (isShort ? "11" : "29") + " bits\n";
  for (std::size_t at = 0; at < rows.size(); ++at) {
    text += paddedLine(rows[at], widths);
    if (at == 0) continue;
    const cCanConfig& config = list.Items[at - 1].Config;
    if (config.MessageType() != ORVUS_CAN_MSGTYPE_RxOnly) text += transmission(config);
  }
  return text;
}

std::vector<CanListFinding> CheckCanListContent(std::string_view path, std::string_view content) {
  std::vector<CanListFinding> findings;
  Duplicates aliases("Alias");
  Duplicates descriptions("Description");
  bool any = false;
  const auto fault = VisitCanListLines(path, content, [&](const CanListLine& line) {
    any = true;
    if (!line.Item) {
      findings.push_back({line.Number, true, line.Item.ErrorText()});
      return true;
    }
    for (const CanListRemark& remark : line.Remarks) {
      findings.push_back({line.Number, remark.Wrong, remark.Text});
    }
    const CanListItem& item = line.Item.Value();
    aliases.Look(line.Number, item.Alias, findings);
    descriptions.Look(line.Number, item.Config.Description, findings);
    return true;
  });
  if (fault) {
    findings.push_back({fault->Line, true, fault->Text});
  } else if (!any) {
    findings.push_back({0, false, "The list holds no item."});
  }
  return findings;
}

std::vector<CanListFinding> CheckCanList(platform::FileSystem& files, std::string_view path) {
  const Result<std::string> content = CanListFileContent(files, path);
  if (!content) return {{0, true, content.ErrorText()}};
  return CheckCanListContent(path, content.Value());
}

}  // namespace ostrand
