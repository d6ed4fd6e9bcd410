#include "places/project_values.h"

#include "text/strings.h"

namespace ostrand {
namespace {

bool isOfSave(std::string_view key) { return key == "PCTime" || key == "VersionLastSaved"; }

}  // namespace

const std::string_view* ValueSection::Find(std::string_view key) const {
  const auto found = at.find(key);
  return found == at.end() ? nullptr : &values[found->second].value;
}

ProjectValues ParseValues(std::string_view text) {
  ProjectValues project;
  ValueSection* section = nullptr;
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    const std::size_t equal = line.find('=');
    if (line.starts_with('[') && equal == std::string_view::npos) {
      const auto [place, isNew] = project.sections.try_emplace(Trim(line));
      if (isNew) project.headers.push_back(place->first);
      section = &place->second;
    } else if (section != nullptr && equal != std::string_view::npos) {
      const std::string_view key = line.substr(0, equal);
      if (isOfSave(key)) continue;
      const auto [place, isNew] = section->at.try_emplace(key, section->values.size());
      if (isNew) section->values.push_back({key, {}});
      section->values[place->second].value = Trim(line.substr(equal + 1));
    }
  }
  return project;
}

}  // namespace ostrand
