// What the main window is made of.
#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QFormLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QScrollArea>
#include <QSet>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QTextDocumentFragment>
#include <QVBoxLayout>
#include <algorithm>

#include "help_window.h"
#include "icons.h"
#include "main_window.h"
#include "pages/channels_page.h"
#include "pages/checks_page.h"
#include "pages/program_page.h"
#include "pages/tables_page.h"
#include "pages/wiring_page.h"
#include "screens/setup_screens.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// The size of the window at first, in letters and in lines.
constexpr int kWidth = 165;
constexpr int kLines = 56;

// The largest part of the window that the main row may take for two columns, in percent.
constexpr int kMaxRowPart = 45;

constexpr int kMinTreeLines = 12;  // with the bars above and below

// Sets the size of the program's font, in percent of the present one, and returns that in points.
// Widgets that are made afterwards have the new size from the start.
qreal setTextSize(int percent) {
  QFont font = QApplication::font();
  const qreal usual = font.pointSizeF();
  font.setPointSizeF(usual * percent / 100);
  QApplication::setFont(font);
  return usual;
}

// Marks the first letter of the text that is not in `taken`, and takes it.
QString withLetter(QString text, QSet<QChar>& taken) {
  const auto* free = std::find_if(text.cbegin(), text.cend(), [&](QChar letter) {
    return letter.isLetter() && !taken.contains(letter.toUpper());
  });
  if (free == text.cend()) return text;
  taken.insert(free->toUpper());
  return text.insert(free - text.cbegin(), u'&');
}

}  // namespace

const std::array<MainWindow::MenuRow, 7> MainWindow::kMenus = {{
    {"&File", &MainWindow::fillFileMenu},
    {"&Edit", &MainWindow::fillEditMenu},
    {"&Setup", &MainWindow::fillSetupMenu},
    {"&Program", &MainWindow::fillProgramMenu},
    {"&View", &MainWindow::fillViewMenu},
    {"&Options", &MainWindow::fillOptionsMenu},
    {"&Help", &MainWindow::fillHelpMenu},
}};

MainWindow::MainWindow(ProjectStore& store, const platform::Surroundings& around, QtForms& forms,
                       const QString& recoveryFolder)
    : store_(store),
      forms_(forms),
      settings_(LoadDesktopSettings(around.settings)),
      usualFontSize_(setTextSize(settings_.textSize)),
      panels_(new ButtonPanels([this](int button) { clickWidget(button); },
                               [this](int button) { session_.RightClick(button); }, this)),
      helpLine_(new QLabel(this)),
      split_(new QSplitter(Qt::Horizontal, this)),
      left_(new QSplitter(Qt::Vertical, this)),
      right_(new QWidget(this)),
      processes_(around.processes, [this] { programsChanged(); }),
      around_(around.With(processes_)),
      session_(store, around_, *this),
      screens_(forms, this),
      keeper_(session_, this, recoveryFolder) {
  setWindowIcon(SystemIcon("ostrand"));
  helpLine_->setTextFormat(Qt::PlainText);
  helpLine_->setAccessibleName(QStringLiteral("Help"));
  // A long line must not widen the window.
  helpLine_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  fitHelpLine();
  statusBar()->addWidget(helpLine_, 1);
  for (const MenuRow& row : kMenus) menus_.push_back(menuBar()->addMenu(QLatin1String(row.title)));
  layOutRow();
}

void MainWindow::paintEvent(QPaintEvent* event) {
  QMainWindow::paintEvent(event);
  if (!ready_) QMetaObject::invokeMethod(this, &MainWindow::Complete, Qt::QueuedConnection);
}

void MainWindow::Complete() {
  if (ready_ || ended_) return;
  tree_ = new ProjectTree([this](const ScreenPlace& place) { Go(place); }, this);
  operator_ = new QLineEdit(this);
  number_ = new QLineEdit(this);
  notice_ = new NoticeBar(this);
  pages_ = new QTabWidget(this);
  summary_ = new SummaryPage(this);
  panels_->DrawIcons();
  connectParts();
  ConnectSetupScreens(session_, screens_);
  buildBoxes();
  buildPages();
  for (std::size_t at = 0; at < kMenus.size(); ++at) (this->*kMenus[at].fill)(menus_[at]);
  takeTextSize();
  layOutRest();
  takeServer(settings_.server);
  takeColors();
  ready_ = true;
  projectReplaced();
  if (OnComplete) OnComplete();
}

