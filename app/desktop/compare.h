// Two projects side by side.
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "pages/program_text.h"
#include "places/differences.h"
#include "places/key_places.h"
#include "session/ostrand.h"

class QLabel;
class QTreeWidget;

namespace ostrand::desktop {

// The open project and another one: their differences in words, and their programs line beside
// line.
class CompareWindow final : public QDialog {
 public:
  // `present` and `other` are bytes of project files; an older format is brought up to date first.
  // `name` is that of the other file. `open` is called with the screen of a difference.
  CompareWindow(const Ostrand& session, const std::string& present, const std::string& other,
                const QString& name, std::function<void(const ScreenPlace&)> open, QWidget* parent);

  [[nodiscard]] const std::vector<Difference>& Differences() const { return differences_; }
  [[nodiscard]] const QLabel* Summary() const { return summary_; }
  [[nodiscard]] QTreeWidget* List() const { return list_; }
  [[nodiscard]] ProgramText* Present() const { return present_; }
  [[nodiscard]] ProgramText* Other() const { return other_; }

 private:
  void fillList();
  void fillPrograms(const Ostrand& session, const std::string& present, const std::string& other);
  void layOut(const QString& name);
  QWidget* programsPage(const QString& name);
  void nextChange(bool backward);

  std::vector<Difference> differences_;
  std::function<void(const ScreenPlace&)> open_;
  QLabel* summary_;
  QTreeWidget* list_;
  ProgramText* present_;
  ProgramText* other_;
  std::vector<int> changes_;  // first lines of the changes in the two texts, from 1
};

// Two programs with blank lines where the other one has lines that it lacks, so that equal lines
// are beside each other; UTF-8, lines end in LF.
struct SideBySide {
  struct Side {
    std::string text;
    std::vector<int> numbers;  // of its lines in the program; 0 for a blank one
    std::map<int, LineMark> marks;
  };
  Side before;
  Side after;
  std::vector<int> changes;  // the first line of each
};
SideBySide ProgramsSideBySide(std::string_view before, std::string_view after);

}  // namespace ostrand::desktop
