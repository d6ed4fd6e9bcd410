#include "tables/frm_write_if.h"

#include "conditions/condition_row.h"
#include "conditions/flag_usage.h"
#include "tables/faces.h"
#include "text/number.h"

namespace ostrand {
namespace {

ConditionSet::Names names() {
  return {.group = "Conditions",
          .row =
              [](int row) {
                const std::string n = NumberText(row);
                return ConditionControlNames{"MeasureVar" + n, "Compare" + n, "Value" + n,
                                             "Expression" + n};
              },
          .grouping = "GroupWriteIf",
          .expression = "WriteIfExpression"};
}

std::vector<ConditionRow> rowsOf(const cOutputTable& table) {
  std::vector<ConditionRow> rows;
  for (int n = 1; n <= kConditions; ++n) {
    rows.push_back({table.WriteIfMeasVar(n), table.WriteIfCompare(n), table.WriteIfVarIdx(n),
                    table.WriteIfValue(n), table.WriteIfVarb(n), table.WriteIfExpression(n)});
  }
  return rows;
}

}  // namespace

frmWriteIf::frmWriteIf(const ScreenContext& context)
    : Screen(context, "frmWriteIf"),
      DisableWriteIf(*this, "DisableWriteIf"),
      variables_(context.store, context.UserVarListTypes),
      Write(*this, variables_, names()),
      CallLine(*this, "CallLine"),
      View(*this, "View"),
      Font(*this, context.ConditionFont, {&Write.Grouping}) {
  Caption = "CONDITIONAL WRITE";
  Write.OnFlag = [this](int flagNumber) { CheckFlagUsage(Forms(), store(), flagNumber); };
  View.OnPress = [this] {
    Write.View("CONDITIONAL WRITE CODE", "     bWriteIfCall = (" + Write.InAliases() + ")");
  };
  Describe(*this, kWriteIfFaces);
}

frmWriteIf::frmWriteIf(const ScreenContext& context, cOutputTable& table) : frmWriteIf(context) {
  load(table);
}

bool frmWriteIf::SetWriteIf(cOutputTable& table) {
  load(table);
  const bool done = showModal(*this);
  table_ = nullptr;
  return done;
}

void frmWriteIf::load(cOutputTable& table) {
  table_ = &table;
  const Loading loading(*this);
  DisableWriteIf.Checked(table_->WriteIfDisable != 0);
  Write.Load(rowsOf(*table_), table_->WriteIfNumber, table_->WriteIfGrpExpress);
  CallLine.Text("If bWriteIfCall Then CallTable " + table_->Name);
}

bool frmWriteIf::onDone() {
  if (table_ == nullptr) return true;
  if (!Write.Check()) return false;
  table_->WriteIfDisable = DisableWriteIf.Checked() ? 1 : 0;  // the program compares with 1
  table_->WriteIfNumber = static_cast<i16>(Write.Count());
  table_->WriteIfGrpExpress = Write.StoredLine();
  for (int n = 1; n <= kConditions; ++n) {
    const ConditionRow row = Write.Stored(n);
    table_->WriteIfMeasVar(n, row.MeasVar);
    table_->WriteIfCompare(n, static_cast<i16>(row.Compare));
    table_->WriteIfVarIdx(n, static_cast<i16>(row.VarIdx));
    table_->WriteIfValue(n, row.Value);
    table_->WriteIfVarb(n, row.Varb);
    table_->WriteIfExpression(n, row.Expression);
  }
  return true;
}

}  // namespace ostrand
