#include "compare.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "pages/program_page.h"
#include "project_bytes.h"
#include "screen_window.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

constexpr int kLetters = 140;  // width
constexpr int kLines = 44;     // height

enum Column { kPlace, kSetting, kPresent, kOther, kColumns };

// As this version writes the project, so that only settings differ.
std::string upToDate(const std::string& project, ORVUS_GENFILE::ReadReport* report = nullptr) {
  return BytesOfStore(*StoreOf(project, report));
}

QString countText(std::size_t count, const QString& name) {
  if (count == 0) return QStringLiteral("The settings are the same as those of %1.").arg(name);
  if (count == 1) return QStringLiteral("One difference from %1").arg(name);
  return QStringLiteral("%1 differences from %2").arg(count).arg(name);
}

}  // namespace

// ---- Programs -----------------------------------------------------------------------------------

SideBySide ProgramsSideBySide(std::string_view before, std::string_view after) {
  const std::vector<std::string_view> old = LinesOf(before);
  const std::vector<std::string_view> now = LinesOf(after);
  SideBySide sides;
  int line = 0;
  const auto put = [](SideBySide::Side& side, const std::vector<std::string_view>& lines, int at,
                      bool isThere) {
    if (isThere) side.text += lines[static_cast<std::size_t>(at)];
    side.text += '\n';
    side.numbers.push_back(isThere ? at + 1 : 0);
  };
  int oldAt = 0;
  int nowAt = 0;
  const auto putEqual = [&](int end) {
    for (; oldAt < end; ++oldAt, ++nowAt, ++line) {
      put(sides.before, old, oldAt, true);
      put(sides.after, now, nowAt, true);
    }
  };
  for (const LineChange& change : ProgramChanges(before, after)) {
    putEqual(change.before);
    sides.changes.push_back(line + 1);
    const int common = std::min(change.beforeCount, change.afterCount);
    for (int at = 0; at < std::max(change.beforeCount, change.afterCount); ++at) {
      ++line;
      const bool inBoth = at < common;
      put(sides.before, old, change.before + at, at < change.beforeCount);
      put(sides.after, now, change.after + at, at < change.afterCount);
      if (at < change.beforeCount) {
        sides.before.marks[line] = inBoth ? LineMark::kChanged : LineMark::kRemoved;
      }
      if (at < change.afterCount) {
        sides.after.marks[line] = inBoth ? LineMark::kChanged : LineMark::kAdded;
      }
    }
    oldAt = change.before + change.beforeCount;
    nowAt = change.after + change.afterCount;
  }
  putEqual(static_cast<int>(old.size()));
  return sides;
}

// ---- The window ---------------------------------------------------------------------------------

CompareWindow::CompareWindow(const Ostrand& session, const std::string& present,
                             const std::string& other, const QString& name,
                             std::function<void(const ScreenPlace&)> open, QWidget* parent)
    : QDialog(parent),
      open_(std::move(open)),
      summary_(new QLabel(this)),
      list_(new QTreeWidget(this)),
      present_(new ProgramText(this)),
      other_(new ProgramText(this)) {
  setWindowTitle(QStringLiteral("Compare with ") + name);
  setAttribute(Qt::WA_DeleteOnClose);
  const std::string now = upToDate(present);
  ORVUS_GENFILE::ReadReport report;
  const std::string then = upToDate(other, &report);
  differences_ = DifferencesOf(then, now);
  summary_->setTextFormat(Qt::PlainText);
  QString summary = countText(differences_.size(), name);
  if (report.skipped > 0) {
    summary += QStringLiteral("\nNot read from %1: ").arg(name) +
               FromSystem(ORVUS_GENFILE::SkippedText(report));
  }
  summary_->setText(summary);
  summary_->setWordWrap(true);
  layOut(name);
  fillList();
  fillPrograms(session, now, then);
}

