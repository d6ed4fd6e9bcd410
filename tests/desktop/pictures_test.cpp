// The pictures of all windows, written by the program itself.
#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QProcess>

#include "support/temp_folder.h"

namespace ostrand {
namespace {

TEST(AllPictures, ShowAllScreensInTwoThemes) {
  const testing::TempFolder folder;
  QProcess program;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.remove("QT_QPA_PLATFORM");
  environment.insert("XDG_CONFIG_HOME", QString::fromStdString(folder / "config"));
  environment.insert("ASAN_OPTIONS", "detect_leaks=0");  // libraries of the display leak
  program.setProcessEnvironment(environment);
  program.start(OSTRAND_DESKTOP, {"--pictures", QString::fromStdString(folder / "pictures"),
                                  OSTRAND_SOURCE_DIR "/examples/building-climate.VKG"});
  ASSERT_TRUE(program.waitForFinished(-1));
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(program.readAllStandardError().toStdString(), "");
  for (const char* theme : {"light", "dark"}) {
    const QDir pictures(QString::fromStdString(folder / "pictures/") + theme);
    EXPECT_EQ(pictures.entryList({"frm*.png"}).size(), 41) << theme;
    EXPECT_GE(pictures.entryList({"main-*.png"}).size(), 4) << theme;
  }
  const auto brightness = [&](const char* theme) {
    const QImage image(QString::fromStdString(folder / "pictures/") + theme + "/main-summary.png");
    return image.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .pixelColor(0, 0)
        .lightness();
  };
  EXPECT_GT(brightness("light"), 200);
  EXPECT_LT(brightness("dark"), 60);
}

}  // namespace
}  // namespace ostrand
