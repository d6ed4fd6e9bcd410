#include "report/print_panel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrand::desktop {

PrintPanel::PrintPanel(QWidget* parent) : QDialog(parent), paper_(new QComboBox(this)) {
  setWindowTitle(QStringLiteral("Print and export"));
  setWindowModality(Qt::WindowModal);
  auto* parts = new QGroupBox(QStringLiteral("Parts of the report"), this);
  auto* list = new QVBoxLayout(parts);
  auto* buttons = new QDialogButtonBox(this);
  print_ = buttons->addButton(QStringLiteral("&Print..."), QDialogButtonBox::AcceptRole);
  export_ = buttons->addButton(QStringLiteral("&Export..."), QDialogButtonBox::AcceptRole);
  cancel_ = buttons->addButton(QDialogButtonBox::Cancel);
  const auto enable = [this] {
    const bool any = !Options().parts.empty();
    print_->setEnabled(any);
    export_->setEnabled(any);
  };
  for (const ReportPartRow& row : kReportParts) {
    auto* box = new QCheckBox(QString::fromLatin1(row.title), parts);
    box->setChecked(true);
    list->addWidget(box);
    boxes_[row.part] = box;
    QObject::connect(box, &QCheckBox::toggled, this, enable);
  }
  paper_->addItem(QStringLiteral("A4"), QPageSize::A4);
  paper_->addItem(QStringLiteral("Letter"), QPageSize::Letter);
  if (QLocale().measurementSystem() == QLocale::ImperialUSSystem) paper_->setCurrentIndex(1);
  paper_->setAccessibleName(QStringLiteral("Paper"));
  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("P&aper"), paper_);
  auto* kinds = new QLabel(QStringLiteral("Export writes the report (.pdf), the wiring alone "
                                          "(.svg, .png) or the columns of the tables (.csv)."),
                           this);
  kinds->setWordWrap(true);
  auto* column = new QVBoxLayout(this);
  column->addWidget(parts);
  column->addLayout(form);
  column->addWidget(kinds);
  column->addWidget(buttons);
  const auto choose = [this](Choice choice) {
    choice_ = choice;
    accept();
  };
  QObject::connect(print_, &QPushButton::clicked, this, [choose] { choose(Choice::kPrint); });
  QObject::connect(export_, &QPushButton::clicked, this, [choose] { choose(Choice::kExport); });
  QObject::connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
  cancel_->setFocus();
}

PrintPanel::Choice PrintPanel::Ask() {
  choice_ = Choice::kCancel;
  exec();
  return choice_;
}

ReportOptions PrintPanel::Options() const {
  ReportOptions options{{}, static_cast<QPageSize::PageSizeId>(paper_->currentData().toInt())};
  for (const auto& [part, box] : boxes_) {
    if (box->isChecked()) options.parts.insert(part);
  }
  return options;
}

}  // namespace ostrand::desktop
