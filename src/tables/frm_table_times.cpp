#include "tables/frm_table_times.h"

#include <limits>

#include "platform/box.h"
#include "tables/faces.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kWhole = "#,##0";
constexpr double kMaxRecords = std::numeric_limits<i32>::max();
constexpr double kMaxTyped = 1e15;

}  // namespace

frmTableTimes::frmTableTimes(const ScreenContext& context, const TableTimesRequest& request)
    : Screen(context, "frmTableTimes"),
      Days(*this, "Days", NumberType::kDouble),
      Hours(*this, "Hours", NumberType::kDouble),
      Minutes(*this, "Minutes", NumberType::kDouble),
      Seconds(*this, "Seconds", NumberType::kDouble),
      Buffer(*this, "Buffer"),
      TotalBytes(*this, "TotalBytes"),
      Space(*this, "Space"),
      BurstNote(*this, "BurstNote"),
      AllTables(*this, "AllTables"),
      tables_(request.tables),
      table_(tables_[request.table]) {
  Caption = "TABLE " + Upper(table_.Name);
  for (NumericField* field : {&Days, &Hours, &Minutes, &Seconds}) {
    field->ToolTip = "Enter the number of " + field->Name() + " desired.";
    field->Limits(0, kMaxTyped);
    field->OnChange = [this] { CalcTableRecs(); };
    field->OnTake = [this] { onTake(); };
  }
  AllTables.OnPress = [this] {
    // Counts the records shown on the screen.
    const i32 kept = table_.NumRecs;
    if (DoneEnabled) table_.NumRecs = static_cast<i32>(records_);
    ShowTableTimes(Forms(), store(), tables_);
    table_.NumRecs = kept;
  };
  Describe(*this, kTableTimesFaces);
  load();
}

void frmTableTimes::load() {
  const Loading loading(*this);
  const TimeParts time = TimeParts::Of(MicrosToFill(store(), table_));
  Days.Value(time.days);
  Hours.Value(time.hours);
  Minutes.Value(time.minutes);
  Seconds.Value(time.seconds);
  // Calculated from the rounded time, a large count would differ.
  records_ = table_.NumRecs;
  showRecords();
}

void frmTableTimes::CalcTableRecs() {
  const TimeParts wanted{Days.Value(), Hours.Value(), Minutes.Value(), Seconds.Value()};
  const double interval = ORVUS_COMMON::TableIntervalMicros(store(), table_) / 1e6;
  records_ = RoundHalfEven(wanted.Seconds() / interval);
  showRecords();
}

void frmTableTimes::showRecords() {
  const bool shows = records_ <= kMaxRecords;
  DoneEnabled = shows && records_ >= 1;
  WhyNotDone = shows ? "The time to fill is shorter than a record."
                     : "The time to fill takes too many records.";

  const Medium medium = MediumOf(store(), table_.MemLoc);
  const double others =
      BytesInLocation(tables_, table_.MemLoc) - (table_.Enabled ? TableBytes(table_) : 0);
  const double total = others + (shows ? records_ * table_.RecordBytes() : 0);
  Buffer.Text(shows ? FormatNumber(records_, kWhole) : "?");
  TotalBytes.Text(shows ? FormatNumber(total, kWhole) : "?");
  TotalBytes.Flashes = shows && total > medium.space;
  Space.Caption = medium.label;
  Space.Text(FormatNumber(medium.space, kWhole));
  BurstNote.Visible = medium.burstBytes > 0;
  BurstNote.Text(FormatNumber(medium.burstBytes, kWhole) + " bytes used for Burst Buffer.");
}

void frmTableTimes::onTake() {
  CalcTableRecs();
  if (records_ <= kMaxRecords) return;
  ShowWarning(Forms(), "TABLE TIME TOO LONG",
              "A table can't have more than " + FormatNumber(kMaxRecords, kWhole) + " records.");
}

bool frmTableTimes::onDone() {
  table_.NumRecs = static_cast<i32>(records_);
  return true;
}

}  // namespace ostrand
