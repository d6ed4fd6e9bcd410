#include "conditions/condition_set.h"

#include <algorithm>
#include <vector>

#include "controls/faces.h"
#include "platform/box.h"
#include "text/strings.h"

namespace ostrand {

ConditionSet::Rows ConditionSet::makeRows(Screen& screen, const ConditionVariables& variables,
                                          const Names& names, int firstCompare) {
  const ConditionOffer offer{
      .compares = kTriggerCompares, .variablesAsValues = true, .firstCompare = firstCompare};
  Rows rows;
  for (int n = 1; n <= kConditions; ++n) {
    rows[n] = std::make_unique<ConditionControls>(screen, variables, names.row(n), offer);
  }
  return rows;
}

ConditionSet::ConditionSet(Screen& screen, const ConditionVariables& variables, const Names& names,
                           int firstCompare)
    : rows_(makeRows(screen, variables, names, firstCompare)),
      Grouping(screen, names.grouping),
      Expression(screen, names.expression),
      screen_(screen),
      variables_(variables),
      firstCompare_(firstCompare) {
  for (int n = 1; n <= kConditions; ++n) {
    rows_[n]->AllowPick = [this, n] { return allowPick(n); };
    rows_[n]->OnEdit = [this] { onEdit(); };
    rows_[n]->Describe(names.group, n);
  }
  const Face faces[] = {{names.grouping, names.group, "Grouping of the conditions"},
                        {names.expression, names.group, "Whole condition", ControlKind::kCode}};
  Describe(screen, faces);
  Grouping.Accept = [this](std::string& line) { return acceptGrouping(line); };
  Grouping.OnTake = [this] { onEdit(); };
}

void ConditionSet::Load(std::span<const ConditionRow> rows, int count, std::string_view grouping) {
  const auto used = static_cast<std::size_t>(std::clamp(count, 0, kConditions));
  for (int n = 1; n <= kConditions; ++n) {
    const auto place = static_cast<std::size_t>(n - 1);
    rows_[n]->Load(place < std::min(used, rows.size()) ? rows[place] : ConditionRow{});
  }
  grouped_ = Count();
  Grouping.Text(StoredGrouping(grouping, grouped_));
  enableGrouping();
  Expression.Text(InAliases());
}

void ConditionSet::Enable(bool enabled, std::string_view whyDisabled) {
  enabled_ = enabled;
  whyDisabled_ = whyDisabled;
  for (const auto& row : rows_) row->Enable(enabled, whyDisabled);
  enableGrouping();
}

void ConditionSet::enableGrouping() {
  Grouping.Enabled = enabled_ && Count() > 0;
  Grouping.WhyDisabled = enabled_ ? "Needs a condition." : whyDisabled_;
}

int ConditionSet::Count() const {
  int count = 0;
  while (count < kConditions && rows_[count + 1]->Valid()) ++count;
  return count;
}

ConditionRow ConditionSet::Stored(int n) const {
  if (n <= Count()) return rows_[n]->Stored();
  ConditionRow empty;
  empty.Compare = firstCompare_;
  return empty;
}

std::string ConditionSet::expanded(bool aliases) const {
  const int count = Count();
  if (count == 0) return {};
  std::vector<std::string> rows;
  for (int n = 1; n <= count; ++n) {
    const std::string row = Stored(n).Expression;
    rows.push_back(aliases ? variables_.InAliases(row) : row);
  }
  return ExpandGrouping(StoredLine(), rows, RowForm::kInParentheses);
}

bool ConditionSet::Check() {
  std::string line = Grouping.Text();
  if (acceptGrouping(line)) return true;
  screen_.MoveFocus(&Grouping);
  return false;
}

void ConditionSet::View(std::string_view title, std::string text) {
  if (!Check()) return;
  platform::MessageBox box;
  box.title = title;
  box.text = std::move(text);
  screen_.Forms().ShowBox(box);
}

bool ConditionSet::acceptGrouping(std::string& line) {
  const int count = Count();
  if (count == 0) return true;
  if (const auto fault = FindGroupingFault(line, count)) {
    report(fault->title, fault->text);
    return false;
  }
  if (InVariables().size() > kMaxExpression) {
    report("EXPRESSION TOO LONG", JoinLines({"The total length for a conditional logic expression",
                                             "may not exceed 490 characters. This size limit is",
                                             "based on the expression size after alias names have",
                                             "been replaced with their actual variable names."}));
    return false;
  }
  line = StoredGrouping(line, count);
  return true;
}

// Rows are filled in order, and emptying one empties those after it.
bool ConditionSet::allowPick(int n) {
  if (rows_[n]->Valid()) {
    for (int before = 1; before < n; ++before) {
      if (rows_[before]->Valid()) continue;
      report("CONDITION SETUP ERROR", "You must create your conditions in ascending order.");
      return false;
    }
    const int flagNumber = FlagOfVariable(rows_[n]->MeasVar.Text());
    if (flagNumber > 0 && OnFlag) OnFlag(flagNumber);
    return true;
  }
  if (n == kConditions || !rows_[n + 1]->Valid()) return true;
  const auto answer = Ask(screen_.Forms(), "CONFIRM CONDITION REMOVAL",
                          "Each valid condition after the first empty condition will be removed. "
                          "Continue?",
                          platform::Buttons::kYesNo);
  if (answer != platform::Answer::kYes) return false;
  for (int after = n + 1; after <= kConditions; ++after) rows_[after]->Clear();
  return true;
}

void ConditionSet::onEdit() {
  renewGrouping();
  Expression.Text(InAliases());
  if (OnEdit) OnEdit();
}

// A line that joins all rows by OR is extended to new rows. A line typed by the user stays as long
// as all its rows exist.
void ConditionSet::renewGrouping() {
  const int count = Count();
  enableGrouping();
  if (count == grouped_) return;
  const std::string line = Grouping.Text();
  const bool isDefault = SameText(Trim(line), DefaultGrouping(grouped_));
  if (isDefault || count == 0 || FindGroupingFault(line, count)) {
    Grouping.Text(DefaultGrouping(count));
  }
  grouped_ = count;
}

void ConditionSet::report(std::string_view title, std::string text) {
  ShowWarning(screen_.Forms(), title, std::move(text));
}

}  // namespace ostrand
