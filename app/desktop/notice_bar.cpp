#include "notice_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

namespace ostrand::desktop {

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent),
      text_(new QLabel(this)),
      progress_(new QProgressBar(this)),
      cancel_(new QPushButton(QStringLiteral("Cancel"), this)),
      close_(new QToolButton(this)) {
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  text_->setAccessibleName(QStringLiteral("Notice"));
  progress_->setRange(0, 0);
  progress_->setTextVisible(false);
  progress_->setMaximumWidth(12 * fontMetrics().averageCharWidth());
  progress_->setAccessibleName(QStringLiteral("Progress"));
  close_->setIcon(style()->standardIcon(QStyle::SP_DockWidgetCloseButton));
  close_->setAutoRaise(true);
  close_->setAccessibleName(QStringLiteral("Close the notice"));
  close_->setToolTip(QStringLiteral("Close the notice"));
  auto* row = new QHBoxLayout(this);
  row->addWidget(text_, 1);
  row->addWidget(progress_);
  row->addWidget(cancel_);
  row->addWidget(close_);
  QObject::connect(close_, &QToolButton::clicked, this, &QWidget::hide);
  QObject::connect(cancel_, &QPushButton::clicked, this, [this] {
    cancel_->setEnabled(false);
    if (onCancel_) onCancel_();
  });
  EndProgress();
}

QString NoticeBar::Text() const { return isHidden() ? QString() : text_->text(); }

void NoticeBar::Show(const QString& text) {
  progress_->hide();
  cancel_->hide();
  close_->show();
  text_->setText(text);
  setVisible(!text.isEmpty());
}

void NoticeBar::ShowProgress(const QString& text, std::function<void()> cancel) {
  text_->setText(text);
  onCancel_ = std::move(cancel);
  progress_->show();
  cancel_->setVisible(onCancel_ != nullptr);
  cancel_->setEnabled(true);
  close_->hide();
  show();
}

void NoticeBar::EndProgress() { Show({}); }

}  // namespace ostrand::desktop