void MainWindow::connectParts() {
  tree_->OnBlock = [this](ProgramBlock block) {
    if (pages_->currentIndex() == kProgramPage && block.kind != 0) program_->ShowBlock(block);
  };
  tree_->OnShowLines = [this](ProgramBlock block) {
    pages_->setCurrentIndex(kProgramPage);
    program_->ShowBlock(block);
  };
  screens_.OnOpen = [this](bool open) { screenOpen(open); };
  keeper_.OnSaveAs = [this] { saveAs(); };
  keeper_.OnNotice = [this](const QString& text) { notice_->Show(text); };
  forms_.Main(this);
  forms_.OnHelp = [this] { ShowHelp(); };
  forms_.MaySaveTo = [this](const std::string& path) { return keeper_.MaySaveTo(path); };
  forms_.AddHelpLine(helpLine_);
  for (const ButtonFace& face : ButtonFaces()) ButtonOf(face.button)->installEventFilter(this);
  setAcceptDrops(true);
}

MainWindow::~MainWindow() {
  forms_.Main(nullptr);
  forms_.OnHelp = nullptr;
  forms_.MaySaveTo = nullptr;
  QFont font = QApplication::font();
  if (font.pointSizeF() == usualFontSize_) return;
  font.setPointSizeF(usualFontSize_);
  QApplication::setFont(font);
}

void MainWindow::buildBoxes() {
  const auto take = [this](QLineEdit* box, void (Ostrand::*set)(std::string_view),
                           const std::string& (Ostrand::*get)() const, const char* name) {
    box->setMaxLength(static_cast<int>(Ostrand::kMaxBoxLetters));
    box->setAccessibleName(QString::fromLatin1(name));
    box->setAcceptDrops(false);  // a dropped file is opened
    box->installEventFilter(this);
    QObject::connect(box, &QLineEdit::textEdited, this, [this, box, set, get](const QString& text) {
      const std::optional<std::string> bytes = ToProject(text);
      if (bytes) {
        (session_.*set)(*bytes);
      } else {
        forms_.Beep();
      }
      const QString taken = FromProject((session_.*get)());
      if (taken != text) {
        const int cursor = box->cursorPosition() - static_cast<int>(text.size() - taken.size());
        box->setText(taken);
        box->setCursorPosition(cursor);
      }
      showEdited();
    });
  };
  take(operator_, &Ostrand::txtOper, &Ostrand::txtOper, "Operator");
  take(number_, &Ostrand::txtIDNum, &Ostrand::txtIDNum, "Identification");
}

void MainWindow::buildPages() {
  pages_->addTab(summary_, QStringLiteral("Summary"));
  for (const char* title : {"Wiring", "Channels", "Program", "Tables", "Checks"}) {
    pages_->addTab(new QWidget(pages_), QString::fromLatin1(title));
  }
  pages_->setCurrentIndex(std::min(settings_.page, pages_->count() - 1));
  pages_->setAccessibleName(QStringLiteral("Pages"));
  QObject::connect(pages_, &QTabWidget::currentChanged, this, [this] { showPage(); });
}

void MainWindow::makePage(int number) {
  const auto go = [this](const ScreenPlace& place) { Go(place); };
  const auto fill = [&](auto*& page, auto make) {
    if (page != nullptr) return;
    page = make();
    QWidget* tab = pages_->widget(number);
    auto* layout = new QVBoxLayout(tab);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(page);
    tab->setFocusProxy(page);
  };
  switch (number) {
    case kWiringPage:
      return fill(wiring_, [&] { return new WiringPage(go, this); });
    case kChannelsPage:
      return fill(channels_, [&] { return new ChannelsPage(go, this); });
    case kProgramPage:
      return fill(program_, [&] {
        auto* program = new ProgramView(go, this);
        program->OnBlock = [this](ProgramBlock block) { tree_->Select(block); };
        program->Saved(savedBytes_);
        return program;
      });
    case kTablesPage:
      return fill(tables_, [&] {
        return new TablesPage([this]() -> const ProjectStore& { return shownStore(); }, this);
      });
    case kChecksPage:
      return fill(checks_, [&] {
        return new FindingsPage(
            go,
            [this](int line) {
              pages_->setCurrentIndex(kProgramPage);
              program_->Text()->GoTo(line);
            },
            this);
      });
    default:
      return;
  }
}

