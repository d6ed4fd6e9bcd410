#include "project_tree.h"

#include <QContextMenuEvent>
#include <QHash>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>
#include <QSignalBlocker>

#include "icons.h"
#include "model/names.h"
#include "model/output_table.h"
#include "model/store.h"
#include "model/units.h"
#include "session/main_buttons.h"
#include "text/number.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

constexpr int kTargetRole = Qt::UserRole;    // number of the target of a line
constexpr int kPathRole = Qt::UserRole + 1;  // the line, however others come and go

// "10 mSec"; only the number for an unknown unit.
QString interval(const std::string& number, int unit) {
  return FromProject(number) + u' ' + FromProject(UnitAbbreviation(unit));
}

QString sensors(int count) {
  return count == 1 ? QStringLiteral("1 sensor") : QStringLiteral("%1 sensors").arg(count);
}

template <class Group>
void addBlocks(std::vector<TreeLine>& lines, const char* name, const char* icon, int button,
               OrvusDataObjTypes kind, const Group& group) {
  if (group.BlockCount < 1) return;
  TreeLine all{QString::fromLatin1(name), icon, PlaceOfButton(button), {}};
  for (int b = 1; b <= group.BlockCount; ++b) {
    TreeLine block{QStringLiteral("Block %1: %2").arg(b).arg(sensors(group[b].Reps)),
                   "",
                   PlaceOfItem(button, b),
                   {},
                   BlockOfItem(button, b)};
    for (int r = 1; r <= group[b].Reps; ++r) {
      const std::string& alias = group[b].Alias[r].AliasName;
      const std::string element = SourceName(kind, b) + "(" + NumberText(r) + ")";
      block.below.push_back({FromProject(alias.empty() ? element : alias),
                             "",
                             PlaceOfSensor(button, b, r),
                             {},
                             block.block});
    }
    all.below.push_back(std::move(block));
  }
  lines.push_back(std::move(all));
}

TreeLine logger(const ProjectStore& store) {
  TreeLine line{
      QStringLiteral("Logger VK7300"), "configuration", PlaceOfButton(kConfigurationButton), {}};
  line.below.push_back(
      {QStringLiteral("Scan interval ") +
           interval(NumberText(store.Scan.ExecutionTime), store.Scan.ExecTimeUnits),
       "",
       PlaceOfButton(kExecutionButton),
       {}});
  const auto modules = [&](const char* name, int count) {
    if (count < 1) return;
    line.below.push_back(
        {QString::fromLatin1(name).arg(count), "", PlaceOfButton(kConfigurationButton), {}});
  };
  modules("Multiplexers TK40M: %1", store.Config.TK40MQty);
  modules("CAN modules: %1", store.Config.CanBusQty);
  return line;
}

TreeLine tables(const ProjectStore& store) {
  TreeLine line{QStringLiteral("Output tables"), "tables", PlaceOfButton(kTablesButton), {}};
  for (int t = 1; t <= kTables; ++t) {
    const OutputTable& table = store.Tables[t];
    if (table.TableOn == 0) continue;
    const QString every = table.SyncTable != 0
                              ? QStringLiteral("each scan")
                              : interval(NumberText(table.OutInt), table.OutIntUnits);
    line.below.push_back({QStringLiteral("%1: %2, %3 bytes")
                              .arg(FromProject(table.TableName), every)
                              .arg(ORVUS_COMMON::SizeOfRecord(store, t).bytes),
                          "",
                          PlaceOfItem(kTablesButton, t),
                          {}});
  }
  return line;
}

void addUsed(std::vector<TreeLine>& lines, TreeLine line) {
  if (!line.below.empty()) lines.push_back(std::move(line));
}

TreeLine flags(const ProjectStore& store) {
  TreeLine line{QStringLiteral("Flags"), "flags", PlaceOfButton(kFlagsButton), {}};
  for (int f = 1; f <= kFlags; ++f) {
    if (store.Flags[f].FlagInclude == 0) continue;
    line.below.push_back({QStringLiteral("Flag %1").arg(f), "", PlaceOfItem(kFlagsButton, f), {}});
  }
  return line;
}

