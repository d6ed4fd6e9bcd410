#include "platform/settings_text.h"

#include <algorithm>
#include <utility>

#include "text/codepage.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::platform {
namespace {

constexpr std::string_view kBytesMark = "bytes:";
constexpr std::string_view kBlanks = " \t\r\n";

bool isControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

bool hasControl(std::string_view text) { return std::any_of(text.begin(), text.end(), isControl); }

std::string_view withoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool isWhole(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::optional<SettingsValue> readQuoted(std::string_view text) {
  SettingsValue value;
  for (std::size_t at = 1; at < text.size(); ++at) {
    if (text[at] == '"') {
      if (at + 1 == text.size()) return value;
      if (text[at + 1] != '"') return std::nullopt;
      ++at;
    }
    value.text += text[at];
  }
  return std::nullopt;
}

std::optional<SettingsValue> readBytes(std::string_view digits) {
  SettingsValue value{SettingsValue::Kind::kBytes, {}};
  while (!(digits = withoutBlanks(digits)).empty()) {
    const std::string_view pair = digits.substr(0, 2);
    if (pair.size() != 2 || pair.find_first_not_of("0123456789ABCDEFabcdef") != pair.npos) {
      return std::nullopt;
    }
    value.text += static_cast<char>(static_cast<int>(Val("&H" + std::string(pair))));
    digits.remove_prefix(2);
  }
  return value;
}

// The value after the equals sign; nothing when it is not understood.
std::optional<SettingsValue> readValue(std::string_view text) {
  if (text.starts_with('"')) return readQuoted(text);
  if (text.starts_with(kBytesMark)) return readBytes(text.substr(kBytesMark.size()));
  SettingsValue value{SettingsValue::Kind::kText, std::string(text)};
  if (isWhole(text)) {
    value.kind = ToInt32(text) ? SettingsValue::Kind::kWhole : SettingsValue::Kind::kTooWide;
  }
  return value;
}

std::string writeBytes(std::string_view bytes) {
  std::string text(kBytesMark);
  for (const char c : bytes) {
    const std::string digits = HexText(static_cast<unsigned char>(c));
    text += digits.size() == 1 ? " 0" : " ";
    text += digits;
  }
  return text;
}

std::string writeQuoted(std::string_view value) {
  std::string text = "\"";
  for (const char c : value) text.append(c == '"' ? 2U : 1U, c);
  return text + '"';
}

std::string writeValue(std::string_view value) {
  if (hasControl(value)) return writeBytes(value);
  const bool plain =
      withoutBlanks(value) == value && !value.starts_with('"') && !value.starts_with(kBytesMark);
  return plain ? std::string(value) : writeQuoted(value);
}

bool canBeSection(std::string_view section) {
  return !section.empty() && withoutBlanks(section) == section && !hasControl(section);
}

bool canBeName(std::string_view name) {
  return canBeSection(name) && !Holds("#;[", name.substr(0, 1)) && !Holds(name, "=");
}

}  // namespace

Result<SettingsText> SettingsText::FromBytes(std::string_view bytes) {
  if (bytes.size() > kMaxBytes) return Error{"File too large"};
  if (std::any_of(bytes.begin(), bytes.end(), [](char c) {
        return isControl(c) && !Holds(kBlanks, {&c, 1});
      })) {
    return Error{"Not a text file"};
  }
  SettingsText result;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\n');
    const std::size_t length = end == std::string_view::npos ? bytes.size() : end + 1;
    result.takeLine(bytes.substr(0, length));
    bytes.remove_prefix(length);
  }
  return result;
}

// Adds a line and notes what it means.
void SettingsText::takeLine(std::string_view text) {
  Line line;
  line.text = text;
  if (!lines_.empty()) line.section = lines_.back().section;
  if (lines_.empty() && text.starts_with(kByteOrderMark)) text.remove_prefix(3);
  text = withoutBlanks(text);
  bool understood = true;
  if (text.starts_with('[')) {
    // Rows below a broken header must not count as rows of the section above it.
    const std::string_view inside =
        text.ends_with(']') ? withoutBlanks(text.substr(1, text.size() - 2)) : std::string_view{};
    understood = !inside.empty();
    line.section = understood ? addSection(inside) : kNone;
  } else if (!text.empty() && !Holds("#;", text.substr(0, 1))) {
    const std::string_view name = withoutBlanks(Before(text, "="));
    const auto value = readValue(withoutBlanks(After(text, "=")));
    understood = Holds(text, "=") && !name.empty() && line.section != kNone && value;
    if (understood) {
      line.name = name;
      line.value = *value;
    }
  }
  lines_.push_back(std::move(line));
  if (!understood && strangeLine_ == 0) strangeLine_ = static_cast<int>(lines_.size());
}

