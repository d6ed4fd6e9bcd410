// The CAN module and the list of CAN items.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "can/list_items.h"
#include "conditions/names_backup.h"
#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "model/alias_rename.h"
#include "model/can_config.h"
#include "model/store.h"
#include "platform/filesystem.h"

namespace ostrand {

// The files and folder for pick lists.
struct CanRequest {
  platform::FileSystem& files;  // outlives the screen
  std::string listFolder;       // where the dialogs for pick lists start
};

// Edits a copy of the project's CAN part, one item at a time; Done writes it to the store. New
// names of values are applied to the rest of the project at once, and undone without a Done.
class frmCanBus final : public Screen {
 public:
  frmCanBus(const ScreenContext& context, const CanRequest& request);
  ~frmCanBus() override;

  // The module.
  CheckBox CanBusEnabled;
  NumericField CanAddress;
  Choice CanBaud;
  Choice CanDataIDType;  // "11 bit", "29 bit"
  Opener Advanced;

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
  // J1939 fields of the identifier, in the order of OrvusCanJ1939Fields; tool tips show them in
  // binary.
  NumericField Priority;
  NumericField Reserved;
  NumericField DataPage;
  NumericField PduFormat;
  NumericField PduSpecific;
  NumericField SourceAddr;
  Label Pgn;
  Choice DataStyle;  // data type of the value in the frame, by number
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
  Opener Pick;
  Opener FieldNames;
  Opener Outputs;

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
  // The configuration of the item shown.
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
  void openFieldNames();
  void openOutputs();

  void showModule();
  void showList();
  void showItem();
  void showValues();
  void showIdentifier();
  void enableItem();
  std::array<NumericField*, 6> j1939Fields();

  // The first value of an item, from 1, that is not valid beside the other items.
  [[nodiscard]] std::optional<CanItemValue> invalidValue(int number) const;
  [[nodiscard]] Control& controlOf(CanItemValue value);
  bool acceptItems();
  [[nodiscard]] bool changed() const;

  platform::FileSystem& files_;
  std::string listFolder_;
  std::string listPath_;                // of the pick list used last
  std::unique_ptr<ProjectStore> work_;  // its CAN part is edited
  int current_ = 0;                     // current item, from 1; 0 for none
  bool changedElsewhere_ = false;       // by the screens of field names and outputs
  NamesBackup names_;
  std::vector<AliasRenames> renamed_;
};

}  // namespace ostrand
