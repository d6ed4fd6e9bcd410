// Prints the figures of the windows, drawn without a display.
#include <QApplication>

#include "desktop_rows.h"

int main(int count, char** arguments) {
  using namespace ostrand::bench;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("OSTRAND_BENCH_DESKTOP", arguments[0]);
  const QApplication application(count, arguments);
  const std::string_view word = count > 1 ? arguments[1] : "";
  if (word == kPaintEmpty) PaintEmpty();
  if (word == kPaintMain || word == kPaintWhole) PaintMain(word == kPaintWhole);
  if (word == kPaintEmpty || word == kPaintMain || word == kPaintWhole) return 0;
  return PrintTable(DesktopRows(), {arguments + 1, arguments + count});
}
