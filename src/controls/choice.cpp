#include "controls/choice.h"

#include <algorithm>

#include "controls/screen.h"
#include "text/strings.h"

namespace ostrand {
namespace {

bool isNamed(const Choice::Item& item, std::string_view text) {
  return SameText(Trim(item.Text), Trim(text));
}

}  // namespace

Choice::~Choice() = default;

void Choice::SetItems(std::initializer_list<std::string_view> texts) {
  Items.clear();
  for (const std::string_view text : texts) Add(text);
  index_ = -1;
}

void Choice::Add(std::string_view text, std::string_view toolTip) {
  Items.push_back({std::string(text), true, true, std::string(toolTip)});
}

void Choice::Index(int index) {
  index_ = index >= 0 && index < static_cast<int>(Items.size()) ? index : -1;
}

void Choice::PickAt(int index) {
  Index(index);
  if (index_ >= 0) fire(OnPick, "Click");
}

bool Choice::ClickAt(int index) {
  if (index < 0 || index >= static_cast<int>(Items.size())) return false;
  const Item& item = Items.All()[static_cast<std::size_t>(index)];
  if (!item.Enabled || !item.Visible) return false;
  if (index != index_ || PicksAgain || owner().IsLoading()) PickAt(index);
  return true;
}

std::string Choice::Text() const {
  return index_ < 0 ? std::string() : Items[static_cast<std::size_t>(index_)].Text;
}

const Choice::Item* Choice::Find(std::string_view item) const {
  const auto found = std::find_if(Items.begin(), Items.end(),
                                  [&](const Item& candidate) { return isNamed(candidate, item); });
  return found == Items.end() ? nullptr : &*found;
}

bool Choice::Pick(std::string_view item) {
  for (std::size_t at = 0; at < Items.size(); ++at) {
    const Item& candidate = Items.All()[at];
    if (!candidate.Enabled || !candidate.Visible || !isNamed(candidate, item)) continue;
    return ClickAt(static_cast<int>(at));
  }
  return false;
}

}  // namespace ostrand
