// A random user on all screens: the project obeys the rules of the screens, reads back as saved,
// and its program can be generated.
//
// OSTRAND_RANDOM_SEED repeats a failed round first, OSTRAND_RANDOM_ACTIONS sets the number of
// actions.
#include "support/random_user.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "documents/summary.h"
#include "generator/program_lines.h"
#include "generator/savedld.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "screens/setup_screens.h"
#include "support/project_invariants.h"
#include "support/project_random.h"
#include "support/temp_folder.h"
#include "support/user_session.h"
#include "text/number.h"
#include "verify/verify_before_save.h"

namespace ostrand {
namespace {

using testing::RandomUser;

#if defined(__SANITIZE_ADDRESS__)
constexpr int kActions = 10'000;
#else
constexpr int kActions = 100'000;
#endif
constexpr int kVisits = 12;  // of screens in a round

int numberOf(const char* variable, int otherwise) {
  const char* text = std::getenv(variable);
  return text == nullptr ? otherwise : std::atoi(text);
}

std::string saved(ProjectStore& store) {
  return ORVUS_GENFILE::ProjectFileText(store, {2003, 3, 10, 14, 5, 0});
}

std::unique_ptr<ProjectStore> readBack(std::string_view text) {
  auto store = NewStore();
  ORVUS_COMMON::SetLoggerConstants(*store);
  ORVUS_COMMON::SetAllDefaults(*store);
  ORVUS_GENFILE::ReadProjectText(*store, text);
  return store;
}

// The lines that are in only one of the two texts.
std::string difference(const std::string& before, const std::string& after) {
  std::string text;
  const auto add = [&](const std::string& from, const std::string& other, std::string_view mark) {
    for (std::size_t at = 0; at < from.size();) {
      const std::size_t end = std::min(from.find("\r\n", at), from.size());
      const std::string line = from.substr(at, end - at);
      if (other.find(line + "\r\n") == std::string::npos)
        text.append(mark).append(line).append("\n");
      at = end + 2;
    }
  };
  add(before, after, "- ");
  add(after, before, "+ ");
  return text.empty() && before != after ? "the order of lines" : text;
}

// The text that a cancelled screen restores: without edits made on separate screens, the
// calculators and the outputs of reference temperatures, and without whether a reference is
// measured.
std::string withoutOwnScreens(const ProjectStore& project) {
  const auto store = std::make_unique<ProjectStore>(project);
  store->SpeedCalc = {};
  store->MultOffCalc = store->PotCalc = {};
  store->MVPerVoltCalc = {};
  store->RsCalc = {};
  store->RpmCalc = {};
  store->MoreSpeedCalc = {};
  store->FlowCalc = {};
  store->Config.TcConfigOpts = {};
  store->TcRef = {};
  store->TK40MRef = {};
  return saved(*store);
}

// Findings of the checks, one line each. The file does not store tables that are not in use,
// outputs of written ports, and conditions of read ports.
std::string findingsOf(const ProjectStore& project, platform::Forms& forms) {
  const auto copy = std::make_unique<ProjectStore>(project);
  ProjectStore& store = *copy;
  for (OutputTable& table : store.Tables.Table) {
    if (table.TableOn == kFalse) table = {};
  }
  for (PortSlot& slot : store.Ports.Slot) {
    if (slot.ReadMode == kFalse) slot.Output = {};
    for (Port& port : slot.Ports) {
      if (slot.ReadMode != kFalse) port.State = {};
    }
  }
  const CalcVarRefs none;
  std::string text;
  for (const Finding& finding : CheckAll({store, forms, -1, none})) {
    text.append(finding.title).append(" ").append(finding.key).append("\r\n");
  }
  return text;
}

constexpr std::string_view kExamples[] = {"building-climate", "engine-test-cell",
                                          "thermal-survey",   "vehicle-test",
                                          "weather-mast",     "bridge-monitoring"};

// One user, one project, some visits.
class Round {
 public:
  explicit Round(std::uint32_t seed) : all_(seed) {
    ConnectSetupScreens(session_, user_);
    all_.Open(projectOf(seed));
    // Viewing the screens normalizes the rest of a file.
    user_.mood = RandomUser::Mood::kLooks;
    for (int button = 0; button <= kExciteButton; ++button) look(button);
    inStep_ = stepsMissed().empty();
  }

