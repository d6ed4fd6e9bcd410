#include "qt_forms.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <span>

#include "texts.h"

namespace ostrand::desktop {
namespace {

using platform::Answer;
using platform::Buttons;

struct AnswerButton {
  Answer answer;
  QMessageBox::ButtonRole role;
  const char* caption;
};
constexpr AnswerButton kOk{Answer::kOk, QMessageBox::AcceptRole, "OK"};
constexpr AnswerButton kYes{Answer::kYes, QMessageBox::YesRole, "&Yes"};
constexpr AnswerButton kNo{Answer::kNo, QMessageBox::NoRole, "&No"};
constexpr AnswerButton kCancel{Answer::kCancel, QMessageBox::RejectRole, "Cancel"};
constexpr AnswerButton kOverwrite{Answer::kOverwrite, QMessageBox::AcceptRole, "&Overwrite"};

std::vector<AnswerButton> buttonsOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::kOk:
      return {kOk};
    case Buttons::kOkCancel:
      return {kOk, kCancel};
    case Buttons::kYesNo:
      return {kYes, kNo};
    case Buttons::kYesNoCancel:
      return {kYes, kNo, kCancel};
    case Buttons::kOverwriteCancel:
      return {kOverwrite, kCancel};
  }
  return {kOk};
}

QMessageBox::Icon iconOf(platform::Icon icon) {
  switch (icon) {
    case platform::Icon::kNone:
      return QMessageBox::NoIcon;
    case platform::Icon::kInformation:
      return QMessageBox::Information;
    case platform::Icon::kExclamation:
      return QMessageBox::Warning;
    case platform::Icon::kQuestion:
      return QMessageBox::Question;
    case platform::Icon::kStop:
      return QMessageBox::Critical;
  }
  return QMessageBox::NoIcon;
}

}  // namespace

void QtForms::RemoveHelpLine(const QLabel* line) {
  std::erase_if(helpLines_, [&](const auto& shown) { return shown == line || shown == nullptr; });
}

QWidget* QtForms::over() const {
  QWidget* modal = QApplication::activeModalWidget();
  return modal == nullptr ? main_.data() : modal;
}

Answer QtForms::ShowBox(const platform::MessageBox& asked) {
  QMessageBox box(over());
  box.setWindowTitle(FromSystem(asked.title));
  box.setTextFormat(Qt::PlainText);
  box.setText(FromSystem(asked.text));
  box.setIcon(iconOf(asked.icon));
  const std::vector<AnswerButton> buttons = buttonsOf(asked.buttons);
  std::vector<QAbstractButton*> shown;
  for (const AnswerButton& button : buttons) {
    QPushButton* added = box.addButton(QString::fromLatin1(button.caption), button.role);
    // kOk means the first button, whichever it is.
    if (shown.empty() || button.answer == asked.preselected) box.setDefaultButton(added);
    shown.push_back(added);
  }
  // Escape and the close button are the last one, which changes nothing.
  box.setEscapeButton(shown.back());
  const bool wasBusy = busy_;
  SetPointer(platform::Pointer::kNormal);
  box.exec();
  if (wasBusy) SetPointer(platform::Pointer::kBusy);
  for (std::size_t at = 0; at < shown.size(); ++at) {
    if (shown[at] == box.clickedButton()) return buttons[at].answer;
  }
  return buttons.back().answer;
}

std::optional<std::string> QtForms::askFile(const platform::FileDialog& asked, bool save) {
  QFileDialog dialog(over(), FromSystem(asked.title));
  dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::AnyFile);  // a new name starts a new project
  dialog.setNameFilters(FiltersOf(asked.filter));
  // A folder of another machine is not shown; the dialog then begins at the user's own.
  const QDir folder(FromSystem(asked.initialFolder));
  dialog.setDirectory(folder.exists() ? folder : QDir::home());
  if (!asked.fileName.empty()) dialog.selectFile(FromSystem(asked.fileName));
  QString extension = FromSystem(asked.defaultExtension);
  if (extension.startsWith(u'.')) extension.remove(0, 1);
  if (save) dialog.setDefaultSuffix(extension);
  const bool wasBusy = busy_;
  SetPointer(platform::Pointer::kNormal);
  const bool chosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
  if (wasBusy) SetPointer(platform::Pointer::kBusy);
  if (!chosen) return std::nullopt;
  return PathOf(dialog.selectedFiles().front());
}

std::optional<std::string> QtForms::AskOpen(const platform::FileDialog& dialog) {
  return askFile(dialog, false);
}

std::optional<std::string> QtForms::AskSave(const platform::FileDialog& dialog) {
  if (!saveAs_.empty()) return saveAs_;
  for (;;) {
    std::optional<std::string> path = askFile(dialog, true);
    if (!path || !MaySaveTo || MaySaveTo(*path)) return path;
  }
}

void QtForms::SetHelpLine(const std::string& text) {
  const QString shown = FromSystem(text);
  for (const auto& line : helpLines_) {
    if (line == nullptr) continue;
    line->setText(shown);
    line->repaint();
  }
}

void QtForms::SetPointer(platform::Pointer shape) {
  const bool busy = shape == platform::Pointer::kBusy;
  if (busy == busy_) return;
  busy_ = busy;
  if (busy) {
    QApplication::setOverrideCursor(Qt::BusyCursor);
  } else {
    QApplication::restoreOverrideCursor();
  }
}

void QtForms::Beep() { QApplication::beep(); }

void QtForms::ShowHelp(const std::string&, int) {
  if (OnHelp) OnHelp();
}

void QtForms::DoEvents() { QApplication::processEvents(); }

QStringList FiltersOf(std::string_view filter) {
  const QStringList parts = FromSystem(filter).split(u'|');
  QStringList filters;
  for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
    QString name = parts[at];
    name.remove(u'(').remove(u')');
    const QString& pattern = parts[at + 1];
    const QString any =
        pattern == QStringLiteral("*.*") ? QStringLiteral("*") : pattern + u' ' + pattern.toLower();
    filters.append(name.trimmed() + QStringLiteral(" (") + any + u')');
  }
  return filters;
}

}  // namespace ostrand::desktop
