#include "can/frm_can_pick.h"

#include <array>
#include <utility>

#include "can/faces.h"
#include "can/item_rules.h"
#include "can/list_items.h"
#include "model/stored_text.h"
#include "platform/box.h"
#include "platform/guarded.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr std::string_view kOpenTitle = "OPEN PICK LIST FILE";
constexpr std::string_view kSaveTitle = "SAVE PICK LIST FILE";

struct Kind {
  std::string_view filter;
  std::string_view extension;
  std::string_view bits;
};
// In the order of OrvusCanDataIDTypes.
constexpr std::array<Kind, 2> kKinds = {{
    {"(*.11LST)|*.11LST|(*.11PCK)|*.11PCK|(All Files)|*.*", ".11LST", "11"},
    {"(*.29LST)|*.29LST|(*.29PCK)|*.29PCK|(All Files)|*.*", ".29LST", "29"},
}};
const Kind& kindOf(OrvusCanDataIDTypes type) {
  return kKinds[type == ORVUS_CAN_DATAID_11BIT ? 0 : 1];
}

std::string entryText(std::size_t number, const CanListItem& item) {
  return NumberText(static_cast<std::int64_t>(number)) + ": " + item.Config.Description;
}

}  // namespace

frmCanPick::frmCanPick(const ScreenContext& context, CanPickRequest& request)
    : Screen(context, "frmCanPick"),
      ListName(*this, "ListName"),
      Items(*this, "Items"),
      Open(*this, "Open"),
      Save(*this, "Save"),
      New(*this, "New"),
      Add(*this, "Add"),
      Replace(*this, "Replace"),
      Delete(*this, "Delete"),
      Identifier(*this, "DataId"),
      DataType(*this, "DataType"),
      StartBit(*this, "StartBit"),
      NumBits(*this, "NumBits"),
      Alias(*this, "Alias"),
      Mult(*this, "Mult"),
      Offset(*this, "Offset"),
      Units(*this, "Units"),
      TxDataId(*this, "TxDataId"),
      TxDataFrame(*this, "TxDataFrame"),
      RxDataMatch(*this, "RxDataMatch"),
      RxTimeout(*this, "RxTimeout"),
      request_(request) {
  Caption = "CAN PICK LIST";
  Describe(*this, kCanPickFaces);
  bind();
  const std::string begin = std::exchange(request_.path, {});
  list_.DataIDType = type();
  showList(-1);
  // A list that has disappeared, or one for the other bus, is not an error here.
  if (CanListTypeOf(begin) == type() && request_.files.Exists(begin)) load(begin);
}

void frmCanPick::bind() {
  Items.OnPick = [this] { showChosen(); };
  Open.OnPress = [this] { openList(); };
  New.OnPress = [this] { newList(); };
  Save.OnPress = [this] { saveAs(); };
  Add.OnPress = [this] {
    list_.Items.push_back(request_.present);
    edited(static_cast<int>(list_.Items.size()) - 1);
  };
  Replace.OnPress = [this] {
    CanListItem* item = chosen();
    if (item == nullptr) return;
    *item = request_.present;
    edited(Items.Index());
  };
  Delete.OnPress = [this] {
    if (chosen() == nullptr) return;
    list_.Items.erase(list_.Items.begin() + Items.Index());
    edited(-1);
  };
}

CanListItem* frmCanPick::chosen() {
  const int index = Items.Index();
  return index < 0 ? nullptr : &list_.Items[static_cast<std::size_t>(index)];
}

platform::FileDialog frmCanPick::dialog(std::string_view title) const {
  platform::FileDialog dialog;
  dialog.title = title;
  dialog.filter = kindOf(type()).filter;
  dialog.defaultExtension = kindOf(type()).extension;
  dialog.initialFolder = request_.folder;
  return dialog;
}

// ---- The file -----------------------------------------------------------------------------------

void frmCanPick::openList() {
  if (!mayLeaveList()) return;
  const std::optional<std::string> path = Forms().AskOpen(dialog(kOpenTitle));
  if (path) load(*path);
}

void frmCanPick::load(const std::string& path) {
  auto list = ReadCanList(request_.files, path);
  if (!list) {
    ShowWarning(Forms(), kOpenTitle, list.ErrorText());
    return;
  }
  if (!isForThisBus(path, kOpenTitle)) return;
  list_ = std::move(list.Value());
  request_.path = path;
  edited_ = false;
  showList(-1);
}

