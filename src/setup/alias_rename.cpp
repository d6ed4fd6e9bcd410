#include "setup/alias_rename.h"

#include <optional>

#include "setup/names_in_text.h"
#include "text/strings.h"

namespace ostrand {
namespace {

enum class Place { kVariable, kExpression };

bool means(const AliasRename& rename, const NameInText& name, Place place) {
  if (!rename.before.empty()) return name.index == 0 && SameText(name.base, rename.before);
  // An expression names elements whatever they are called.
  if (place == Place::kExpression || !SameText(name.base, rename.array)) return false;
  return name.index == rename.index || (name.index == 0 && rename.only);
}

std::string renamed(std::string_view text, const AliasRenames& renames, Place place) {
  return ReplaceNames(text, [&](const NameInText& name) -> std::optional<std::string> {
    for (const AliasRename& rename : renames) {
      if (!means(rename, name, place)) continue;
      return rename.after.empty() ? rename.Element() : rename.after;
    }
    return std::nullopt;
  });
}

// Calls `visit` with each text of the conditions that may name a sensor. `Tables` may be const.
template <class Tables, class Visit>
void forConditions(Tables& tables, Visit visit) {
  for (auto& table : tables.Table) {
    for (auto& state : table.Trigger) {
      for (auto& condition : state) {
        visit(condition.StartMeasVar, Place::kVariable);
        visit(condition.StartTrigVarb, Place::kVariable);
        visit(condition.StartTrigIndvExpress, Place::kExpression);
      }
    }
    for (auto& condition : table.Write) {
      visit(condition.MeasureVar, Place::kVariable);
      visit(condition.Varb, Place::kVariable);
      visit(condition.Expression, Place::kExpression);
    }
  }
}

}  // namespace

std::string AliasRename::Element() const { return NameInText{array, index}.Text(); }

bool ConditionsUse(const TableSetup& tables, const AliasRenames& renames) {
  bool used = false;
  forConditions(tables, [&](const std::string& text, Place place) {
    used = used || renamed(text, renames, place) != text;
  });
  return used;
}

void RenameInConditions(TableSetup& tables, const AliasRenames& renames) {
  forConditions(tables,
                [&](std::string& text, Place place) { text = renamed(text, renames, place); });
}

}  // namespace ostrand
