#include "text_window.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "fixed_font.h"

namespace ostrand::desktop {
namespace {

constexpr int kLetters = 90;
constexpr int kLines = 28;

}  // namespace

void ShowText(QWidget* over, const QString& title, const QString& text) {
  QDialog dialog(over);
  dialog.setWindowTitle(title);
  auto* shown = new QPlainTextEdit(text);
  shown->setReadOnly(true);
  shown->setAccessibleName(title);
  shown->setLineWrapMode(QPlainTextEdit::NoWrap);
  shown->setTabChangesFocus(true);
  shown->setFont(FixedFont());
  shown->setMinimumSize(shown->fontMetrics().averageCharWidth() * kLetters,
                        shown->fontMetrics().lineSpacing() * kLines);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(shown, 1);
  layout->addWidget(buttons);
  dialog.exec();
}

}  // namespace ostrand::desktop
