#include "pages/program_page.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSplitter>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include "places.h"
#include "programcheck/program_check.h"
#include "text/codepage.h"
#include "text/strings.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

constexpr int kMaxFaultLines = 6;  // shown without scrolling

// Of the head; they differ in every program.
bool isMoment(std::string_view line) {
  return line.starts_with('\'') && (line.find("Date written:") != std::string_view::npos ||
                                    line.find("Time written:") != std::string_view::npos);
}

std::vector<std::string_view> comparedLines(std::string_view program) {
  std::vector<std::string_view> lines = LinesOf(program);
  for (std::string_view& line : lines) {
    if (isMoment(line)) line = {};
  }
  return lines;
}

QToolButton* toolButton(QWidget* parent, const char* text, const char* name) {
  auto* button = new QToolButton(parent);
  button->setText(QString::fromLatin1(text));
  button->setToolTip(QString::fromLatin1(name));
  button->setAccessibleName(QString::fromLatin1(name));
  button->setAutoRaise(true);
  return button;
}

}  // namespace

std::vector<NamedBlock> NamedBlocksOf(const ProjectStore& store) {
  std::vector<NamedBlock> named;
  for (int i = 1; i <= store.Can.CanCount; ++i) {
    named.push_back({store.Can.Item[i].Name, {'C', i}});
  }
  for (int f = 1; f <= store.CalcFields.CalcFieldCount; ++f) {
    named.push_back({std::string(Trim(store.CalcFields.Field[f].CalcField[1])), {'F', f}});
  }
  return named;
}

std::vector<LineChange> ProgramChanges(std::string_view before, std::string_view after) {
  return LineChanges(comparedLines(before), comparedLines(after));
}

std::map<int, LineMark> MarksOf(const std::vector<LineChange>& changes, int lines) {
  std::map<int, LineMark> marks;
  for (const LineChange& change : changes) {
    for (int at = 0; at < change.afterCount; ++at) {
      marks[change.after + at + 1] =
          at < change.beforeCount ? LineMark::kChanged : LineMark::kAdded;
    }
    if (change.afterCount > 0 || lines == 0) continue;
    marks.try_emplace(std::min(change.after + 1, lines), LineMark::kRemoved);
  }
  return marks;
}

ProgramView::ProgramView(std::function<void(const ScreenPlace&)> open, QWidget* parent)
    : QWidget(parent),
      open_(std::move(open)),
      text_(new ProgramText(this)),
      sections_(new QListWidget(this)),
      faults_(new QListWidget(this)),
      findBar_(new QWidget(this)),
      find_(new QLineEdit(findBar_)),
      found_(new QLabel(findBar_)) {
  text_->setAccessibleName(QStringLiteral("Program"));
  sections_->setAccessibleName(QStringLiteral("Sections of the program"));
  faults_->setAccessibleName(QStringLiteral("Faults of the program"));
  faults_->setWordWrap(true);
  sections_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  layOut();
  const auto goTo = [this](const QListWidgetItem* item) {
    if (item == nullptr || item->data(Qt::UserRole).toInt() == 0) return;
    text_->GoTo(item->data(Qt::UserRole).toInt());
  };
  QObject::connect(sections_, &QListWidget::currentItemChanged, this, goTo);
  QObject::connect(sections_, &QListWidget::itemClicked, this, goTo);
  QObject::connect(faults_, &QListWidget::currentItemChanged, this, goTo);
  QObject::connect(faults_, &QListWidget::itemClicked, this, goTo);
  QObject::connect(text_, &QPlainTextEdit::cursorPositionChanged, this, [this] { cursorMoved(); });
  text_->viewport()->installEventFilter(this);
  auto* find = new QAction(this);
  find->setShortcut(QKeySequence::Find);
  find->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  addAction(find);
  QObject::connect(find, &QAction::triggered, this, [this] { openFind(true); });
  auto* next = new QAction(this);
  next->setShortcut(QKeySequence::FindNext);
  next->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  addAction(next);
  QObject::connect(next, &QAction::triggered, this, [this] { search(false); });
}

void ProgramView::layOut() {
  auto* bar = new QHBoxLayout(findBar_);
  bar->setContentsMargins(0, 0, 0, 0);
  auto* caption = new QLabel(QStringLiteral("&Find"), findBar_);
  caption->setBuddy(find_);
  find_->setAccessibleName(QStringLiteral("Find"));
  find_->installEventFilter(this);
  QToolButton* before = toolButton(findBar_, "Previous", "Find the previous place (Shift+Enter)");
  QToolButton* next = toolButton(findBar_, "Next", "Find the next place (Enter)");
  QToolButton* close = toolButton(findBar_, "Close", "Close the search (Escape)");
  bar->addWidget(caption);
  bar->addWidget(find_, 1);
  for (QWidget* widget : {static_cast<QWidget*>(before), static_cast<QWidget*>(next),
                          static_cast<QWidget*>(found_), static_cast<QWidget*>(close)}) {
    bar->addWidget(widget);
  }
  QObject::connect(before, &QToolButton::clicked, this, [this] { search(true); });
  QObject::connect(next, &QToolButton::clicked, this, [this] { search(false); });
  QObject::connect(close, &QToolButton::clicked, this, [this] { openFind(false); });
  findBar_->hide();
  faults_->hide();

  auto* right = new QWidget(this);
  auto* column = new QVBoxLayout(right);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(text_, 1);
  column->addWidget(findBar_);
  column->addWidget(faults_);
  auto* split = new QSplitter(Qt::Horizontal, this);
  split->addWidget(sections_);
  split->addWidget(right);
  split->setStretchFactor(0, 0);
  split->setStretchFactor(1, 1);
  // The longest title, in bold.
  QFont bold = sections_->font();
  bold.setBold(true);
  const int width =
      QFontMetrics(bold).horizontalAdvance(QStringLiteral("ALIASES & OTHER VARIABLES  ")) +
      style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  sections_->setMinimumWidth(width);
  split->setSizes({width, 3 * width});
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->addWidget(split);
  setFocusProxy(text_);
}

