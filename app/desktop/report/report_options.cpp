#include "report/report_options.h"

#include <QStringList>
#include <algorithm>

namespace ostrand::desktop {

std::set<ReportPart> AllReportParts() {
  std::set<ReportPart> parts;
  for (const ReportPartRow& row : kReportParts) parts.insert(row.part);
  return parts;
}

std::optional<std::set<ReportPart>> ReportPartsOf(const QString& text) {
  std::set<ReportPart> parts;
  for (const QString& word : text.split(u',')) {
    const auto* row =
        std::find_if(kReportParts.begin(), kReportParts.end(), [&](const ReportPartRow& known) {
          return word.trimmed().compare(QLatin1String(known.word), Qt::CaseInsensitive) == 0;
        });
    if (row == kReportParts.end()) return std::nullopt;
    parts.insert(row->part);
  }
  return parts;
}

std::optional<QPageSize::PageSizeId> PaperOf(const QString& text) {
  if (text.compare(QStringLiteral("A4"), Qt::CaseInsensitive) == 0) return QPageSize::A4;
  if (text.compare(QStringLiteral("Letter"), Qt::CaseInsensitive) == 0) return QPageSize::Letter;
  return std::nullopt;
}

}  // namespace ostrand::desktop
