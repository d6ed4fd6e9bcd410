// The page with what the checks found.
#pragma once

#include <QTreeWidget>
#include <functional>
#include <vector>

#include "places/key_places.h"
#include "session/ostrand.h"

namespace ostrand::desktop {

// How much a line of the page matters, the most first.
enum class Severity {
  kPreventsSaving,
  kWarning,
  kNotice,  // what no save checks
  kFine,
};

struct CheckLine {
  Severity severity = Severity::kWarning;
  QString text;         // the title of the check, or the kind of the notice, and what was found
  QString place;        // in words; empty for a line without a place
  ScreenPlace screen;   // where to see to it; without steps for nowhere
  int programLine = 0;  // of the program, from 1; 0 for none
};

// Everything that the page lists: the findings of the checks, those against saving first, then the
// notices. A project without any has one line that says so.
std::vector<CheckLine> CheckLinesOf(Ostrand& session, ProjectStore& store);

class FindingsPage final : public QTreeWidget {
 public:
  // `open` and `showProgram` are called for a double click and for the Enter key, with the screen
  // of a finding or the line of the program.
  FindingsPage(std::function<void(const ScreenPlace&)> open, std::function<void(int)> showProgram,
               QWidget* parent);
  void Show(Ostrand& session, ProjectStore& store);

  [[nodiscard]] const std::vector<CheckLine>& Lines() const { return lines_; }
  // The number of lines that are not fine.
  [[nodiscard]] std::size_t Findings() const;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void go(int row);

  std::function<void(const ScreenPlace&)> open_;
  std::function<void(int)> showProgram_;
  std::vector<CheckLine> lines_;
};

}  // namespace ostrand::desktop
