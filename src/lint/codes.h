// The codes of findings.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace ostrand {

enum class Severity : std::uint8_t {
  kError,    // prevents saving; of a program: the logger would refuse or misread it
  kWarning,  // of a check before a save, which saves all the same
  kNotice,   // what no save checks
};
// "error", "warning", "notice".
std::string_view SeverityName(Severity severity);

// A kind of finding. docs/findings.md describes each under its code.
struct CodeRow {
  std::string_view code;        // "duplicate-name"
  std::string_view summary;     // one sentence without its stop
  std::string_view title = {};  // of the message box of a check; empty for a notice
};

inline constexpr std::string_view kCodeSharedTerminal = "shared-terminal";
inline constexpr std::string_view kCodeStartIgnored = "start-ignored";
inline constexpr std::string_view kCodeTextTooLong = "text-too-long";
inline constexpr std::string_view kCodeSectionFailed = "section-failed";
inline constexpr std::string_view kCodeLostVariable = "lost-variable";
inline constexpr std::string_view kCodeBlockTime = "block-time";
inline constexpr std::string_view kCodeLineNotRead = "line-not-read";
inline constexpr std::string_view kCodeProgramLine = "program-line";
inline constexpr std::string_view kCodeProgramBlock = "program-block";
inline constexpr std::string_view kCodeUndeclared = "undeclared-name";
inline constexpr std::string_view kCodeDeclaredTwice = "declared-twice";

// All of them: first those of the checks before a save, then those of notices.
std::span<const CodeRow> FindingCodes();

// The code of a check's findings by the title of its box; empty for an unknown title.
std::string_view CodeOfTitle(std::string_view title);

}  // namespace ostrand
