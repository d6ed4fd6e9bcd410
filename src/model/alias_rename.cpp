#include "model/alias_rename.h"

#include <optional>

#include "model/names_in_text.h"
#include "model/variable_texts.h"
#include "text/strings.h"

namespace ostrand {
namespace {

bool means(const AliasRename& rename, const NameInText& name, VariableText kind) {
  if (!rename.before.empty()) return name.index == 0 && SameText(name.base, rename.before);
  if (!SameText(name.base, rename.array)) return false;
  const bool byArray = name.index == 0 && rename.only;
  switch (kind) {
    case VariableText::kVariable:
      return byArray || name.index == rename.index;
    case VariableText::kExpression:
      return false;  // expressions name elements, which stay
    case VariableText::kFormula:
      return byArray;
  }
  return false;
}

// The current name of the sensor.
std::string nameAfter(const AliasRename& rename, VariableText kind) {
  if (!rename.after.empty()) return rename.after;
  return rename.only && kind != VariableText::kExpression ? rename.array : rename.Element();
}

std::string renamed(std::string_view text, const AliasRenames& renames, VariableText kind) {
  return ReplaceNames(text, [&](const NameInText& name) -> std::optional<std::string> {
    for (const AliasRename& rename : renames) {
      if (means(rename, name, kind)) return nameAfter(rename, kind);
    }
    return std::nullopt;
  });
}

// Renames in each visited text.
auto renaming(const AliasRenames& renames) {
  return [&renames](std::string& text, VariableText kind) {
    if (!text.empty()) text = renamed(text, renames, kind);
  };
}

}  // namespace

std::string AliasRename::Element() const { return NameInText{array, index}.Text(); }

bool ConditionsUse(const TableSetup& tables, const AliasRenames& renames) {
  bool used = false;
  VisitTableConditions(tables, [&](const std::string& text, VariableText kind) {
    used = used || renamed(text, renames, kind) != text;
  });
  return used;
}

void RenameVariables(ProjectStore& store, const AliasRenames& renames) {
  if (!renames.empty()) VisitVariableTexts(store, renaming(renames));
}

void RenameInLevels(OutputSet& output, const AliasRenames& renames) {
  VisitLevelNames(output, renaming(renames));
}

}  // namespace ostrand
