#include "report/report_command.h"

#include <cstdio>

#include "model/new_store.h"
#include "projectfile/read_report.h"
#include "report/report.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

void complain(const QString& text) {
  std::fprintf(stderr, "ostrand-desktop: %s\n", text.toUtf8().constData());
}

}  // namespace

platform::Answer CommandForms::ShowBox(const platform::MessageBox& box) {
  complain(box.diskError.empty()
               ? FromSystem(box.title) + QStringLiteral(": ") + FromSystem(box.text).simplified()
               : FromSystem(box.diskError));
  switch (box.buttons) {
    case platform::Buttons::kOk:
      return platform::Answer::kOk;
    case platform::Buttons::kYesNo:
      return platform::Answer::kNo;
    default:
      return platform::Answer::kCancel;
  }
}

bool WriteReport(const platform::Surroundings& around, const std::string& project,
                 const QString& file, const ReportOptions& options) {
  const std::unique_ptr<ProjectStore> store = NewStore();
  OstrandEvents nobodyListens;
  Ostrand session(*store, around, nobodyListens);
  bool cancelled = true;
  session.OpenFile(project, cancelled);
  if (cancelled) return false;
  if (session.SkippedLines().skipped > 0) {
    complain(FromSystem(ORVUS_GENFILE::SkippedText(session.SkippedLines())));
  }
  const std::optional<std::string> bytes = ExportOf(file, session, *store, options);
  if (!bytes) {
    complain(file + QStringLiteral(": the name must end in .pdf, .svg, .png or .csv"));
    return false;
  }
  const Result<> written = platform::WriteWhole(around.files, PathOf(file), *bytes);
  if (!written) complain(FromSystem(written.ErrorText()));
  return static_cast<bool>(written);
}

}  // namespace ostrand::desktop
