// The program `ostrand-desktop`.
#include <QApplication>
#include <QCommandLineParser>
#include <QHash>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "main_window.h"
#include "model/defaults.h"
#include "pictures.h"
#include "platform/posix/posix_machine.h"
#include "report/report_command.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

constexpr int kDone = 0;
constexpr int kFault = 1;
constexpr int kWrongUsage = 2;

int wrongUsage(const char* why) {
  std::fprintf(stderr, "ostrand-desktop: %s\n", why);
  return kWrongUsage;
}

int run(QApplication& application) {
  QCommandLineParser parser;
  parser.addHelpOption();
  parser.addPositionalArgument(QStringLiteral("FILE.VKG"), QStringLiteral("The project to open."),
                               QStringLiteral("[FILE.VKG]"));
  const QCommandLineOption pictures(QStringLiteral("pictures"),
                                    QStringLiteral("Write a picture of each window to DIR."),
                                    QStringLiteral("DIR"));
  const QCommandLineOption report(
      QStringLiteral("report"),
      QStringLiteral("Write the report to FILE.pdf, the wiring to FILE.svg or FILE.png, or the "
                     "columns of the tables to FILE.csv."),
      QStringLiteral("FILE"));
  const QCommandLineOption parts(
      QStringLiteral("parts"),
      QStringLiteral("Parts of the report, separated by commas: title, summary, wiring, channels, "
                     "tables, settings, program."),
      QStringLiteral("PARTS"));
  const QCommandLineOption paper(QStringLiteral("paper"),
                                 QStringLiteral("Paper of the report: A4 or Letter."),
                                 QStringLiteral("SIZE"), QStringLiteral("A4"));
  parser.addOptions({pictures, report, parts, paper});
  parser.process(application);
  const QStringList files = parser.positionalArguments();
  const bool drawing = parser.isSet(pictures);
  if (files.size() > 1) return wrongUsage("one project at a time");
  if (drawing && files.isEmpty()) return wrongUsage("--pictures needs a project");
  const bool reporting = parser.isSet(report);
  if (reporting && files.isEmpty()) return wrongUsage("--report needs a project");
  ReportOptions options;
  if (parser.isSet(parts)) {
    const auto wanted = ReportPartsOf(parser.value(parts));
    if (!wanted) return wrongUsage("--parts has an unknown part");
    options.parts = *wanted;
  }
  const auto size = PaperOf(parser.value(paper));
  if (!size) return wrongUsage("--paper must be A4 or Letter");
  options.paper = *size;

  const char* fixed = std::getenv("SOURCE_DATE_EPOCH");
  const auto epoch = platform::PosixClock::EpochFromText(fixed == nullptr ? "" : fixed);
  platform::PosixMachine machine(platform::Syncing::kOn, epoch);
  QtForms forms;
  CommandForms lines;
  if (reporting) {
    return WriteReport(machine.Around(lines), PathOf(files.front()), parser.value(report), options)
               ? kDone
               : kFault;
  }
  const std::string state = platform::UserStateFolder();
  MainWindow window(TheStore(), machine.Around(forms), forms,
                    drawing || state.empty() ? QString() : PathText(state + "/recovery"));
  if (!drawing) window.show();
  if (!drawing && window.OfferUnsavedWork()) return QApplication::exec();
  if (files.isEmpty() || !window.Open(PathOf(files.front()))) {
    if (drawing) return kFault;
    window.StartNew();
  }
  if (drawing) return WritePictures(window, forms, parser.value(pictures)) ? kDone : kFault;
  return QApplication::exec();
}

// What is written without a window needs no display, and is the same each time: fonts are written
// in the order of a hash. A fixed moment counts in any time zone.
void prepare(int count, char** arguments) {
  const bool writes = std::any_of(arguments, arguments + count, [](std::string_view argument) {
    return argument.starts_with("--report") || argument.starts_with("--pictures");
  });
  const bool hasDisplay = qEnvironmentVariableIsSet("DISPLAY") ||
                          qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
                          qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
  if (writes) QHashSeed::setDeterministicGlobalSeed();
  if (writes && !hasDisplay) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (writes && qEnvironmentVariableIsSet("SOURCE_DATE_EPOCH")) qputenv("TZ", "UTC");
}

}  // namespace
}  // namespace ostrand::desktop

int main(int count, char** arguments) {
  std::signal(SIGXFSZ, SIG_IGN);  // a file size limit then fails the write, which cleans up
  ostrand::desktop::prepare(count, arguments);
  QApplication application(count, arguments);
  QApplication::setApplicationName(QStringLiteral("ostrand-desktop"));
  QApplication::setApplicationDisplayName(QStringLiteral("Ostrand"));
  return ostrand::desktop::run(application);
}
