// The command that shows and changes the settings.
#include <algorithm>
#include <array>

#include "commands.h"
#include "platform/posix/posix_machine.h"
#include "session/settings.h"
#include "text/codepage.h"
#include "text/json.h"

namespace ostrand::cli {
namespace {

ExitCode print(const std::string& text) {
  return Print(platform::TerminalText(text)) ? kDone : kFault;
}

// Settings and their defaults, by name.
std::string asJson(const std::vector<SettingRow>& rows) {
  JsonWriter json;
  json.BeginObject();
  for (const SettingRow& row : rows) {
    json.Key(row.Name).BeginObject(JsonWriter::Layout::kOneLine);
    json.Key("value").Text(Utf8FromWindows1252(row.Value));
    json.Key("default").Text(Utf8FromWindows1252(row.Default)).End();
  }
  return json.End().Take();
}

ExitCode list(Settings& settings, const CommandLine& line) {
  if (line.format == Format::kJson) return Print(asJson(settings.List())) ? kDone : kFault;
  std::string text;
  for (const SettingRow& row : settings.List()) {
    text.append(row.Name).append(" = ").append(row.Value);
    if (row.Value != row.Default) text.append("  (default ").append(row.Default).append(")");
    text += "\n";
  }
  return print(text);
}

ExitCode get(Settings& settings, const CommandLine& line) {
  const auto row = settings.Get(line.words[1]);
  if (row && line.format == Format::kJson) return Print(asJson({row.Value()})) ? kDone : kFault;
  if (row) return print(row.Value().Value + "\n");
  ReportError(row.ErrorText());
  return kFault;
}

ExitCode set(Settings& settings, const CommandLine& line) {
  const auto done = settings.Set(line.words[1], line.words[2]);
  if (done) return kDone;
  ReportError(done.ErrorText());
  return kFault;
}

struct Action {
  std::string_view name;
  std::size_t words;  // its name included
  ExitCode (*run)(Settings& settings, const CommandLine& line);
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
  const ExitCode result = action->run(settings, line);
  reportNotices(settings);
  return result;
}

}  // namespace ostrand::cli
