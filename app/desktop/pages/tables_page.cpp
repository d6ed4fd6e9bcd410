#include "pages/tables_page.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTableView>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <set>

#include "model/output_table.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

constexpr std::array<const char*, 9> kFields = {
    "No.", "Resolution", "Processing", "Field", "Alias", "Units", "Bytes", "Columns", "Source"};
// In letters of the page.
constexpr std::array<int, 9> kWidths = {7, 13, 13, 26, 18, 13, 9, 11, 24};

enum Fact { kTable, kTableName, kInterval, kRecords, kRecordBytes, kRecordFields, kTimeToFill };
constexpr std::array<const char*, 7> kFacts = {
    "Table", "Name", "Interval", "Records", "Bytes per record", "Fields", "Time to fill"};
constexpr std::array<int, 7> kFactWidths = {8, 16, 31, 13, 20, 9, 46};

bool isNumber(int field) {
  return field == ColumnsModel::kNumber || field == ColumnsModel::kCount ||
         field == ColumnsModel::kBytes;
}

QString grouped(qlonglong number) { return QLocale(QLocale::English).toString(number); }

QTableWidgetItem* cell(const QString& text, bool right = false) {
  auto* item = new QTableWidgetItem(text);
  item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
  if (right) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return item;
}

template <std::size_t Count>
void setWidths(QHeaderView* header, const std::array<int, Count>& letters) {
  const int letter = header->fontMetrics().averageCharWidth();
  for (std::size_t at = 0; at < Count; ++at) {
    header->resizeSection(static_cast<int>(at), letters[at] * letter);
  }
  header->setStretchLastSection(false);
}

}  // namespace

// ---- The model ----------------------------------------------------------------------------------

void ColumnsModel::Columns(std::vector<TableColumn> columns) {
  beginResetModel();
  columns_ = std::move(columns);
  endResetModel();
}

int ColumnsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

int ColumnsModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kFields.size());
}

QVariant ColumnsModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::TextAlignmentRole && isNumber(index.column())) {
    return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
  }
  if (role != Qt::DisplayRole) return {};
  const TableColumn& column = columns_[static_cast<std::size_t>(index.row())];
  switch (index.column()) {
    case kNumber:
      return static_cast<qlonglong>(column.number);
    case kResolution:
      return FromProject(column.resolution);
    case kProcessing:
      return FromProject(column.processing).trimmed();
    case kName:
      return FromProject(column.field);
    case kAlias:
      return FromProject(column.alias);
    case kUnits:
      return FromProject(column.units);
    case kSource:
      return FromProject(column.groupTitle);
    case kCount:
      return static_cast<qlonglong>(column.count);
    case kBytes:
      return static_cast<qlonglong>(column.bytes);
    default:
      return {};
  }
}

QVariant ColumnsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  return QString::fromLatin1(kFields[static_cast<std::size_t>(section)]);
}

// ---- The page -----------------------------------------------------------------------------------