FindingsPage* MainWindow::Checks() {
  makePage(kChecksPage);
  return checks_;
}

void MainWindow::layOutRow() {
  auto* row = new QScrollArea(this);
  row->setWidget(panels_);
  row->setWidgetResizable(true);
  row->setFrameShape(QFrame::NoFrame);
  row->setFocusPolicy(Qt::NoFocus);
  row->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  const int narrow = panels_->WidthOf(1) + bar;
  const int wide = panels_->WidthOf(2) + bar;
  row->setMinimumWidth(narrow);
  left_->addWidget(row);
  left_->setCollapsible(0, false);
  split_->addWidget(left_);
  split_->addWidget(right_);
  split_->setStretchFactor(1, 1);
  split_->setChildrenCollapsible(false);
  setCentralWidget(split_);

  const QSize wanted(kWidth * fontMetrics().averageCharWidth(),
                     kLines * fontMetrics().lineSpacing());
  resize(wanted.boundedTo(RoomFor(*this)));
  restoreGeometry(settings_.geometry);
  const bool isWide = wide * 100 <= width() * kMaxRowPart;
  const int rowWidth = isWide ? wide : narrow;
  if (!split_->restoreState(settings_.split)) split_->setSizes({rowWidth, width() - rowWidth});
  panels_->Arrange(isWide ? 2 : 1);
}

void MainWindow::layOutRest() {
  auto* column = new QVBoxLayout(right_);
  auto* boxes = new QFormLayout;
  boxes->addRow(QStringLiteral("Ope&rator"), operator_);
  boxes->addRow(QStringLiteral("&Identification"), number_);
  column->addLayout(boxes);
  column->addWidget(notice_);
  column->addWidget(pages_, 1);

  left_->addWidget(tree_);
  left_->setStretchFactor(1, 1);
  // All buttons without scrolling, if that leaves some lines of the tree.
  const int treeHeight = kMinTreeLines * fontMetrics().lineSpacing();
  const int rowHeight = std::min(panels_->sizeHint().height(), height() - treeHeight);
  left_->setSizes({rowHeight, height() - rowHeight});
}

// ---- The menus ----------------------------------------------------------------------------------

QAction* MainWindow::command(QMenu* menu, const QString& text, const QKeySequence& key,
                             std::function<void()> run, int button) {
  QAction* action = menu->addAction(text, this, std::move(run));
  action->setShortcut(key);
  commands_.push_back({action, button});
  return action;
}

void MainWindow::fillFileMenu(QMenu* menu) {
  command(menu, QStringLiteral("&New"), QKeySequence::New, [this] {
    askNew();
  })->setIcon(SystemIcon("new"));
  command(menu, QStringLiteral("&Open..."), QKeySequence::Open, [this] {
    askOpen();
  })->setIcon(SystemIcon("open"));
  recent_ = menu->addMenu(QStringLiteral("Open &recent"));
  commands_.push_back({recent_->menuAction(), -1});
  showRecent();
  menu->addSeparator();
  command(
      menu, QStringLiteral("&Save"), QKeySequence::Save, [this] { save(); }, kSaveButton)
      ->setIcon(SystemIcon("save"));
  command(
      menu, QStringLiteral("Save &as..."), QKeySequence(QStringLiteral("Ctrl+Shift+S")),
      [this] { saveAs(); }, kSaveButton);
  menu->addSeparator();
  command(menu, QStringLiteral("&Compare with..."), {}, [this] { askCompare(); });
  command(menu, QStringLiteral("&Print and export..."), QKeySequence::Print,
          [this] { askPrint(); });
  menu->addSeparator();
  menu->addAction(QStringLiteral("&Quit"), QKeySequence(QStringLiteral("Ctrl+Q")), this,
                  [this] { close(); });
}

