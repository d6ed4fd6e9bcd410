#include "can/faces.h"

#include "model/store.h"

namespace ostrand {
namespace {

using enum ControlKind;

constexpr std::string_view kNeeds29Bits =
    "Needs an item and 29-bit identifiers (Identifier format).";
constexpr std::string_view kNeedsTransmission = "Needs an item that transmits (Message type).";
static_assert(kCanItems == 128, "named by the reason for Add");

constexpr Face kCanBusRows[] = {
    {"CanBusEnabled", "CAN module", "Enable CAN module"},
    {"CanAddress", "CAN module", "Address"},
    {"CanBaud", "CAN module", "Baud rate"},
    {"CanDataIDType", "CAN module", "Identifier format", kOptions},
    {"Advanced", "CAN module", "Ad&vanced..."},
    {"CanCount", "Items", "Number of items", kFigure},
    {"Item", "Items", "Item"},
    {"Add", "Items", "&Add", {}, "A project holds 128 items at most."},
    {"Delete", "Items", "&Delete"},
    {"Name", "Item", "Name"},
    {"Description", "Item", "Description"},
    {"Enabled", "Item", "Enabled"},
    {"Public", "Item", "Public"},
    {"ItemMessageType", "Item", "Message type", kOptions},
    {"DataId", "Identifier", "Identifier"},
    {"Priority", "Identifier", "Priority", {}, kNeeds29Bits},
    {"Reserved", "Identifier", "Reserved", {}, kNeeds29Bits},
    {"DataPage", "Identifier", "Data page", {}, kNeeds29Bits},
    {"PduFormat", "Identifier", "PDU format", {}, kNeeds29Bits},
    {"PduSpecific", "Identifier", "PDU specific", {}, kNeeds29Bits},
    {"SourceAddr", "Identifier", "Source address", {}, kNeeds29Bits},
    {"Pgn", "Identifier", "PGN", kFigure},
    {"DataStyle", "Value", "Data type of the frame"},
    {"StartBit", "Value", "Start bit"},
    {"NumBits", "Value", "Number of bits"},
    {"NumVals", "Value", "Number of values"},
    {"Mult", "Value", "Multiplier"},
    {"Offset", "Value", "Offset"},
    {"Units", "Value", "Units"},
    {"DataType", "Value", "Resolution", kOptions},
    {"TxDataId", "Transmission", "Tx identifier", {}, kNeedsTransmission},
    {"TxDataFrame", "Transmission", "Tx data frame", {}, kNeedsTransmission},
    {"RxDataMask", "Transmission", "Rx data mask", {}, kNeedsTransmission},
    {"RxDataMatch", "Transmission", "Rx data match", {}, kNeedsTransmission},
    {"RxTimeout", "Transmission", "Rx timeout (ms)", {}, kNeedsTransmission},
    {"Pick", "Item details", "&Pick..."},
    {"FieldNames", "Item details", "&Field names..."},
    {"Outputs", "Item details", "&Outputs..."},
};

constexpr Face kCanAdvRows[] = {
    {"CanGetOSVerSig", "Options", "Read operating system version and signature"},
    {"CanNaNOldData", "Options", "Flag old data as not a number"},
    {"CanEnableTransmit", "Options", "Enable transmit"},
};

constexpr std::string_view kNeedsChosen = "Needs a chosen item (Items).";

constexpr Face kCanPickRows[] = {
    {"ListName", "Pick list", "File"},
    {"Items", "Pick list", "Items"},
    {"Open", "Pick list", "&Open..."},
    {"Save", "Pick list", "&Save..."},
    {"New", "Pick list", "&New"},
    {"Add", "Pick list", "&Add present item"},
    {"Replace", "Pick list", "&Replace by present item", {}, kNeedsChosen},
    {"Delete", "Pick list", "&Delete", {}, kNeedsChosen},
    {"DataId", "Chosen item", "Identifier"},
    {"DataType", "Chosen item", "Data type of the frame"},
    {"StartBit", "Chosen item", "Start bit", kFigure},
    {"NumBits", "Chosen item", "Number of bits", kFigure},
    {"Alias", "Chosen item", "Alias"},
    {"Mult", "Chosen item", "Multiplier", kFigure},
    {"Offset", "Chosen item", "Offset", kFigure},
    {"Units", "Chosen item", "Units"},
    {"TxDataId", "Transmission", "Tx identifier"},
    {"TxDataFrame", "Transmission", "Tx data frame"},
    {"RxDataMatch", "Transmission", "Rx data match"},
    {"RxTimeout", "Transmission", "Rx timeout (ms)", kFigure},
};

}  // namespace

constinit const std::span<const Face> kCanBusFaces = kCanBusRows;
constinit const std::span<const Face> kCanAdvFaces = kCanAdvRows;
constinit const std::span<const Face> kCanPickFaces = kCanPickRows;

}  // namespace ostrand
