#include "main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QStatusBar>
#include <QTabWidget>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>

#include "colors.h"
#include "compare.h"
#include "documents/rich_text.h"
#include "pages/checks_page.h"
#include "pages/program_page.h"
#include "pages/tables_page.h"
#include "platform/surroundings.h"
#include "project_bytes.h"
#include "projectfile/genfile.h"
#include "screens/setup_screens.h"
#include "search.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// ---- The main row -------------------------------------------------------------------------------

constexpr std::array<const char*, 3> kPanels = {"Logger", "Measurements", "Outputs and files"};

struct ButtonRow {
  int button;
  std::size_t panel;
  const char* caption;
};
// Reserved buttons are not shown.
constexpr std::array<ButtonRow, 15> kButtons = {{
    {kConfigurationButton, 0, "&Configuration"},
    {kExecutionButton, 0, "E&xecution intervals"},
    {kPortsButton, 0, "&Ports"},
    {kFlagsButton, 0, "Fla&gs"},
    {kExciteButton, 0, "&Analog outputs"},
    {kThermocoupleButton, 1, "Ther&mocouples"},
    {kVoltageButton, 1, "&Voltages"},
    {kBridgeButton, 1, "&Bridges"},
    {kPulseButton, 1, "P&ulse inputs"},
    {kTK40MButton, 1, "Multiplexers (TK&40M)"},
    {kCanButton, 1, "CA&N items"},
    {kCalcFieldsButton, 1, "Ca&lculated fields"},
    {kTablesButton, 2, "Output &tables"},
    {kSaveAndSendButton, 2, kSaveAndSendCaption.data()},
    {kSaveButton, 2, "&Save"},
}};

// The size of the window at first, in letters of the pages and in lines.
constexpr int kWidth = 120;
constexpr int kLines = 44;

QFont fixedFont() { return QFontDatabase::systemFont(QFontDatabase::FixedFont); }

}  // namespace

MainWindow::MainWindow(ProjectStore& store, const platform::Surroundings& around, QtForms& forms)
    : store_(store),
      forms_(forms),
      row_(new QWidget(this)),
      operator_(new QLineEdit(this)),
      number_(new QLineEdit(this)),
      pages_(new QTabWidget(this)),
      summary_(new QTextEdit(this)),
      program_(new ProgramView([this](const ScreenPlace& place) { Go(place); }, this)),
      tables_(new TablesPage([this]() -> const ProjectStore& { return store_; }, this)),
      checks_(new FindingsPage([this](const ScreenPlace& place) { Go(place); },
                               [this](int line) {
                                 pages_->setCurrentWidget(program_);
                                 program_->Text()->GoTo(line);
                               },
                               this)),
      session_(store, around, *this),
      screens_(forms, this) {
  forms_.Main(this);
  auto* help = new QLabel(this);
  help->setTextFormat(Qt::PlainText);
  help->setAccessibleName(QStringLiteral("Help"));
  statusBar()->addWidget(help, 1);
  forms_.AddHelpLine(help);

  ConnectSetupScreens(session_, screens_);
  screens_.OnOpen = [this](bool open) { screenOpen(open); };
  buildMainRow();
  buildBoxes();
  buildPages();
  buildMenus();

  auto* left = new QScrollArea(this);
  left->setWidget(row_);
  left->setWidgetResizable(true);
  left->setFrameShape(QFrame::NoFrame);
  left->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  left->setMinimumWidth(row_->sizeHint().width() +
                        style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  auto* right = new QVBoxLayout;
  auto* boxes = new QFormLayout;
  boxes->addRow(QStringLiteral("&Operator"), operator_);
  boxes->addRow(QStringLiteral("&Identification"), number_);
  right->addLayout(boxes);
  right->addWidget(pages_, 1);
  auto* center = new QWidget(this);
  auto* columns = new QHBoxLayout(center);
  columns->addWidget(left);
  columns->addLayout(right, 1);
  setCentralWidget(center);
  const QSize wanted(kWidth * fontMetrics().averageCharWidth(),
                     kLines * fontMetrics().lineSpacing());
  resize(wanted.boundedTo(RoomFor(*this)));
  ready_ = true;
  saved_ = BytesToSave(session_, store_);
  ColorsChanged();
  showAll();
}

MainWindow::~MainWindow() { forms_.Main(nullptr); }

void MainWindow::buildMainRow() {
  auto* column = new QVBoxLayout(row_);
  std::array<QVBoxLayout*, kPanels.size()> panels{};
  for (std::size_t panel = 0; panel < kPanels.size(); ++panel) {
    auto* box = new QGroupBox(QString::fromLatin1(kPanels[panel]), row_);
    panels[panel] = new QVBoxLayout(box);
    column->addWidget(box);
  }
  column->addStretch();
  for (const ButtonRow& row : kButtons) {
    auto* button = new QPushButton(QString::fromLatin1(row.caption), row_);
    button->setAccessibleName(PlainCaption(row.caption));
    button->setAccessibleDescription(FromProject(MainButtonHelp(row.button)));
    button->setToolTip(button->accessibleDescription());
    button->installEventFilter(this);
    panels[row.panel]->addWidget(button);
    buttons_[static_cast<std::size_t>(row.button)] = button;
    QObject::connect(button, &QPushButton::clicked, this, [this, row] { click(row.button); });
  }
}

void MainWindow::buildBoxes() {
  const auto take = [this](QLineEdit* box, void (Ostrand::*set)(std::string_view),
                           const std::string& (Ostrand::*get)() const, const char* name) {
    box->setMaxLength(static_cast<int>(Ostrand::kMaxBoxLetters));
    box->setAccessibleName(QString::fromLatin1(name));
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
      showTitle();
    });
  };
  take(operator_, &Ostrand::txtOper, &Ostrand::txtOper, "Operator");
  take(number_, &Ostrand::txtIDNum, &Ostrand::txtIDNum, "Identification");
}

