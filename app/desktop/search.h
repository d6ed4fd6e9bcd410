// The search of the whole project: sensors, names, tables, flags, settings and screens.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "places/search.h"

class QLineEdit;
class QListWidget;

namespace ostrand::desktop {

class SearchWindow final : public QDialog {
 public:
  // `project` is the text of the project file.
  SearchWindow(const std::string& project, QWidget* parent);

  // The way to what the user has picked, after the window was accepted.
  [[nodiscard]] const ScreenPlace& Chosen() const { return chosen_; }

  [[nodiscard]] QLineEdit* Box() const { return box_; }
  [[nodiscard]] QListWidget* List() const { return list_; }

  void accept() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void find();

  ProjectIndex index_;
  ScreenPlace chosen_;
  std::vector<SearchEntry> found_;
  QLineEdit* box_;
  QListWidget* list_;
};

// The screens of the main row and of the options, as the user knows them.
std::vector<ProjectIndex::NamedScreen> NamedScreens();

}  // namespace ostrand::desktop
