#include "search.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>
#include <optional>

#include "screens/setup_screens.h"
#include "text/strings.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

constexpr std::size_t kMaxResults = 200;
constexpr int kLetters = 80;  // width
constexpr int kLines = 22;    // height

}  // namespace

std::vector<ProjectIndex::NamedScreen> NamedScreens() {
  std::vector<ProjectIndex::NamedScreen> screens = {{"frmConfig", "Configuration"},
                                                    {"frmExecute", "Execution intervals"},
                                                    {"frmOutInt", "Output tables"},
                                                    {"frmTempBlock", "Thermocouples"},
                                                    {"frmVoltBlock", "Voltages"},
                                                    {"frmBrdgBlock", "Bridges"},
                                                    {"frmPulseBlock", "Pulse inputs"},
                                                    {"frmTK40MBlock", "Multiplexers (TK40M)"},
                                                    {"frmCanBus", "CAN items"},
                                                    {"frmCalculated", "Calculated fields"},
                                                    {"frmPorts", "Ports"},
                                                    {"frmFlags", "Flags"},
                                                    {"frmExcite", "Analog outputs"}};
  for (const OptionScreen& row : kOptionScreens) screens.push_back({row.name, row.option});
  return screens;
}

SearchWindow::SearchWindow(const std::string& project, QWidget* parent)
    : QDialog(parent),
      index_(project, NamedScreens()),
      box_(new QLineEdit(this)),
      list_(new QListWidget(this)) {
  setWindowTitle(QStringLiteral("Search"));
  setWindowModality(Qt::WindowModal);
  box_->setPlaceholderText(QStringLiteral("Sensor, table, flag, setting or screen"));
  box_->setAccessibleName(QStringLiteral("Search"));
  box_->setClearButtonEnabled(true);
  box_->installEventFilter(this);
  list_->setAccessibleName(QStringLiteral("Found"));
  list_->setUniformItemSizes(true);
  list_->setFocusPolicy(Qt::NoFocus);  // the keys of the box move in it
  auto* help = new QLabel(QStringLiteral("Enter opens the selected screen."), this);
  auto* column = new QVBoxLayout(this);
  column->addWidget(box_);
  column->addWidget(list_, 1);
  column->addWidget(help);
  QObject::connect(box_, &QLineEdit::textChanged, this, [this] { find(); });
  QObject::connect(list_, &QListWidget::itemActivated, this, [this] { accept(); });
  QObject::connect(list_, &QListWidget::itemDoubleClicked, this, [this] { accept(); });
  resize(kLetters * fontMetrics().averageCharWidth(), kLines * fontMetrics().lineSpacing());
}

void SearchWindow::find() {
  list_->clear();
  // A letter that no project can hold is in no entry either.
  const std::optional<std::string> query = ToProject(box_->text());
  found_ = query ? index_.Find(*query, kMaxResults) : std::vector<SearchEntry>();
  for (const SearchEntry& entry : found_) {
    list_->addItem(FromProject(entry.text) + QStringLiteral("  \u2013  ") +
                   FromProject(entry.detail));
  }
  if (!found_.empty()) list_->setCurrentRow(0);
}

void SearchWindow::accept() {
  const int row = list_->currentRow();
  if (row < 0) return QApplication::beep();
  chosen_ = PlaceOf(found_[static_cast<std::size_t>(row)]);
  QDialog::accept();
}

bool SearchWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  auto* key = static_cast<QKeyEvent*>(event);
  switch (key->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      QApplication::sendEvent(list_, event);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      accept();
      return true;
    default:
      return QDialog::eventFilter(watched, event);
  }
}

}  // namespace ostrand::desktop
