#include "pages/checks_page.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStyle>
#include <QStyledItemDelegate>
#include <algorithm>
#include <array>

#include "generator/preview.h"
#include "lint/findings.h"
#include "texts.h"
#include "verify/check_context.h"

namespace ostrand::desktop {
namespace {

struct SeverityRow {
  const char* name;
  QStyle::StandardPixmap icon;
};
// By Severity.
constexpr std::array<SeverityRow, 4> kSeverities = {{
    {"Prevents saving", QStyle::SP_MessageBoxCritical},
    {"Warning", QStyle::SP_MessageBoxWarning},
    {"Notice", QStyle::SP_MessageBoxInformation},
    {"", QStyle::SP_DialogApplyButton},
}};

enum Column { kSeverity, kFinding, kPlace, kColumns };

// As high as the text is when it is wrapped in its column.
class WrappedText final : public QStyledItemDelegate {
 public:
  explicit WrappedText(QTreeWidget* tree) : QStyledItemDelegate(tree), tree_(tree) {}

  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                               const QModelIndex& index) const override {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    const int margin =
        tree_->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, tree_) + 1;
    const int icon = index.column() == kSeverity ? option.decorationSize.width() + margin : 0;
    const QRect room(0, 0, tree_->columnWidth(index.column()) - 2 * margin - icon, QWIDGETSIZE_MAX);
    const QRect needed =
        option.fontMetrics.boundingRect(room, Qt::TextWordWrap, index.data().toString());
    size.setHeight(std::max(size.height(), needed.height() + 2 * margin));
    return size;
  }

 private:
  QTreeWidget* tree_;
};

Severity severityOf(const LintFinding& finding) {
  if (finding.againstSaving) return Severity::kPreventsSaving;
  return finding.severity == ostrand::Severity::kNotice ? Severity::kNotice : Severity::kWarning;
}

// The title of a check, or what kind of notice it is.
QString titleOf(const LintFinding& finding) {
  if (!finding.title.empty()) return FromProject(finding.title).remove(u'"').trimmed();
  for (const CodeRow& row : FindingCodes()) {
    if (row.code == finding.code) return FromProject(row.summary);
  }
  return {};
}

CheckLine lineOf(const LintFinding& finding) {
  CheckLine line;
  line.severity = severityOf(finding);
  // A paragraph for each line, without the empty ones.
  QStringList lines = FromSystem(finding.text).split(u'\n', Qt::SkipEmptyParts);
  lines.prepend(titleOf(finding));
  for (QString& text : lines) text = text.trimmed();
  line.text = lines.join(u'\n');
  line.programLine = finding.programLine;
  if (!finding.section.empty()) {
    KeyPlace place = PlaceOfKey(finding.section, finding.key);
    line.place = FromProject(place.place + ": " + place.words);
    line.screen = std::move(place.screen);
  } else if (finding.programLine > 0) {
    line.place = QStringLiteral("Program, line %1").arg(finding.programLine);
  } else if (finding.code == kCodeSectionFailed) {
    line.place = QStringLiteral("Program");
    line.programLine = 1;
  } else if (finding.code == kCodeLineNotRead) {
    line.place = QStringLiteral("Project file");
  }
  return line;
}

}  // namespace

std::vector<CheckLine> CheckLinesOf(Ostrand& session, ProjectStore& store) {
  const CheckContext usual = session.Checks();
  const LintFindings findings =
      AllFindings({store, usual.forms, usual.WarningMessageMask, usual.calcVarRefs},
                  session.Preview(store), session.SkippedLines());
  std::vector<CheckLine> lines;
  for (const LintFinding& finding : findings) lines.push_back(lineOf(finding));
  std::stable_sort(lines.begin(), lines.end(), [](const CheckLine& left, const CheckLine& right) {
    return left.severity < right.severity;
  });
  if (lines.empty())
    lines.push_back({Severity::kFine, QStringLiteral("All checks passed."), {}, {}, 0});
  return lines;
}

FindingsPage::FindingsPage(std::function<void(const ScreenPlace&)> open,
                           std::function<void(int)> showProgram, QWidget* parent)
    : QTreeWidget(parent), open_(std::move(open)), showProgram_(std::move(showProgram)) {
  setAccessibleName(QStringLiteral("Checks"));
  setColumnCount(kColumns);
  setHeaderLabels({QStringLiteral("Kind"), QStringLiteral("Finding"), QStringLiteral("Place")});
  setRootIsDecorated(false);
  setWordWrap(true);
  setAlternatingRowColors(true);
  setUniformRowHeights(false);
  setTextElideMode(Qt::ElideNone);
  setItemDelegate(new WrappedText(this));
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(kFinding, QHeaderView::Stretch);
  const int letter = fontMetrics().averageCharWidth();
  header()->resizeSection(kSeverity, 23 * letter);
  header()->resizeSection(kPlace, 30 * letter);
  setToolTip(
      QStringLiteral("Double-click a finding, or press Enter, to open its screen or to "
                     "see its line of the program."));
  // The height of wrapped texts follows the width of their column.
  QObject::connect(header(), &QHeaderView::sectionResized, this,
                   [this] { scheduleDelayedItemsLayout(); });
  QObject::connect(this, &QTreeWidget::itemDoubleClicked, this,
                   [this](QTreeWidgetItem* item) { go(indexOfTopLevelItem(item)); });
}

void FindingsPage::Show(Ostrand& session, ProjectStore& store) {
  const int selected = indexOfTopLevelItem(currentItem());
  lines_ = CheckLinesOf(session, store);
  clear();
  QList<QTreeWidgetItem*> items;
  for (const CheckLine& line : lines_) {
    const SeverityRow& row = kSeverities[static_cast<std::size_t>(line.severity)];
    auto* item = new QTreeWidgetItem({QString::fromLatin1(row.name), line.text, line.place});
    item->setIcon(kSeverity, style()->standardIcon(row.icon));
    for (int column = 0; column < kColumns; ++column) item->setTextAlignment(column, Qt::AlignTop);
    items.push_back(item);
  }
  addTopLevelItems(items);
  const int last = static_cast<int>(lines_.size()) - 1;
  setCurrentItem(topLevelItem(std::clamp(selected, 0, last)));
}

std::size_t FindingsPage::Findings() const {
  return static_cast<std::size_t>(
      std::count_if(lines_.begin(), lines_.end(),
                    [](const CheckLine& line) { return line.severity != Severity::kFine; }));
}

void FindingsPage::go(int row) {
  if (row < 0) return;
  // A copy: the page is filled anew while the screen is open.
  const CheckLine line = lines_[static_cast<std::size_t>(row)];
  if (!line.screen.steps.empty()) {
    open_(line.screen);
  } else if (line.programLine > 0) {
    showProgram_(line.programLine);
  }
}

void FindingsPage::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    return go(indexOfTopLevelItem(currentItem()));
  }
  QTreeWidget::keyPressEvent(event);
}

}  // namespace ostrand::desktop