bool frmCanPick::isForThisBus(const std::string& path, std::string_view title) {
  if (CanListTypeOf(path) == type()) return true;
  ShowWarning(Forms(), title,
              "The file " + path + " can't hold a pick list for identifiers of " +
                  std::string(kindOf(type()).bits) + " bits.");
  return false;
}

void frmCanPick::newList() {
  if (!mayLeaveList()) return;
  list_.Items.clear();
  request_.path.clear();
  edited_ = false;
  showList(-1);
}

bool frmCanPick::saveAs() {
  platform::FileDialog ask = dialog(kSaveTitle);
  ask.fileName = request_.path;
  std::optional<std::string> path = Forms().AskSave(ask);
  if (!path) return false;
  if (!CanListTypeOf(*path)) *path += kindOf(type()).extension;
  return isForThisBus(*path, kSaveTitle) && saveList(*path);
}

bool frmCanPick::saveList(const std::string& path) {
  const bool saved = guarded("SaveList", [&] {
    const auto written = WriteCanList(request_.files, path, list_);
    if (!written) throw FileAccess(written.ErrorText());
  });
  if (!saved) return false;
  request_.path = path;
  edited_ = false;
  ListName.Text(request_.path);
  return true;
}

// Whether the list may be closed, with or without its edits.
bool frmCanPick::mayLeaveList() {
  if (!edited_) return true;
  switch (Ask(Forms(), kSaveTitle,
              "Edits have been made to the list of items.  Save changes to disk?",
              platform::Buttons::kYesNoCancel)) {
    case platform::Answer::kYes:
      return request_.path.empty() ? saveAs() : saveList(request_.path);
    case platform::Answer::kNo:
      return true;
    default:
      return false;
  }
}

// ---- The items ----------------------------------------------------------------------------------

void frmCanPick::edited(int choose) {
  edited_ = true;
  showList(choose);
}

void frmCanPick::showList(int choose) {
  ListName.Text(request_.path);
  Items.Items.clear();
  for (const CanListItem& item : list_.Items) {
    Items.Add(entryText(Items.Items.size() + 1, item));
  }
  const Loading loading(*this);
  Items.PickAt(choose);
  showChosen();
}

void frmCanPick::showChosen() {
  const CanListItem* item = chosen();
  Replace.Enabled = item != nullptr;
  Delete.Enabled = item != nullptr;
  const CanListItem none;
  const cCanConfig& config = item != nullptr ? item->Config : none.Config;
  const bool sends = config.MessageType() != ORVUS_CAN_MSGTYPE_RxOnly;
  const auto show = [&](Label& label, bool has, const std::string& text) {
    label.Text(item != nullptr && has ? text : std::string());
  };
  const auto whole = [](int number) { return NumberText(number); };
  show(Identifier, true, config.DataID());
  show(DataType, true, whole(config.DataStyle));
  show(StartBit, true, whole(config.StartBit));
  show(NumBits, true, whole(config.NumBits));
  show(TxDataId, sends, config.TxDataID());
  show(TxDataFrame, sends, config.TxDataFrame);
  show(RxDataMatch, sends, config.RxDataMatch);
  show(RxTimeout, sends, whole(config.RxTimeout));
  const CanListItem& shown = item != nullptr ? *item : none;
  show(Alias, true, shown.Alias);
  show(Mult, true, NumberText(shown.Mult));
  show(Offset, true, NumberText(shown.Offset));
  show(Units, true, shown.Units);
}

bool frmCanPick::onDone() {
  const CanListItem* item = chosen();
  if (item != nullptr && item->Config.MessageType() != ORVUS_CAN_MSGTYPE_TxOnly &&
      !IsDataStyle(item->Config.DataStyle)) {
    ShowWarning(
        Forms(), "Invalid Rx Data Type",
        JoinLines(
            {"The Rx Data Type of " + NumberText(static_cast<int>(item->Config.DataStyle)) +
                 " is out of the allowed range [1-6] .",
             "Please check the [DataType] item in the [" + item->Config.Description + "] record",
             "of the [" + request_.path + "] pick list."}));
    return false;
  }
  if (item != nullptr && !CanBeKept(*item)) {
    Refuse(std::string(kSectionMarkHelp));
    return false;
  }
  if (!mayLeaveList()) return false;
  if (item != nullptr) request_.picked = *item;
  return true;
}

}  // namespace ostrand