void MainWindow::buildPages() {
  summary_->setReadOnly(true);
  summary_->setLineWrapMode(QTextEdit::NoWrap);
  summary_->setFont(fixedFont());
  const auto add = [this](QWidget* page, const char* name) {
    page->setAccessibleName(QString::fromLatin1(name));
    pages_->addTab(page, QString::fromLatin1(name));
  };
  add(summary_, "Summary");
  add(program_, "Program");
  add(tables_, "Tables");
  add(checks_, "Checks");
  QObject::connect(pages_, &QTabWidget::currentChanged, this, [this] { showPage(); });
}

void MainWindow::buildMenus() {
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  file->addAction(QStringLiteral("&New"), QKeySequence::New, this, [this] { askNew(); });
  file->addAction(QStringLiteral("&Open..."), QKeySequence::Open, this, [this] { askOpen(); });
  actions_[kSaveButton] = file->addAction(QStringLiteral("&Save..."), QKeySequence::Save, this,
                                          [this] { click(kSaveButton); });
  file->addAction(QStringLiteral("&Compare with..."), this, [this] { askCompare(); });
  file->addSeparator();
  file->addAction(QStringLiteral("&Quit"), QKeySequence(QStringLiteral("Ctrl+Q")), this,
                  [this] { close(); });
  QMenu* setup = menuBar()->addMenu(QStringLiteral("&Setup"));
  setup->addAction(QStringLiteral("&Search..."), QKeySequence(QStringLiteral("Ctrl+K")), this,
                   [this] { search(); });
  setup->addSeparator();
  std::size_t panel = 0;
  for (const ButtonRow& row : kButtons) {
    if (row.button >= kSaveAndSendButton) continue;
    if (row.panel != panel) setup->addSeparator();
    panel = row.panel;
    const QString caption = QString::fromLatin1(row.caption) + QStringLiteral("...");
    actions_[static_cast<std::size_t>(row.button)] =
        setup->addAction(caption, this, [this, row] { click(row.button); });
  }
  QMenu* options = menuBar()->addMenu(QStringLiteral("O&ptions"));
  for (const OptionScreen& row : kOptionScreens) {
    options->addAction(FromProject(row.option) + QStringLiteral("..."), this,
                       [this, row] { session_.ShowOptions(row.option); });
  }
}

