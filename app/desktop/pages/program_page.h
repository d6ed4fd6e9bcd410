// The page with the program that a save would write.
#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "pages/program_text.h"
#include "places/key_places.h"
#include "programcheck/outline.h"
#include "project_bytes.h"
#include "text/line_diff.h"

class QLabel;
class QLineEdit;
class QListWidget;

namespace ostrand::desktop {

// With the list of its sections, line numbers, a search, marks of what changed since the project
// was saved, and what a compiler would refuse.
class ProgramView final : public QWidget {
 public:
  // `open` is called for a double click on a line of a block, with the screen of the block.
  ProgramView(std::function<void(const ScreenPlace&)> open, QWidget* parent);

  // Called with the block of the line that the cursor has come to; with kind 0 for none.
  std::function<void(ProgramBlock)> OnBlock = [](ProgramBlock) {};

  // The project file as it was saved last, in whose program changes are looked for.
  void Saved(const std::string& project);
  void Show(const Ostrand& session, const ProjectStore& store);
  // Shows the lines of a block, from the first one; none of a block that is not in the program.
  void ShowBlock(ProgramBlock block);

  [[nodiscard]] ProgramText* Text() const { return text_; }
  [[nodiscard]] QListWidget* Sections() const { return sections_; }
  [[nodiscard]] QListWidget* Faults() const { return faults_; }
  [[nodiscard]] QLineEdit* FindBox() const { return find_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void layOut();
  void showSections();
  void showFaults(const ProgramPreview& preview);
  void showChanges(const Ostrand& session);
  void cursorMoved();
  void search(bool backward);
  void openFind(bool open);

  std::function<void(const ScreenPlace&)> open_;
  ProgramText* text_;
  QListWidget* sections_;
  QListWidget* faults_;
  QWidget* findBar_;
  QLineEdit* find_;
  QLabel* found_;
  std::string saved_;
  std::optional<std::string> savedProgram_;  // made when it is needed
  std::optional<ProgramOutline> outline_;
  ProgramBlock block_;  // of the line of the cursor
};

// CAN items and calculated fields by their names.
std::vector<NamedBlock> NamedBlocksOf(const ProjectStore& store);
// The changes between two programs, line by line; their dates and times do not count.
std::vector<LineChange> ProgramChanges(std::string_view before, std::string_view after);
// Marks of the lines of the second program; lines that were only removed mark the next line.
std::map<int, LineMark> MarksOf(const std::vector<LineChange>& changes, int lines);

}  // namespace ostrand::desktop
