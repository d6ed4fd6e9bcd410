// A random user on all screens: the project reads back as saved, and its program can be generated.
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
#include "support/project_random.h"
#include "support/saved_keys.h"
#include "support/temp_folder.h"
#include "support/user_session.h"
#include "text/number.h"

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

// The keys that differ.
std::string difference(const std::string& before, const std::string& after) {
  std::string text;
  for (const auto& change : testing::ChangedKeys(testing::KeysOf(before), testing::KeysOf(after))) {
    text += change.key + ": " + change.before + " | " + change.after + "\n";
  }
  return text.empty() && before != after ? "the order of lines" : text;
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

  std::string playVisit() {
    const int button = user_.Below(kExciteButton + 1);
    if (!session_.MainButtons().Enabled(button)) return {};
    user_.mood = RandomUser::Mood::kEdits;
    session_.Click(button);
    if (!user_.stuck.empty()) return user_.stuck + " can't be left";
    if (!user_.unexplained.empty()) return user_.unexplained + " does not say why it is disabled";
    if (!user_.trouble.empty()) return user_.trouble;
    const std::string after = saved(session_.Store());
    const auto again = readBack(after);
    if (saved(*again) != after) return "read back:\n" + difference(after, saved(*again));
    look(button);
    session_.SavePipeline();
    if (programIsFull()) user_.trouble.clear();
    return user_.trouble;
  }

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
