// The page with the columns of the data tables.
#pragma once

#include <QAbstractTableModel>
#include <QWidget>
#include <functional>
#include <vector>

#include "documents/table_columns.h"

class QSortFilterProxyModel;
class QTableView;
class QTableWidget;

namespace ostrand::desktop {

// A table's columns as they are stored: as in its description, and with their bytes.
class ColumnsModel final : public QAbstractTableModel {
 public:
  enum Field { kNumber, kResolution, kProcessing, kName, kAlias, kUnits, kBytes, kCount, kSource };

  using QAbstractTableModel::QAbstractTableModel;
  void Columns(std::vector<TableColumn> columns);
  [[nodiscard]] const std::vector<TableColumn>& Columns() const { return columns_; }

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  // Numbers are numbers, so that they sort as such.
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

 private:
  std::vector<TableColumn> columns_;
};

// The tables in use with size and time to fill; below them the columns of the one that is picked.
class TablesPage final : public QWidget {
 public:
  // `project` gives what is to be shown whenever another table is picked.
  TablesPage(std::function<const ProjectStore&()> project, QWidget* parent);
  void Show();
  // The selected rows of the columns, or all rows if fewer than two are selected, as they are
  // sorted: fields separated by tabs, with a heading.
  [[nodiscard]] QString AsText() const;

  [[nodiscard]] QTableWidget* Tables() const { return tables_; }
  [[nodiscard]] QTableView* Columns() const { return columns_; }

 private:
  void showColumns();
  void copy() const;

  std::function<const ProjectStore&()> project_;
  QTableWidget* tables_;
  QTableView* columns_;
  ColumnsModel* model_;
  QSortFilterProxyModel* sorted_;
};

}  // namespace ostrand::desktop
