#include "logger/config_status.h"

#include <algorithm>
#include <string_view>

#include "conditions/condition_row.h"
#include "platform/box.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// Columns of a row.
enum Column : int { kField = 1, kCompare, kValue, kFlagAndState };

constexpr std::string_view kTable = "Status.";
constexpr std::string_view kFields[] = {
    "Status.SkippedScan(1,1)",
    "Status.VarOutOfBound(1,1)",
    "Status.WatchdogErrors(1,1)",
};

// An incomplete name of a field.
bool fieldInTheMaking(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char letter) {
    return NameText(std::string_view(&letter, 1)) || Holds("0123456789_.(,)", {&letter, 1});
  });
}

int placeOf(const Choice& list, std::string_view text) {
  const auto at = std::find_if(list.Items.begin(), list.Items.end(), [&](const Choice::Item& item) {
    return SameText(Trim(item.Text), Trim(text));
  });
  return at == list.Items.end() ? -1 : static_cast<int>(at - list.Items.begin());
}

}  // namespace

StatusFieldName::StatusFieldName(Screen& screen, std::string_view name)
    : ListField(screen, name, fieldInTheMaking) {
  Items.assign(std::begin(kFields), std::end(kFields));
}

bool StatusFieldName::normalize(std::string& text) {
  if (SameText(std::string_view(text).substr(0, kTable.size()), kTable)) {
    text.erase(0, kTable.size());
  }
  const bool isName = !text.empty() && NameText(text.substr(0, 1));
  text.insert(0, kTable);
  return isName;
}

StatusMonitorPanel::StatusMonitorPanel(Screen& screen, Configuration& config)
    : StatusRows(screen, "StatusRows"),
      StatusField(screen, "StatusField"),
      StatusCompare(screen, "StatusCompare"),
      StatusValue(screen, "StatusValue", NumberType::kSingle),
      StatusFlag(screen, "StatusFlag"),
      StatTrueFalse(screen, "StatTrueFalse"),
      StatusCode(screen, "StatusCode"),
      AddStatus(screen, "AddStatus"),
      ChangeStatus(screen, "ChangeStatus"),
      DeleteStatus(screen, "DeleteStatus"),
      screen_(screen),
      config_(config) {
  for (const std::string_view sign : kStatusCompares) {
    StatusCompare.Add(sign);
  }
  StatusFlag.SetItems({"1", "2", "3", "4", "5", "6", "7", "8"});
  StatTrueFalse.SetItems({"True", "False"});
  bind();
}

void StatusMonitorPanel::bind() {
  StatusRows.PicksAgain = true;  // shows the stored row again
  StatusRows.OnPick = [this] {
    if (!screen_.IsLoading()) showRow();
  };
  StatusField.OnTake = [this] { showCode(); };
  StatusCompare.OnPick = [this] { showCode(); };
  StatusValue.OnTake = [this] { showCode(); };
  StatusFlag.OnPick = [this] {
    if (!screen_.IsLoading()) config_.StatusFlag = static_cast<i16>(StatusFlag.Index() + 1);
    showCode();
  };
  StatTrueFalse.OnPick = [this] {
    if (!screen_.IsLoading()) config_.StatTrueFalse = StatTrueFalse.Index() == 0 ? 1 : 0;
    showCode();
  };
  AddStatus.OnPress = [this] { keepRow(count() + 1); };
  ChangeStatus.OnPress = [this] { keepRow(StatusRows.Index() + 1); };
  DeleteStatus.OnPress = [this] { deleteRow(); };
}

void StatusMonitorPanel::Load() {
  StatusFlag.PickAt(std::clamp<int>(config_.StatusFlag, 1, kFlags) - 1);
  StatTrueFalse.PickAt(config_.StatTrueFalse != 0 ? 0 : 1);
  StatusField.Text(kFields[0]);
  StatusCompare.PickAt(0);
  StatusValue.Value(0);
  listRows(-1);
  showCode();
}

void StatusMonitorPanel::Show(bool visible) {
  for (Control* control : std::initializer_list<Control*>{
           &StatusRows, &StatusField, &StatusCompare, &StatusValue, &StatusFlag, &StatTrueFalse,
           &StatusCode, &AddStatus, &ChangeStatus, &DeleteStatus}) {
    control->Visible = visible;
  }
}

StatusMonitorPanel::StatusRow StatusMonitorPanel::entered() const {
  StatusRow row;
  row[kField] = StatusField.Text();
  row[kCompare] = Trim(StatusCompare.Text());
  row[kValue] = StatusValue.Text();
  row[kFlagAndState] = StatusFlag.Text() + (StatTrueFalse.Index() == 0 ? " T" : " F");
  return row;
}

int StatusMonitorPanel::count() const {
  return std::clamp<int>(config_.StatusMonCount, 0, kStatusRows);
}

// The fields show the picked row.
void StatusMonitorPanel::showRow() {
  ChangeStatus.Enabled = DeleteStatus.Enabled = true;
  const StatusRow row = config_.Status[StatusRows.Index() + 1];
  StatusField.Text(Trim(row[kField]));
  StatusCompare.PickAt(placeOf(StatusCompare, row[kCompare]));
  StatusValue.Text(Trim(row[kValue]));
  const std::string_view setting = Trim(row[kFlagAndState]);
  StatusFlag.PickAt(static_cast<int>(Val(setting.substr(0, 1))) - 1);
  StatTrueFalse.PickAt(setting.ends_with('T') ? 0 : 1);
}

void StatusMonitorPanel::showCode() {
  StatusCode.Text(JoinLines(
      {" If " + StatusField.Text() + StatusCompare.Text() + " " + StatusValue.Text() + " Then",
       "       Flag(" + StatusFlag.Text() + ") = " + StatTrueFalse.Text(), "   End If"}));
}

void StatusMonitorPanel::listRows(int picked) {
  StatusRows.Items.clear();
  for (int i = 1; i <= count(); ++i) {
    std::string text;
    for (const std::string& column : config_.Status[i]) {
      if (!text.empty()) text += "  ";
      text += Trim(column);
    }
    StatusRows.Add(text);
  }
  AddStatus.Enabled = count() < kStatusRows;
  ChangeStatus.Enabled = DeleteStatus.Enabled = false;
  StatusRows.PickAt(picked);
}

// Stores the fields as a row, from 1; the row after the last one is new.
void StatusMonitorPanel::keepRow(int row) {
  config_.Status[row] = entered();
  config_.StatusMonCount = static_cast<i16>(std::max(count(), row));
  listRows(row - 1);
  if (OnRows) OnRows();
  if (OnFlag) OnFlag(StatusFlag.Index() + 1);
}

void StatusMonitorPanel::deleteRow() {
  const int last = count();
  for (int i = StatusRows.Index() + 1; i < last; ++i) config_.Status[i] = config_.Status[i + 1];
  config_.Status[last].Fill({});
  config_.StatusMonCount = static_cast<i16>(last - 1);
  listRows(-1);
  if (OnRows) OnRows();
}

}  // namespace ostrand
