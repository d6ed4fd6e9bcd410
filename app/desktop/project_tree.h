// The tree of what a project has, beside the pages.
#pragma once

#include <QString>
#include <QTreeWidget>
#include <functional>
#include <vector>

#include "places.h"

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
};

// Logger, blocks with their sensors, tables, flags, ports, fields, CAN items: what is in use.
std::vector<TreeLine> TreeOf(const ProjectStore& store);

class ProjectTree final : public QTreeWidget {
 public:
  // `open` is called for a double click and for the Enter key.
  ProjectTree(std::function<void(const ScreenPlace& place)> open, QWidget* parent);

  // What was opened, selected and scrolled stays so.
  void Show(const ProjectStore& store);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void fill(QTreeWidgetItem* item, const TreeLine& line, const QString& path);
  void open(const QTreeWidgetItem* item);

  std::function<void(const ScreenPlace& place)> open_;
  std::vector<ScreenPlace> places_;  // of the lines, by their number
  QString shown_;
};

}  // namespace ostrand::desktop