TreeLine ports(const ProjectStore& store) {
  TreeLine line{QStringLiteral("Ports"), "ports", PlaceOfButton(kPortsButton), {}};
  for (int p = 1; p <= kPorts; ++p) {
    if (store.Ports.Slot[0].Ports[p].Include == 0) continue;
    const QString name =
        p == kPorts ? QStringLiteral("Ports 1 to 8") : QStringLiteral("Port %1").arg(p);
    line.below.push_back({name, "", PlaceOfItem(kPortsButton, p), {}});
  }
  return line;
}

TreeLine outputs(const ProjectStore& store) {
  TreeLine line{QStringLiteral("Analog outputs"), "excite", PlaceOfButton(kExciteButton), {}};
  for (int channel = 1; channel <= 2; ++channel) {
    if (store.ExciteOut.Slot[0][channel].Include == 0) continue;
    line.below.push_back(
        {QStringLiteral("CAO%1").arg(channel), "", PlaceOfItem(kExciteButton, channel), {}});
  }
  return line;
}

TreeLine fields(const ProjectStore& store) {
  TreeLine line{
      QStringLiteral("Calculated fields"), "calculated", PlaceOfButton(kCalcFieldsButton), {}};
  for (int c = 1; c <= store.CalcFields.CalcFieldCount; ++c) {
    const auto& field = store.CalcFields.Field[c].CalcField;
    line.below.push_back({FromProject(field[1]) + QStringLiteral(" = ") + FromProject(field[2]),
                          "",
                          PlaceOfItem(kCalcFieldsButton, c),
                          {},
                          BlockOfItem(kCalcFieldsButton, c)});
  }
  return line;
}

TreeLine canItems(const ProjectStore& store) {
  TreeLine line{QStringLiteral("CAN items"), "can", PlaceOfButton(kCanButton), {}};
  for (int i = 1; i <= store.Can.CanCount; ++i) {
    const CanItemData& item = store.Can.Item[i];
    QString text = QStringLiteral("Item %1").arg(i);
    if (!item.Name.empty()) text += QStringLiteral(": ") + FromProject(item.Name);
    if (item.Enabled == 0) text += QStringLiteral(" (off)");
    line.below.push_back({text, "", PlaceOfItem(kCanButton, i), {}, BlockOfItem(kCanButton, i)});
  }
  return line;
}

// All lines as one text, by which a change is noticed.
QString textOf(const std::vector<TreeLine>& lines) {
  QString text;
  for (const TreeLine& line : lines) text += line.text + u'\n' + textOf(line.below) + u'\f';
  return text;
}

}  // namespace

std::vector<TreeLine> TreeOf(const ProjectStore& store) {
  std::vector<TreeLine> lines{logger(store)};
  addBlocks(lines, "Thermocouples", "thermocouple", kThermocoupleButton, ORVUS_DOBJ_BLK_TEMP,
            store.TempBlock);
  addBlocks(lines, "Voltages", "voltage", kVoltageButton, ORVUS_DOBJ_BLK_VOLT, store.VoltBlock);
  addBlocks(lines, "Bridges", "bridge", kBridgeButton, ORVUS_DOBJ_BLK_BRIDGE, store.BridgeBlock);
  addBlocks(lines, "Pulse inputs", "pulse", kPulseButton, ORVUS_DOBJ_BLK_PULSE,
            store.PulseBlock[0]);
  addBlocks(lines, "Multiplexers", "multiplexer", kTK40MButton, ORVUS_DOBJ_BLK_TK40M,
            store.TK40MBlock);
  addUsed(lines, tables(store));
  addUsed(lines, flags(store));
  addUsed(lines, ports(store));
  addUsed(lines, outputs(store));
  addUsed(lines, fields(store));
  addUsed(lines, canItems(store));
  return lines;
}

