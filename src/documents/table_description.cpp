#include "documents/table_description.h"

#include <string_view>

#include "documents/document_file.h"
#include "documents/table_columns.h"
#include "model/output_table.h"
#include "model/record_layout.h"
#include "text/mask.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr std::string_view kColumnHeading =
    "FIELD NO--------RES----MEAS------FIELD------------ALIAS---------------UNITS-------";
constexpr std::string_view kNoAlias = "-----------";
constexpr std::string_view kNoUnits = "--------";

// Print positions of a field line.
constexpr int kResolutionColumn = 17;
constexpr int kMeasColumn = 24;
constexpr int kAliasColumn = 51;
constexpr int kUnitsColumn = 71;

std::string withCommas(double value) { return FormatNumber(value, "#,##0"); }
std::string_view trueOrFalse(flag value) { return value != 0 ? "True" : "False"; }
std::string flagName(i16 number) {
  return number == 0 ? "None" : "Flag(" + NumberText(number) + ")";
}

// A title padded with hyphens to the width of the heading, and cut to it.
std::string ruled(std::string line) {
  line.resize(kColumnHeading.size(), '-');
  return line;
}

class Description {
 public:
  explicit Description(const ProjectStore& store) : store_(store) {}

  void Table(int t) {
    heading(t);
    int group = 0;  // of the last separator
    for (const TableColumn& column : ColumnsOf(store_, t)) {
      if (column.group != group) {
        group = column.group;
        put(ruled("-- " + column.groupTitle + " "));
      }
      field(column);
    }
    put(ruled("- End Table " + NumberText(t) + " -"));
  }

  std::string Take() { return std::move(text_); }

 private:
  void put(std::string_view line) {
    text_ += line;
    text_ += "\r\n";
  }
  void put(std::string_view label, std::string_view value) {
    text_ += label;
    put(value);
  }

  void heading(int t) {
    const OutputTable& table = store_.Tables[t];
    put("");
    put(std::string(kColumnHeading.size(), '='));
    put("TABLE #" + NumberText(t) + "      = ", table.TableName);
    put("Location      = ", table.TableLocation == kPcCard ? "PC Card " : "SRAM in CPU");
    put("Interval      = ", TableIntervalText(store_, t));
    if (table.AutoSize != 0) {
      put("Buffer Size   = Auto Size");
    } else {
      put("Buffer Size   = ", withCommas(table.Buffer) + " Records");
      put("Time to Fill  = ", TimeToFillText(store_, t));
    }
    put("Record Size   = ", withCommas(ORVUS_COMMON::SizeOfRecord(store_, t).bytes) + " Bytes");
    put("Fill and Stop = ", trueOrFalse(table.FillStop));
    put("Sync Table    = ", trueOrFalse(table.SyncTable));
    put("Control Flag  = ", flagName(table.FlagTable));
    put("Mark Flag     = ", flagName(table.FlagMark));
    put("Full Flag     = ", flagName(table.FlagFull));
    put("");
    put(kColumnHeading);
  }

  void field(const TableColumn& column) {
    std::string line = PaddedNumberText(column.number, 3) + ".";
    TabTo(line, kResolutionColumn);
    line += column.resolution;
    TabTo(line, kMeasColumn);
    line += column.processing;
    line += " - ";
    line += column.field;
    TabTo(line, kAliasColumn);
    line += column.alias.empty() ? kNoAlias : column.alias;
    TabTo(line, kUnitsColumn);
    line += column.units.empty() ? kNoUnits : column.units;
    put(line);
  }

  const ProjectStore& store_;
  std::string text_;
};

}  // namespace

std::string TableDescriptionText(const ProjectStore& store, const DocumentHead& head) {
  Description description(store);
  for (int t = 1; t <= kTables; ++t) {
    if (store.Tables[t].TableOn != 0) description.Table(t);
  }
  return HeadLines(head, store.Gen, kTableDescriptionHead) + description.Take();
}

bool WriteTableDescription(platform::FileSystem& files, platform::Forms& forms,
                           const std::string& base, const ProjectStore& store,
                           const DocumentHead& head) {
  return WriteDocument(files, forms, base + std::string(kTableDescriptionHead.extension),
                       TableDescriptionText(store, head));
}

}  // namespace ostrand
