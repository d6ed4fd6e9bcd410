// What a report holds, and on which paper.
#pragma once

#include <QPageSize>
#include <QString>
#include <array>
#include <optional>
#include <set>
#include <string_view>

namespace ostrand::desktop {

enum class ReportPart { kTitle, kSummary, kWiring, kChannels, kTables, kSettings, kProgram };

struct ReportPartRow {
  ReportPart part;
  const char* word;    // on the command line
  const char* title;   // in the report
  bool flows = false;  // begins on a page that has room, otherwise on a new one
};
// In the order of the report.
inline constexpr std::array<ReportPartRow, 7> kReportParts = {{
    {ReportPart::kTitle, "title", "Title page"},
    {ReportPart::kSummary, "summary", "Summary"},
    {ReportPart::kWiring, "wiring", "Wiring"},
    {ReportPart::kChannels, "channels", "Channels and time of a scan"},
    {ReportPart::kTables, "tables", "Output tables", true},
    {ReportPart::kSettings, "settings", "Settings", true},
    {ReportPart::kProgram, "program", "Program", true},
}};

std::set<ReportPart> AllReportParts();
// Parts by their words, separated by commas, in any case of letters; nothing for an unknown word
// and for no part at all.
std::optional<std::set<ReportPart>> ReportPartsOf(const QString& text);

// "A4" or "Letter", in any case of letters.
std::optional<QPageSize::PageSizeId> PaperOf(const QString& text);

struct ReportOptions {
  std::set<ReportPart> parts = AllReportParts();
  QPageSize::PageSizeId paper = QPageSize::A4;

  [[nodiscard]] bool Has(ReportPart part) const { return parts.contains(part); }
};

}  // namespace ostrand::desktop
