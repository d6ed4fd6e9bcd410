// The panel of File, Print and export: the parts of the report, the paper, and where it goes.
#pragma once

#include <QDialog>
#include <map>

#include "report/report_options.h"

class QCheckBox;
class QComboBox;
class QPushButton;

namespace ostrand::desktop {

class PrintPanel final : public QDialog {
 public:
  enum class Choice { kCancel, kPrint, kExport };

  explicit PrintPanel(QWidget* parent);
  // Returns when the user has chosen.
  Choice Ask();
  [[nodiscard]] ReportOptions Options() const;

  [[nodiscard]] QCheckBox* Box(ReportPart part) const { return boxes_.at(part); }
  [[nodiscard]] QComboBox* Paper() const { return paper_; }
  [[nodiscard]] QPushButton* PrintButton() const { return print_; }
  [[nodiscard]] QPushButton* ExportButton() const { return export_; }
  [[nodiscard]] QPushButton* CancelButton() const { return cancel_; }

 private:
  std::map<ReportPart, QCheckBox*> boxes_;
  QComboBox* paper_;
  QPushButton* print_ = nullptr;
  QPushButton* export_ = nullptr;
  QPushButton* cancel_ = nullptr;
  Choice choice_ = Choice::kCancel;
};

}  // namespace ostrand::desktop
