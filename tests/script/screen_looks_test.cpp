// Opening every screen of a project and leaving it by Done, without an edit, does not change the
// project, except for the keys in a table below.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "screens/setup_screens.h"
#include "support/project_random.h"
#include "support/random_user.h"
#include "support/saved_keys.h"
#include "support/temp_folder.h"
#include "support/user_session.h"
#include "text/number.h"

namespace ostrand {
namespace {

// A key that the screens of a main button renew.
struct Renewed {
  int button;
  std::string_view key;
  std::string_view value;  // what it becomes; empty for any
};
constexpr Renewed kRenewed[] = {
    // A code that the list does not offer becomes the first: -1 as the unit of an interval, and
    // days
    // for the time that the power stays on.
    {kConfigurationButton, "PowerOffMins", "0"},
    {kConfigurationButton, "PowerOnMins", "1"},
    // Checking the default sets its level.
    {kConfigurationButton, "BattTripVolts", "11.5"},
    // Whether the buffer of the scans holds more than the default.
    {kExecutionButton, "ScanBuffer", ""},
    // The grouping of a table without conditions is "1".
    {kTablesButton, "GroupWriteIf", "1"},
    // The expression of a condition follows its variable.
    {kTablesButton, "StartTrigIndvExpress", ""},
    {kTablesButton, "StopTrigIndvExpress", ""},
    // Under automatic selection a list of blocks sets the start channels of all blocks.
    {kThermocoupleButton, "StartTempChan", ""},
    {kThermocoupleButton, "StartVoltChan", ""},
    {kThermocoupleButton, "StartBrdgChan", ""},
    // The setup of a block calculates its time.
    {kThermocoupleButton, "BlockTime", ""},
    {kVoltageButton, "BlockTime", ""},
    {kBridgeButton, "BlockTime", ""},
    {kPulseButton, "BlockTime", ""},
    // A single-ended thermocouple is not tested for an open sensor, which changes its range code. A
    // check is stored as -1.
    {kThermocoupleButton, "OpenSensDetect", "0"},
    {kThermocoupleButton, "RangeNo", ""},
    {kThermocoupleButton, "ReverseMes", "-1"},
    {kBridgeButton, "OpenSensDetect", "-1"},
    {kTK40MButton, "OpenSensDetect", "-1"},
    // A strain bridge stores its gauge factor as the offset, and one for each sensor.
    {kBridgeButton, "DefaultOffset", ""},
    {kBridgeButton, "AliasGFactor", "0"},
    // The screens store the spelling of their lists.
    {kBridgeButton, "MeasType", ""},
    // A calculator without a system of units starts with the first.
    {kPulseButton, "InUnits", "1"},
    // A block that is calibrated on site stores 1, and is public.
    {kBridgeButton, "CalOnSite", "1"},
    {kPulseButton, "SiteCal", "1"},
    {kPulseButton, "Public", "-1"},
};

bool isRenewed(int button, const testing::KeyChange& change) {
  const std::size_t begin = change.key.find("] ") + 2;
  const std::string stem = change.key.substr(begin, change.key.find('(', begin) - begin);
  return std::any_of(std::begin(kRenewed), std::end(kRenewed), [&](const Renewed& row) {
    return row.button == button && row.key == stem &&
           (row.value.empty() || row.value == change.after);
  });
}

// A box that may appear at Done. All of them are about the project; any other one fails the test.
struct KnownBox {
  std::string_view title;
  bool randomOnly;  // for a random project, which holds values that no screen accepts
};
constexpr KnownBox kBoxes[] = {
    // Done refuses a trigger without conditions.
    {"INVALID TRIGGER CONDITION", false},
    // Flags with two uses, an interval that the scan interval does not divide.
    {"DUPLICATE FLAGS", false},
    {"TIMING PROBLEM 1", false},
    // Averages of a single scan, and whether to save after Done was refused.
    {"OUTPUT TABLES", false},
    // Conditions name measurements that no block has.
    {" INVALID TRIGGERED TABLE\"", true},
    {"INVALID WRITE IF TRIGGER", true},
    {"INVALID POWER OFF TRIGGER", true},
    // A grouping line names conditions that do not exist.
    {"CONDITION NUMBER RANGE ERROR", true},
    // The uses of a flag.
    {"FLAG INFORMATION", true},
    // A bridge with more excitations than the panel has left.
    {"TROUBLE", true},
    // Invalid CAN items, level crossings without values.
    {"CONTINUE WITH IMPROPER VALUES ?", true},
    {"NOT ENOUGH VALUES", true},
    // A resistance bridge with a multiplier for each sensor.
    {"DEFAULT SCALING CHANGED", true},
};

bool isKnownBox(std::string_view title, bool ofRandom) {
  return std::any_of(std::begin(kBoxes), std::end(kBoxes), [&](const KnownBox& box) {
    return box.title == title && (ofRandom || !box.randomOnly);
  });
}

constexpr std::string_view kRandom = "random_";
constexpr int kRandomProjects = 10;

std::vector<std::string> projects() {
  std::vector<std::string> names;
  for (const std::string folder : {"/examples/", "/tests/samples/"}) {
    for (const auto& entry : std::filesystem::directory_iterator(OSTRAND_SOURCE_DIR + folder)) {
      if (entry.path().extension() == ".VKG")
        names.push_back(folder + entry.path().stem().string());
    }
  }
  std::sort(names.begin(), names.end());
  for (int seed = 1; seed <= kRandomProjects; ++seed) {
    names.push_back(std::string(kRandom) + NumberText(seed));
  }
  return names;
}

// A session on a project, whose screens are looked at.
class EveryScreen {
 public:
  explicit EveryScreen(std::string name) : name_(std::move(name)) {
    user_.mood = testing::RandomUser::Mood::kLooks;
    ConnectSetupScreens(session_, user_);
    all_.Open(project());
  }

