// The scripts kept, played by keys and clicks: the same project as by the screens themselves.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "desktop_session.h"
#include "support/temp_folder.h"
#include "widget_user.h"

namespace ostrand {
namespace {

std::vector<std::string> keptScripts() {
  std::vector<std::string> names;
  for (const auto& entry :
       std::filesystem::directory_iterator(OSTRAND_SOURCE_DIR "/tests/scripts")) {
    if (entry.path().extension() == ".txt") names.push_back(entry.path().stem());
  }
  std::sort(names.begin(), names.end());
  return names;
}

class ScriptAtWindows : public ::testing::TestWithParam<std::string> {};

TEST_P(ScriptAtWindows, EndsWithTheSameProject) {
  const std::string script =
      testing::ReadDisk(OSTRAND_SOURCE_DIR "/tests/scripts/" + GetParam() + ".txt");
  const auto play = [&](bool atWindows) {
    testing::DesktopSession session;
    ScreenScript player(session.control, session.forms, script);
    std::optional<testing::WidgetUser> user;
    if (atWindows) user.emplace(session.control, player, session.windows);
    session.OpenNew();
    const Result<> played = player.Run();
    EXPECT_TRUE(played) << (played ? "" : played.ErrorText());
    return session.Bytes();
  };
  EXPECT_EQ(play(true), play(false));
}

INSTANTIATE_TEST_SUITE_P(All, ScriptAtWindows, ::testing::ValuesIn(keptScripts()),
                         [](const auto& name) { return name.param; });

}  // namespace
}  // namespace ostrand
