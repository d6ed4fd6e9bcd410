// How the desktop asks and informs its user.
#pragma once

#include <QLabel>
#include <QPointer>
#include <QString>
#include <vector>

#include "platform/forms.h"

class QWidget;

namespace ostrand::desktop {

class QtForms final : public platform::Forms {
 public:
  // Boxes belong to this window, or to the one that is open over it.
  void Main(QWidget* window) { main_ = window; }

  // Shows the help line too, until it is removed or gone.
  void AddHelpLine(QLabel* line) { helpLines_.emplace_back(line); }
  void RemoveHelpLine(const QLabel* line);

  platform::Answer ShowBox(const platform::MessageBox& box) override;
  std::optional<std::string> AskOpen(const platform::FileDialog& dialog) override;
  std::optional<std::string> AskSave(const platform::FileDialog& dialog) override;
  void SetHelpLine(const std::string& text) override;
  void SetPointer(platform::Pointer shape) override;
  void Beep() override;
  void ShowHelp(const std::string& file, int context) override;
  void DoEvents() override;

 private:
  [[nodiscard]] QWidget* over() const;
  std::optional<std::string> askFile(const platform::FileDialog& asked, bool save);

  QPointer<QWidget> main_;
  std::vector<QPointer<QLabel>> helpLines_;
  bool busy_ = false;
};

// "(*.VKG)|*.VKG|(All Files)|*.*" as the filters of a file dialog, in any case of letters.
QStringList FiltersOf(std::string_view filter);

}  // namespace ostrand::desktop
