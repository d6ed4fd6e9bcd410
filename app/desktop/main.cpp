// The program `ostrand-desktop`.
#include <QApplication>
#include <QCommandLineParser>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "main_window.h"
#include "model/defaults.h"
#include "pictures.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_process.h"
#include "platform/posix/posix_work_folders.h"
#include "platform/posix/settings_places.h"
#include "platform/posix/user_folders.h"
#include "platform/surroundings.h"
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
  platform::PosixFileSystem disk(platform::Syncing::kOn);
  platform::PosixClock clock(epoch);
  platform::PosixProcesses processes;
  platform::PosixWorkFolders workFolders(disk);
  platform::SettingsPlaces places(platform::Syncing::kOn);
  QtForms forms;
  const platform::Surroundings around{disk,
                                      clock,
                                      forms,
                                      processes,
                                      places.settings,
                                      places.registry,
                                      platform::TemporaryFolder(),
                                      platform::ModuleFolder(),
                                      &workFolders};
  const std::string state = platform::UserStateFolder();
  MainWindow window(TheStore(), around, forms,
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