std::size_t SettingsText::findSection(std::string_view section) const {
  const auto found = sections_.find(Upper(section));
  return found == sections_.end() ? kNone : found->second;
}

std::size_t SettingsText::addSection(std::string_view section) {
  return sections_.try_emplace(Upper(section), sections_.size()).first->second;
}

// Place of the line of the row that counts; kNone when there is none.
std::size_t SettingsText::findRow(std::string_view section, std::string_view name) const {
  const std::size_t wanted = findSection(section);
  if (wanted == kNone) return kNone;
  for (std::size_t at = lines_.size(); at-- > 0;) {
    const Line& line = lines_[at];
    if (line.section == wanted && !line.name.empty() && SameText(line.name, name)) return at;
  }
  return kNone;
}

bool SettingsText::HasSection(std::string_view section) const {
  const std::string wanted = Upper(section);
  return sections_.contains(wanted) ||
         std::any_of(sections_.begin(), sections_.end(), [below = wanted + "\\"](const auto& row) {
           return row.first.starts_with(below);
         });
}

std::optional<SettingsValue> SettingsText::Find(std::string_view section,
                                                std::string_view name) const {
  const std::size_t row = findRow(section, name);
  return row == kNone ? std::nullopt : std::optional(lines_[row].value);
}

std::vector<Setting> SettingsText::Rows(std::string_view section) const {
  const std::size_t wanted = findSection(section);
  std::vector<Setting> rows;
  if (wanted == kNone) return rows;
  std::map<std::string, std::size_t> places;  // of names in `rows`
  for (const Line& line : lines_) {
    if (line.section != wanted || line.name.empty()) continue;
    const auto [place, isNew] = places.try_emplace(Upper(line.name), rows.size());
    if (isNew) rows.push_back({line.name, {}});
    rows[place->second].value = line.value.text;
  }
  return rows;
}

Result<> SettingsText::Set(std::string_view section, std::string_view name,
                           std::string_view value) {
  if (!canBeSection(section))
    return Error{"\"" + std::string(section) + "\" is not a valid section name"};
  if (!canBeName(name)) return Error{"\"" + std::string(name) + "\" is not a valid setting name"};
  Line row;
  row.name = name;
  row.value.text = value;
  row.text = row.name + " = " + writeValue(value);
  const std::size_t place = findRow(section, name);
  if (place == kNone) {
    row.text += '\n';
    addRow(section, std::move(row));
    return Done{};
  }
  Line& there = lines_[place];
  if (there.value.text == value) return Done{};
  row.text += there.text.ends_with("\r\n") ? "\r\n" : "\n";
  row.section = there.section;
  there = std::move(row);
  return Done{};
}

// Adds it after the last line of its section that is not blank, or in a new section at the end.
void SettingsText::addRow(std::string_view section, Line row) {
  if (!lines_.empty() && !lines_.back().text.ends_with('\n')) lines_.back().text += '\n';
  row.section = addSection(section);
  const auto last = std::find_if(lines_.rbegin(), lines_.rend(), [&](const Line& line) {
    return line.section == row.section && !withoutBlanks(line.text).empty();
  });
  if (last != lines_.rend()) {
    lines_.insert(last.base(), std::move(row));
    return;
  }
  if (!lines_.empty()) lines_.push_back({"\n", lines_.back().section, {}, {}});
  lines_.push_back({"[" + std::string(section) + "]\n", row.section, {}, {}});
  lines_.push_back(std::move(row));
}

std::string SettingsText::Bytes() const {
  std::string bytes;
  for (const Line& line : lines_) bytes += line.text;
  return bytes;
}

}  // namespace ostrand::platform
