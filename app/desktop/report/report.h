// The report of a project for the test file, and the parts of it that are exported alone.
#pragma once

#include <QPagedPaintDevice>
#include <QString>
#include <string>

#include "platform/clock.h"
#include "report/report_options.h"
#include "session/ostrand.h"

namespace ostrand::desktop {

// The report as a PDF. The same project gives the same bytes at the same moment.
std::string ReportPdf(Ostrand& session, ProjectStore& store, const ReportOptions& options);

// The paper of the options with the margins of the report.
QPageLayout ReportLayout(const ReportOptions& options);

// Draws the report on a printer, whose page layout is kept and whose paper counts instead of that
// of the options. False if it cannot be begun.
bool DrawReport(QPagedPaintDevice& printer, Ostrand& session, ProjectStore& store,
                const ReportOptions& options);

// The picture of the wiring, on white.
std::string WiringSvg(const Ostrand& session, const ProjectStore& store);
std::string WiringPng(const Ostrand& session, const ProjectStore& store);

// The columns of all tables in use: fields separated by commas, with a heading, lines ending in CR
// LF, UTF-8.
std::string TablesCsv(const ProjectStore& store);

// Bytes of the kind that the name of a file ends in: .pdf, .svg, .png or .csv, in any case of
// letters; nothing for another name.
std::optional<std::string> ExportOf(const QString& path, Ostrand& session, ProjectStore& store,
                                    const ReportOptions& options);

}  // namespace ostrand::desktop
