// Every member that a screen edits, set to two values through the screen and read back from the
// saved project. The cases are in cases/members.txt, which says how they are written;
// OSTRAND_RENEW_GOLDEN writes there what is saved now.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <utility>

#include "model/defaults.h"
#include "projectfile/genfile.h"
#include "script/screen_catalog.h"
#include "session/settings.h"
#include "support/saved_keys.h"
#include "support/script_session.h"
#include "support/temp_folder.h"
#include "text/codepage.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using testing::SavedKeys;
using testing::ScriptSession;
using Lines = std::vector<std::string>;

const std::string kCases = OSTRAND_SOURCE_DIR "/tests/script/cases/members.txt";

// The parts between separators, without blanks around them.
Lines split(std::string_view text, std::string_view separator) {
  Lines parts;
  while (true) {
    const std::size_t end = text.find(separator);
    parts.emplace_back(Trim(text.substr(0, end)));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + separator.size());
  }
}

std::string joined(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

// A way to a control and two values for it.
struct Case {
  std::string row;  // as it is written
  int line = 0;     // of it
  Lines before;
  std::string action;  // "pick Units"
  Lines values;
  Lines after;
  std::string saved;  // the lines of the file that differ

  [[nodiscard]] std::string Script(const std::string& value) const {
    return joined(edits(value)) + ways(before, "done");
  }
  // The same, left by Cancel; the last screen asks what a box of that title does. With `outside` a
  // screen that another one opens is left by Done first, and looked at.
  [[nodiscard]] std::string CancelledScript(const std::string& value, std::string_view title,
                                            bool outside) const {
    const bool looks = outside && Opens() > 1;
    std::string script = joined(edits(value)) + (looks ? "done\n" + opens().back() + "\n" : "") +
                         ways(before, "cancel");
    if (title.empty()) return script;
    return script.insert(script.rfind("cancel"), "answer " + Quoted(title) + " no\n");
  }
  // Opens the screen again, chooses what was chosen, and leaves.
  [[nodiscard]] std::string Look() const {
    Lines lines;
    for (const std::string& step : before) {
      if (step.starts_with("open ") || chooses(step)) lines.push_back(step);
    }
    return joined(lines) + ways(before, "cancel");
  }
  [[nodiscard]] std::string Screen() const { return split(opens().back(), " ").at(1); }
  [[nodiscard]] std::size_t Opens() const { return opens().size(); }
  [[nodiscard]] std::string OuterScreen() const { return split(opens().front(), " ").at(1); }
  [[nodiscard]] std::string Control() const { return split(action, " ").at(1); }
  // Whether the screen shows the value again: it does not when the value has been added to a list,
  // nor when it is what was chosen.
  [[nodiscard]] bool IsShownAgain() const {
    const auto isPress = [](const std::string& step) { return step.starts_with("press "); };
    return std::none_of(after.begin(), after.end(), isPress) && !chooses(action);
  }

 private:
  // Whether it chooses what the other controls show.
  static bool chooses(const std::string& step) {
    static const std::set<std::string> kChoosers = {"Table", "Item", "ColorRow",
                                                    "UserVarListTypes"};
    return step.starts_with("pick ") && kChoosers.contains(split(step, " ").at(1));
  }
  [[nodiscard]] Lines opens() const {
    Lines steps;
    for (const std::string& step : before) {
      if (step.starts_with("open ")) steps.push_back(step);
    }
    return steps;
  }
  [[nodiscard]] Lines edits(const std::string& value) const {
    Lines lines = before;
    lines.push_back(action + " " + value);
    lines.insert(lines.end(), after.begin(), after.end());
    return lines;
  }
  // Out of all screens. A calculator that is left by Done closes its list.
  static std::string ways(const Lines& lines, const std::string& out) {
    Lines ways;
    for (const std::string& step : lines) {
      const bool leftWithOther = out == "done" && step == "open frmSolveList";
      if (step.starts_with("open ") && !leftWithOther) ways.push_back(out);
    }
    return joined(ways);
  }
};

Case caseOf(const std::string& row, const Lines& way) {
  Case made;
  made.row = row;
  made.before = way;
  for (const std::string& part : split(row, "; ")) {
    const std::size_t colon = part.find(": ");
    if (!made.action.empty()) {
      made.after.push_back(part);
    } else if (colon == std::string::npos) {
      made.before.push_back(part);
    } else {
      made.action = part.substr(0, colon);
      made.values = split(part.substr(colon + 2), " | ");
    }
  }
  EXPECT_EQ(made.values.size(), 2U) << row;
  return made;
}

struct Cases {
  std::vector<Case> cases;
  std::map<std::string, std::string> notStored;  // controls and why
};

Cases readCases() {
  Cases read;
  Lines way;
  int number = 0;
  const Lines lines = split(testing::ReadDisk(kCases), "\n");
  for (const std::string& line : lines) {
    ++number;
    if (line.empty() || line.starts_with("#")) continue;
    if (line.starts_with("== ")) {
      way = split(line.substr(3), "; ");
    } else if (line.starts_with("[")) {
      read.cases.back().saved += line + "\n";
    } else if (way.front() == "not stored") {
      const Lines parts = split(line, ": ");
      EXPECT_EQ(parts.size(), 2U) << line;
      for (const std::string& control : split(parts.front(), ", ")) {
        read.notStored[control] = parts.back();
      }
    } else {
      read.cases.push_back(caseOf(line, way));
      read.cases.back().line = number;
    }
  }
  return read;
}

// What the project file and the user's settings hold.
SavedKeys savedOf(ScriptSession& session) {
  SavedKeys saved = testing::KeysOf(
      Utf8FromWindows1252(ORVUS_GENFILE::ProjectFileText(*session.store, session.clock.Now())));
  for (const auto& [name, rows] : session.around.settings.sections) {
    for (const auto& [key, value] : rows) {
      saved[std::string("[settings] ").append(key)] = Utf8FromWindows1252(value);
    }
  }
  return saved;
}

std::string differences(const SavedKeys& one, const SavedKeys& other) {
  std::string text;
  for (const testing::KeyChange& change : testing::ChangedKeys(one, other)) {
    text += change.key + "= " + change.before + " | " + change.after + "\n";
  }
  return text;
}

class ScreenMembers : public ::testing::Test {
 protected:
  ScreenMembers() {
    const auto store = NewStore();
    ORVUS_COMMON::SetLoggerConstants(*store);
    ORVUS_COMMON::SetAllDefaults(*store);
    MakeCatalogProject(*store);
    store->Config.AutoChan = kFalse;  // so that a channel can be typed
    store->Tables[6].TableOn = kTrue;
    project_ = ORVUS_GENFILE::ProjectFileText(*store, testing::FixedClock().Now());
    // These lists count what their blocks take.
    ScriptSession session(project_);
    EXPECT_EQ(session.Play("open frmBrdgBlock\ndone\nopen frmTK40MBlock\ndone\n"), "");
    project_ = ORVUS_GENFILE::ProjectFileText(*session.store, session.clock.Now());
  }

  // What is saved after the control has got the value. The screen shows it when it is opened again.
  SavedKeys after(const Case& made, const std::string& value) {
    ScriptSession session(project_);
    std::string shown;
    session.onEnd = [&](const Screen& screen) {
      if (screen.Name() == made.Screen()) shown = screen.Find(made.Control())->Text();
    };
    EXPECT_EQ(session.Play(made.Script(value)), "") << made.Script(value);
    EXPECT_TRUE(session.control.UserSettings().SaveSettings());
    SavedKeys saved = savedOf(session);
    if (!made.IsShownAgain()) return saved;
    const std::string before = std::exchange(shown, "");
    EXPECT_EQ(session.Play(made.Look()), "") << made.Look();
    EXPECT_EQ(shown, before);
    return saved;
  }

  // Refuses to save and finds the project as it was. Returns the title of the box that asked; empty
  // for a screen that does not ask.
  std::string expectCancelled(const Case& made, const std::string& value, bool outside) {
    std::string stopped;
    for (const std::string_view title : {"", "MEASUREMENT BLOCKS", "OUTPUT TABLES"}) {
      ScriptSession session(project_);
      stopped = session.Play(made.CancelledScript(value, title, outside));
      if (!stopped.empty()) continue;
      EXPECT_EQ(differences(testing::KeysOf(Utf8FromWindows1252(project_)), savedOf(session)), "");
      return std::string(title);
    }
    ADD_FAILURE() << stopped;
    return {};
  }

  const Cases read_ = readCases();
  std::string project_;
};

TEST_F(ScreenMembers, AreSavedWithWhatTheScreenSets) {
  std::map<int, std::string> saved;
  for (const Case& made : read_.cases) {
    SCOPED_TRACE("members.txt:" + NumberText(made.line) + ": " + made.row);
    const std::string differ =
        differences(after(made, made.values[0]), after(made, made.values[1]));
    EXPECT_NE(differ, "") << "the values make no difference";
    EXPECT_EQ(differ, made.saved);
    saved[made.line] = differ;
  }
  if (std::getenv("OSTRAND_RENEW_GOLDEN") == nullptr) return;
  std::string text;
  int number = 0;
  for (const std::string& line : split(testing::ReadDisk(kCases), "\n")) {
    ++number;
    if (!line.starts_with("[")) text += line + "\n";
    for (const std::string& key : split(saved[number], "\n")) {
      if (!key.empty()) text += "  " + key + "\n";
    }
  }
  std::ofstream(kCases, std::ios::binary) << text.substr(0, text.find_last_not_of('\n') + 2);
}

// Lists ask whether to save, but not about a screen that saves on its own, nor about one that
// belongs to a screen that was cancelled.
TEST_F(ScreenMembers, AreAsBeforeWhenTheirScreensAreCancelled) {
  for (const Case& made : read_.cases) {
    SCOPED_TRACE("members.txt:" + NumberText(made.line) + ": " + made.row);
    if (made.Opens() > 1) expectCancelled(made, made.values[1], false);
    if (made.Opens() > 2 || made.Screen() == "frmPortTables") continue;
    bool asked = false;  // the project may already hold one of the values
    for (std::size_t at = 0; at < 2 && !asked; ++at) {
      asked = !expectCancelled(made, made.values[at], true).empty();
    }
    const std::string list = made.OuterScreen();
    EXPECT_EQ(asked, list.ends_with("Block") || list == "frmCanBus" || list == "frmOutInt");
  }
}

// The first row of a table and the last one stand for all.
bool standsForOthers(const Screen& screen, const Control& control) {
  if (control.Row <= 1) return true;
  const std::string& name = control.Name();
  const std::string stem = name.substr(0, name.find_last_not_of("0123456789") + 1);
  return screen.Find(stem + NumberText(control.Row + 1)) == nullptr;
}

TEST_F(ScreenMembers, HaveACaseForEveryControlThatIsEdited) {
  std::set<std::string> missing;
  std::set<std::string> known;
  for (const Case& made : read_.cases) known.insert(made.Screen() + "." + made.Control());
  for (const auto& [control, why] : read_.notStored) {
    EXPECT_FALSE(known.contains(control)) << control << " is stored";
    EXPECT_NE(why, "") << control;
  }
  std::set<std::string> there;
  ScriptSession session(project_);
  EXPECT_EQ(session.Play(""), "");
  VisitScreens(session.control, [&](Screen& screen) {
    for (const Control* control : screen.Controls()) {
      const bool edited =
          control->Kind() >= ControlKind::kText && control->Kind() <= ControlKind::kCheck;
      if (!edited) continue;
      const std::string name = screen.Name() + "." + control->Name();
      there.insert(name);
      if (!standsForOthers(screen, *control)) continue;
      if (!known.contains(name) && !read_.notStored.contains(name)) missing.insert(name);
    }
  });
  for (const std::string& name : missing) ADD_FAILURE() << name << " has no case";
  for (const auto& [control, why] : read_.notStored)
    EXPECT_TRUE(there.contains(control)) << control;
}

}  // namespace
}  // namespace ostrand
