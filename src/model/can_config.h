// CAN settings for screens and the host: a module with its bus timing, an item with its
// identifiers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/enums.h"
#include "model/store.h"

namespace ostrand {

// One QB-CAN module.
class cCanModule {
 public:
  static constexpr int kNumBaudRates = 7;

  i16 Address = 0;
  OrvusCanBaudRates BaudRate = ORVUS_CAN_BAUD_1M;
  i16 Enabled = 0;
  OrvusCanDataIDTypes DataIDType = ORVUS_CAN_DATAID_29BIT;
  OrvusCanMessageTypes MessageType = ORVUS_CAN_MSGTYPE_RxOnly;
  bool EnableTransmit = false;
  bool NaNOldData = false;
  bool GetOSVerSig = false;

  [[nodiscard]] cCanModule Clone() const { return *this; }

  void SetMode(i32 loggerType, i16 module);
  [[nodiscard]] i16 Module() const { return module_; }

  [[nodiscard]] static int NumBaudRates() { return kNumBaudRates; }

  // Bus timing of the baud rate; 0 for an unknown code.
  [[nodiscard]] i16 TimeQuanta() const;
  [[nodiscard]] i16 TSeg1() const;
  [[nodiscard]] i16 TSeg2() const;

  // "500 K"; "" for an unknown code.
  [[nodiscard]] static std::string_view BaudRateText(i32 code);

 private:
  i32 loggerType_ = kLoggerTypeLarge;
  i16 module_ = 0;
};

// One CAN item.
class cCanConfig {
 public:
  i16 Enabled = 1;
  i16 DataStyle = 0;
  std::string Description;
  std::string TxDataFrame = "&H0000000000000000";
  std::string RxDataMask = "0";
  std::string RxDataMatch = "&HXXXXXXXXXXXXXXXX";
  i32 RxTimeout = 1000;  // milliseconds
  i16 StartBit = 1;
  i16 NumBits = 1;

  [[nodiscard]] cCanConfig Clone() const { return *this; }

  // Bits of the identifier. A change does not limit the current identifier; only setting it does.
  [[nodiscard]] OrvusCanDataIDTypes DataIDType() const { return dataIdType_; }
  void SetMode(OrvusCanDataIDTypes type);

  [[nodiscard]] OrvusCanMessageTypes MessageType() const { return messageType_; }
  void SetMsgMode(OrvusCanMessageTypes type) { messageType_ = type; }

  // Identifiers as text, decimal or with "&H" hexadecimal, unchanged. A value is limited to 0 and
  // the largest identifier; a text that is not a number is ignored.
  [[nodiscard]] const std::string& DataID() const { return dataId_.text; }
  void DataID(std::string_view text) { setIdentifier(dataId_, text); }
  [[nodiscard]] const std::string& TxDataID() const { return txDataId_.text; }
  void TxDataID(std::string_view text) { setIdentifier(txDataId_, text); }
  [[nodiscard]] bool DataIDIsHex() const { return dataId_.hex; }

  // J1939 fields of DataID. Identifiers of 11 bits have none: they read 0 and ignore a value. A
  // value is limited to the width of the field.
  [[nodiscard]] std::uint8_t J1939_FieldVal(OrvusCanJ1939Fields field) const;
  void J1939_FieldVal(OrvusCanJ1939Fields field, std::uint8_t value);
  // The field in binary, padded to its width.
  [[nodiscard]] std::string J1939_FieldBinString(OrvusCanJ1939Fields field) const;
  // First bit of the field; 0 is the lowest of the identifier.
  [[nodiscard]] static i16 J1939_FieldStartBit(OrvusCanJ1939Fields field);

  // Parameter group number, in the form of DataID; "" for 11 bits.
  [[nodiscard]] std::string PGNVal() const;

 private:
  struct Identifier {
    std::string text = "0";
    std::uint32_t value = 0;
    bool hex = false;
  };

  [[nodiscard]] std::uint32_t largest() const;
  void setIdentifier(Identifier& identifier, std::string_view text) const;

  Identifier dataId_;
  Identifier txDataId_;
  OrvusCanDataIDTypes dataIdType_ = ORVUS_CAN_DATAID_29BIT;
  OrvusCanMessageTypes messageType_ = ORVUS_CAN_MSGTYPE_RxOnly;
};

}  // namespace ostrand
