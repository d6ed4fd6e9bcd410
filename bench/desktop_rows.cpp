#include "desktop_rows.h"

#include <fmt/format.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <algorithm>
#include <ctime>
#include <set>

#include "machine.h"
#include "main_window.h"
#include "model/new_store.h"
#include "pages/channels_page.h"
#include "pages/checks_page.h"
#include "pages/program_page.h"
#include "pages/summary_page.h"
#include "pages/tables_page.h"
#include "pages/wiring_page.h"
#include "process.h"
#include "projectfile/genfile.h"
#include "projects.h"
#include "report/report.h"
#include "screen_window.h"
#include "script/screen_catalog.h"

namespace ostrand::bench {
namespace {

constexpr double kMilli = 1e3;

// A project with its session, nobody at it.
struct Desk {
  explicit Desk(void (*make)(ProjectStore& store)) {
    make(*store);
    MakeEveryScreenReachable(*store);
  }

  Machine machine;
  desktop::QtForms forms;
  OstrandEvents nobodyListens;
  std::unique_ptr<ProjectStore> store = NewStore();
  Ostrand control{*store, machine.Around(), nobodyListens};
};

void paint(QWidget& window) {
  window.show();
  QApplication::processEvents();
}

// A widget of the same class and text.
QWidget* plainOf(const QWidget& widget) {
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) return new QLabel(label->text());
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget))
    return new QLineEdit(line->text());
  if (const auto* box = qobject_cast<const QComboBox*>(&widget)) {
    auto* plain = new QComboBox;
    plain->setEditable(box->isEditable());
    plain->addItem(box->currentText());
    return plain;
  }
  if (qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr) return new QSpinBox;
  if (const auto* button = qobject_cast<const QRadioButton*>(&widget)) {
    return new QRadioButton(button->text());
  }
  if (const auto* button = qobject_cast<const QCheckBox*>(&widget)) {
    return new QCheckBox(button->text());
  }
  if (const auto* button = qobject_cast<const QPushButton*>(&widget)) {
    return new QPushButton(button->text());
  }
  if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
    return new QGroupBox(group->title());
  }
  if (qobject_cast<const QPlainTextEdit*>(&widget) != nullptr) return new QPlainTextEdit;
  if (qobject_cast<const QTreeWidget*>(&widget) != nullptr) return new QTreeWidget;
  return nullptr;
}

// Whether the widget is a part of another one.
bool isPart(const QWidget& widget) {
  const QWidget* parent = widget.parentWidget();
  return qobject_cast<const QComboBox*>(parent) != nullptr ||
         qobject_cast<const QAbstractSpinBox*>(parent) != nullptr;
}

// The widgets of a window, also those hidden at present.
std::vector<const QWidget*> widgetsOf(const QWidget& window) {
  std::vector<const QWidget*> widgets;
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    if (!isPart(*widget)) widgets.push_back(widget);
  }
  return widgets;
}

// A dialog with the same widgets, plain, in lines.
void paintPlain(const std::vector<const QWidget*>& widgets) {
  QDialog dialog;
  auto* grid = new QGridLayout(&dialog);
  constexpr int kColumns = 8;
  int at = 0;
  for (const QWidget* widget : widgets) {
    QWidget* plain = plainOf(*widget);
    if (plain == nullptr) continue;
    grid->addWidget(plain, at / kColumns, at % kColumns);
    if (!widget->isVisible()) plain->hide();
    ++at;
  }
  paint(dialog);
}

// Visits each screen once.
void visitScreens(Desk& desk, const std::function<void(Screen&)>& visit) {
  std::set<std::string> seen;
  VisitScreens(desk.control, [&](Screen& screen) {
    if (seen.insert(screen.Name()).second) visit(screen);
  });
}

// Opens each screen and takes the worst; prints a line for each.
Figure worst(Desk& desk, const std::function<Figure(Screen&)>& measure) {
  Figure most;
  visitScreens(desk, [&](Screen& screen) {
    Figure figure = measure(screen);
    fmt::print("{:>11} {:<52} {:>8} {:>9.2f}        {}\n", "", screen.Name(), "", figure.value,
               figure.remark);
    if (figure.value < most.value) return;
    most = std::move(figure);
    most.remark = screen.Name() + ", " + most.remark;
  });
  return most;
}

Figure opening() {
  Desk desk(MakeWiredProject);
  return worst(desk, [&](Screen& screen) {
    desktop::ScreenWindow shown(screen, desk.forms, nullptr);
    paint(shown);
    const std::vector<const QWidget*> widgets = widgetsOf(shown);
    constexpr int kRounds = 9;
    return RatioOf(
        kRounds, 0,
        [&] {
          desktop::ScreenWindow window(screen, desk.forms, nullptr);
          paint(window);
        },
        [&] { paintPlain(widgets); });
  });
}

