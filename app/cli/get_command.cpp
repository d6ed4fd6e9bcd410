// The command that shows keys of a project file.
#include <algorithm>

#include "commands.h"
#include "find_files.h"
#include "project_run.h"
#include "projectfile/file_lines.h"
#include "projectfile/genfile.h"
#include "text/codepage.h"
#include "text/json.h"
#include "text/nearest.h"
#include "text/strings.h"

namespace ostrand::cli {
namespace {

struct Key {
  std::string_view name;   // with its indices
  std::string_view value;  // without blanks at its ends
};

struct Section {
  std::string_view name;
  std::vector<Key> keys;
};
using Sections = std::vector<Section>;

Sections sectionsOf(std::string_view file) {
  Sections sections;
  VisitFileLines(
      file,
      [&](std::string_view header, int) {
        sections.push_back({Before(header.substr(1), "]"), {}});
      },
      [&](std::string_view, std::string_view key, std::string_view value, int) {
        if (!sections.empty()) sections.back().keys.push_back({key, Trim(value)});
      });
  return sections;
}

// Keeps the section of a name; false, with the error reported, when there is none.
bool keepSection(Sections& sections, std::string_view wanted) {
  if (wanted.starts_with('[') && wanted.ends_with(']'))
    wanted = wanted.substr(1, wanted.size() - 2);
  std::vector<std::string_view> names;
  for (const Section& section : sections) names.push_back(section.name);
  std::erase_if(sections, [&](const Section& row) { return !SameText(row.name, wanted); });
  if (!sections.empty()) return true;
  ReportError("no section " + std::string(wanted) + DidYouMean(wanted, names));
  return false;
}

// Keeps the keys of a name. One without indices means all its rows.
bool keepKeys(Section& section, std::string_view wanted) {
  const std::string_view bare = Before(wanted, "(");
  std::vector<std::string_view> names;
  std::vector<std::string_view> rows;  // of that name
  for (const Key& key : section.keys) {
    const std::string_view name = Before(key.name, "(");
    if (SameText(name, bare)) rows.push_back(key.name);
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
  }
  std::erase_if(section.keys, [&](const Key& key) {
    return !SameText(key.name, wanted) && !SameText(Before(key.name, "("), wanted);
  });
  if (!section.keys.empty()) return true;
  std::string but = DidYouMean(bare, names);
  if (!rows.empty()) but = ", but " + std::string(rows.front());
  if (rows.size() > 1) but += " to " + std::string(rows.back());
  ReportError("[" + std::string(section.name) + "] has no key " + std::string(wanted) + but);
  return false;
}

std::string asText(const Sections& sections, const CommandLine& line) {
  const bool one = line.words.size() == 3 && sections.front().keys.size() == 1;
  if (one) return std::string(sections.front().keys.front().value) + "\r\n";
  std::string text;
  for (const Section& section : sections) {
    if (line.words.size() == 1) {
      text.append(text.empty() ? "[" : "\r\n[").append(section.name).append("]\r\n");
    }
    for (const Key& key : section.keys) {
      text.append(key.name).append("=").append(key.value).append("\r\n");
    }
  }
  return text;
}

std::string asJson(const Sections& sections) {
  JsonWriter json;
  json.BeginObject();
  for (const Section& section : sections) {
    json.Key(Utf8FromWindows1252(section.name)).BeginObject();
    for (const Key& key : section.keys) {
      json.Key(Utf8FromWindows1252(key.name)).Text(Utf8FromWindows1252(key.value));
    }
    json.End();
  }
  json.End();
  return json.Take();
}

// The keys as a save would write them, also of a file of an older version.
bool get(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file)) return false;
  const std::string bytes = ORVUS_GENFILE::ProjectFileText(session.Store(), {});
  Sections sections = sectionsOf(bytes);
  // The version and the moment are those of the file.
  const auto saved = run.files.Read(session.CurrentFileName());
  if (saved) {
    for (const Section& section : sectionsOf(saved.Value())) {
      if (section.name == sections.front().name) sections.front() = section;
    }
  }
  const std::vector<std::string_view>& words = run.line.words;
  if (words.size() > 1 && !keepSection(sections, Windows1252FromUtf8(words[1]))) return false;
  if (words.size() > 2 && !keepKeys(sections.front(), words[2])) return false;
  return Print(run.line.format == Format::kJson
                   ? asJson(sections)
                   : platform::TerminalText(asText(sections, run.line)));
}

}  // namespace

ExitCode GetKeys(const CommandLine& line) {
  return RefuseFolder(line.words.front()) ? kFault : ForProject(line, get);
}

}  // namespace ostrand::cli
