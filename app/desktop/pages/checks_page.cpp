#include "pages/checks_page.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStyle>
#include <QStyledItemDelegate>
#include <algorithm>
#include <array>

#include "programcheck/program_check.h"
#include "project_bytes.h"
#include "projectfile/read_report.h"
#include "text/codepage.h"
#include "texts.h"
#include "verify/check_context.h"
#include "verify/verify_before_save.h"

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

// A finding in one paragraph for each of its lines, without the empty ones.
QString textOf(const Finding& finding) {
  QStringList lines = FromSystem(finding.text).split(u'\n', Qt::SkipEmptyParts);
  lines.prepend(FromProject(finding.title).remove(u'"').trimmed());
  for (QString& line : lines) line = line.trimmed();
  return lines.join(u'\n');
}

CheckLine lineOf(const Finding& finding) {
  CheckLine line;
  line.severity = finding.againstSaving ? Severity::kPreventsSaving : Severity::kWarning;
  line.text = textOf(finding);
  if (finding.section.empty()) return line;
  KeyPlace place = PlaceOfKey(finding.section, finding.key);
  line.place = FromProject(place.place + ": " + place.words);
  line.screen = std::move(place.screen);
  return line;
}

void addProgramFaults(std::vector<CheckLine>& lines, const ProgramPreview& preview) {
  for (const std::string& fault : preview.faults) {
    lines.push_back({Severity::kNotice,
                     QStringLiteral("PROGRAM NOT COMPLETE\n") + QString::fromStdString(fault),
                     QStringLiteral("Program"),
                     {},
                     1});
  }
  for (const ProgramFinding& finding : CheckProgram(Windows1252FromUtf8(preview.text))) {
    lines.push_back({Severity::kNotice,
                     QStringLiteral("FAULT OF THE PROGRAM\n") + FromProject(finding.text),
                     QStringLiteral("Program, line %1").arg(finding.line),
                     {},
                     finding.line});
  }
}

}  // namespace

std::vector<CheckLine> CheckLinesOf(Ostrand& session, ProjectStore& store) {
  std::vector<CheckLine> lines;
  const CheckContext usual = session.Checks();
  const Findings findings =
      CheckAll({store, usual.forms, usual.WarningMessageMask, usual.calcVarRefs});
  for (const Finding& finding : findings) lines.push_back(lineOf(finding));
  std::stable_sort(lines.begin(), lines.end(), [](const CheckLine& left, const CheckLine& right) {
    return left.severity < right.severity;
  });
  addProgramFaults(lines, ProgramOf(session, store));
  if (session.SkippedLines().skipped > 0) {
    lines.push_back({Severity::kNotice,
                     QStringLiteral("LINES NOT READ\nThe next save drops them: ") +
                         FromSystem(ORVUS_GENFILE::SkippedText(session.SkippedLines())),
                     QStringLiteral("Project file"),
                     {},
                     0});
  }
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
  setToolTip(QStringLiteral("Double-click a finding, or press Enter, to open its screen."));
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
