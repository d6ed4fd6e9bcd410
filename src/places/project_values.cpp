#include "places/project_values.h"

#include "projectfile/file_lines.h"

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
  const auto begin = [&](std::string_view header, int) {
    const auto [place, isNew] = project.sections.try_emplace(header);
    if (isNew) project.headers.push_back(place->first);
    section = &place->second;
  };
  VisitFileLines(text, begin,
                 [&](std::string_view, std::string_view key, std::string_view value, int) {
                   if (section == nullptr || isOfSave(key)) return;
                   const auto [place, isNew] = section->at.try_emplace(key, section->values.size());
                   if (isNew) section->values.push_back({key, {}});
                   section->values[place->second].value = Trim(value);
                 });
  return project;
}

}  // namespace ostrand
