#include "conditions/names_backup.h"

#include "model/variable_texts.h"

namespace ostrand {

NamesBackup::NamesBackup(ProjectStore& store) : store_(store) {
  VisitVariableTexts(store_, [this](const std::string& text, VariableText) {
    if (!text.empty()) before_.push_back({&text, text});
  });
}

void NamesBackup::putBack() {
  auto before = before_.begin();
  VisitVariableTexts(store_, [&](std::string& text, VariableText) {
    if (before != before_.end() && before->place == &text) {
      text = before++->text;
    } else {
      text.clear();
    }
  });
}

}  // namespace ostrand