  void LeaveAsItIs() {
    // A random project holds what no screen makes. The screens of blocks give it their form first.
    const std::set<int> ofBlocks = {kThermocoupleButton, kVoltageButton, kBridgeButton,
                                    kPulseButton, kTK40MButton};
    for (int button = 0; isRandom() && button <= kExciteButton; ++button) {
      if (ofBlocks.contains(button)) session_.Click(button);
    }
    for (int button = 0; button <= kExciteButton; ++button) expectToLeave(button);
    // What is renewed once stays.
    const std::string settled = saved();
    for (int button = 0; button <= kExciteButton; ++button) session_.Click(button);
    EXPECT_EQ(saved(), settled);
    for (const std::string& title : user_.titles) {
      EXPECT_TRUE(isKnownBox(title, isRandom())) << "a box " << title;
    }
    EXPECT_EQ(user_.stuck, "");
    EXPECT_EQ(user_.trouble, "");
  }

 private:
  [[nodiscard]] bool isRandom() const { return name_.starts_with(kRandom); }
  [[nodiscard]] std::string project() const {
    if (!isRandom()) return testing::ReadDisk(OSTRAND_SOURCE_DIR + name_ + ".VKG");
    return testing::RandomProjectText(
        static_cast<std::uint32_t>(*ToInt16(name_.substr(kRandom.size()))));
  }

  std::string saved() { return all_.Text(); }
  // The screens of a button keep the keys that they do not renew.
  void expectToLeave(int button) {
    const std::string before = saved();
    session_.Click(button);
    const std::string after = saved();
    if (after == before) return;
    const auto changes = testing::ChangedKeys(testing::KeysOf(before), testing::KeysOf(after));
    EXPECT_FALSE(changes.empty()) << "the order of lines";
    for (const testing::KeyChange& change : changes) {
      EXPECT_TRUE(isRenewed(button, change)) << "button " << button << ", " << change.key << ": "
                                             << change.before << " to " << change.after;
    }
  }

  const std::string name_;
  testing::UserSession<testing::RandomUser> all_{1U};
  testing::RandomUser& user_ = all_.forms;
  Ostrand& session_ = all_.control;
};

TEST(Screens, LeaveEveryProjectAsItIs) {
  for (const std::string& name : projects()) {
    SCOPED_TRACE(name);
    EveryScreen(name).LeaveAsItIs();
  }
}

}  // namespace
}  // namespace ostrand
