#include "script/objections.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "controls/numeric_field.h"
#include "script/script_forms.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// A number as it stands, another text in quotes.
std::string valueOf(const TextField& field, std::string_view text) {
  const bool bare = field.Kind() == ControlKind::kNumber && !Trim(text).empty();
  return bare ? std::string(text) : Quoted(text);
}

// The limit or the precision that changed a number; empty for neither.
std::string whyNumberChanged(const NumericField& field, std::string_view typed) {
  const std::optional<double> wanted = ToDouble(typed);
  if (!wanted) return {};
  if (*wanted > field.Max() && field.Value() == field.Max())
    return "the maximum is " + NumberText(field.Max());
  if (*wanted < field.Min() && field.Value() == field.Min())
    return "the minimum is " + NumberText(field.Min());
  const double change = std::abs(*wanted - field.Value());
  if ((field.Digits() == 0 || field.WholePart) && change < 1) return "it takes whole numbers";
  const bool rounded = field.Digits() > 0 && change <= std::abs(*wanted) * 1e-4;
  return rounded ? "it keeps " + NumberText(field.Digits()) + " digits" : "";
}

std::string whyChanged(const TextField& field, std::string_view typed, std::string_view help) {
  if (const auto* number = dynamic_cast<const NumericField*>(&field)) {
    if (std::string why = whyNumberChanged(*number, typed); !why.empty()) return why;
  }
  if (!help.empty()) return std::string(help);
  return field.WhyChanged ? field.WhyChanged() : "";
}

struct Accepted {
  KeyFilter filter;
  std::string_view keys;
};

constexpr Accepted kAccepted[] = {
    {NameText, "it takes letters, digits and \"_\", a letter first"},
    {UnitNameText, "it takes letters, digits and \"_@#$\", a letter first"},
    {OnlyDigits, "it takes digits"},
};

// Why a field for numbers refuses a text; empty for other fields and reasons.
std::string whyNoNumber(const TextField& field, std::string_view text) {
  const auto* number = dynamic_cast<const NumericField*>(&field);
  if (number == nullptr || number->MayBecome(text)) return {};
  const std::optional<double> wanted = ToDouble(text);
  if (!wanted) return "it takes a number";
  if (*wanted > number->Max()) return "the maximum is " + NumberText(number->Max());
  if (*wanted < number->Min()) return "the minimum is " + NumberText(number->Min());
  return {};
}

// What a field takes instead of the key; empty when its filter alone does not decide.
std::string_view whyRefused(const TextField& field, std::string_view text) {
  const auto* row = std::find_if(std::begin(kAccepted), std::end(kAccepted),
                                 [&](const auto& each) { return each.filter == field.Filter(); });
  return row == std::end(kAccepted) || row->filter(text) ? std::string_view() : row->keys;
}

// The digits of a mask of bits, without its prefix and leading zeros.
std::string_view bitsOf(std::string_view text) {
  if (text.starts_with("&B")) text.remove_prefix(2);
  return text.substr(std::min(text.find_first_not_of('0'), text.size()));
}

}  // namespace

void Objections::ExpectBeep() {
  std::erase_if(all_, [](const Objection& row) { return row.beeped; });
}

void Objections::ExpectValue(std::string_view control) {
  std::erase_if(all_, [&](const Objection& row) { return SameText(row.control, control); });
}

bool IsAccepted(const TextField& field, std::string_view typed, std::string_view shown) {
  if (SameText(Trim(typed), Trim(shown))) return true;
  if (shown.starts_with("&B") && bitsOf(typed) == bitsOf(shown)) return true;
  const std::optional<double> wanted = ToDouble(typed);
  return field.Kind() == ControlKind::kNumber && wanted && wanted == ToDouble(shown);
}

std::string KeyRefused(const TextField& field, std::string_view typed, std::string_view help) {
  const std::string shown = field.Text();
  const auto refused = std::mismatch(typed.begin(), typed.end(), shown.begin(), shown.end()).first;
  const std::string_view key = typed.substr(static_cast<std::size_t>(refused - typed.begin()),
                                            refused == typed.end() ? 0 : 1);
  std::string text = field.Name() + " does not accept " + Quoted(key.empty() ? typed : key);
  if (typed.size() > field.MaxLetters) {
    return text + ": it takes " + NumberText(static_cast<int>(field.MaxLetters)) + " characters";
  }
  if (!help.empty()) return text + Because(help);
  const std::string number = whyNoNumber(field, typed);
  return text + Because(number.empty() ? whyRefused(field, typed) : number);
}

std::string ValueChanged(const TextField& field, std::string_view typed, std::string_view help) {
  return field.Name() + ": " + valueOf(field, typed) + " became " + valueOf(field, field.Text()) +
         Because(whyChanged(field, typed, help));
}

std::string WhySpinStops(const Control& control, bool up, std::string_view help) {
  if (!help.empty()) return std::string(help);
  if (const auto* number = dynamic_cast<const NumericField*>(&control)) {
    if (up && number->Value() >= number->Max()) return "it is at its maximum";
    if (!up && number->Value() <= number->Min()) return "it is at its minimum";
  }
  const auto* field = dynamic_cast<const TextField*>(&control);
  return field != nullptr && field->WhyChanged ? field->WhyChanged() : "";
}

std::string Because(std::string_view reason) {
  return reason.empty() ? std::string() : ": " + std::string(reason);
}

}  // namespace ostrand