double processorTime() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

void type(QWidget& into, int key, const QString& text) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
  QApplication::sendEvent(&into, &press);
  QApplication::processEvents();
}

// The processor time of a key in the first field of each screen that takes a digit, until it is
// shown.
Figure key() {
  Desk desk(MakeLargestProject);
  return worst(desk, [&](Screen& screen) -> Figure {
    desktop::ScreenWindow window(screen, desk.forms, nullptr);
    paint(window);
    while (!window.IsComplete()) QApplication::processEvents();
    for (const auto& control : window.Controls()) {
      QLineEdit* line = control->Line();
      if (line == nullptr || !control->Of().Usable()) continue;
      control->Stop()->setFocus();
      constexpr int kKeys = 9;
      std::vector<double> times;
      for (int round = 0; round < kKeys; ++round) {
        line->selectAll();
        const double start = processorTime();
        type(*control->Stop(), Qt::Key_1 + round, QString(QChar(u'1' + round)));
        times.push_back(processorTime() - start);
      }
      std::sort(times.begin(), times.end());
      return {times[kKeys / 2] * kMilli, control->Of().Name()};
    }
    return {0, "no field"};
  });
}

// The field names of a block with so many sensors.
class FieldNames {
 public:
  explicit FieldNames(i16 sensors) : desk_(MakeWiredProject) {
    desk_.store->TempBlock[1].Reps = sensors;
  }
  // Runs `use` while the screen is open.
  void During(const std::function<void(Screen&, desktop::QtForms&)>& use) {
    bool found = false;
    visitScreens(desk_, [&](Screen& screen) {
      if (screen.Name() != "frmFldName") return;
      found = true;
      use(screen, desk_.forms);
    });
    Require(found, "frmFldName");
  }

 private:
  Desk desk_;
};

Figure manySensors() {
  FieldNames many(100);
  FieldNames few(10);
  Figure figure;
  const auto open = [](Screen& screen, desktop::QtForms& forms) {
    desktop::ScreenWindow window(screen, forms, nullptr);
    paint(window);
  };
  many.During([&](Screen& large, desktop::QtForms& forms) {
    few.During([&](Screen& small, desktop::QtForms& others) {
      constexpr int kRounds = 15;
      figure = RatioOf(
          kRounds, 0, [&] { open(large, forms); }, [&] { open(small, others); });
    });
  });
  return figure;
}

Figure processorMillis(int rounds, const std::function<void()>& work) {
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    const double start = processorTime();
    work();
    times.push_back(processorTime() - start);
  }
  std::sort(times.begin(), times.end());
  return {times[times.size() / 2] * kMilli, {}};
}

// A page that is seen, after a change of the project until it is painted.
template <class Page>
Figure redraw() {
  Desk desk(MakeLargestProject);
  Page page([](const ScreenPlace&) {}, nullptr);
  constexpr QSize kSize(900, 700);
  page.resize(kSize);
  paint(page);
  constexpr int kRounds = 9;
  return processorMillis(kRounds, [&] {
    desk.store->VoltBlock[1].Reps = static_cast<i16>(desk.store->VoltBlock[1].Reps ^ 1);
    page.Show(desk.control, *desk.store);
    page.repaint();
    QApplication::processEvents();
  });
}

// The same for pages with other needs.
Figure redrawOf(QWidget& page, Desk& desk, const std::function<void()>& show) {
  constexpr QSize kSize(900, 700);
  page.resize(kSize);
  paint(page);
  show();
  constexpr int kRounds = 9;
  return processorMillis(kRounds, [&] {
    desk.store->VoltBlock[1].SettleTime += 10;
    show();
    page.repaint();
    QApplication::processEvents();
  });
}

Figure redrawProgram() {
  Desk desk(MakeLongestProgram);
  desktop::ProgramView page([](const ScreenPlace&) {}, nullptr);
  return redrawOf(page, desk, [&] { page.Show(desk.control, *desk.store); });
}

Figure redrawSummary() {
  Desk desk(MakeLargestProject);
  desktop::SummaryPage page(nullptr);
  return redrawOf(page, desk, [&] {
    desk.control.Summarize();
    page.Show(desk.control.SummaryBox());
  });
}

Figure redrawTables() {
  Desk desk(MakeLargestProject);
  desktop::TablesPage page([&]() -> const ProjectStore& { return *desk.store; }, nullptr);
  return redrawOf(page, desk, [&] { page.Show(); });
}

Figure redrawChecks() {
  Desk desk(MakeLargestProject);
  desktop::FindingsPage page([](const ScreenPlace&) {}, [](int) {}, nullptr);
  return redrawOf(page, desk, [&] { page.Show(desk.control, *desk.store); });
}

