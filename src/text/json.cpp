#include "text/json.h"

#include <cmath>
#include <utility>

#include "text/number.h"

namespace ostrand {
namespace {

// The control character at the head of a text in UTF-8, of one byte or of two; -1 for any other.
int controlAt(std::string_view utf8) {
  const auto first = static_cast<unsigned char>(utf8.front());
  if (first < 0x20 || first == 0x7F) return first;
  const int second = utf8.size() > 1 ? static_cast<unsigned char>(utf8[1]) : 0;
  return first == 0xC2 && second >= 0x80 && second < 0xA0 ? second : -1;
}

}  // namespace

std::string JsonString(std::string_view utf8) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string result = "\"";
  for (std::size_t at = 0; at < utf8.size(); ++at) {
    const auto byte = static_cast<unsigned char>(utf8[at]);
    if (utf8.substr(at).starts_with("\r\n")) continue;
    if (byte == '"' || byte == '\\') {
      result.append("\\").append(1, utf8[at]);
    } else if (byte == '\n') {
      result += "\\n";
    } else if (const int control = controlAt(utf8.substr(at)); control >= 0) {
      const auto number = static_cast<std::size_t>(control);
      result.append("\\u00").append(1, kDigits[number / 16]).append(1, kDigits[number % 16]);
      if (control >= 0x80) ++at;
    } else {
      result += utf8[at];
    }
  }
  return result + "\"";
}

JsonWriter& JsonWriter::Key(std::string_view name) {
  startValue();
  text_ += JsonString(name) + ": ";
  afterKey_ = true;
  return *this;
}

JsonWriter& JsonWriter::Number(double number) {
  return std::isfinite(number) ? value(NumberText(number)) : Null();
}

JsonWriter& JsonWriter::Number(float number) {
  return std::isfinite(number) ? value(NumberText(number)) : Null();
}

JsonWriter& JsonWriter::begin(char start, char end, Layout layout) {
  startValue();
  text_ += start;
  const bool inLine = !open_.empty() && !open_.back().onLines;
  open_.push_back({end, layout == Layout::kLines && !inLine, true});
  return *this;
}

JsonWriter& JsonWriter::End() {
  const Open last = open_.back();
  open_.pop_back();
  if (last.onLines && !last.empty) startLine();
  text_ += last.end;
  return *this;
}

std::string JsonWriter::Take() { return std::exchange(text_, {}) + "\n"; }

JsonWriter& JsonWriter::value(std::string_view text) {
  startValue();
  text_ += text;
  return *this;
}

void JsonWriter::startValue() {
  if (std::exchange(afterKey_, false) || open_.empty()) return;
  Open& in = open_.back();
  if (!in.empty) text_ += in.onLines ? "," : ", ";
  in.empty = false;
  if (in.onLines) startLine();
}

void JsonWriter::startLine() { text_.append("\n").append(2 * open_.size(), ' '); }

}  // namespace ostrand