QPushButton* MainWindow::ButtonOf(int button) const {
  return buttons_[static_cast<std::size_t>(button)];
}

// ---- Projects -----------------------------------------------------------------------------------

bool MainWindow::Open(const std::string& path) {
  bool cancelled = true;
  session_.OpenFile(path, cancelled);
  if (cancelled) return false;
  saved_ = BytesToSave(session_, store_);
  showAll();
  return true;
}

void MainWindow::StartNew() {
  if (!session_.NewProject(session_.GenFilePath() + "NoName.VKG")) return;
  saved_ = BytesToSave(session_, store_);
  showAll();
}

// The present project is saved first, if the user wants that.
bool MainWindow::mayLeaveProject() {
  bool cancelled = false;
  if (HasEdits()) session_.AskToSaveAll(false, cancelled);
  return !cancelled;
}

void MainWindow::askOpen() {
  if (mayLeaveProject()) Open({});
}

void MainWindow::askNew() {
  if (mayLeaveProject()) StartNew();
}

bool MainWindow::HasEdits() const { return BytesToSave(session_, store_) != saved_; }

// While a screen is open, this window can be looked at, scrolled and copied from.
void MainWindow::screenOpen(bool open) {
  for (const QAction* menu : menuBar()->actions()) {
    for (QAction* action : menu->menu()->actions()) action->setEnabled(!open);
  }
  row_->setEnabled(!open);
  operator_->setReadOnly(open);
  number_->setReadOnly(open);
  if (!open) showButtons();
}

void MainWindow::click(int button) {
  QPushButton* widget = ButtonOf(button);
  session_.Click(button);
  if (button >= kSaveAndSendButton && session_.Saved()) saved_ = BytesToSave(session_, store_);
  showAll();
  if (widget->isEnabled()) widget->setFocus(Qt::OtherFocusReason);
}

void MainWindow::Go(const ScreenPlace& place) {
  screens_.Guide(place, [&] { OpenFirstScreen(session_, place); });
  showAll();
}

void MainWindow::search() {
  SearchWindow window(BytesToSave(session_, store_), this);
  if (window.exec() == QDialog::Accepted) Go(window.Chosen());
}

void MainWindow::askCompare() {
  const std::optional<std::string> path = forms_.AskOpen({.title = "Compare with",
                                                          .filter = "(*.VKG)|*.VKG|(All Files)|*.*",
                                                          .defaultExtension = "VKG",
                                                          .initialFolder = session_.GenFilePath(),
                                                          .fileName = {}});
  if (!path) return;
  const auto bytes = ORVUS_GENFILE::ReadProjectFile(session_.Around().files, *path);
  if (!bytes || !bytes.Value()) {
    QMessageBox::warning(this, QStringLiteral("Compare with"),
                         FromSystem(bytes ? *path + ": No such file" : bytes.ErrorText()));
    return;
  }
  auto* window = new CompareWindow(
      session_, BytesToSave(session_, store_), *bytes.Value(),
      QFileInfo(FromSystem(*path)).fileName(), [this](const ScreenPlace& place) { Go(place); },
      this);
  window->show();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (ScreenWindow* screen = OpenScreen()) {
    screen->activateWindow();
    return event->ignore();
  }
  if (!ended_) {
    i16 cancelled = kFalse;
    if (!HasEdits()) session_.ForgetEdits();  // a screen that was only looked at
    session_.CloseSession(false, cancelled);
  }
  event->setAccepted(ended_);
}

// ---- What the session reports -------------------------------------------------------------------

void MainWindow::NewFile(const std::string&) {
  if (ready_) showTitle();
}

void MainWindow::DirtyChanged(bool dirty) {
  if (!ready_) return;
  if (!dirty) saved_ = BytesToSave(session_, store_);
  showTitle();
}

void MainWindow::ButtonsChanged() {
  if (ready_) showButtons();
}

