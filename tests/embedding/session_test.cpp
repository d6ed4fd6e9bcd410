// Ostrand as another program embeds it: by its public headers alone.
#include <gtest/gtest.h>
#include <ostrand/ostrand.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <thread>

#include "support/cli_run.h"
#include "support/stand_ins.h"
#include "support/temp_folder.h"

namespace ostrand {
namespace {

using testing::ReadDisk;
using testing::TempFolder;
using Files = std::map<std::string, std::string>;

// Notes each call of a handler as "Name text" and then runs `onCall`.
class NotingHost : public Host {
 public:
  using Hook = std::function<void(const std::string& handler)>;

  BoxAnswer Show(const Box& box) override {
    note("Show", box.title);
    texts.push_back(box.text);
    return answer.value_or(Host::Show(box));
  }
  std::optional<std::string> ChooseFile(const FileQuestion& question) override {
    note("ChooseFile", question.title);
    return Host::ChooseFile(question);
  }
  void ShowHelpLine(const std::string& text) override { note("ShowHelpLine", text); }
  void ShowBusy(bool busy) override { note("ShowBusy", busy ? "on" : "off"); }
  void Beep() override { note("Beep", ""); }
  void RunEvents() override { note("RunEvents", ""); }
  void ProjectNamed(const std::string& path) override {
    note("ProjectNamed", std::filesystem::path(path).filename());
  }
  void UnsavedChanged(bool unsaved) override { note("UnsavedChanged", unsaved ? "yes" : "no"); }
  void SummaryChanged() override { note("SummaryChanged", ""); }
  void ProgramReady(const std::string& path) override {
    note("ProgramReady", std::filesystem::path(path).filename());
  }
  void SessionComplete() override { note("SessionComplete", ""); }

  // The calls since the last time, repetitions left out.
  std::vector<std::string> Take() {
    calls_.erase(std::unique(calls_.begin(), calls_.end()), calls_.end());
    return std::exchange(calls_, {});
  }

  Hook onCall;
  std::optional<BoxAnswer> answer;
  std::vector<std::string> texts;

 private:
  void note(const std::string& handler, const std::string& text) {
    calls_.push_back(text.empty() ? handler : handler + " " + text);
    if (onCall) onCall(handler);
  }

  std::vector<std::string> calls_;
};

const std::string kExamples = std::string(OSTRAND_SOURCE_DIR) + "/examples/";
constexpr std::string_view kTwoSensors =
    "type txtOper Jürgen\n"
    "open frmVoltBlock\n  spin BlockCount up\n  open frmVoltSetup 1\n    type Reps 2\n"
    "  done\ndone\n";

Files contentOf(const std::string& folder) {
  Files files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    files[entry.path().filename()] = ReadDisk(entry.path());
  }
  return files;
}

class EmbeddedSession : public ::testing::Test {
 protected:
  EmbeddedSession() { compiles("good"); }

