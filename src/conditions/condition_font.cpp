#include "conditions/condition_font.h"

#include "controls/faces.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kGroup = "Font of the grouping line";
constexpr std::string_view kNoFont = "Needs settings of the user, which keep the font.";
constexpr Face kFaces[] = {
    {"FontName", kGroup, "Font", {}, kNoFont},
    {"FontStyle", kGroup, "Style", {}, kNoFont},
    {"FontSize", kGroup, "Size (pt)", {}, kNoFont},
};

}  // namespace

ConditionFontControls::ConditionFontControls(Screen& screen, TextFont* font,
                                             std::initializer_list<GroupingField*> lines)
    : FontName(screen, "FontName"),
      FontStyle(screen, "FontStyle"),
      FontSize(screen, "FontSize", NumberType::kInteger),
      font_(font),
      lines_(lines) {
  FontStyle.SetItems({"Regular", "Bold", "Italic", "Bold Italic"});
  FontSize.Limits(kMinFontSize, kMaxFontSize);
  Describe(screen, kFaces);
  show();
  FontName.OnTake = [this] { take(); };
  FontStyle.OnPick = [this] { take(); };
  FontSize.OnTake = [this] { take(); };
}

// An unlisted style stays until another one is picked.
void ConditionFontControls::take() {
  if (font_ == nullptr) return;
  if (!Trim(FontName.Text()).empty()) font_->Name = Trim(FontName.Text());
  if (FontStyle.Index() >= 0) font_->Style = FontStyle.Text();
  font_->Size = static_cast<i32>(FontSize.Value());
  show();
}

void ConditionFontControls::show() {
  FontName.Enabled = FontStyle.Enabled = FontSize.Enabled = font_ != nullptr;
  if (font_ == nullptr) return;
  FontName.Text(font_->Name);
  FontStyle.Index(-1);
  for (std::size_t at = 0; at < FontStyle.Items.size(); ++at) {
    if (SameText(FontStyle.Items[at].Text, font_->Style)) FontStyle.Index(static_cast<int>(at));
  }
  FontSize.Value(font_->Size);
  for (GroupingField* line : lines_) line->Font = *font_;
}

}  // namespace ostrand
