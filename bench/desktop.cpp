// Prints the figures of the windows, drawn without a display.
#include <QApplication>

#include "desktop_rows.h"

int main(int count, char** arguments) {
  using namespace ostrand::bench;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("OSTRAND_BENCH_DESKTOP", arguments[0]);
  const QApplication application(count, arguments);
  if (count > 1 && Paint(arguments[1])) return 0;
  return PrintTable(DesktopRows(), {arguments + 1, arguments + count});
}