  static void compiles(const char* behaviour) { ::setenv("STAND_IN", behaviour, 1); }
  [[nodiscard]] SessionOptions options() const {
    return {.settingsFile = folder_ / "settings",
            .compiler = OSTRAND_STAND_IN,
            .fixedTime = 1'000'000'000};
  }
  std::unique_ptr<Session> session() { return std::make_unique<Session>(host_, options()); }
  std::string copied(const std::string& example) {
    std::filesystem::copy_file(kExamples + example, projects_ / example,
                               std::filesystem::copy_options::overwrite_existing);
    return projects_ / example;
  }

  TempFolder folder_;
  TempFolder projects_;
  NotingHost host_;
};

TEST_F(EmbeddedSession, MakesAProjectFromNothing) {
  const auto session = this->session();
  const std::string path = projects_ / "bench.VKG";
  EXPECT_TRUE(session->New(path));
  EXPECT_EQ(session->Play(kTwoSensors).error, "");
  EXPECT_TRUE(session->Unsaved());
  EXPECT_NE(session->Summary().value.find("VOLTS"), std::string::npos) << session->Summary().value;
  EXPECT_EQ(session->Wiring().error, "");
  const auto problems = session->Check();
  ASSERT_TRUE(problems);
  for (const Problem& problem : problems.value) EXPECT_FALSE(problem.preventsSaving);
  EXPECT_TRUE(std::filesystem::is_empty(projects_.Path())) << "nothing is written before a save";

  const auto saved = session->Save();
  EXPECT_EQ(saved.error, "");
  EXPECT_EQ(saved.value, (Paths{projects_ / "bench.VKG", projects_ / "bench.VKP",
                                projects_ / "bench.VKD", projects_ / "bench.VKW"}));
  EXPECT_FALSE(session->Unsaved());
  EXPECT_NE(ReadDisk(path).find("J\xFCrgen"), std::string::npos) << "Windows-1252 in the file";
  EXPECT_EQ(session->File(), path);
  EXPECT_EQ(session->Name(), "bench");

  // Two sessions of one thread do not disturb each other.
  NotingHost otherHost;
  Session other(otherHost, options());
  EXPECT_TRUE(other.Open(copied("engine-test-cell.VKG")));
  EXPECT_EQ(other.Name(), "engine-test-cell");
  EXPECT_EQ(session->Name(), "bench");
}

TEST_F(EmbeddedSession, GeneratesTheGoldenFilesOfAllExamples) {
  SessionOptions own = options();
  own.fixedTime = 1'047'305'100;
  Session session(host_, own);
  for (const auto& entry : std::filesystem::directory_iterator(kExamples)) {
    if (entry.path().extension() != ".VKG") continue;
    EXPECT_EQ(session.Open(entry.path().string()).error, "");
    const auto generated = session.Generate(projects_.Path());
    EXPECT_EQ(generated.error, "");
    EXPECT_EQ(generated.value.size(), 3U);
  }
  const Files made = contentOf(projects_.Path());
  EXPECT_EQ(made.size(), 3U * 7);
  for (const auto& [name, bytes] : made) {
    EXPECT_EQ(bytes, ReadDisk(OSTRAND_SOURCE_DIR "/tests/golden/" + name)) << name;
  }
}

TEST_F(EmbeddedSession, PlaysStrictlyUnlessAskedNotTo) {
  const auto session = this->session();
  const std::string path = (projects_ / "strict.VKG");
  ASSERT_TRUE(session->New(path));
  const std::string_view script =
      "open frmOutInt\n  check TableOn on\n  type TableName \"a[\"\ndone\n";
  EXPECT_EQ(session->Play(script).error.substr(0, 36), "line 3: TableName does not accept \"[");
  ASSERT_TRUE(session->New(path));
  EXPECT_EQ(session->Play(script, Playing::kLenient).error, "");
}

TEST_F(EmbeddedSession, FindsWhatTheCommandFinds) {
  const auto session = this->session();
  const std::string path = copied("engine-test-cell.VKG");
  std::string text = ReadDisk(path);
  const std::string key = "ExecutionTime= 100\r\n";
  ASSERT_NE(text.find(key), std::string::npos);
  testing::WriteDisk(path, text.replace(text.find(key), key.size(), "ExecutionTime= 1\r\n"));
  ASSERT_TRUE(session->Open(path));
  const auto found = session->Check();
  ASSERT_TRUE(found);
  ASSERT_FALSE(found.value.empty());
  const std::string report = testing::RunOstrand({"check", path}).out;
  for (const Problem& problem : found.value) {
    EXPECT_NE(report.find(problem.title), std::string::npos) << problem.title;
    EXPECT_EQ(problem.text.find('\r'), std::string::npos);
  }
  EXPECT_TRUE(std::any_of(found.value.begin(), found.value.end(),
                          [](const Problem& problem) { return problem.preventsSaving; }));

  // The default answers write nothing, and an earlier save does not count.
  const Files before = contentOf(projects_.Path());
  EXPECT_NE(session->Save().error, "");
  EXPECT_EQ(contentOf(projects_.Path()), before);
  ASSERT_TRUE(session->Open(copied("weather-mast.VKG")));
  ASSERT_EQ(session->Save().error, "");
  ASSERT_TRUE(session->Open(path));
  const auto refused = session->Save();
  EXPECT_NE(refused.error, "");
  EXPECT_EQ(refused.value, Paths());
  host_.answer = BoxAnswer::kYes;
  EXPECT_EQ(session->Save().error, "");
}

TEST_F(EmbeddedSession, ReportsEventsInTheirOrder) {
  const auto session = this->session();
  host_.Take();
  ASSERT_TRUE(session->Open(copied("weather-mast.VKG")));
  EXPECT_EQ(host_.Take(), (std::vector<std::string>{"ShowBusy on", "ProjectNamed weather-mast.VKG",
                                                    "SummaryChanged", "ShowBusy off"}));
  ASSERT_TRUE(session->Play("open frmFlags\ndone\n"));
  auto calls = host_.Take();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "UnsavedChanged yes"), 1);
  const auto sent = session->SaveAndSend(projects_ / "mast-2.VKG");
  EXPECT_EQ(sent.error, "");
  calls = host_.Take();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "ProjectNamed mast-2.VKG"), 1);
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "UnsavedChanged no"), 1);
  EXPECT_EQ(calls.back(), "ProgramReady mast-2.VKP");

  ASSERT_TRUE(session->Play("open frmFlags\ndone\n"));
  EXPECT_FALSE(session->Close()) << "Cancel is the answer that loses nothing";
  EXPECT_NE(host_.Take().back(), "SessionComplete");
  host_.answer = BoxAnswer::kNo;
  EXPECT_TRUE(session->Close());
  EXPECT_EQ(host_.Take().back(), "SessionComplete");
}

