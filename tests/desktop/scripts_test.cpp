// The scripts kept, played by keys and clicks: the same project as by the screens themselves.
#include <gtest/gtest.h>

#include "desktop_session.h"
#include "support/kept_scripts.h"
#include "widget_user.h"

namespace ostrand {
namespace {

TEST(ScriptAtWindows, EndsWithTheSameProject) {
  for (const std::string& name : testing::KeptScripts()) {
    SCOPED_TRACE(name);
    const std::string script = testing::KeptScript(name);
    const auto play = [&](bool atWindows) {
      testing::DesktopSession session;
      ScreenScript player(session.control, session.forms, script);
      std::optional<testing::WidgetUser> user;
      if (atWindows) user.emplace(session.control, player, session.windows);
      session.OpenNew();
      const Result<> played = player.Run();
      EXPECT_TRUE(played) << (played ? "" : played.ErrorText());
      return session.Text();
    };
    EXPECT_EQ(play(true), play(false));
  }
}

}  // namespace
}  // namespace ostrand
