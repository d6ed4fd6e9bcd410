// Runs the tests at windows that nobody sees, on the desktop of a small laptop.
#include <gtest/gtest.h>

#include <QApplication>

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  qputenv("QT_QPA_PLATFORM",
          "offscreen:configfile=" OSTRAND_SOURCE_DIR "/tests/desktop/laptop.json");
  const QApplication application(count, arguments);
  return RUN_ALL_TESTS();
}
