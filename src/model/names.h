// The naming scheme of the identifiers in generated programs. Every name of a block is a stem
// letter of its kind (T thermocouple, V voltage, B bridge, P pulse, A multiplexer, C CAN item)
// with fixed letters around it, and the block's number, from 1.
#pragma once

#include <string>
#include <string_view>

#include "model/enums.h"

namespace ostrand {

inline constexpr std::string_view kBattVolt = "BattVolt";  // battery voltage
inline constexpr std::string_view kTRef = "TRef";          // panel reference temperature
inline constexpr std::string_view kTK40Ref = "TK40Ref";    // multiplexer reference temperatures
inline constexpr std::string_view kWritPort = "WritPort";  // byte written to the ports
inline constexpr std::string_view kReadPort = "ReadPort";  // byte read from the ports

// Array of a block's values: "VBlk1". Kinds without blocks, and CAN items, whose arrays have their
// own names, give "".
std::string SourceName(OrvusDataObjTypes kind, int block);

// Arrays of multipliers and offsets: "MVBlk1", "OVBlk1"; "" for kinds without blocks.
std::string MultName(OrvusDataObjTypes kind, int block);
std::string OffsetName(OrvusDataObjTypes kind, int block);

// Array of the gauge factors of a bridge block: "GBBlk1".
std::string GaugeName(int block);

// Array of the values measured by zeroing: "VBlk1Zero", "BBlk1ZeroMv", "ABlk1Zero"; "" for kinds
// that can't be zeroed.
std::string ZeroName(OrvusDataObjTypes kind, int block);

// A constant of a block: ConstantName(ORVUS_DOBJ_BLK_VOLT, "REP", 1) is "VREP1".
std::string ConstantName(OrvusDataObjTypes kind, std::string_view what, int block);

// Stem of the level arrays of calculated field `field`, from 1: "Calc3".
std::string CalcFieldStem(int field);

// Array that a level crossing of calculated field `field` reads in a table, both from 1:
// "LCCalc2_1".
std::string CalcFieldLevelName(int field, int table);

// The automatic name of a data object: the variable of the battery, the ports (block 1 writes,
// block 2 reads) or the multiplexer reference, or the array of the block. Kinds named by the user
// give "".
std::string AutomaticName(OrvusDataObjTypes kind, int block);

}  // namespace ostrand