void MainWindow::SummaryDrawn() {
  if (ready_) showPage();
}

void MainWindow::ColorsChanged() {
  if (!ready_) return;
  const Appearance& colors = session_.Colors();
  const QPalette usual = QApplication::palette();
  QPalette form = usual;
  form.setColor(QPalette::Window, ColorOf(colors.FormBack, usual));
  centralWidget()->setPalette(form);
  centralWidget()->setAutoFillBackground(true);
  QPalette panel = usual;
  panel.setColor(QPalette::Window, ColorOf(colors.PanelBack, usual));
  panel.setColor(QPalette::WindowText, ColorOf(colors.PanelText, usual));
  row_->setPalette(panel);
  row_->setAutoFillBackground(true);
  QPalette summary = usual;
  summary.setColor(QPalette::Base, ColorOf(colors.SummaryBack, usual));
  summary.setColor(QPalette::Text, ColorOf(colors.SummaryText, usual));
  summary_->setPalette(summary);
  showPage();
}

// ---- What is shown ------------------------------------------------------------------------------

void MainWindow::showAll() {
  operator_->setText(FromProject(session_.txtOper()));
  number_->setText(FromProject(session_.txtIDNum()));
  showTitle();
  showButtons();
  showPage();
}

void MainWindow::showTitle() {
  setWindowTitle(FromSystem(session_.BaseName()) + QStringLiteral("[*] - Ostrand"));
  setWindowModified(HasEdits());
}

void MainWindow::showButtons() {
  for (const ButtonRow& row : kButtons) {
    const bool enabled = session_.MainButtons().Enabled(row.button);
    ButtonOf(row.button)->setEnabled(enabled);
    QAction* action = actions_[static_cast<std::size_t>(row.button)];
    if (action != nullptr) action->setEnabled(enabled);
  }
}

void MainWindow::showPage() {
  const QWidget* page = pages_->currentWidget();
  if (page == summary_) showSummary();
  if (page == program_) {
    program_->Saved(saved_);
    program_->Show(session_, store_);
  }
  if (page == tables_) tables_->Show();
  if (page == checks_) checks_->Show(session_, store_);
}

void MainWindow::showSummary() {
  const StyledText& text = session_.SummaryBox();
  const std::string all = text.Text();
  summary_->clear();
  QTextCursor cursor(summary_->document());
  std::size_t at = 0;
  for (const StyledText::Run& run : text.Runs()) {
    QTextCharFormat look;
    look.setFont(fixedFont());
    look.setForeground(ColorOf(run.look.colour, summary_->palette()));
    look.setFontUnderline(run.look.underline);
    QString part = FromProject(std::string_view(all).substr(at, run.length));
    cursor.insertText(part.remove(u'\r'), look);
    at += run.length;
  }
  summary_->moveCursor(QTextCursor::Start);
}

// ---- The keyboard and the pointer ---------------------------------------------------------------

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  const bool pointed = event->type() == QEvent::Enter;
  const bool focused = event->type() == QEvent::FocusIn;
  if (pointed || focused) {
    for (const ButtonRow& row : kButtons) {
      if (watched == ButtonOf(row.button)) session_.PointAt(row.button);
    }
    if (focused && watched == operator_) session_.SetFocus(Focus::kOper);
    if (focused && watched == number_) session_.SetFocus(Focus::kIDNum);
    if (focused && (watched == operator_ || watched == number_)) {
      QMetaObject::invokeMethod(static_cast<QLineEdit*>(watched), &QLineEdit::selectAll,
                                Qt::QueuedConnection);
    }
  } else if (event->type() == QEvent::KeyPress && (watched == operator_ || watched == number_)) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Down) {
      (watched == operator_ ? static_cast<QWidget*>(number_) : ButtonOf(kConfigurationButton))
          ->setFocus(Qt::TabFocusReason);
      return true;
    }
    if (key == Qt::Key_Up) {
      operator_->setFocus(Qt::TabFocusReason);
      return true;
    }
  }
  return QMainWindow::eventFilter(watched, event);
}

}  // namespace ostrand::desktop
