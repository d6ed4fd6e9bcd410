// Lists of ready-made CAN items, from which one is picked.
#pragma once

#include <optional>
#include <string>

#include "can/pick_list.h"
#include "controls/choice.h"
#include "controls/screen.h"

namespace ostrand {

// Input and result of the screen. Must outlive it.
struct CanPickRequest {
  platform::FileSystem& files;
  std::string folder;                      // where the dialogs start
  CanListItem present;                     // the project's item, which can be added to the list
  std::string path;                        // of the list, on opening and at the end; empty for none
  std::optional<CanListItem> picked = {};  // set by Done
};

// Works on one list at a time, for the bus of the project. Done picks the chosen item, if any.
class frmCanPick final : public Screen {
 public:
  frmCanPick(const ScreenContext& context, CanPickRequest& request);

  Label ListName;  // the file; empty for a new list
  Choice Items;    // "1: " and the description, in the order of the file
  Button Open;
  Button Save;
  Button New;
  Button Add;      // appends the project's item
  Button Replace;  // replaces the chosen item by it
  Button Delete;   // removes the chosen item

  // Of the chosen item.
  Label Identifier;
  Label DataType;
  Label StartBit;
  Label NumBits;
  Label Alias;
  Label Mult;
  Label Offset;
  Label Units;
  Label TxDataId;
  Label TxDataFrame;
  Label RxDataMatch;
  Label RxTimeout;

 protected:
  bool onDone() override;
  bool onCancel() override { return mayLeaveList(); }

 private:
  void bind();
  [[nodiscard]] OrvusCanDataIDTypes type() const { return request_.present.Config.DataIDType(); }
  [[nodiscard]] CanListItem* chosen();
  [[nodiscard]] platform::FileDialog dialog(std::string_view title) const;

  void openList();
  void load(const std::string& path);
  void newList();
  bool saveAs();
  bool saveList(const std::string& path);
  bool isForThisBus(const std::string& path, std::string_view title);
  bool mayLeaveList();
  void edited(int choose);

  void showList(int choose);
  void showChosen();

  CanPickRequest& request_;
  CanList list_;
  bool edited_ = false;
};

}  // namespace ostrand