void CompareWindow::layOut(const QString& name) {
  list_->setAccessibleName(QStringLiteral("Differences"));
  list_->setColumnCount(kColumns);
  list_->setHeaderLabels(
      {QStringLiteral("Place"), QStringLiteral("Setting"), QStringLiteral("This project"), name});
  list_->setRootIsDecorated(false);
  list_->setAlternatingRowColors(true);
  list_->setUniformRowHeights(true);
  list_->setToolTip(
      QStringLiteral("Double-click a difference, or press Enter, to open its screen."));
  QObject::connect(list_, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
    const auto row = static_cast<std::size_t>(list_->indexOfTopLevelItem(item));
    const Difference& difference = differences_[row];
    const ScreenPlace place = PlaceOfKey(difference.section, difference.key).screen;
    if (!place.steps.empty() && difference.change != Change::kRemoved) open_(place);
  });

  auto* tabs = new QTabWidget(this);
  tabs->addTab(list_, QStringLiteral("&Settings"));
  tabs->addTab(programsPage(name), QStringLiteral("&Program"));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  QObject::connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* all = new QVBoxLayout(this);
  all->addWidget(summary_);
  all->addWidget(tabs, 1);
  all->addWidget(buttons);
  const QSize wanted(kLetters * fontMetrics().averageCharWidth(),
                     kLines * fontMetrics().lineSpacing());
  resize(wanted.boundedTo(RoomFor(*this)));
}

QWidget* CompareWindow::programsPage(const QString& name) {
  auto* programs = new QWidget(this);
  auto* split = new QSplitter(Qt::Horizontal, programs);
  const auto side = [&](ProgramText* text, const QString& title) {
    auto* half = new QWidget(split);
    auto* column = new QVBoxLayout(half);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new QLabel(title, half));
    column->addWidget(text, 1);
    text->setAccessibleName(QStringLiteral("Program of ") + title);
    split->addWidget(half);
  };
  side(present_, QStringLiteral("This project"));
  side(other_, name);
  // They scroll together.
  const auto follow = [](const QScrollBar* from, QScrollBar* to) {
    QObject::connect(from, &QScrollBar::valueChanged, to, &QScrollBar::setValue);
  };
  follow(present_->verticalScrollBar(), other_->verticalScrollBar());
  follow(other_->verticalScrollBar(), present_->verticalScrollBar());
  follow(present_->horizontalScrollBar(), other_->horizontalScrollBar());
  follow(other_->horizontalScrollBar(), present_->horizontalScrollBar());
  auto* before = new QPushButton(QStringLiteral("&Previous change"), programs);
  auto* next = new QPushButton(QStringLiteral("&Next change"), programs);
  QObject::connect(before, &QPushButton::clicked, this, [this] { nextChange(true); });
  QObject::connect(next, &QPushButton::clicked, this, [this] { nextChange(false); });
  auto* moves = new QHBoxLayout;
  moves->addStretch();
  moves->addWidget(before);
  moves->addWidget(next);
  auto* column = new QVBoxLayout(programs);
  column->addWidget(split, 1);
  column->addLayout(moves);
  return programs;
}

void CompareWindow::fillList() {
  QList<QTreeWidgetItem*> items;
  for (const Difference& difference : differences_) {
    QStringList fields = {FromProject(difference.place), FromProject(difference.words),
                          FromProject(difference.isInWords), FromProject(difference.wasInWords)};
    if (difference.change == Change::kAdded) fields[kPresent] = QStringLiteral("only here");
    if (difference.change == Change::kRemoved) fields[kOther] = QStringLiteral("only here");
    items.push_back(new QTreeWidgetItem(fields));
  }
  list_->addTopLevelItems(items);
  const int letter = fontMetrics().averageCharWidth();
  list_->header()->resizeSection(kPlace, 34 * letter);
  list_->header()->resizeSection(kSetting, 34 * letter);
  list_->header()->resizeSection(kPresent, 30 * letter);
}

void CompareWindow::fillPrograms(const Ostrand& session, const std::string& present,
                                 const std::string& other) {
  SideBySide sides =
      ProgramsSideBySide(ProgramOfFile(session, other).text, ProgramOfFile(session, present).text);
  const auto fill = [](ProgramText* text, SideBySide::Side side) {
    text->Program(side.text);
    text->Numbers(std::move(side.numbers));
    text->Marks(std::move(side.marks));
  };
  fill(other_, std::move(sides.before));
  fill(present_, std::move(sides.after));
  changes_ = std::move(sides.changes);
}

void CompareWindow::nextChange(bool backward) {
  if (changes_.empty()) return;
  const int line = present_->Line();
  auto next = changes_.begin();
  if (backward) {
    next = std::lower_bound(changes_.begin(), changes_.end(), line);
    next = next == changes_.begin() ? std::prev(changes_.end()) : std::prev(next);
  } else {
    next = std::upper_bound(changes_.begin(), changes_.end(), line);
    if (next == changes_.end()) next = changes_.begin();
  }
  present_->GoTo(*next);
  other_->GoTo(*next);
}

}  // namespace ostrand::desktop