TablesPage::TablesPage(std::function<const ProjectStore&()> project, QWidget* parent)
    : QWidget(parent),
      project_(std::move(project)),
      tables_(new QTableWidget(0, static_cast<int>(kFacts.size()), this)),
      columns_(new QTableView(this)),
      model_(new ColumnsModel(this)),
      sorted_(new QSortFilterProxyModel(this)) {
  QStringList heading;
  for (const char* fact : kFacts) heading += QString::fromLatin1(fact);
  tables_->setHorizontalHeaderLabels(heading);
  tables_->setAccessibleName(QStringLiteral("Tables in use"));
  tables_->setSelectionBehavior(QAbstractItemView::SelectRows);
  tables_->setSelectionMode(QAbstractItemView::SingleSelection);
  tables_->verticalHeader()->hide();
  tables_->setTabKeyNavigation(false);
  tables_->setWordWrap(false);
  tables_->horizontalHeader()->setHighlightSections(false);
  sorted_->setSourceModel(model_);
  sorted_->setSortCaseSensitivity(Qt::CaseInsensitive);
  columns_->setModel(sorted_);
  columns_->setAccessibleName(QStringLiteral("Columns of the table"));
  columns_->setSelectionBehavior(QAbstractItemView::SelectRows);
  columns_->setAlternatingRowColors(true);
  columns_->verticalHeader()->hide();
  columns_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  columns_->setTabKeyNavigation(false);
  columns_->setWordWrap(false);
  columns_->horizontalHeader()->setHighlightSections(false);
  columns_->setSortingEnabled(true);
  columns_->sortByColumn(ColumnsModel::kNumber, Qt::AscendingOrder);
  const int row = fontMetrics().lineSpacing() * 3 / 2;
  tables_->verticalHeader()->setDefaultSectionSize(row);
  columns_->verticalHeader()->setDefaultSectionSize(row);
  setWidths(tables_->horizontalHeader(), kFactWidths);
  setWidths(columns_->horizontalHeader(), kWidths);

  auto* copyButton = new QPushButton(QStringLiteral("&Copy as table"), this);
  copyButton->setToolTip(
      QStringLiteral("Copies the selected rows, or all rows, for a spreadsheet (Ctrl+C)."));
  auto* copyKey = new QAction(this);
  copyKey->setShortcut(QKeySequence::Copy);
  copyKey->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  addAction(copyKey);
  QObject::connect(copyKey, &QAction::triggered, this, [this] { copy(); });
  QObject::connect(copyButton, &QPushButton::clicked, this, [this] { copy(); });
  QObject::connect(tables_, &QTableWidget::currentCellChanged, this, [this] { showColumns(); });

  auto* below = new QWidget(this);
  auto* column = new QVBoxLayout(below);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(columns_, 1);
  column->addWidget(copyButton, 0, Qt::AlignRight);
  auto* split = new QSplitter(Qt::Vertical, this);
  split->addWidget(tables_);
  split->addWidget(below);
  split->setStretchFactor(1, 1);
  split->setSizes({row * (kTables + 2), row * 20});
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->addWidget(split);
}

void TablesPage::Show() {
  const ProjectStore& store = project_();
  const int current = tables_->currentRow();
  {
    const QSignalBlocker quiet(tables_);
    tables_->setRowCount(0);
    for (int t = 1; t <= kTables; ++t) {
      const OutputTable& table = store.Tables[t];
      if (table.TableOn == 0) continue;
      const int row = tables_->rowCount();
      tables_->insertRow(row);
      const bool isFixed = table.AutoSize == 0;
      const ORVUS_COMMON::RecordSize size = ORVUS_COMMON::SizeOfRecord(store, t);
      const auto put = [&](Fact fact, const QString& text, bool right = false) {
        tables_->setItem(row, fact, cell(text, right));
      };
      put(kTable, QString::number(t), true);
      put(kTableName, FromProject(table.TableName));
      put(kInterval, FromProject(TableIntervalText(store, t)));
      put(kRecords, isFixed ? grouped(table.Buffer) : QStringLiteral("automatic"), isFixed);
      put(kRecordBytes, grouped(size.bytes), true);
      put(kRecordFields, grouped(size.fields), true);
      put(kTimeToFill, isFixed ? FromProject(TimeToFillText(store, t)) : QString());
      tables_->item(row, 0)->setData(Qt::UserRole, t);
    }
    if (tables_->rowCount() > 0) {
      tables_->setCurrentCell(std::clamp(current, 0, tables_->rowCount() - 1), 0);
    }
  }
  showColumns();
}

void TablesPage::showColumns() {
  const QTableWidgetItem* first =
      tables_->currentRow() < 0 ? nullptr : tables_->item(tables_->currentRow(), 0);
  const int table = first == nullptr ? 0 : first->data(Qt::UserRole).toInt();
  model_->Columns(table == 0 ? std::vector<TableColumn>() : ColumnsOf(project_(), table));
}

QString TablesPage::AsText() const {
  std::set<int> rows;
  for (const QModelIndex& index : columns_->selectionModel()->selectedRows()) {
    rows.insert(index.row());
  }
  if (rows.size() < 2) {
    rows.clear();
    for (int row = 0; row < sorted_->rowCount(); ++row) rows.insert(row);
  }
  QStringList heading;
  for (const char* field : kFields) heading += QString::fromLatin1(field);
  QString text = heading.join(u'\t') + u'\n';
  for (const int row : rows) {
    QStringList fields;
    for (int field = 0; field < sorted_->columnCount(); ++field) {
      fields += sorted_->index(row, field).data().toString().replace(u'\t', u' ');
    }
    text += fields.join(u'\t') + u'\n';
  }
  return text;
}

void TablesPage::copy() const { QApplication::clipboard()->setText(AsText()); }

}  // namespace ostrand::desktop
