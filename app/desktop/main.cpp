// The program `ostrand-desktop`.
#include <QApplication>
#include <QCommandLineParser>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "main_window.h"
#include "model/defaults.h"
#include "pictures.h"
#include "platform/posix/posix_machine.h"
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
  parser.addOption(pictures);
  parser.process(application);
  const QStringList files = parser.positionalArguments();
  const bool drawing = parser.isSet(pictures);
  if (files.size() > 1) return wrongUsage("one project at a time");
  if (drawing && files.isEmpty()) return wrongUsage("--pictures needs a project");

  const char* fixed = std::getenv("SOURCE_DATE_EPOCH");
  const auto epoch = platform::PosixClock::EpochFromText(fixed == nullptr ? "" : fixed);
  platform::PosixMachine machine(platform::Syncing::kOn, epoch);
  QtForms forms;
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

}  // namespace
}  // namespace ostrand::desktop

int main(int count, char** arguments) {
  std::signal(SIGXFSZ, SIG_IGN);  // a file size limit then fails the write, which cleans up
  QApplication application(count, arguments);
  QApplication::setApplicationName(QStringLiteral("ostrand-desktop"));
  QApplication::setApplicationDisplayName(QStringLiteral("Ostrand"));
  return ostrand::desktop::run(application);
}
