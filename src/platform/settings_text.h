// The plain text in which settings and machine keys are kept, for people to read and edit:
//
//   # a comment, as is a line that begins with ;
//   [QUILLON\QUILLON]
//   GenPath = C:\Larkfield\DLDFILES
//   WarningMessageMask = 8191
//
// Values are written unchanged, `\` included. One with blanks at its ends is in double quotes, a
// quote inside written twice; one with control characters as "bytes: 41 0D 0A", in hexadecimal.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/settings_store.h"
#include "text/result.h"

namespace ostrand::platform {

struct SettingsValue {
  enum class Kind {
    kText,
    kWhole,    // a whole number of 32 bits, not in quotes
    kTooWide,  // a whole number beyond that
    kBytes
  };
  Kind kind = Kind::kText;
  std::string text;  // of kBytes the bytes themselves
};

// Sections and names are compared without regard to case. Of rows with the same name the
// last one counts. Lines that are not understood are ignored and kept unchanged.
class SettingsText {
 public:
  static constexpr std::size_t kMaxBytes = std::size_t{1} << 18;

  // The error is the reason why these bytes are not such a text, without the name of a file.
  static Result<SettingsText> FromBytes(std::string_view bytes);

  // Number of the first line that is not understood, from 1; 0 when all are.
  [[nodiscard]] int StrangeLine() const { return strangeLine_; }

  // Whether there is a section of that name or one below it.
  [[nodiscard]] bool HasSection(std::string_view section) const;
  [[nodiscard]] std::optional<SettingsValue> Find(std::string_view section,
                                                  std::string_view name) const;
  // All rows of a section, each name once.
  [[nodiscard]] std::vector<Setting> Rows(std::string_view section) const;

  // Replaces the row, or adds it at the end of its section. An error when the text cannot
  // hold the section or the name.
  Result<> Set(std::string_view section, std::string_view name, std::string_view value);

  [[nodiscard]] std::string Bytes() const;

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  struct Line {
    std::string text;             // with its end
    std::size_t section = kNone;  // place of the section it belongs to, if it does to any
    std::string name;             // of a row; empty for any other line
    SettingsValue value;
  };

  [[nodiscard]] std::size_t findSection(std::string_view section) const;
  [[nodiscard]] std::size_t findRow(std::string_view section, std::string_view name) const;
  std::size_t addSection(std::string_view section);
  void takeLine(std::string_view text);
  void addRow(std::string_view section, Line row);

  std::map<std::string, std::size_t> sections_;  // places by names in upper case
  std::vector<Line> lines_;
  int strangeLine_ = 0;
};

}  // namespace ostrand::platform
