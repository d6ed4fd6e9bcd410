// The command that shows and changes the settings.
#include <algorithm>
#include <array>

#include "commands.h"
#include "platform/posix/posix_machine.h"
#include "session/settings.h"

namespace ostrand::cli {
namespace {

using Words = std::vector<std::string_view>;

ExitCode print(const std::string& text) {
  return Print(platform::TerminalText(text)) ? kDone : kFault;
}

ExitCode list(Settings& settings, const Words&) {
  std::string text;
  for (const SettingRow& row : settings.List()) {
    text.append(row.Name).append(" = ").append(row.Value);
    if (row.Value != row.Default) text.append("  (default ").append(row.Default).append(")");
    text += "\n";
  }
  return print(text);
}

ExitCode get(Settings& settings, const Words& words) {
  const auto row = settings.Get(words[1]);
  if (row) return print(row.Value().Value + "\n");
  ReportError(row.ErrorText());
  return kFault;
}

ExitCode set(Settings& settings, const Words& words) {
  const auto done = settings.Set(words[1], words[2]);
  if (done) return kDone;
  ReportError(done.ErrorText());
  return kFault;
}

struct Action {
  std::string_view name;
  std::size_t words;  // its name included
  ExitCode (*run)(Settings& settings, const Words& words);
};

constexpr std::array<Action, 3> kActions = {{{"list", 1, list}, {"get", 2, get}, {"set", 3, set}}};

void reportNotices(Settings& settings) {
  if (const std::string notice = settings.TakeNotice(); !notice.empty()) ReportError(notice);
}

}  // namespace

ExitCode ChangeSettings(const CommandLine& line) {
  const auto action = std::find_if(kActions.begin(), kActions.end(), [&](const Action& row) {
    return row.name == line.words.front() && row.words == line.words.size();
  });
  if (action == kActions.end()) {
    return WrongUsage("expected: list, get NAME or set NAME VALUE", "settings");
  }
  platform::SettingsPlaces places(line.syncing);
  Settings settings(places.settings, places.registry, platform::TemporaryFolder());
  settings.LoadSettings(true);
  reportNotices(settings);
  const ExitCode result = action->run(settings, line.words);
  reportNotices(settings);
  return result;
}

}  // namespace ostrand::cli
