#include "tables/histo_screen.h"

#include <algorithm>
#include <cmath>

#include "model/intervals.h"
#include "platform/box.h"
#include "tables/faces.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kMicros = "#,##0";
constexpr double kFewestPoints = 2;

HistoParameters numbersAt(const std::vector<std::string_view>& parts, const HistoPlaces& places) {
  HistoParameters numbers{};
  for (std::size_t n = 0; n < places.size(); ++n) numbers[n] = Val(parts[places[n]]);
  return numbers;
}

}  // namespace

HistoScreen::HistoScreen(const ScreenContext& context, std::string_view name,
                         const HistoTarget& target)
    : Screen(context, name),
      ScanTime(*this, "ScanTime"),
      TableTime(*this, "TableTime"),
      DataPoints(*this, "DataPoints"),
      target_(target) {
  const double scan = ORVUS_COMMON::ScanIntervalMicros(context.store);
  const double interval = ORVUS_COMMON::TableIntervalMicros(context.store, target.table);
  const double points = scan > 0 ? interval / scan : 0;
  ScanTime.Text("Scan Time = " + MicrosText(scan));
  TableTime.Text("Table Time = " + MicrosText(interval));
  DataPoints.Text("Data Points per Histogram = " + FormatNumber(std::floor(points), kMicros));
  DataPoints.ToolTip = "Flashing indicates a possibly useless histogram.";
  DataPoints.Flashes = points < kFewestPoints;
  Describe(*this, kHistoFaces);
}

std::string HistoScreen::codeLine(std::string_view source, std::string_view code) const {
  std::string line = "(";
  line.append(source).append(",").append(target_.resolution).append(",0,").append(code);
  return line + ")";
}

bool HistoScreen::refuse(std::string_view title, std::string_view text, Control& at) {
  ShowWarning(Forms(), title, std::string(text));
  MoveFocus(&at);
  return false;
}

std::optional<HistoParameters> HistoNumbers(std::string_view text, const HistoOrder& order) {
  const std::vector<std::string_view> parts = Split(text, ',');
  const bool isWhole = parts.size() == order.own.size() &&
                       std::all_of(parts.begin(), parts.end(), [](std::string_view part) {
                         return ToDouble(part).has_value();
                       });
  if (!isWhole) return std::nullopt;
  const auto isPossible = [&](const HistoParameters& numbers) {
    return numbers[order.lower] < numbers[order.upper] && numbers[order.form] >= 0;
  };
  const std::string_view form = parts[order.foreign[order.form]];
  const bool padded = form.size() > 1 && form.front() == '0' && form[1] != '.';
  const HistoParameters own = numbersAt(parts, order.own);
  const HistoParameters foreign = numbersAt(parts, order.foreign);
  const bool isForeign = isPossible(foreign) && (padded || !isPossible(own));
  return isForeign ? foreign : own;
}

std::string HistoText(const HistoParameters& numbers, const HistoOrder& order) {
  std::array<std::string, 5> parts;
  for (std::size_t n = 0; n < numbers.size(); ++n) {
    parts[order.own[n]] = NumberText(static_cast<float>(numbers[n]));
  }
  std::string text;
  for (const std::string& part : parts) {
    if (&part != &parts.front()) text += ',';
    text += part;
  }
  return text;
}

HistoNumberScreen::HistoNumberScreen(const ScreenContext& context, std::string_view name,
                                     const HistoTarget& target, const HistoOrder& order,
                                     std::string HistoSet::*kept)
    : HistoScreen(context, name, target),
      Code(*this, "Code"),
      order_(order),
      kept_(target.histo.*kept) {}

void HistoNumberScreen::load(const std::array<NumericField*, 5>& fields) {
  const Loading loading(*this);
  fields_ = fields;
  const HistoParameters numbers = HistoNumbers(kept_, order_).value_or(HistoParameters{});
  const auto show = [this] { Code.Text("Code = " + codeLine("BinSelect", codeText())); };
  for (std::size_t n = 0; n < fields_.size(); ++n) {
    fields_[n]->Value(numbers[n]);
    fields_[n]->OnTake = show;
  }
  opened_ = codeText();
  show();
}

std::string HistoNumberScreen::codeText() const {
  HistoParameters numbers{};
  for (std::size_t n = 0; n < fields_.size(); ++n) numbers[n] = number(n);
  return HistoText(numbers, order_);
}

bool HistoNumberScreen::refuse(std::string_view text, std::size_t n) {
  return HistoScreen::refuse("INCORRECT VALUE", text, *fields_[n]);
}

bool HistoNumberScreen::limitsFit() {
  const double lower = number(order_.lower);
  const double upper = number(order_.upper);
  if (lower == upper)
    return refuse("Lower Limit and Upper Limit are the same values.", order_.upper);
  if (lower > upper) return refuse("Lower Limit must be less then  Upper Limit.", order_.upper);
  return true;
}

bool HistoNumberScreen::keep() {
  const std::string code = codeText();
  if (code != opened_) kept_ = code;
  UserCancelled = false;
  return true;
}

}  // namespace ostrand
