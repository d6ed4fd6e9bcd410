// The program `ostrand-desktop`.
#include <QApplication>
#include <QCommandLineParser>
#include <QHash>
#include <QProcess>
#include <QTemporaryFile>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "main_window.h"
#include "model/defaults.h"
#include "pictures.h"
#include "platform/posix/posix_machine.h"
#include "report/report_command.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

constexpr char kPicturesOption[] = "pictures";

// The desktop that pictures are drawn on.
constexpr char kPictureScreen[] =
    R"({"screens": [{"name": "desk", "x": 0, "y": 0, "width": 1280, "height": 960,
        "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";

constexpr int kDone = 0;
constexpr int kFault = 1;
constexpr int kWrongUsage = 2;

int wrongUsage(const char* why) {
  std::fprintf(stderr, "ostrand-desktop: %s\n", why);
  return kWrongUsage;
}

// What the user wants; `wrong` says why it is no valid command.
struct Arguments {
  QStringList files;
  QString pictures;  // folder; empty for none
  QString report;    // file; empty for none
  ReportOptions options = {};
  const char* wrong = nullptr;
};

// The parts and the paper of a report; what is wrong with them, or null.
const char* takeReport(const QString& parts, const QString& paper, ReportOptions& options) {
  const auto wanted = ReportPartsOf(parts);
  if (!parts.isNull() && !wanted) return "--parts has an unknown part";
  if (wanted) options.parts = *wanted;
  const auto size = PaperOf(paper);
  if (!size) return "--paper must be A4 or Letter";
  options.paper = *size;
  return nullptr;
}

Arguments argumentsOf(QApplication& application) {
  QCommandLineParser parser;
  parser.addHelpOption();
  parser.addPositionalArgument(QStringLiteral("FILE.VKG"),
                               QStringLiteral("The projects to open, each in a window."),
                               QStringLiteral("[FILE.VKG...]"));
  const QCommandLineOption pictures(
      QLatin1String(kPicturesOption),
      QStringLiteral("Write pictures of all windows and pages, light and dark, to DIR. Needs no "
                     "display."),
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
  Arguments arguments{parser.positionalArguments(), parser.value(pictures), parser.value(report)};
  const bool hasProject = arguments.files.size() == 1;
  arguments.wrong = takeReport(parser.isSet(parts) ? parser.value(parts) : QString(),
                               parser.value(paper), arguments.options);
  const auto isEmpty = [&](const QCommandLineOption& option) {
    return parser.isSet(option) && parser.value(option).isEmpty();
  };
  if (isEmpty(pictures) || isEmpty(report)) arguments.wrong = "empty file name";
  if (parser.isSet(pictures) && !hasProject) arguments.wrong = "--pictures needs one project";
  if (parser.isSet(report) && !hasProject) arguments.wrong = "--report needs one project";
  return arguments;
}

int run(QApplication& application) {
  const Arguments arguments = argumentsOf(application);
  if (arguments.wrong != nullptr) return wrongUsage(arguments.wrong);
  const QStringList& files = arguments.files;
  const bool drawing = !arguments.pictures.isEmpty();
  const bool reporting = !arguments.report.isEmpty();
  for (const QString& file : files.mid(1)) {
    if (!QProcess::startDetached(QApplication::applicationFilePath(), {file})) {
      return wrongUsage("another window could not be started");
    }
  }

  const char* fixed = std::getenv("SOURCE_DATE_EPOCH");
  const auto epoch = platform::PosixClock::EpochFromText(fixed == nullptr ? "" : fixed);
  platform::PosixMachine machine(platform::Syncing::kOn, epoch);
  QtForms forms;
  CommandForms lines;
  if (reporting) {
    return WriteReport(machine.Around(lines), PathOf(files.front()), arguments.report,
                       arguments.options)
               ? kDone
               : kFault;
  }
  const std::string state = platform::UserStateFolder();
  MainWindow window(TheStore(), machine.Around(forms), forms,
                    drawing || state.empty() ? QString() : PathText(state + "/recovery"));
  if (drawing) {
    window.Complete();
    return window.Open(PathOf(files.front())) && WritePictures(window, forms, arguments.pictures)
               ? kDone
               : kFault;
  }
  window.OnComplete = [&] {
    if (window.OfferUnsavedWork()) return;
    if (files.isEmpty() || !window.Open(PathOf(files.front()))) window.StartNew();
  };
  window.show();
  return QApplication::exec();
}

// What is written without a window needs no display, unless a platform was chosen, and is the same
// each time: fonts are written in the order of a hash. A fixed moment counts in any time zone.
// `screen` then holds the description of a desktop, which must be there until the application runs.
void prepare(int count, char** arguments, QTemporaryFile& screen) {
  const auto writes = [&](const std::string& option) {
    return std::any_of(arguments + 1, arguments + count, [&](std::string_view word) {
      return word == option || word.starts_with(option + "=");
    });
  };
  const bool drawing = writes(std::string("--") + kPicturesOption);
  if (!drawing && !writes("--report")) return;
  QHashSeed::setDeterministicGlobalSeed();
  if (qEnvironmentVariableIsSet("SOURCE_DATE_EPOCH")) qputenv("TZ", "UTC");
  if (drawing) qInstallMessageHandler(LeaveOutPlatformMessages);
  if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) return;
  QByteArray platform = "offscreen";
  if (drawing && screen.open() && screen.write(kPictureScreen) > 0 && screen.flush()) {
    platform += ":configfile=" + screen.fileName().toLocal8Bit();
  }
  qputenv("QT_QPA_PLATFORM", platform);
}

}  // namespace
}  // namespace ostrand::desktop

int main(int count, char** arguments) {
  std::signal(SIGXFSZ, SIG_IGN);  // a file size limit then fails the write, which cleans up
  QTemporaryFile screen;
  ostrand::desktop::prepare(count, arguments, screen);
  QApplication application(count, arguments);
  QApplication::setApplicationName(QStringLiteral("ostrand-desktop"));
  QApplication::setApplicationDisplayName(QStringLiteral("Ostrand"));
  return ostrand::desktop::run(application);
}