ProjectTree::ProjectTree(std::function<void(const ScreenPlace& place)> open, QWidget* parent)
    : QTreeWidget(parent), open_(std::move(open)) {
  setHeaderHidden(true);
  setAccessibleName(QStringLiteral("Project"));
  setAccessibleDescription(QStringLiteral("The parts of the project. Enter opens the screen."));
  setExpandsOnDoubleClick(false);
  header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  header()->setStretchLastSection(false);
  QObject::connect(this, &QTreeWidget::itemDoubleClicked, this,
                   [this](const QTreeWidgetItem* item) { this->open(item); });
  QObject::connect(this, &QTreeWidget::currentItemChanged, this, [this] { OnBlock(Selected()); });
}

void ProjectTree::Show(const ProjectStore& store) {
  const std::vector<TreeLine> lines = TreeOf(store);
  const QString text = textOf(lines);
  if (text == shown_) return;
  shown_ = text;
  QHash<QString, bool> expanded;
  for (QTreeWidgetItemIterator at(this); *at != nullptr; ++at) {
    expanded[(*at)->data(0, kPathRole).toString()] = (*at)->isExpanded();
  }
  const QString current =
      currentItem() == nullptr ? QString() : currentItem()->data(0, kPathRole).toString();
  const int scrolled = verticalScrollBar()->value();
  const QSignalBlocker quiet(this);
  clear();
  targets_.clear();
  for (const TreeLine& line : lines) {
    auto* item = new QTreeWidgetItem(this);
    fill(item, line, QString::fromLatin1(line.icon));
    item->setIcon(0, SystemIcon(line.icon));
  }
  for (QTreeWidgetItemIterator at(this); *at != nullptr; ++at) {
    const QString path = (*at)->data(0, kPathRole).toString();
    (*at)->setExpanded(expanded.value(path, (*at)->parent() == nullptr));
    if (path == current) setCurrentItem(*at);
  }
  verticalScrollBar()->setValue(scrolled);
}

void ProjectTree::fill(QTreeWidgetItem* item, const TreeLine& line, const QString& path) {
  item->setText(0, line.text);
  item->setToolTip(0, line.text);
  item->setData(0, kTargetRole, static_cast<int>(targets_.size()));
  item->setData(0, kPathRole, path);
  targets_.push_back({line.place, line.block});
  int number = 0;
  for (const TreeLine& below : line.below) {
    fill(new QTreeWidgetItem(item), below, path + u'/' + QString::number(++number));
  }
}

void ProjectTree::open(const QTreeWidgetItem* item) {
  // A copy, since the screen can change the tree.
  open_(ScreenPlace(targets_[static_cast<std::size_t>(item->data(0, kTargetRole).toInt())].place));
}

ProgramBlock ProjectTree::blockOf(const QTreeWidgetItem* item) const {
  if (item == nullptr) return {};
  return targets_[static_cast<std::size_t>(item->data(0, kTargetRole).toInt())].block;
}

ProgramBlock ProjectTree::Selected() const { return blockOf(currentItem()); }

void ProjectTree::Select(ProgramBlock block) {
  if (block.kind == 0 || Selected() == block) return;
  const QSignalBlocker quiet(this);
  for (QTreeWidgetItemIterator at(this); *at != nullptr; ++at) {
    if (blockOf(*at) != block) continue;
    setCurrentItem(*at);
    scrollToItem(*at);
    return viewport()->update();
  }
}

void ProjectTree::Offer(QMenu& menu) {
  if (currentItem() == nullptr) return;
  QAction* opens = menu.addAction(QStringLiteral("&Open the screen"));
  QObject::connect(opens, &QAction::triggered, this, [this] { open(currentItem()); });
  QAction* lines = menu.addAction(QStringLiteral("Show its lines in the &program"));
  lines->setEnabled(Selected().kind != 0);
  QObject::connect(lines, &QAction::triggered, this, [this] { OnShowLines(Selected()); });
}

void ProjectTree::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu;
  Offer(menu);
  if (!menu.isEmpty()) menu.exec(event->globalPos());
}

void ProjectTree::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && currentItem() != nullptr) return open(currentItem());
  QTreeWidget::keyPressEvent(event);
}

}  // namespace ostrand::desktop
