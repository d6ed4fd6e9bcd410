#include "setup/controls/choice.h"

#include "text/strings.h"

namespace ostrand {

void Choice::SetItems(std::initializer_list<std::string_view> texts) {
  Items.clear();
  for (const std::string_view text : texts) Items.push_back({std::string(text), true, true, {}});
  index_ = -1;
}

void Choice::Index(int index) {
  Show(index);
  if (index_ >= 0) fire(OnPick, "Click");
}

void Choice::Show(int index) {
  index_ = index >= 0 && index < static_cast<int>(Items.size()) ? index : -1;
}

std::string Choice::Text() const {
  return index_ < 0 ? std::string() : Items[static_cast<std::size_t>(index_)].Text;
}

bool Choice::Pick(std::string_view item) {
  for (std::size_t at = 0; at < Items.size(); ++at) {
    const Item& candidate = Items[at];
    if (!candidate.Enabled || !candidate.Visible) continue;
    if (!SameText(Trim(candidate.Text), Trim(item))) continue;
    Index(static_cast<int>(at));
    return true;
  }
  return false;
}

}  // namespace ostrand
