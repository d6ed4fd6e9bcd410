// What keeps work from being lost: undo, recovery copies, the lock of an open project.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "desktop_session.h"
#include "open_lock.h"
#include "project_bytes.h"
#include "recovery.h"
#include "screens/setup_screens.h"
#include "support/project_random.h"
#include "support/random_user.h"
#include "support/temp_folder.h"
#include "texts.h"
#include "undo.h"

namespace ostrand {
namespace {

using desktop::KeptProject;
using desktop::OpenLock;
using desktop::Recovery;
using desktop::RecoveryCopy;
using desktop::UndoHistory;
using testing::RandomUser;

// ---- Undo ---------------------------------------------------------------------------------------

// A user at the screens of a session whose changes can be undone.
class UndoneSession {
 public:
  explicit UndoneSession(std::uint32_t seed) : all_(seed) {
    ConnectSetupScreens(session_, user_);
    all_.Open(testing::RandomProjectText(seed));
    user_.mood = RandomUser::Mood::kEdits;
  }

  // All that a screen can show, also what no save keeps.
  std::string Everything() {
    const auto copy = NewStore();
    *copy = session_.Store();
    for (OutputTable& table : copy->Tables.Table) table.TableOn = kTrue;
    for (PortSlot& slot : copy->Ports.Slot) slot.ReadMode = kFalse;
    return ORVUS_GENFILE::ProjectFileText(*copy, platform::Moment{});
  }

  KeptProject Now() const {
    KeptProject kept{NewStore(), session_.Origin(), 0};
    *kept.store = session_.Store();
    return kept;
  }
  void PutBack(const KeptProject& kept) { EXPECT_TRUE(session_.PutBack(*kept.store, kept.origin)); }

  // A visit of any screen; a step of the history when it has changed something.
  void Visit() {
    KeptProject before = Now();
    const std::string bytes = Everything();
    session_.Click(user_.Below(kExciteButton + 1));
    if (Everything() != bytes) history.Add("step", std::move(before));
  }

  RandomUser& User() { return user_; }
  Ostrand& Session() { return session_; }

  UndoHistory history;