// A disk with one project on it.
class OneProject final : public NoFiles {
 public:
  OneProject() {
    const std::unique_ptr<ProjectStore> store = NewStore();
    MakeWiredProject(*store);
    bytes_ = ORVUS_GENFILE::ProjectFileText(*store, {});
  }
  bool Exists(std::string_view path) override { return path == kPath; }
  Result<std::string> Read(std::string_view path) override {
    return path == kPath ? Result<std::string>(bytes_) : NoFiles::Read(path);
  }
  static constexpr const char* kPath = "/sample.VKG";

 private:
  std::string bytes_;
};

// The main window reads a project when all its pages have been seen, against one where only the
// summary was.
Figure unseen() {
  struct Window {
    Window() {
      window.show();
      window.Complete();
    }
    void Read() {
      Require(window.Open(OneProject::kPath), "open");
      QApplication::processEvents();
    }
    Machine machine;
    OneProject disk;
    desktop::QtForms forms;
    platform::Surroundings usual = machine.Around();
    platform::Surroundings around{disk,
                                  usual.clock,
                                  forms,
                                  usual.processes,
                                  usual.settings,
                                  usual.registry,
                                  usual.temporaryFolder,
                                  {},
                                  {}};
    std::unique_ptr<ProjectStore> store = NewStore();
    desktop::MainWindow window{*store, around, forms};
  };
  Window seen;
  Window fresh;
  seen.Read();
  fresh.Read();
  for (int page = seen.window.Pages()->count(); page-- > 0;) {
    seen.window.Pages()->setCurrentIndex(page);
    QApplication::processEvents();
  }
  constexpr int kRounds = 9;
  return RatioOf(
      kRounds, 0, [&] { seen.Read(); }, [&] { fresh.Read(); });
}

Figure report() {
  Desk desk(MakeWiredProject);
  constexpr int kRounds = 3;
  return processorMillis(kRounds, [&] {
    const std::string pdf = desktop::ReportPdf(desk.control, *desk.store, {});
    Require(pdf.starts_with("%PDF-"), "report");
  });
}

// The time until the window is painted, by the word of a process that does so.
Figure startOf(std::string_view shown) {
  const std::string program = qgetenv("OSTRAND_BENCH_DESKTOP").toStdString();
  const auto run = [&](std::string_view word) {
    Require(RunProcess({program, std::string(word)}).status == 0, word);
  };
  constexpr int kPairs = 21;
  return RatioOf(
      kPairs, 0, [&] { run(shown); }, [&] { run(kPaintEmpty); });
}

Figure start() { return startOf(kPaintMain); }
Figure startWhole() { return startOf(kPaintWhole); }

void paintMain(bool whole) {
  Machine machine;
  desktop::QtForms forms;
  const platform::Surroundings around = machine.Around();
  const auto store = NewStore();
  desktop::MainWindow window(*store, around, forms);
  paint(window);
  if (!whole) return;
  window.Complete();
  window.repaint();
}

void paintEmpty() {
  QMainWindow window;
  // As large as the main window on the desktop without a display, for the same number of pixels.
  constexpr QSize kSize(786, 758);
  window.resize(kSize);
  paint(window);
}

}  // namespace

bool Paint(std::string_view what) {
  if (what == kPaintEmpty) {
    paintEmpty();
  } else if (what == kPaintMain || what == kPaintWhole) {
    paintMain(what == kPaintWhole);
  } else {
    return false;
  }
  return true;
}

std::vector<Row> DesktopRows() {
  return {
      {"start", "start until the first paint, to an empty QMainWindow", 1.5, start},
      {"whole", "start until all of the window is painted, to the same", 0, startWhole},
      {"open", "slowest screen, to a QDialog of as many plain widgets", 3, opening},
      {"key", "slowest key in a field, ms of the processor", 2, key},
      {"sensors", "frmFldName with 100 sensors, to one with 10", 2, manySensors},
      {"wiring", "redraw of the wiring, ms of the processor", 100, redraw<desktop::WiringPage>},
      {"channels", "redraw of the channels, ms of the processor", 100,
       redraw<desktop::ChannelsPage>},
      {"program", "redraw of the longest program, ms of the processor", 100, redrawProgram},
      {"summary", "redraw of the summary, ms of the processor", 100, redrawSummary},
      {"tables", "redraw of the tables, ms of the processor", 100, redrawTables},
      {"checks", "redraw of the checks, ms of the processor", 100, redrawChecks},
      {"unseen", "reading a project with all pages seen before, to none", 1.1, unseen},
      {"report", "report, ms of the processor", 3000, report},
  };
}

}  // namespace ostrand::bench