TEST_F(EmbeddedSession, CompilesByTheLoggersCompiler) {
  const auto session = this->session();
  ASSERT_TRUE(session->Open(copied("weather-mast.VKG")));
  EXPECT_EQ(session->Compile().error, "");
  const struct {
    const char* behaviour;
    const char* error;
  } failures[] = {{"bad", "COMPILE RESULT: Pre-Compiler: "},
                  {"versionnone", "Skipped version. " OSTRAND_STAND_IN}};
  for (const auto& row : failures) {
    compiles(row.behaviour);
    EXPECT_EQ(session->Compile().error.find(row.error), 0U) << session->Compile().error;
    const auto sent = session->SaveAndSend();
    EXPECT_EQ(sent.value.size(), 4U) << "saved, but";
    EXPECT_EQ(sent.error.find("Not sent. "), 0U) << sent.error;
  }
  const auto calls = host_.Take();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "ProgramReady weather-mast.VKP"), 0);
  EXPECT_EQ(testing::StandInsAlive(), 0);
}

// The host returns at once; the millisecond between two rounds is the session's.
TEST_F(EmbeddedSession, PausesWhileItWaits) {
  compiles("slow");
  const auto session = this->session();
  ASSERT_TRUE(session->Open(copied("weather-mast.VKG")));
  long rounds = 0;
  host_.onCall = [&](const std::string& handler) { rounds += handler == "RunEvents" ? 1 : 0; };
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(session->Compile().error, "");
  const auto elapsed = std::chrono::steady_clock::now() - start;
  EXPECT_GT(rounds, 0);
  EXPECT_LE(rounds, std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count() + 1);
}

struct Action {
  const char* name;
  std::function<std::string(Session&)> run;  // returns the error
};

std::vector<Action> actionsOn(const std::string& project, const std::string& folder) {
  return {
      {"New", [=](Session& s) { return s.New(project).error; }},
      {"Open", [=](Session& s) { return s.Open(project).error; }},
      {"Play", [=](Session& s) { return s.Play("open frmFlags\ndone\n").error; }},
      {"Check", [=](Session& s) { return s.Check().error; }},
      {"Summary", [=](Session& s) { return s.Summary().error; }},
      {"Wiring", [=](Session& s) { return s.Wiring().error; }},
      {"Generate", [=](Session& s) { return s.Generate(folder).error; }},
      {"Compile", [=](Session& s) { return s.Compile().error; }},
      {"Save", [=](Session& s) { return s.Save().error; }},
      {"SaveAndSend", [=](Session& s) { return s.SaveAndSend().error; }},
      {"Close", [=](Session& s) { return s.Close().error; }},
  };
}