  // The first fault; empty for none.
  std::string Play() {
    for (int visit = 0; visit < kVisits; ++visit) {
      if (std::string wrong = playVisit(); !wrong.empty()) return wrong;
    }
    return {};
  }

  [[nodiscard]] RandomUser& User() { return user_; }

 private:
  static std::string projectOf(std::uint32_t seed) {
    if (seed % 3 == 2) return testing::RandomProjectText(seed);
    if (seed % 3 == 1) {
      const std::string name(kExamples[seed % std::size(kExamples)]);
      return testing::ReadDisk(OSTRAND_SOURCE_DIR "/examples/" + name + ".VKG");
    }
    const auto project = readBack({});
    project->Config.AutoChan = seed % 2 == 0 ? kTrue : kFalse;
    project->Config.TK40MQty = static_cast<i16>(seed % 5);
    project->Config.CanBusQty = 1;
    return saved(*project);
  }

  // A program that exceeds its number of lines is reported, and written without the rest.
  bool programIsFull() {
    const std::string program = all_.files.files["/new.VKP"];
    return std::count(program.begin(), program.end(), '\n') >= ProgramLines::kMaxLines;
  }

  // Opens the button's screens and leaves them by Done.
  void look(int button) {
    user_.mood = RandomUser::Mood::kLooks;
    session_.Click(button);
  }

  // Faults of the blocks under either channel selection.
  std::string stepsMissed() { return testing::SensorsOutOfStep(session_.Store()); }

  // Faults after a visit of the button's screen.
  std::string outOfOrder(int button, bool fitted) {
    ProjectStore& store = session_.Store();
    std::string text;
    if (inStep_) text += stepsMissed();
    if (fitted && button != kConfigurationButton) text += testing::ChannelsExceeded(store);
    const bool places =
        button == kThermocoupleButton || button == kVoltageButton || button == kBridgeButton;
    if (places && inStep_ && user_.ended == ModalResult::kDone) text += testing::WrongStarts(store);
    return text;
  }

  std::string playVisit() {
    const int button = user_.Below(kExciteButton + 1);
    if (!session_.MainButtons().Enabled(button)) return {};
    const std::string before = withoutOwnScreens(session_.Store());
    const bool fitted = testing::ChannelsExceeded(session_.Store()).empty();
    user_.mood = RandomUser::Mood::kEdits;
    session_.Click(button);
    if (!user_.stuck.empty()) return user_.stuck + " can't be left";
    if (!user_.unexplained.empty()) return user_.unexplained + " does not say why it is disabled";
    if (!user_.trouble.empty()) return user_.trouble;
    const std::string after = saved(session_.Store());
    if (user_.ended == ModalResult::kCancel && withoutOwnScreens(session_.Store()) != before) {
      return "cancelled:\n" + difference(before, withoutOwnScreens(session_.Store()));
    }
    if (const std::string wrong = outOfOrder(button, fitted); !wrong.empty()) return wrong;
    const auto again = readBack(after);
    if (saved(*again) != after) return "read back:\n" + difference(after, saved(*again));
    again->EstMeasTime = session_.Store().EstMeasTime;
    const std::string found = findingsOf(session_.Store(), user_);
    if (findingsOf(*again, user_) != found) {
      return "checks after reading back:\n" + difference(found, findingsOf(*again, user_));
    }

    look(button);
    session_.SavePipeline();
    if (programIsFull()) user_.trouble.clear();
    return user_.trouble;
  }

  bool inStep_ = false;  // the project started in the form of its screens
  testing::UserSession<RandomUser> all_;
  RandomUser& user_ = all_.forms;
  Ostrand& session_ = all_.control;
};

TEST(RandomUser, KeepsEveryProjectInOrder) {
  const auto first = static_cast<std::uint32_t>(numberOf("OSTRAND_RANDOM_SEED", 1));
  const int wanted = numberOf("OSTRAND_RANDOM_ACTIONS", kActions);
  std::set<std::string> screens;
  int actions = 0;
  std::uint32_t seed = first;
  for (; actions < wanted; ++seed) {
    Round round(seed);
    const std::string wrong = round.Play();
    if (!wrong.empty()) FAIL() << "OSTRAND_RANDOM_SEED=" << seed << " repeats it\n" << wrong;
    actions += round.User().actions;
    screens.merge(round.User().screens);
  }
  std::printf("seeds %u to %u: %d actions on %zu screens\n", first, seed - 1, actions,
              screens.size());
}

}  // namespace
}  // namespace ostrand
