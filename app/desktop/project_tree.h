// The tree of what a project has, beside the pages.
#pragma once

#include <QString>
#include <QTreeWidget>
#include <functional>
#include <vector>

#include "places.h"

class QMenu;

namespace ostrand {
struct ProjectStore;
}

namespace ostrand::desktop {

// A line of the tree and those below it.
struct TreeLine {
  QString text;
  const char* icon = "";
  ScreenPlace place;
  std::vector<TreeLine> below;
  ProgramBlock block = {};  // whose lines the program has
};

// Logger, blocks with their sensors, tables, flags, ports, fields, CAN items: what is in use.
std::vector<TreeLine> TreeOf(const ProjectStore& store);

class ProjectTree final : public QTreeWidget {
 public:
  // `open` is called for a double click and for the Enter key.
  ProjectTree(std::function<void(const ScreenPlace& place)> open, QWidget* parent);

  // Called with the block, or that of the sensor, that the user has selected; with kind 0 for
  // any other line.
  std::function<void(ProgramBlock)> OnBlock = [](ProgramBlock) {};
  // Called when the user asks for the lines of a block in the program.
  std::function<void(ProgramBlock)> OnShowLines = [](ProgramBlock) {};

  // What was opened, selected and scrolled stays so.
  void Show(const ProjectStore& store);
  // Selects the line of a block, unless it is that of one of its sensors; nothing is reported.
  void Select(ProgramBlock block);
  // Of the selected line.
  [[nodiscard]] ProgramBlock Selected() const;
  // What can be done with the selected line.
  void Offer(QMenu& menu);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void fill(QTreeWidgetItem* item, const TreeLine& line, const QString& path);
  void open(const QTreeWidgetItem* item);
  [[nodiscard]] ProgramBlock blockOf(const QTreeWidgetItem* item) const;

  std::function<void(const ScreenPlace& place)> open_;
  struct Target {
    ScreenPlace place;
    ProgramBlock block;
  };
  std::vector<Target> targets_;  // of the lines, by their number
  QString shown_;
};

}  // namespace ostrand::desktop