void MainWindow::showRecent() {
  recent_->clear();
  int number = 0;
  for (const QString& path : settings_.recent) {
    QString text = path;
    recent_->addAction(QStringLiteral("&%1  %2").arg(++number).arg(
                           text.replace(QStringLiteral("&"), QStringLiteral("&&"))),
                       this, [this, path] { OpenInstead(PathOf(path)); });
  }
  if (number == 0) recent_->addAction(QStringLiteral("No projects yet"))->setEnabled(false);
}

void MainWindow::fillEditMenu(QMenu* menu) {
  undo_ = menu->addAction(QStringLiteral("&Undo"), QKeySequence::Undo, this, [this] { undo(); });
  redo_ = menu->addAction(QStringLiteral("&Redo"), QKeySequence::Redo, this, [this] { redo(); });
  menu->addSeparator();
  menu->addAction(QStringLiteral("&Copy from the page"),
                  QKeySequence(QStringLiteral("Ctrl+Shift+C")), this, [this] { copyFromPage(); });
}

// What is selected on the page, or all of it.
void MainWindow::copyFromPage() {
  QString text;
  const int page = pages_->currentIndex();
  if (page == kSummaryPage) {
    const QTextCursor cursor = summary_->textCursor();
    text = cursor.hasSelection() ? cursor.selection().toPlainText() : summary_->toPlainText();
  } else if (page == kProgramPage) {
    const QTextCursor cursor = program_->Text()->textCursor();
    text =
        cursor.hasSelection() ? cursor.selection().toPlainText() : program_->Text()->toPlainText();
  } else if (page == kTablesPage) {
    text = tables_->AsText();
  } else if (page == kWiringPage) {
    text = wiring_->View()->Picture().Words();
  } else if (page == kChannelsPage) {
    text = channels_->View()->Picture().Words();
  } else {
    for (const CheckLine& line : checks_->Lines()) {
      text += line.text + u'\n' + line.place + QStringLiteral("\n\n");
    }
  }
  QApplication::clipboard()->setText(text);
}

void MainWindow::fillSetupMenu(QMenu* menu) {
  command(menu, QStringLiteral("Sea&rch..."), QKeySequence(QStringLiteral("Ctrl+K")),
          [this] { search(); });
  menu->addSeparator();
  std::size_t panel = 0;
  int number = 0;
  for (const ButtonFace& face : ButtonFaces()) {
    if (face.button >= kSaveAndSendButton) continue;
    if (face.panel != panel) menu->addSeparator();
    panel = face.panel;
    ++number;
    const QString key = number > 10 ? QStringLiteral("Ctrl+Shift+F%1").arg(number - 10)
                                    : QStringLiteral("Ctrl+%1").arg(number % 10);
    QAction* action = command(
        menu, QString::fromLatin1(face.caption) + QStringLiteral("..."), QKeySequence(key),
        [this, &face] { clickWidget(face.button); }, face.button);
    action->setIcon(SystemIcon(face.icon));
    QObject::connect(action, &QAction::hovered, this,
                     [this, &face] { pointAt(*panels_->Button(face.button)); });
  }
}

void MainWindow::fillProgramMenu(QMenu* menu) {
  command(menu, QStringLiteral("&Check"), QKeySequence(Qt::Key_F8), [this] {
    pages_->setCurrentIndex(kChecksPage);
    showPage();
    checks_->setFocus();
  });
  command(
      menu, QStringLiteral("Test c&ompile"), QKeySequence(Qt::Key_F9), [this] { testCompile(); },
      kSaveButton);
  command(
      menu, QStringLiteral("Save and sen&d..."), QKeySequence(QStringLiteral("Ctrl+Shift+D")),
      [this] { saveAndSend(); }, kSaveAndSendButton)
      ->setIcon(SystemIcon("send"));
}

