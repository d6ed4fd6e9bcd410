#include "report/screen_listing.h"

#include <algorithm>
#include <array>
#include <map>

#include "controls/choice.h"
#include "model/new_store.h"
#include "places/settings_in_words.h"
#include "platform/surroundings.h"
#include "project_bytes.h"
#include "screens/setup_screens.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

constexpr std::string_view kOutputsGroup = "Outputs";
constexpr std::string_view kNamesScreen = "frmFldName";

bool isListed(const Control& control) {
  if (!control.Visible || control.Group == kOutputsGroup) return false;
  return control.Kind() != ControlKind::kButton && control.Kind() != ControlKind::kPicture;
}

QString captionOf(const Control& control) {
  QString caption = PlainCaption(control.Caption).trimmed();
  while (caption.endsWith(u':') || caption.endsWith(u'.')) caption.chop(1);
  return caption;
}

QString valueOf(const Control& control) {
  const bool isSwitch =
      control.Kind() == ControlKind::kCheck || control.Kind() == ControlKind::kLamp;
  if (isSwitch) return control.Text() == "on" ? QStringLiteral("yes") : QStringLiteral("no");
  return FromProject(control.Text()).simplified();
}

// A list whose rows are settings themselves, picked or not.
const Choice* rowsIn(const Control& control) {
  return control.Kind() == ControlKind::kTable ? dynamic_cast<const Choice*>(&control) : nullptr;
}

template <class Part>
Part& partOf(std::vector<Part>& parts, const QString& title) {
  const auto found = std::find_if(parts.begin(), parts.end(),
                                  [&](const Part& part) { return part.title == title; });
  if (found != parts.end()) return *found;
  parts.emplace_back().title = title;
  return parts.back();
}

void addCell(ListedTable& table, const Control& control) {
  const QString head = captionOf(control);
  qsizetype column = table.heads.indexOf(head);
  if (column < 0) {
    column = table.heads.size();
    table.heads << head;
  }
  const auto row = static_cast<std::size_t>(control.Row) - 1;
  if (table.rows.size() <= row) table.rows.resize(row + 1);
  QStringList& cells = table.rows[row];
  while (cells.size() <= column) cells << QString();
  cells[column] = valueOf(control);
}

struct BlockScreen {
  int button;
  const char* setup;  // the screen of a block, or the only one
  const char* item;
};
constexpr std::array<BlockScreen, 7> kBlockScreens = {{
    {kConfigurationButton, "frmConfig", "Configuration"},
    {kExecutionButton, "frmExecute", "Execution intervals"},
    {kThermocoupleButton, "frmTempSetup", "Thermocouple block"},
    {kVoltageButton, "frmVoltSetup", "Voltage block"},
    {kBridgeButton, "frmBrdgSetup", "Bridge block"},
    {kPulseButton, "frmPulseSetup", "Pulse block"},
    {kTK40MButton, "frmTK40MSetup", "Multiplexer block"},
}};

// Opens each block and its sensors, and leaves them by Cancel.
class BlockReader final : public ScreenHost {
 public:
  void ShowModal(Screen& screen) override {
    const BlockScreen* setup = setupOf(screen.Name());
    if (setup != nullptr) {
      listed_.push_back(
          ListingOf(screen, (QString::fromLatin1(setup->item) + u' ' + which_).trimmed()));
    } else if (screen.Name() == kNamesScreen && !listed_.empty()) {
      for (ListedTable& table : ListingOf(screen, {}).tables) {
        listed_.back().tables.push_back(std::move(table));
      }
    }
    for (Opener* opener : screen.Openers()) {
      const bool names = setup != nullptr && opener->Opens() == kNamesScreen;
      if (!opener->Usable() || (setupOf(opener->Opens()) == nullptr && !names)) continue;
      if (!names) which_ = FromProject(opener->ForWhich().value);
      opener->Press();
    }
    screen.End(ModalResult::kCancel);
  }

  std::vector<ListedScreen> Take() { return std::move(listed_); }

 private:
  static const BlockScreen* setupOf(std::string_view screen) {
    const auto* found = std::find_if(kBlockScreens.begin(), kBlockScreens.end(),
                                     [&](const BlockScreen& row) { return screen == row.setup; });
    return found == kBlockScreens.end() ? nullptr : found;
  }

  std::vector<ListedScreen> listed_;
  QString which_;
};

}  // namespace

ListedScreen ListingOf(const Screen& screen, const QString& title) {
  ListedScreen listed{title, {}, {}};
  for (const Control* control : screen.Controls()) {
    if (!isListed(*control)) continue;
    const QString group = FromProject(control->Group);
    if (control->Row > 0) {
      addCell(partOf(listed.tables, group), *control);
      continue;
    }
    const QString value = valueOf(*control);
    if (const auto* list = rowsIn(*control)) {
      std::vector<std::pair<QString, QString>>& facts = partOf(listed.groups, group).facts;
      for (std::size_t row = 0; row < list->Items.size(); ++row) {
        facts.emplace_back(captionOf(*control) + u' ' + QString::number(row + 1),
                           FromProject(list->Items[row].Text).simplified());
      }
      continue;
    }
    if (control->Caption.empty() && value.isEmpty()) continue;
    partOf(listed.groups, group).facts.emplace_back(captionOf(*control), value);
  }
  return listed;
}

QStringList BlocksWithoutScreen(const ProjectStore& store,
                                const std::vector<ListedScreen>& listed) {
  QStringList missing;
  const auto look = [&](const char* item, int blocks) {
    for (int block = 1; block <= blocks; ++block) {
      const QString title = QString::fromLatin1(item) + u' ' + QString::number(block);
      const bool found = std::any_of(listed.begin(), listed.end(), [&](const ListedScreen& screen) {
        return screen.title == title;
      });
      if (!found) missing << title;
    }
  };
  look("Thermocouple block", store.TempBlock.BlockCount);
  look("Voltage block", store.VoltBlock.BlockCount);
  look("Bridge block", store.BridgeBlock.BlockCount);
  look("Pulse block", store.PulseBlock[0].BlockCount);
  look("Second slot, pulse block", store.PulseBlock[1].BlockCount);
  look("Multiplexer block", store.TK40MBlock.BlockCount);
  return missing;
}

std::vector<ListedScreen> ScreenSettings(const Ostrand& session, const ProjectStore& store) {
  BlockReader reader;
  QuietSession quiet(session, store);
  ConnectSetupScreens(quiet.Control(), reader);
  for (const BlockScreen& row : kBlockScreens) {
    if (quiet.Control().Screens()[row.button]) quiet.Control().Screens()[row.button]();
  }
  return reader.Take();
}

std::vector<ListedScreen> ItemSettings(const ProjectStore& store) {
  std::vector<ListedScreen> listed;
  for (const PlaceSettings& settings : SettingsInWords(BytesOfStore(store))) {
    ListedGroup group;
    for (const auto& [words, value] : settings.values) {
      QString caption = FromProject(words);
      caption[0] = caption[0].toUpper();
      group.facts.emplace_back(caption, FromProject(value));
    }
    listed.push_back({FromProject(settings.place), {std::move(group)}, {}});
  }
  return listed;
}

}  // namespace ostrand::desktop
