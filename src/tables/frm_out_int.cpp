#include "tables/frm_out_int.h"

#include <limits>
#include <utility>

#include "conditions/flag_code.h"
#include "conditions/flag_conflicts.h"
#include "conditions/flag_usage.h"
#include "controls/screen_factory.h"
#include "model/record_layout.h"
#include "platform/box.h"
#include "tables/faces.h"
#include "tables/frm_table_times.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"
#include "verify/scan_rate_tables.h"
#include "verify/timing_checks.h"

namespace ostrand {
namespace {

using platform::Answer;
using platform::Buttons;

constexpr std::size_t kFilePrefix = 6;  // of a table's name, in the names of collected files
constexpr int kDisplayTables = 8;       // offered by the list of the display
constexpr i16 kScreenMode = 1;          // mode of the interval check: a warning of this screen

// Indexes in the list of locations.
enum Location : int { kInternalItem, kFlashItem, kCardItem };

// The unit of the interval determines the decimals of scans per second.
std::string_view perSecMask(int unit) {
  if (unit <= ORVUS_TBLTIME_USECS) return "#,##0.0";
  return unit == ORVUS_TBLTIME_MSECS ? "#,##0.000" : "#,##0.00000";
}

}  // namespace

frmOutInt::frmOutInt(const ScreenContext& context)
    : Screen(context, "frmOutInt"),
      Table(*this, "Table"),
      TableOn(*this, "TableOn"),
      TableName(*this, "TableName", NameText),
      OutInt(*this, "OutInt", NumberType::kLong),
      OutIntUnits(*this, "OutIntUnits"),
      PerSec(*this, "PerSec"),
      SyncTable(*this, "SyncTable"),
      Buffer(*this, "Buffer", NumberType::kLong),
      AutoSize(*this, "AutoSize"),
      FillStop(*this, "FillStop"),
      CalcTime(*this, "CalcTime"),
      TableLocation(*this, "TableLocation"),
      PamCard(*this, "PamCard"),
      FlagTable(*this, "FlagTable"),
      FlagMark(*this, "FlagMark"),
      FlagFull(*this, "FlagFull"),
      HDU7(*this, "HDU7"),
      Trigger(*this, "Trigger", "frmTrigTable"),
      WriteIf(*this, "WriteIf", "frmWriteIf"),
      TableTimes(*this, "TableTimes", "frmTableTimes"),
      AllTables(*this, "AllTables") {
  setTexts();
  bind();
  Describe(*this, kOutIntFaces);
  load();
}

void frmOutInt::setTexts() {
  Caption = "OUTPUT TABLES";
  for (int t = 1; t <= kTables; ++t) {
    Table.Add("Table " + NumberText(t));
  }
  OutInt.Limits(1, std::numeric_limits<i32>::max());
  OutIntUnits.SetItems({"uSecs", "mSecs", "Secs", "Mins", "hours", "Days"});
  Buffer.Limits(1, std::numeric_limits<i32>::max());
  TableLocation.SetItems({"Internal", "Flash", "PC Card"});
  TableLocation.Items[kFlashItem].Visible = false;
  TableLocation.Items[kFlashItem].ToolTip = "This logger has no flash memory for tables.";
  PamCard.SetItems({"Card A", "Card B"});
  PamCard.Items[1].Enabled = false;
  PamCard.Items[1].ToolTip = "A project has one card.";
  for (Choice* list : {&FlagTable, &FlagMark, &FlagFull}) {
    list->SetItems({"Off", "1", "2", "3", "4", "5", "6", "7", "8"});
  }
  HDU7.SetItems({"None", "Public"});
  for (int t = 1; t <= kDisplayTables; ++t) {
    HDU7.Add("Table " + NumberText(t));
  }
}

void frmOutInt::bind() {
  // While a table is loaded, its controls do not edit it.
  const auto bindBox = [this](CheckBox& box, i16 cOutputTable::*value, bool whenChecked = true) {
    box.OnClick = [this, &box, value, whenChecked] {
      if (IsLoading()) return;
      table().*value = box.Checked() == whenChecked ? kTrue : kFalse;
      refresh();
    };
  };
  Table.OnPick = [this] { showTable(); };
  TableOn.OnClick = [this] {
    if (IsLoading()) return;
    table().Enabled = TableOn.Checked();
    refresh();
  };
  TableName.OnTake = [this] { onName(); };
  OutInt.OnTake = [this] {
    table().Interval = static_cast<i32>(OutInt.Value());
    refresh();
  };
  OutIntUnits.OnPick = [this] { onUnits(); };
  bindBox(SyncTable, &cOutputTable::SyncToScan);
  Buffer.OnTake = [this] { table().NumRecs = static_cast<i32>(Buffer.Value()); };
  bindBox(AutoSize, &cOutputTable::AutoSize);
  bindBox(FillStop, &cOutputTable::FillStop);
  bindBox(CalcTime, &cOutputTable::StoreEveryTS, false);
  TableLocation.OnPick = [this] {
    if (IsLoading()) return;
    table().MemLoc = TableLocation.Index() == kCardItem ? kPcCard : kInternalMemory;
    refresh();
  };
  PamCard.OnPick = [this] { table().PamCard = static_cast<i16>(PamCard.Index()); };
  bindFlag(FlagTable, &cOutputTable::FlagWrite, kTableFlags[0]);
  bindFlag(FlagMark, &cOutputTable::FlagMark, kTableFlags[1]);
  bindFlag(FlagFull, &cOutputTable::FlagFull, kTableFlags[2]);
  HDU7.OnPick = [this] { hdu7_ = static_cast<i16>(HDU7.Index()); };

  for (Opener* opener : {&Trigger, &WriteIf}) {
    opener->OnPress = [this, opener] { OpenScreen(context(), opener->Opens(), table()); };
  }
  TableTimes.OnPress = [this] { openTimes(); };
  AllTables.OnPress = [this] { ShowTableTimes(Forms(), store(), tables_); };
}

void frmOutInt::bindFlag(Choice& list, i16 cOutputTable::*number, const TableFlag& use) {
  list.OnPick = [this, &list, number, &use] {
    if (IsLoading()) return;
    const auto picked = static_cast<i16>(list.Index());
    table().*number = picked;
    if (picked > 0) CheckFlagUsage(Forms(), store(), picked, TableFlagUser(current(), use));
  };
}

void frmOutInt::load() {
  tables_ = TableObjectsOf(store());
  hdu7_ = store().Tables.HDU7;
  before_ = edited();
  {
    const Loading loading(*this);
    HDU7.PickAt(hdu7_);
  }
  int first = 1;
  while (first < kTables && !tables_[first].Enabled) ++first;
  Table.PickAt(tables_[first].Enabled ? first - 1 : 0);
}

void frmOutInt::showTable() {
  const Loading loading(*this);
  const cOutputTable& shown = table();
  TableOn.Check(shown.Enabled);
  TableName.Text(shown.Name);
  OutInt.Value(shown.Interval);
  OutIntUnits.PickAt(shown.IntervalUnits);
  SyncTable.Check(shown.SyncToScan != 0);
  Buffer.Value(shown.NumRecs);
  AutoSize.Check(shown.AutoSize != 0);
  FillStop.Check(shown.FillStop != 0);
  CalcTime.Check(shown.StoreEveryTS == 0);
  TableLocation.PickAt(shown.MemLoc == kPcCard ? kCardItem : kInternalItem);
  PamCard.PickAt(shown.PamCard);
  FlagTable.PickAt(shown.FlagWrite);
  FlagMark.PickAt(shown.FlagMark);
  FlagFull.PickAt(shown.FlagFull);
  refresh();
}

// A table that is off is not saved, so it cannot be edited.
void frmOutInt::refresh() {
  const cOutputTable& shown = table();
  for (Control* control : Controls()) control->Enabled = shown.Enabled;
  for (Control* control : std::initializer_list<Control*>{&Table, &TableOn, &HDU7, &AllTables}) {
    control->Enabled = true;
  }
  if (shown.SyncToScan != 0) OutInt.Enabled = OutIntUnits.Enabled = false;
  if (shown.AutoSize != 0) Buffer.Enabled = TableTimes.Enabled = false;
  for (Opener* opener : Openers()) {
    opener->WhyDisabled = opener->Enabled ? ""
                          : shown.Enabled ? "The table finds its own size."
                                          : "Table " + NumberText(current()) + " is off.";
  }
  PamCard.Visible = shown.MemLoc == kPcCard;

  const double micros = ORVUS_COMMON::TableIntervalMicros(store(), shown);
  const int unit = shown.SyncToScan != 0 ? store().Scan.ExecTimeUnits : shown.IntervalUnits;
  PerSec.Text(micros > 0 ? FormatNumber(1e6 / micros, perSecMask(unit)) : "?");
}

// Names of tables are unique; a used or empty name is refused.
void frmOutInt::onName() {
  const std::string name(Trim(TableName.Text()));
  if (name.empty()) {
    Refuse("A table needs a name.");
  } else if (!warnDuplicate(name)) {
    table().Name = name;
    warnSimilar(name);
  }
  TableName.Text(table().Name);
}

bool frmOutInt::warnDuplicate(std::string_view name) {
  for (int t = 1; t <= kTables; ++t) {
    if (t == current() || !SameText(tables_[t].Name, name)) continue;
    ShowWarning(Forms(), "DUPLICATE TABLE NAME",
                std::string("The name '")
                    .append(name)
                    .append("' is already being used for Table ")
                    .append(NumberText(t))
                    .append("\r\nEACH TABLE REQUIRES A UNIQUE NAME!"));
    return true;
  }
  return false;
}

void frmOutInt::warnSimilar(std::string_view name) {
  const auto numbered = [](int t, std::string_view tableName) {
    return "Table " + NumberText(t) + " (" + std::string(tableName) + ")";
  };
  for (int t = 1; t <= kTables; ++t) {
    const std::string& other = tables_[t].Name;
    if (t == current() || !SameText(other.substr(0, kFilePrefix), name.substr(0, kFilePrefix))) {
      continue;
    }
    const std::string names = numbered(current(), name) + " and " + numbered(t, other);
    ShowWarning(Forms(), "SIMILAR TABLE NAMES",
                JoinLines({"The first 6 characters in " + names + " are the same.",
                           "While this is legal, it will cause problems when collecting data.",
                           "The collection process uses the first 6 characters of the table",
                           "name plus 2 digits for the output file name.",
                           "YOU SHOULD USE A DIFFERENT NAME."}));
  }
}

// A table cannot store more often than the scan runs.
void frmOutInt::onUnits() {
  if (IsLoading()) return;
  const int finest = store().Scan.ExecTimeUnits;
  if (OutIntUnits.Index() < finest) return OutIntUnits.PickAt(finest);
  table().IntervalUnits = static_cast<i16>(OutIntUnits.Index());
  refresh();
}

void frmOutInt::openTimes() {
  TableTimesRequest request{tables_, current()};
  if (OpenScreen(context(), TableTimes.Opens(), request)) showTable();
}

TableSetup frmOutInt::edited() const {
  TableSetup setup = store().Tables;
  for (int t = 1; t <= kTables; ++t) KeepTable(tables_[t], setup[t]);
  setup.HDU7 = hdu7_;
  return setup;
}

bool frmOutInt::isEdited() const {
  return hdu7_ != before_.HDU7 || !(edited().Table == before_.Table);
}

bool frmOutInt::agreedToFlags() {
  const std::string duplicates = DuplicateTableFlags(edited());
  if (duplicates.empty()) return true;
  return Ask(Forms(), "DUPLICATE FLAGS",
             duplicates +
                 JoinLines({"The above condition(s) could possibly cause undesirable results.",
                            "PRESS \"YES\" TO LEAVE AS IS OR \"NO\" TO EDIT."}),
             Buttons::kYesNo) == Answer::kYes;
}

// The checks of tables read the store; it is restored when the user goes on editing.
bool frmOutInt::keep() {
  TableSetup kept = std::exchange(store().Tables, edited());
  const CalcVarRefs none;
  const CheckContext checks{store(), Forms(), context().WarningMessageMask, none};
  bool bad = false;
  ORVUS_COMMON::CheckScanRateTables(checks, bad);
  if (bad) {
    store().Tables = std::move(kept);
    return false;
  }
  i16 uneven = 0;
  ORVUS_COMMON::CheckTableIntervals(checks, kScreenMode, uneven);
  reportFlagsInUse();
  return true;
}

// For each flag of a table in use that the flags screen also drives.
void frmOutInt::reportFlagsInUse() {
  for (int f = 1; f <= kFlags; ++f) {
    if (store().Flags[f].FlagInclude == kFalse) continue;
    if (!TablesInUseHaveFlag(store().Tables, f)) continue;
    ShowFlagInformation(
        Forms(),
        JoinLines({"JUST LETTING YOU KNOW.",
                   "Flag(" + NumberText(f) + ") was previously enabled in the Flags Setup window.",
                   "The following code will be in the Tessel program:", FlagCode(store(), f)}));
  }
}

bool frmOutInt::onDone() { return agreedToFlags() && keep(); }

bool frmOutInt::onCancel() {
  if (!isEdited()) return true;
  const Answer answer = Ask(Forms(), "OUTPUT TABLES",
                            "Edits were made to one or more table configurations.  Save changes "
                            "before exiting screen?",
                            Buttons::kYesNoCancel);
  if (answer == Answer::kYes) Done();
  return answer == Answer::kNo;
}

}  // namespace ostrand
