#include "embedding/host_forms.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/posix/terminal_forms.h"

namespace ostrand {
namespace {

// The values of the two sides, in the same order.
constexpr std::array kButtons = {
    std::pair{platform::Buttons::kOk, BoxButtons::kOk},
    std::pair{platform::Buttons::kOkCancel, BoxButtons::kOkCancel},
    std::pair{platform::Buttons::kYesNo, BoxButtons::kYesNo},
    std::pair{platform::Buttons::kYesNoCancel, BoxButtons::kYesNoCancel},
    std::pair{platform::Buttons::kOverwriteCancel, BoxButtons::kOverwriteCancel}};
constexpr std::array kAnswers = {std::pair{platform::Answer::kOk, BoxAnswer::kOk},
                                 std::pair{platform::Answer::kCancel, BoxAnswer::kCancel},
                                 std::pair{platform::Answer::kYes, BoxAnswer::kYes},
                                 std::pair{platform::Answer::kNo, BoxAnswer::kNo},
                                 std::pair{platform::Answer::kOverwrite, BoxAnswer::kOverwrite}};
constexpr std::array kIcons = {std::pair{platform::Icon::kNone, BoxIcon::kNone},
                               std::pair{platform::Icon::kInformation, BoxIcon::kInformation},
                               std::pair{platform::Icon::kExclamation, BoxIcon::kExclamation},
                               std::pair{platform::Icon::kQuestion, BoxIcon::kQuestion},
                               std::pair{platform::Icon::kStop, BoxIcon::kStop}};

template <class Table, class Inner>
auto outer(const Table& table, Inner inner) {
  return std::find_if(table.begin(), table.end(),
                      [&](const auto& row) { return row.first == inner; })
      ->second;
}

bool hasButton(BoxButtons buttons, BoxAnswer answer) {
  const bool yesNo = buttons == BoxButtons::kYesNo || buttons == BoxButtons::kYesNoCancel;
  switch (answer) {
    case BoxAnswer::kOk:
      return buttons == BoxButtons::kOk || buttons == BoxButtons::kOkCancel;
    case BoxAnswer::kCancel:
      return buttons != BoxButtons::kOk && buttons != BoxButtons::kYesNo;
    case BoxAnswer::kYes:
    case BoxAnswer::kNo:
      return yesNo;
    case BoxAnswer::kOverwrite:
      return buttons == BoxButtons::kOverwriteCancel;
  }
  return false;
}

std::string shown(std::string_view text) {
  std::string utf8 = platform::Utf8Text(text);
  std::erase(utf8, '\r');
  return utf8;
}

}  // namespace

inline namespace v1 {

BoxAnswer SafeAnswer(BoxButtons buttons) {
  if (buttons == BoxButtons::kOk) return BoxAnswer::kOk;
  return buttons == BoxButtons::kYesNo ? BoxAnswer::kNo : BoxAnswer::kCancel;
}

}  // namespace v1

namespace embedding {

std::string HostForms::LastBoxOr(const std::string& otherwise) const {
  return lastBox_.empty() ? otherwise : lastBox_;
}

platform::Answer HostForms::ShowBox(const platform::MessageBox& box) {
  const Box asked{.title = shown(box.title),
                  .text = shown(box.text),
                  .icon = outer(kIcons, box.icon),
                  .buttons = outer(kButtons, box.buttons),
                  .preselected = outer(kAnswers, box.preselected)};
  lastBox_ = box.diskError.empty() ? asked.title + ": " + asked.text : shown(box.diskError);
  const BoxAnswer answer = host_.Show(asked);
  // An answer without a button counts as the one that loses nothing.
  const BoxAnswer possible = hasButton(asked.buttons, answer) ? answer : SafeAnswer(asked.buttons);
  return std::find_if(kAnswers.begin(), kAnswers.end(),
                      [&](const auto& row) { return row.second == possible; })
      ->first;
}

std::optional<std::string> HostForms::AskOpen(const platform::FileDialog& dialog) {
  return host_.ChooseFile({.title = shown(dialog.title),
                           .filter = shown(dialog.filter),
                           .folder = dialog.initialFolder,
                           .name = dialog.fileName,
                           .toSave = false});
}

std::optional<std::string> HostForms::AskSave(const platform::FileDialog& dialog) {
  if (saveName_) return std::exchange(saveName_, std::nullopt);
  return host_.ChooseFile({.title = shown(dialog.title),
                           .filter = shown(dialog.filter),
                           .folder = dialog.initialFolder,
                           .name = dialog.fileName,
                           .toSave = true});
}

void HostForms::SetHelpLine(const std::string& text) { host_.ShowHelpLine(shown(text)); }

void HostForms::SetPointer(platform::Pointer shape) {
  host_.ShowBusy(shape == platform::Pointer::kBusy);
}

platform::Forms& ExchangedForms::Exchange(platform::Forms& forms) {
  return *std::exchange(present_, &forms);
}

void HostEvents::StartCall() {
  program_.reset();
  complete_ = false;
}

void HostEvents::EndCall() {
  const auto program = std::exchange(program_, std::nullopt);
  const bool complete = std::exchange(complete_, false);
  if (program) host_.ProgramReady(*program);
  if (complete) host_.SessionComplete();
}

}  // namespace embedding
}  // namespace ostrand
