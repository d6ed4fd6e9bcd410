#include "calc/variable_uses.h"

#include <string>

#include "calc/formula.h"
#include "model/record_layout.h"
#include "model/variable_texts.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// Searches a whole project for one name.
class Search {
 public:
  Search(const ProjectStore& store, std::string_view name) : store_(store), name_(name) {}

  [[nodiscard]] bool InConditions() const {
    bool found = false;
    VisitConditions(store_, [&](const std::string& text, VariableText) {
      found = found || NamesVariable(text, name_);
    });
    return found;
  }

  [[nodiscard]] bool InFormulas(int but) const {
    for (int c = 1; c <= store_.CalcFields.CalcFieldCount; ++c) {
      if (c != but && NamesVariable(store_.CalcFields.Field[c].CalcField[2], name_)) return true;
    }
    return false;
  }

  [[nodiscard]] bool InLevelCrossings(int butOfField) const {
    for (const OutputSource& source : OutputSourcesOf(store_)) {
      if (source.family == OutputFamily::kCalcField && source.n == butOfField) continue;
      for (int t = 1; t <= kTables; ++t) {
        if (IsSelected(*source.output, t, kLevelCrossing) &&
            NamesVariable(source.output->Histo[t].LevelMeasName, name_)) {
          return true;
        }
      }
    }
    return false;
  }

 private:
  const ProjectStore& store_;
  std::string_view name_;
};

}  // namespace

bool NamesVariable(std::string_view text, std::string_view name) {
  if (name.empty()) return false;
  const std::string held = Upper(text);
  const std::string wanted = Upper(name);
  for (std::size_t at = held.find(wanted); at != std::string::npos;
       at = held.find(wanted, at + 1)) {
    const std::size_t end = at + wanted.size();
    const bool begins = at == 0 || !IsNameLetter(held[at - 1]);
    if (begins && (end == held.size() || !IsNameLetter(held[end]))) return true;
  }
  return false;
}

bool IsVariableUsed(const ProjectStore& store, int field) {
  const std::string& name = store.CalcFields.Field[field].CalcField[1];
  const Search search(store, Trim(name));
  return search.InConditions() || search.InFormulas(field) || search.InLevelCrossings(field);
}

}  // namespace ostrand
