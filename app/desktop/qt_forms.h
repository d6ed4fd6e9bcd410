// How the desktop asks and informs its user.
#pragma once

#include <QLabel>
#include <QPointer>
#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "platform/forms.h"

class QWidget;

namespace ostrand::desktop {

class QtForms final : public platform::Forms {
 public:
  // Boxes belong to this window, or to the one that is open over it.
  void Main(QWidget* window) { main_ = window; }

  // Answers the next save dialogs with this path; an empty one lets the user choose again.
  void SaveAs(std::string path) { saveAs_ = std::move(path); }

  // Whether the user may save to a path; if not, the save dialog comes again. Set by the main
  // window.
  std::function<bool(const std::string& path)> MaySaveTo;

  // Shows the help line too, until it is removed or gone.
  void AddHelpLine(QLabel* line) { helpLines_.emplace_back(line); }
  void RemoveHelpLine(const QLabel* line);

  platform::Answer ShowBox(const platform::MessageBox& box) override;
  std::optional<std::string> AskOpen(const platform::FileDialog& dialog) override;
  std::optional<std::string> AskSave(const platform::FileDialog& dialog) override;
  void SetHelpLine(const std::string& text) override;
  void SetPointer(platform::Pointer shape) override;
  void Beep() override;
  // Shows the user guide of the main window.
  void ShowHelp(const std::string& file, int context) override;
  // What ShowHelp does; set by the main window.
  std::function<void()> OnHelp;
  void DoEvents() override;

 private:
  [[nodiscard]] QWidget* over() const;
  std::optional<std::string> askFile(const platform::FileDialog& asked, bool save);

  QPointer<QWidget> main_;
  std::vector<QPointer<QLabel>> helpLines_;
  std::string saveAs_;
  bool busy_ = false;
};

// "(*.VKG)|*.VKG|(All Files)|*.*" as the filters of a file dialog, in any case of letters.
QStringList FiltersOf(std::string_view filter);

}  // namespace ostrand::desktop
