#include "controls/text_field.h"

#include <algorithm>

#include "controls/screen.h"
#include "model/stored_text.h"
#include "text/letters.h"

namespace ostrand {
namespace {

constexpr std::string_view kOneLineHelp = "A text has one line, without tabs.";

bool isControl(char letter) { return static_cast<unsigned char>(letter) < 0x20 || letter == 0x7F; }

std::ptrdiff_t marksIn(std::string_view text) {
  return std::count(text.begin(), text.end(), kSectionMark);
}

// A letter first, then letters, digits and the others.
bool isName(std::string_view text, std::string_view others) {
  if (text.empty()) return true;
  return IsLetter(text.front()) && std::all_of(text.begin() + 1, text.end(), [&](char letter) {
           return IsLetter(letter) || IsDigit(letter) ||
                  others.find(letter) != std::string_view::npos;
         });
}

}  // namespace

bool AnyText(std::string_view) { return true; }

bool OnlyDigits(std::string_view text) { return std::all_of(text.begin(), text.end(), IsDigit); }

bool NameText(std::string_view text) { return isName(text, "_"); }

bool UnitNameText(std::string_view text) { return isName(text, "_@#$"); }

TextField::~TextField() = default;

void TextField::Text(std::string_view text) {
  text_ = text;
  taken_ = text;
  typed_ = false;
}

void TextField::change(std::string text) {
  if (text == text_) return;
  text_ = std::move(text);
  typed_ = true;
  fire(OnChange, "Change");
}

std::optional<std::string_view> TextField::refusalOf(std::string_view text) const {
  if (text.empty()) return std::nullopt;
  // An invalid text from an old project can still be edited.
  if (marksIn(text) > marksIn(text_)) return kSectionMarkHelp;
  if (std::any_of(text.begin(), text.end(), isControl)) return kOneLineHelp;
  if (text.size() > std::max(MaxLetters, text_.size())) return "";
  if (!filter_(text) || (MayHold && !MayHold(text))) return "";
  const std::string_view why = WhyNot ? WhyNot(text) : "";
  return why.empty() ? std::nullopt : std::optional(why);
}

void TextField::refuse(std::string_view why) {
  owner().Forms().Beep();
  if (!why.empty()) owner().Forms().SetHelpLine(std::string(why));
}

void TextField::Key(char letter) {
  if (letter == kSectionMark) return refuse(kSectionMarkHelp);
  std::string text = selected_ ? std::string(1, letter) : text_ + letter;
  if (const auto why = refusalOf(text)) return refuse(*why);
  selected_ = false;
  typed_ = true;
  change(std::move(text));
}

bool TextField::Edit(std::string_view text) {
  const auto why = refusalOf(text);
  if (why) {
    refuse(*why);
  } else {
    selected_ = false;
    change(std::string(text));
  }
  return !why;
}

void TextField::Clear() {
  selected_ = false;
  change({});
}

void TextField::Escape() {
  change(before_);
  text_ = before_;  // OnChange corrects only what is typed
  // Undoes what Enter has applied since.
  typed_ = text_ != taken_;
  selected_ = true;
}

bool TextField::Take() {
  std::string text = text_;
  if (!normalize(text)) {
    owner().Forms().Beep();
    return !Usable();
  }
  text_ = std::move(text);
  taken_ = text_;
  typed_ = false;
  fire(OnTake, "LostFocus");
  return true;
}

bool TextField::TypeText(std::string_view keys) {
  if (keys.empty()) Clear();
  selected_ = true;
  for (const char letter : keys) Key(letter);
  return true;
}

bool TextField::Spin(bool up) {
  if (!OnSpin) return false;
  // The buttons are beside the field: they take the focus, and it returns with their value.
  if (!Leave()) return true;
  fire([&] { OnSpin(up); }, up ? "SpinUp" : "SpinDown");
  Enter();
  return true;
}

bool TextField::Leave() {
  if (typed_ && !Take()) return false;
  before_ = text_;
  return true;
}

void TextField::Enter() {
  before_ = text_;
  selected_ = true;
}

void UnitField::Key(char letter) {
  if (letter != ' ') return TextField::Key(letter);
  if (isSelected()) Clear();
}

bool UnitField::Edit(std::string_view text) {
  std::string unit(text);
  std::erase(unit, ' ');
  return TextField::Edit(unit);
}

}  // namespace ostrand