TEST_F(EmbeddedSession, IsUsableAfterAnExceptionOfEachHandler) {
  const std::string project = copied("weather-mast.VKG");
  const std::string original = ReadDisk(project);
  Files expected;
  {
    const auto session = this->session();
    ASSERT_TRUE(session->Open(project));
    ASSERT_EQ(session->Save().error, "");
    expected = contentOf(projects_.Path());
  }
  std::map<std::string, int> thrown;
  for (const Action& action : actionsOn(project, folder_.Path())) {
    for (const char* handler :
         {"Show", "ShowHelpLine", "ShowBusy", "Beep", "RunEvents", "ProjectNamed", "UnsavedChanged",
          "SummaryChanged", "ProgramReady", "SessionComplete"}) {
      compiles(handler == std::string("RunEvents") ? "slow" : "good");  // slow: it is waited for
      testing::WriteDisk(project, original);
      const auto session = this->session();
      ASSERT_TRUE(session->Open(project));
      ASSERT_TRUE(session->Play("open frmFlags\ndone\n"));
      host_.answer.reset();
      if (action.name == std::string("Close")) host_.answer = BoxAnswer::kNo;
      host_.onCall = [&](const std::string& called) {
        if (called == handler) throw std::runtime_error("handler");
      };
      bool threw = false;
      try {
        static_cast<void>(action.run(*session));
      } catch (const std::runtime_error&) {
        threw = true;
        ++thrown[handler];
      }
      host_.onCall = nullptr;
      if (!threw) continue;
      SCOPED_TRACE(std::string(action.name) + ", " + handler);
      EXPECT_FALSE(session->Running());
      testing::WriteDisk(project, original);
      ASSERT_EQ(session->Open(project).error, "");
      EXPECT_EQ(session->Play("open frmFlags\ndone\n").error, "");
      ASSERT_EQ(session->Open(project).error, "");
      EXPECT_EQ(session->Save().error, "");
      EXPECT_EQ(contentOf(projects_.Path()), expected);
    }
  }
  for (const char* handler :
       {"Show", "ShowHelpLine", "ShowBusy", "Beep", "RunEvents", "ProjectNamed", "UnsavedChanged",
        "SummaryChanged", "ProgramReady", "SessionComplete"}) {
    EXPECT_GT(thrown[handler], 0) << handler << " was never called";
  }
  EXPECT_EQ(testing::StandInsAlive(), 0);
}

TEST_F(EmbeddedSession, RefusesCallsFromAHandler) {
  compiles("slow");
  const std::string project = copied("weather-mast.VKG");
  const std::string other = copied("building-climate.VKG");
  const auto actions = actionsOn(project, folder_.Path());
  const auto inner = actionsOn(other, folder_.Path());
  std::map<std::string, int> refused;
  for (const Action& action : actions) {
    const auto session = this->session();
    ASSERT_TRUE(session->Open(project));
    ASSERT_TRUE(session->Play("open frmFlags\ndone\n"));
    bool late = false;
    host_.onCall = [&](const std::string& handler) {
      const bool last = handler == "ProgramReady" || handler == "SessionComplete";
      EXPECT_EQ(session->Running(), !last) << handler;
      if (last) {
        late = true;
        return;
      }
      for (const Action& call : inner) {
        EXPECT_EQ(call.run(*session), "Refused: a call of this session is running.")
            << call.name << " from " << handler << " of " << action.name;
        ++refused[handler];
      }
      EXPECT_EQ(session->Name(), "weather-mast");
    };
    static_cast<void>(action.run(*session));
    host_.onCall = nullptr;
    EXPECT_EQ(late, action.name == std::string("SaveAndSend")) << action.name;
  }
  EXPECT_GT(refused["RunEvents"], 0);
  EXPECT_GT(refused["SummaryChanged"], 0);

  // The last event comes when the call is over.
  const auto session = this->session();
  ASSERT_TRUE(session->Open(project));
  host_.onCall = [&](const std::string& handler) {
    if (handler != "ProgramReady") return;
    EXPECT_EQ(session->Open(other).error, "");
  };
  EXPECT_EQ(session->SaveAndSend().error, "");
  EXPECT_EQ(session->Name(), "building-climate");
}

