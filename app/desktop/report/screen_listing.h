// The settings of a project, as its screens show them.
#pragma once

#include <QString>
#include <QStringList>
#include <utility>
#include <vector>

#include "controls/screen.h"
#include "session/ostrand.h"

namespace ostrand::desktop {

struct ListedGroup {
  QString title;
  std::vector<std::pair<QString, QString>> facts;  // captions and values
};

// Repeated controls: a row for each number, a column for each caption.
struct ListedTable {
  QString title;
  QStringList heads;
  std::vector<QStringList> rows;
};

struct ListedScreen {
  QString title;
  std::vector<ListedGroup> groups;
  std::vector<ListedTable> tables;
};

// What a person reads on a screen, without buttons, pictures and hidden controls. Selections for
// output tables are left out, since a screen shows those of one table at a time.
ListedScreen ListingOf(const Screen& screen, const QString& title);

// The configuration, the execution intervals, and the settings and the sensors of each block in
// use. The screens are opened on a copy of the project.
std::vector<ListedScreen> ScreenSettings(const Ostrand& session, const ProjectStore& store);

// The settings of tables, ports, flags, analog outputs, CAN items and calculated fields in use,
// which share a screen each.
std::vector<ListedScreen> ItemSettings(const ProjectStore& store);

// Blocks in use that are not among these, because no screen opens them: files can hold more bridges
// than the screens, and blocks on multiplexers that are not there.
QStringList BlocksWithoutScreen(const ProjectStore& store, const std::vector<ListedScreen>& listed);

}  // namespace ostrand::desktop