void ProgramView::Saved(const std::string& project) {
  if (project == saved_) return;
  saved_ = project;
  savedProgram_.reset();
}

void ProgramView::Show(const Ostrand& session, const ProjectStore& store) {
  const ProgramPreview preview = ProgramOf(session, store);
  if (preview.text == text_->Program() && outline_ && savedProgram_) return;
  text_->Program(preview.text);
  outline_.emplace(Windows1252FromUtf8(preview.text), NamedBlocksOf(store));
  showSections();
  showFaults(preview);
  showChanges(session);
  cursorMoved();
}

void ProgramView::showSections() {
  QStringList titles;
  for (const ProgramSection& section : outline_->Sections()) {
    titles += QString(section.level * 3, u' ') + FromProject(section.title);
  }
  const QSignalBlocker quiet(sections_);
  const int selected = sections_->currentRow();
  sections_->clear();
  sections_->addItems(titles);
  for (int row = 0; row < sections_->count(); ++row) {
    const ProgramSection& section = outline_->Sections()[static_cast<std::size_t>(row)];
    sections_->item(row)->setData(Qt::UserRole, section.line);
    sections_->item(row)->setToolTip(FromProject(section.title));
    QFont font = sections_->font();
    font.setBold(section.level == 0);
    sections_->item(row)->setFont(font);
  }
  if (selected >= 0 && selected < sections_->count()) sections_->setCurrentRow(selected);
}

void ProgramView::showFaults(const ProgramPreview& preview) {
  const QSignalBlocker quiet(faults_);
  faults_->clear();
  std::vector<ProgramText::Fault> marked;
  for (const std::string& fault : preview.faults) {
    faults_->addItem(QStringLiteral("The program is not complete: ") +
                     QString::fromStdString(fault));
  }
  for (const ProgramFinding& finding : CheckProgram(Windows1252FromUtf8(preview.text))) {
    const QString text = FromProject(finding.text);
    auto* item = new QListWidgetItem(QStringLiteral("Line %1: ").arg(finding.line) + text, faults_);
    item->setData(Qt::UserRole, finding.line);
    marked.push_back({finding.line, FromProject(finding.name), text});
  }
  text_->Faults(std::move(marked));
  faults_->setVisible(faults_->count() > 0);
  const int lines = std::min(faults_->count(), kMaxFaultLines) + 1;
  faults_->setMaximumHeight(lines * faults_->fontMetrics().lineSpacing() * 3 / 2);
}

void ProgramView::showChanges(const Ostrand& session) {
  if (!savedProgram_) savedProgram_ = saved_.empty() ? "" : ProgramOfFile(session, saved_).text;
  if (saved_.empty()) return text_->Marks({});  // there is nothing that it could differ from
  text_->Marks(MarksOf(ProgramChanges(*savedProgram_, text_->Program()),
                       static_cast<int>(LinesOf(text_->Program()).size())));
}

// ---- From a block to its lines and back ---------------------------------------------------------

void ProgramView::ShowBlock(ProgramBlock block) {
  if (!outline_) return;
  const std::vector<int> lines = outline_->LinesOfBlock(block);
  block_ = lines.empty() ? ProgramBlock{} : block;  // so that the cursor does not report it back
  text_->Highlighted(lines);
  if (!lines.empty()) text_->GoTo(lines.front());
}

void ProgramView::cursorMoved() {
  if (!outline_) return;
  const ProgramBlock block = outline_->BlockOfLine(text_->Line());
  if (block == block_) return;
  block_ = block;
  text_->Highlighted(block.kind == 0 ? std::vector<int>() : outline_->LinesOfBlock(block));
  OnBlock(block);
}

// ---- Search -------------------------------------------------------------------------------------

void ProgramView::openFind(bool open) {
  findBar_->setVisible(open);
  if (!open) return text_->setFocus(Qt::OtherFocusReason);
  const QString selected = text_->textCursor().selectedText();
  if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator)) {
    find_->setText(selected);
  }
  find_->setFocus(Qt::ShortcutFocusReason);
  find_->selectAll();
}

void ProgramView::search(bool backward) {
  if (find_->text().isEmpty()) return openFind(true);
  const bool found = text_->Find(find_->text(), backward);
  found_->setText(found ? QString() : QStringLiteral("Not found"));
}

bool ProgramView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == find_ && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Escape) {
      openFind(false);
      return true;
    }
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
      search((key->modifiers() & Qt::ShiftModifier) != 0);
      return true;
    }
  }
  if (watched == text_->viewport() && event->type() == QEvent::MouseButtonDblClick) {
    const ScreenPlace place = PlaceOfBlock(block_);
    if (!place.steps.empty()) {
      open_(place);
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace ostrand::desktop
