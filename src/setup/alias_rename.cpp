#include "setup/alias_rename.h"

#include <algorithm>

#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

bool isOfName(char letter) {
  const char lower = static_cast<char>(letter | 0x20);
  return (lower >= 'a' && lower <= 'z') || isDigit(letter) || letter == '_';
}

// A name as it stands in a text, with its index if it has one.
struct Named {
  std::string_view base;
  int index = 0;           // 0 for none
  std::size_t length = 0;  // of all of it in the text
};

// The index in parentheses at the head of a text, "(2)"; its length is 0 when there is none.
Named indexAt(std::string_view text) {
  const std::size_t close = text.find(')');
  if (text.empty() || text.front() != '(' || close == std::string_view::npos) return {};
  const std::string_view digits = Trim(text.substr(1, close - 1));
  if (digits.empty() || !std::all_of(digits.begin(), digits.end(), isDigit)) return {};
  return {{}, RoundToInt16(Val(digits)).value_or(-1), close + 1};
}

Named nameAt(std::string_view text) {
  const auto* end = std::find_if_not(text.begin(), text.end(), isOfName);
  const auto letters = static_cast<std::size_t>(end - text.begin());
  const Named index = indexAt(text.substr(letters));
  return {text.substr(0, letters), index.index, letters + index.length};
}

enum class Place { kVariable, kExpression };

bool means(const AliasRename& rename, const Named& name, Place place) {
  if (!rename.before.empty()) return name.index == 0 && SameText(name.base, rename.before);
  // An expression names elements whatever they are called.
  if (place == Place::kExpression || !SameText(name.base, rename.array)) return false;
  return name.index == rename.index || (name.index == 0 && rename.only);
}

const AliasRename* find(const AliasRenames& renames, const Named& name, Place place) {
  const auto found = std::find_if(renames.begin(), renames.end(), [&](const AliasRename& rename) {
    return means(rename, name, place);
  });
  return found == renames.end() ? nullptr : &*found;
}

// The text with the new names; what lies between names, comparisons and numbers, stays as it is.
std::string renamed(std::string_view text, const AliasRenames& renames, Place place) {
  std::string result;
  while (!text.empty()) {
    if (!isOfName(text.front())) {
      result += text.front();
      text.remove_prefix(1);
      continue;
    }
    const Named name = nameAt(text);
    const AliasRename* rename = find(renames, name, place);
    if (rename == nullptr) {
      result += text.substr(0, name.length);
    } else {
      result += rename->after.empty() ? rename->Element() : rename->after;
    }
    text.remove_prefix(name.length);
  }
  return result;
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

std::string AliasRename::Element() const { return array + "(" + NumberText(index) + ")"; }

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