TEST_F(EmbeddedSession, MayBeDestroyedByAHandler) {
  const std::string project = copied("weather-mast.VKG");
  auto session = this->session();
  ASSERT_TRUE(session->Open(project));
  host_.onCall = [&](const std::string& handler) {
    if (handler == "ProjectNamed") session.reset();
  };
  EXPECT_EQ(session->Save().error, "");
  EXPECT_EQ(session, nullptr);
  EXPECT_EQ(contentOf(projects_.Path()).size(), 4U);
}

TEST_F(EmbeddedSession, RefusesOtherThreads) {
  const std::string project = copied("weather-mast.VKG");
  const auto session = this->session();
  ASSERT_TRUE(session->Open(project));
  std::thread([&] {
    for (const Action& action : actionsOn(project, folder_.Path())) {
      EXPECT_EQ(action.run(*session), "Refused: a session is used on the thread that made it.")
          << action.name;
    }
  }).join();
}

TEST_F(EmbeddedSession, SaysWhyItFailed) {
  const std::string nowhere = projects_ / "none/x.VKG";
  const struct {
    const char* what;
    std::function<std::string(Session&)> run;
    std::string error;  // its beginning
  } rows[] = {
      {"no name", [](Session& s) { return s.Open("").error; }, "No file name"},
      {"missing", [&](Session& s) { return s.Open(projects_ / "x.VKG").error; },
       "FILE NOT FOUND: The requested program generator file: \n"},
      {"new without a name", [](Session& s) { return s.New("").error; }, ": no file name"},
      {"save without a name", [](Session& s) { return s.Save().error; },
       "The project has no file name"},
      {"generate without a name", [](Session& s) { return s.Generate().error; },
       "The project has no file name"},
      {"script", [](Session& s) { return s.Play("\nopen frmNone\n").error; }, "line 2: "},
      {"no folder",
       [&](Session& s) {
         EXPECT_TRUE(s.New(nowhere));
         return s.Save().error;
       },
       projects_ / "none"},
      {"outputs without a folder",
       [&](Session& s) { return s.New(nowhere) ? s.Generate().error : ""; }, projects_ / "none"},
  };
  for (const auto& row : rows) {
    const auto session = this->session();
    const std::string error = row.run(*session);
    EXPECT_EQ(error.substr(0, row.error.size()), row.error) << row.what << ": " << error;
    EXPECT_FALSE(session->Running());
  }
}

TEST_F(EmbeddedSession, AsksByBoxesAndKeepsItsSettings) {
  SessionOptions own = options();
  own.compiler.clear();
  {
    Session session(host_, own);
    ASSERT_TRUE(session.New(projects_ / "x.VKG"));
    host_.Take();
    EXPECT_NE(session.Compile().error, "");
    const auto calls = host_.Take();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Show MISSING FILE"), 1);
    host_.answer = BoxAnswer::kOverwrite;  // the box has no such button
    EXPECT_NE(session.Compile().error, "");
    host_.answer = BoxAnswer::kYes;
    EXPECT_NE(session.Compile().error, "");
    const auto asked = host_.Take();
    EXPECT_EQ(std::count(asked.begin(), asked.end(), "ChooseFile FIND VK7300 COMPILER"), 1);
    EXPECT_EQ(session.Play("open frmOptOrvus\n  type DefaultScanInterval 7\ndone\n").error, "");
  }
  EXPECT_NE(ReadDisk(own.settingsFile).find("7"), std::string::npos);
  Session again(host_, own);
  ASSERT_TRUE(again.New(projects_ / "x.VKG"));
  EXPECT_EQ(again.Play("open frmExecute\n  expect ExecutionTime 7\ndone\n").error, "");
}

}  // namespace
}  // namespace ostrand