void MainWindow::fillViewMenu(QMenu* menu) {
  QSet<QChar> letters{u'L', u'M'};  // of the commands after the pages
  for (int page = 0; page < pages_->count(); ++page) {
    QAction* action =
        menu->addAction(withLetter(pages_->tabText(page), letters), this, [this, page] {
          pages_->setCurrentIndex(page);
          pages_->currentWidget()->setFocus();
        });
    action->setShortcut(QKeySequence(QStringLiteral("Alt+%1").arg(page + 1)));
    action->setIcon(SystemIcon(pages_->tabText(page).toLower().toLatin1().constData()));
  }
  menu->addSeparator();
  auto* sizes = new QActionGroup(this);
  for (const int percent : kTextSizes) {
    QAction* action = menu->addAction(QStringLiteral("Text size %1 %").arg(percent), this,
                                      [this, percent] { TextSize(percent); });
    action->setCheckable(true);
    action->setData(percent);
    sizes->addAction(action);
  }
  textSizes_ = sizes;
  const auto change = [this](int steps) {
    const auto* at = std::find(kTextSizes.begin(), kTextSizes.end(), settings_.textSize);
    const auto to = at - kTextSizes.begin() + steps;
    if (to >= 0 && to < static_cast<std::ptrdiff_t>(kTextSizes.size())) {
      TextSize(kTextSizes[static_cast<std::size_t>(to)]);
    }
  };
  menu->addAction(QStringLiteral("&Larger text"), QKeySequence::ZoomIn, this,
                  [change] { change(1); });
  menu->addAction(QStringLiteral("S&maller text"), QKeySequence::ZoomOut, this,
                  [change] { change(-1); });
}

void MainWindow::TextSize(int percent) {
  settings_.textSize = percent;
  QFont font = QApplication::font();
  font.setPointSizeF(usualFontSize_ * percent / 100);
  QApplication::setFont(font);
  takeTextSize();
  fitHelpLine();
  showPage();
}

void MainWindow::takeTextSize() {
  for (QAction* action : textSizes_->actions()) {
    if (action->data().toInt() == settings_.textSize) action->setChecked(true);
  }
}

// Its line is there also when it is empty.
void MainWindow::fitHelpLine() {
  helpLine_->setMinimumHeight(QFontMetrics(QApplication::font()).lineSpacing());
}

void MainWindow::fillOptionsMenu(QMenu* menu) {
  options_ = menu;
  for (const OptionScreen& row : kOptionScreens) {
    command(menu, u'&' + FromProject(row.option) + QStringLiteral("..."), {},
            [this, row] { act({}, [&] { session_.ShowOptions(row.option); }); });
  }
  command(menu, QStringLiteral("&Logger server..."), {}, [this] { askServer(); });
}

void MainWindow::PopupOptionsMenu() { options_->popup(QCursor::pos()); }

void MainWindow::askServer() {
  QString text = settings_.server;
  for (;;) {
    bool given = false;
    text = QInputDialog::getText(
               this, QStringLiteral("Logger server"),
               QStringLiteral("Address of the server that sends programs to the logger, as "
                              "HOST:PORT.\nEmpty for none."),
               QLineEdit::Normal, text, &given)
               .trimmed();
    if (!given) return;
    if (text.isEmpty() || ServerOf(text)) break;
    forms_.Beep();
    around_.forms.ShowBox({.title = "LOGGER SERVER",
                           .text = text.toStdString() + " is not an address such as lab-pc:6785.",
                           .icon = platform::Icon::kExclamation});
  }
  takeServer(text);
  rememberWindow();
}

void MainWindow::fillHelpMenu(QMenu* menu) {
  menu->addAction(QStringLiteral("&User guide"), QKeySequence::HelpContents, this,
                  [this] { ShowHelp(); });
  menu->addAction(QStringLiteral("&About Ostrand"), this, [this] { showAbout(); });
}

void MainWindow::ShowHelp() {
  if (help_ == nullptr) help_ = new HelpWindow(this);
  help_->show();
  help_->raise();
  help_->activateWindow();
}

void MainWindow::showAbout() {
  QMessageBox box(QMessageBox::NoIcon, QStringLiteral("About Ostrand"),
                  QStringLiteral("Ostrand %1\n\nMakes the program, the table description and the "
                                 "wiring diagram of a VK7300 data logger from a project.")
                      .arg(FromProject(Ostrand::Version())),
                  QMessageBox::Ok, this);
  box.setIconPixmap(windowIcon().pixmap(3 * fontMetrics().height()));
  box.exec();
}

}  // namespace ostrand::desktop