 private:
  testing::UserSession<RandomUser> all_;
  RandomUser& user_ = all_.forms;
  Ostrand& session_ = all_.control;
};

TEST(Undo, WalksBackAndForthThroughTheSameProjects) {
  for (std::uint32_t seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(seed);
    UndoneSession session(seed);
    std::vector<std::string> states{session.Everything()};
    std::size_t at = 0;
    for (int n = 0; n < 60; ++n) {
      const int way = session.User().Below(4);
      if (way == 0 && at > 0) {
        ASSERT_FALSE(session.history.UndoName().empty());
        session.PutBack(session.history.Undo(session.Now()));
        --at;
      } else if (way == 1 && at + 1 < states.size()) {
        ASSERT_FALSE(session.history.RedoName().empty());
        session.PutBack(session.history.Redo(session.Now()));
        ++at;
      } else {
        session.Visit();
        const std::string now = session.Everything();
        if (now == states[at]) continue;
        states.resize(++at);
        states.push_back(now);
        EXPECT_EQ(session.history.RedoName(), "");
      }
      ASSERT_EQ(session.Everything(), states[at]);
    }
  }
}

TEST(Undo, KeepsFiftyStepsOfALargeProjectInItsMemory) {
  UndoneSession session(3);
  ProjectStore& store = session.Session().Store();
  for (auto& block : store.TempBlock.Blocks) {
    for (RepAlias& alias : block.Alias) alias.AliasName = "Sensor";
    for (HistoSet& histo : block.Output.Histo) histo.LevNumLevels = 3;
  }
  for (CanItemData& item : store.Can.Item) {
    for (RepAlias& alias : item.Alias) alias.AliasName = "Item";
  }
  ASSERT_GT(desktop::BytesOf(store), UndoHistory::kMaxBytes / UndoHistory::kMaxSteps);
  for (int n = 0; n < 60; ++n) {
    KeptProject before = session.Now();
    store.Scan.ExecutionTime = static_cast<float>(n + 1);
    session.history.Add(std::to_string(n), std::move(before));
    EXPECT_LE(session.history.Bytes(), UndoHistory::kMaxBytes);
  }
  int steps = 0;
  for (; !session.history.UndoName().empty(); ++steps) {
    EXPECT_EQ(session.history.UndoName(), std::to_string(59 - steps));
    session.PutBack(session.history.Undo(session.Now()));
    EXPECT_EQ(store.Scan.ExecutionTime, static_cast<float>(59 - steps));
  }
  EXPECT_EQ(steps, 50);
}

// ---- Recovery -----------------------------------------------------------------------------------

class RecoveryCopies : public ::testing::Test {
 protected:
  QString inFolder(const QString& name) const { return folder_.filePath(name); }
  void write(const QString& path, const QByteArray& bytes) const {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  // What the program that is started next finds.
  std::vector<RecoveryCopy> found() const { return Recovery(folder_.path()).LeftBehind(); }
  // As a crash leaves it: the copy, and a lock of a process that is gone.
  QString leaveBehind(const ProjectOrigin& origin, const std::string& bytes) {
    Recovery window(folder_.path());
    EXPECT_TRUE(window.Keep(origin, bytes));
    return window.File();
  }

  QTemporaryDir folder_;
};

TEST_F(RecoveryCopies, AreOfferedOnceTheirWindowIsGone) {
  ProjectOrigin origin;
  origin.path = desktop::PathOf(inFolder("pump.VKG"));
  origin.known = platform::IdentityOf(origin.path, "old");
  const std::string bytes("[GEN VERSION]\r\nOperator=\xE9\0\r\n", 28);
  {
    Recovery window(folder_.path());
    ASSERT_TRUE(window.Keep(origin, "first"));
    ASSERT_TRUE(window.Keep(origin, bytes));
    EXPECT_TRUE(found().empty()) << "its window still runs";
  }
  const std::vector<RecoveryCopy> copies = found();
  ASSERT_EQ(copies.size(), 1U);
  EXPECT_EQ(copies[0].damage, "");
  EXPECT_EQ(copies[0].bytes, bytes);
  EXPECT_EQ(copies[0].origin.path, origin.path);
  EXPECT_EQ(copies[0].origin.known.hash, origin.known.hash);
  EXPECT_EQ(copies[0].origin.known.size, origin.known.size);
  EXPECT_EQ(found().size(), 1U) << "until the user decides";
  Recovery::Discard(copies[0]);
  EXPECT_TRUE(found().empty());
}

TEST_F(RecoveryCopies, AreNotOfferedForWhatIsSaved) {
  ProjectOrigin origin;
  origin.path = desktop::PathOf(inFolder("pump.VKG"));
  leaveBehind(origin, "A=1\r\nPCTime=1\r\nB=2\r\n");
  write(inFolder("pump.VKG"), "A=1\r\nPCTime=2\r\nB=3\r\n");
  EXPECT_EQ(found().size(), 1U);
  write(inFolder("pump.VKG"), "A=1\r\nPCTime=2\r\nB=2\r\n");
  EXPECT_TRUE(found().empty());
}

TEST_F(RecoveryCopies, AreReportedWhenDamaged) {
  const QString whole = leaveBehind({}, "A=1\r\n");
  QFile file(whole);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray content = file.readAll();
  for (const QByteArray& bytes : {content.chopped(1), content + ' ', QByteArray(),
                                  QByteArray("{}\n"), QByteArray(100'000, '{')}) {
    write(whole, bytes);
    const std::vector<RecoveryCopy> copies = found();
    ASSERT_EQ(copies.size(), 1U);
    EXPECT_EQ(copies[0].damage, "damaged");
    EXPECT_TRUE(QFile::exists(whole)) << "stays until the user decides";
  }
}

TEST_F(RecoveryCopies, SayWhyTheyCannotBeKept) {
  write(inFolder("file"), "");
  for (const QString& folder : {QString(), inFolder("file/folder")}) {
    Recovery window(folder);
    EXPECT_FALSE(window.Keep({}, "A=1\r\n"));
    EXPECT_NE(window.WhyNot(), "");
    EXPECT_TRUE(window.LeftBehind().empty());
  }
}

// ---- The lock of an open project ----------------------------------------------------------------

TEST(OpenLocks, AreTakenOverOnlyWhenAskedFor) {
  const QTemporaryDir folder;
  const std::string project = desktop::PathOf(folder.filePath("Pump.VKG"));
  OpenLock first;
  EXPECT_EQ(first.Take(project), OpenLock::State::kNone) << "there is no such file";
  testing::WriteDisk(project, "");
  EXPECT_EQ(first.Take(project), OpenLock::State::kHeld);
  OpenLock second;
  EXPECT_EQ(second.Take(project), OpenLock::State::kOther);
  EXPECT_EQ(second.Other().host, QSysInfo::machineHostName());
  EXPECT_EQ(second.Take(project, true), OpenLock::State::kHeld);
  EXPECT_EQ(first.Check(), OpenLock::State::kOther);
  first.Release();
  EXPECT_EQ(second.Check(), OpenLock::State::kHeld) << "the lock of the taker stays";
  second.Release();
  EXPECT_FALSE(QFile::exists(folder.filePath(".pump.open.lock")));
}

TEST(OpenLocks, OfADeadProcessAreNoObstacle) {
  const QTemporaryDir folder;
  const std::string project = desktop::PathOf(folder.filePath("pump.VKG"));
  QFile projectFile(folder.filePath("pump.VKG"));
  ASSERT_TRUE(projectFile.open(QIODevice::WriteOnly));
  QFile file(folder.filePath(".pump.open.lock"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  const QByteArray host = QSysInfo::machineHostName().toUtf8();
  file.write("4194305\nostrand-desktop\n" + host + "\n\n\n");  // above any process number
  file.close();
  OpenLock lock;
  EXPECT_EQ(lock.Take(project), OpenLock::State::kHeld);
  EXPECT_EQ(lock.Take("/no/such/folder/pump.VKG"), OpenLock::State::kNone);
}

}  // namespace
}  // namespace ostrand
