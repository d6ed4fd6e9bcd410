// What a screen did instead of what a script wrote.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/text_field.h"

namespace ostrand {

// An effect that a script must expect: a refused key, a changed value, a spin without effect, a
// screen that stays open.
struct Objection {
  int line;             // of the script
  std::string control;  // its value is the effect; empty for a screen
  bool beeped;
  std::string text;
};

// The objections to the last action, until the script has expected them.
class Objections {
 public:
  void Add(Objection objection) { all_.push_back(std::move(objection)); }
  void Clear() { all_.clear(); }
  // The script expects a beep, or what the control shows.
  void ExpectBeep();
  void ExpectValue(std::string_view control);
  // The first one; null when there is none.
  [[nodiscard]] const Objection* First() const { return all_.empty() ? nullptr : &all_.front(); }

 private:
  std::vector<Objection> all_;
};

// Whether a field that shows `shown` has accepted the text `typed`: blanks around it, the case of
// its letters and the format of a number or a mask of bits don't count.
bool IsAccepted(const TextField& field, std::string_view typed, std::string_view shown);

// Which key of `typed` a field has refused, with `help` if there is any, as the help line shows it.
std::string KeyRefused(const TextField& field, std::string_view typed, std::string_view help);

// What a typed text became when it took effect, and why.
std::string ValueChanged(const TextField& field, std::string_view typed, std::string_view help);

// Why a spin changes nothing.
std::string WhySpinStops(const Control& control, bool up, std::string_view help);

// ": " and the reason; empty without one.
std::string Because(std::string_view reason);

}  // namespace ostrand
