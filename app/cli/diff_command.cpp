// The differences of two projects, in words and by key.
#include "commands.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "places/differences.h"
#include "platform/posix/terminal_forms.h"
#include "projectfile/genfile.h"
#include "text/codepage.h"
#include "text/json.h"
#include "text/number.h"

namespace ostrand::cli {
namespace {

// Git gives this name to the missing one of two files.
constexpr std::string_view kNoFile = "/dev/null";

std::unique_ptr<ProjectStore> newProject() {
  auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  ORVUS_COMMON::SetLoggerConstants(*store);
  return store;
}

// A project as this version would save it; a new one for a missing file. Nothing if it cannot be
// read, which has been reported then.
std::optional<std::string> projectText(platform::FileSystem& files, std::string_view path) {
  const auto store = newProject();
  if (path != kNoFile) {
    std::string name(path);
    if (name != "-" && !files.Taken(name) && files.Taken(name + ".VKG")) name += ".VKG";
    const auto bytes = ReadFileOrInput(files, name);
    if (!bytes) {
      ReportError(bytes.ErrorText());
      return std::nullopt;
    }
    const auto report = ORVUS_GENFILE::ReadProjectText(*store, bytes.Value());
    if (report.skipped > 0) {
      ReportError(std::string(path) +
                  ": warning: " + Utf8FromWindows1252(SkippedLineText(report.first.front())) +
                  (report.skipped > 1 ? "; in all " + NumberText(report.skipped) + " lines" : "") +
                  ": not compared");
    }
  }
  return ORVUS_GENFILE::ProjectFileText(*store, platform::Moment{});
}

Paint paintOf(Change change) {
  if (change == Change::kAdded) return Paint::kGreen;
  return change == Change::kRemoved ? Paint::kRed : Paint::kYellow;
}

// "[VOLTAGE BLOCKS] Range(2): 1000 mV -> 5000 mV"
std::string byKey(const Difference& difference) {
  std::string text = difference.section + " " + difference.key;
  if (difference.change == Change::kAdded) return text + ": added";
  if (difference.change == Change::kRemoved) return text + ": removed";
  if (difference.before.empty() && difference.wasInWords.empty())
    return text + ": " + difference.after;
  return text + ": " + difference.before + " -> " + difference.after;
}

std::string asText(const std::vector<Difference>& differences, bool keys) {
  std::string text;
  for (const Difference& difference : differences) {
    const std::string line = keys ? byKey(difference) : InWords(difference);
    text += Painted(paintOf(difference.change), platform::TerminalText(Utf8FromWindows1252(line))) +
            "\n";
  }
  return text;
}

std::string asJson(const std::vector<Difference>& differences) {
  const auto utf8 = [](std::string_view text) { return Utf8FromWindows1252(text); };
  JsonWriter json;
  json.BeginArray();
  for (const Difference& difference : differences) {
    constexpr std::string_view kChanges[] = {"value", "added", "removed"};
    json.BeginObject().Key("change").Text(kChanges[static_cast<std::size_t>(difference.change)]);
    json.Key("section").Text(difference.section).Key("key").Text(utf8(difference.key));
    json.Key("place").Text(utf8(difference.place)).Key("words").Text(utf8(difference.words));
    json.Key("before").Text(utf8(difference.before)).Key("after").Text(utf8(difference.after));
    json.Key("wasInWords").Text(utf8(difference.wasInWords));
    json.Key("isInWords").Text(utf8(difference.isInWords));
    json.Key("text").Text(utf8(InWords(difference))).End();
  }
  return json.End().Take();
}

}  // namespace

ExitCode Differ(const CommandLine& line) {
  platform::PosixFileSystem files;
  // One project alone is compared with a new one.
  const bool alone = line.words.size() == 1;
  if (!alone && line.words[0] == "-" && line.words[1] == "-") {
    return WrongUsage("standard input can be one of the projects only", "diff");
  }
  const auto before = projectText(files, alone ? kNoFile : line.words[0]);
  const auto after = projectText(files, alone ? line.words[0] : line.words[1]);
  if (!before || !after) return kFault;
  const bool ofNothing = alone || line.words[0] == kNoFile;
  const std::vector<Difference> differences =
      DifferencesOf(*before, *after, ofNothing ? ItemDetail::kByKeys : ItemDetail::kOnce);
  const std::string text =
      line.format == Format::kJson ? asJson(differences) : asText(differences, line.keys);
  const bool printed = line.quiet || Print(text);
  return printed && (alone || differences.empty()) ? kDone : kFault;
}

}  // namespace ostrand::cli
