#include "controls/faces.h"

#include <optional>

#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// The row number of `name` if it has the stem; otherwise nothing.
std::optional<int> rowOf(std::string_view name, std::string_view stem) {
  if (name.size() <= stem.size() || !SameText(name.substr(0, stem.size()), stem)) {
    return std::nullopt;
  }
  const std::string_view digits = name.substr(stem.size());
  if (digits.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  return ToInt16(digits);
}

void give(Control& control, const Face& face, int row) {
  const std::size_t number = face.group.find('#');
  const bool isGroupOfRow = number != std::string_view::npos;
  control.Group = face.group;
  control.Row = isGroupOfRow ? 0 : row;
  if (isGroupOfRow) control.Group.replace(number, 1, NumberText(row));
  if (!face.caption.empty()) control.Caption = face.caption;
  if (face.kind) control.Kind(*face.kind);
  if (!face.whyDisabled.empty()) control.WhyDisabled = face.whyDisabled;
}

}  // namespace

void Describe(Screen& screen, std::span<const Face> faces) {
  for (const Face& face : faces) {
    if (!face.name.ends_with('#')) {
      if (Control* control = screen.Find(face.name)) give(*control, face, 0);
      continue;
    }
    const std::string_view stem = face.name.substr(0, face.name.size() - 1);
    for (Control* control : screen.Controls()) {
      if (const auto row = rowOf(control->Name(), stem)) give(*control, face, *row);
    }
  }
}

}  // namespace ostrand
