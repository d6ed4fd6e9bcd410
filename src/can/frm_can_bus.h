// The CAN module and the list of CAN items.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "model/can_config.h"
#include "model/store.h"
#include "platform/filesystem.h"

namespace ostrand {

// Screens of other rooms that edit an item in place; `number` counts it from 1. They tell whether
// they changed anything. A button without its screen is disabled.
struct CanHooks {
  std::function<bool(CanItemData& item, int number)> Outputs;     // what the tables store of it
  std::function<bool(CanItemData& item, int number)> FieldNames;  // of its values
};

// Edits a copy of the project's CAN part, one item at a time; Done writes it to the store.
class frmCanBus final : public Screen {
 public:
  // `files` must outlive the screen; `listFolder` is where the dialogs for pick lists start.
  frmCanBus(const ScreenContext& context, platform::FileSystem& files, std::string listFolder,
            CanHooks hooks = {});
  ~frmCanBus() override;

  // The module.
  CheckBox CanBusEnabled;
  NumericField CanAddress;
  Choice CanBaud;
  Choice CanDataIDType;  // "11 bit", "29 bit"
  Button Advanced;

  // The list.
  Label CanCount;
  Choice Item;  // "1: CANItem1"
  Button Add;
  Button Delete;

  // The item.
  TextField ItemName;  // control "Name"
  TextField Description;
  CheckBox ItemEnabled;  // control "Enabled"
  CheckBox Public;
  Choice ItemMessageType;
  TextField DataId;
  // J1939 fields of the identifier, by OrvusCanJ1939Fields; their tool tips show them in binary.
  NumericField Priority;
  NumericField Reserved;
  NumericField DataPage;
  NumericField PduFormat;
  NumericField PduSpecific;
  NumericField SourceAddr;
  Label Pgn;
  Choice DataStyle;  // data type of the value in the frame, by its number
  NumericField StartBit;
  NumericField NumBits;
  NumericField NumVals;
  NumericField Mult;
  NumericField Offset;
  UnitField Units;
  Choice DataType;  // "FP2", "IEEE4"
  TextField TxDataId;
  TextField TxDataFrame;
  TextField RxDataMask;
  TextField RxDataMatch;
  TextField RxTimeout;  // milliseconds
  Button Pick;
  Button FieldNames;
  Button Outputs;

 protected:
  bool onDone() override;
  bool onCancel() override;

 private:
  [[nodiscard]] CanBus& can();
  [[nodiscard]] const CanBus& can() const;
  [[nodiscard]] CanModuleData& module() { return can().Module[1]; }
  [[nodiscard]] OrvusCanDataIDTypes idType() const;
  [[nodiscard]] CanItemData& item();
  [[nodiscard]] bool hasItem() const { return current_ > 0; }
  // Of the item, for what identifiers consist of.
  [[nodiscard]] cCanConfig config();

  void bindModule();
  void bindItem();
  void bindNumber(NumericField& field, i16 CanItemData::*member);
  void bindScale(NumericField& field, float MeasBlock::*member);
  void bindTransmission();
  void bindJ1939();
  void bindOpeners();

  void takeBaud();
  void takeIdType();
  void takeIdentifier(TextField& field, std::string CanItemData::*member);
  void takeName();
  void takeFrame();
  void takeMatch();
  void takeTimeout();

  void addItem();
  void deleteItem();
  void openAdvanced();
  void openPick();
  void runHook(const std::function<bool(CanItemData&, int)>& hook);

  void showModule();
  void showList();
  void showItem();
  void showValues();
  void showIdentifier();
  void enableItem();
  std::array<NumericField*, 6> j1939Fields();

  [[nodiscard]] bool allValid() const;
  [[nodiscard]] bool changed() const;

  platform::FileSystem& files_;
  std::string listFolder_;
  std::string listPath_;  // of the pick list used last
  CanHooks hooks_;
  std::unique_ptr<ProjectStore> work_;  // its CAN part is what is edited
  int current_ = 0;                     // item shown, from 1; 0 for none
  bool hookChanged_ = false;
};

}  // namespace ostrand
