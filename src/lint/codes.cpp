#include "lint/codes.h"

#include <algorithm>
#include <array>

namespace ostrand {
namespace {

constexpr std::array kCodes = {
    CodeRow{"duplicate-name", "Two tables, aliases or calculated fields have the same name",
            "DUPLICATION FOUND"},
    CodeRow{"keyword-name", "A name is a word of the logger's language", "ILLEGAL KEYWORD USAGE"},
    CodeRow{"measurement-time", "The measurements take longer than a scan",
            "INCORRECT PROGRAM TIMING"},
    CodeRow{"slow-sequence", "The scan is too long for the battery saver",
            "SLOW SEQUENCE NOT POSSIBLE"},
    CodeRow{"table-interval", "The interval of a table is not a multiple of the scan",
            "TIMING PROBLEM"},
    CodeRow{"power-off-variable", "The variable of the power off trigger no longer exists",
            "INVALID POWER OFF TRIGGER"},
    CodeRow{"table-trigger-variable", "A variable of a table's trigger no longer exists",
            " INVALID TRIGGERED TABLE\""},
    CodeRow{"condition-variable", "A variable of a port, flag or analog output no longer exists",
            "INVALID TRIGGER CONDITION"},
    CodeRow{"level-variable", "The second variable of a level crossing no longer exists",
            "INVALID LEVEL CROSSING 2ND DIMENSION"},
    CodeRow{"write-if-variable", "The variable of a table's write condition no longer exists",
            "INVALID WRITE IF TRIGGER"},
    CodeRow{"formula-variable", "A variable of a calculated field no longer exists",
            "INVALID CALCULATED FIELD"},
    CodeRow{"status-flag", "A flag of the status monitor is also used elsewhere",
            "DUPLICATE FLAGS"},
    CodeRow{"burst-calibration", "Blocks are zeroed or calibrated in burst mode",
            "ZERO SUBROUTINE WARNING"},
    CodeRow{"floating-ground", "A differential block is not referenced to ground",
            "FLOATING GROUND WARNING"},
    CodeRow{"scan-rate-table", "A table of every scan stores averages or histograms",
            "OUTPUT TABLES"},
    CodeRow{kCodeSharedTerminal, "Different sensors or devices share a terminal"},
    CodeRow{kCodeStartIgnored, "The program measures a block from a channel other than its start"},
    CodeRow{kCodeTextTooLong, "A name or a unit is too long for its line of the program"},
    CodeRow{kCodeSectionFailed, "A section of the program is cut"},
    CodeRow{kCodeLostVariable, "A variable of a further condition no longer exists"},
    CodeRow{kCodeBlockTime, "The time of a block in a scan that is too short"},
    CodeRow{kCodeLineNotRead, "A line of the project file was not read"},
    CodeRow{kCodeProgramLine, "A line of the program is damaged"},
    CodeRow{kCodeProgramBlock, "A block of the program is not closed, or closed twice"},
    CodeRow{kCodeUndeclared, "The program uses a name that it does not declare"},
    CodeRow{kCodeDeclaredTwice, "The program declares a name twice"},
};

}  // namespace

std::string_view SeverityName(Severity severity) {
  constexpr std::array<std::string_view, 3> kNames = {"error", "warning", "notice"};
  return kNames[static_cast<std::size_t>(severity)];
}

std::span<const CodeRow> FindingCodes() { return kCodes; }

std::string_view CodeOfTitle(std::string_view title) {
  const auto row = std::find_if(kCodes.begin(), kCodes.end(), [&](const CodeRow& code) {
    return !code.title.empty() && code.title == title;
  });
  return row == kCodes.end() ? std::string_view() : row->code;
}

}  // namespace ostrand
