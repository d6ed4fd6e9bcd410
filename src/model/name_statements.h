// The statements of the program that contain names and units of the user. Each is followed by a
// comment in a fixed column, so their length is limited.
#pragma once

#include <string_view>

namespace ostrand {

// Comments start in the column after this one; no statement is longer.
inline constexpr int kCommentColumn = 65;

// Each routine calls `put` with the pieces of one statement: texts and numbers.

// The alias of a value of an array, from 1.
template <class Put>
void AliasStatement(const Put& put, std::string_view array, int index, std::string_view alias) {
  put("Alias ", array, "(", index, ") = ", alias);
}

// The alias of a value's multiplier (prefix "M$") or offset ("O$"), for calibration on site.
template <class Put>
void ScalingAliasStatement(const Put& put, std::string_view array, int index,
                           std::string_view prefix, std::string_view value) {
  put("Alias ", array, "(", index, ") = ", prefix, value);
}

template <class Put>
void UnitsStatement(const Put& put, std::string_view name, std::string_view units) {
  put("Units ", name, " = ", units);
}

// A constant of a CAN item: `what` is "StartBit".
template <class Put, class Value>
void ItemConstantStatement(const Put& put, std::string_view item, std::string_view what,
                           Value value) {
  put("Const ", item, what, " = ", value);
}

// The array of a CAN item, or of its multipliers or offsets; `count` is a constant's name.
template <class Put>
void ItemArrayStatement(const Put& put, bool isPublic, std::string_view array,
                        std::string_view count) {
  put(isPublic ? "Public " : "Dim ", array, "(", count, ")");
}

// The sources of a CAN item's level crossing in a table, from 1.
template <class Put>
void ItemLevelStatement(const Put& put, std::string_view item, int table) {
  put("Dim LC", item, table, "(2)");
}

// The assignment of a dimension, 1 or 2, to the sources of a level crossing.
template <class Put>
void LevelSourceStatement(const Put& put, std::string_view sources, int dimension,
                          std::string_view value) {
  put("      ", sources, "(", dimension, ") = ", value);
}

// Levels of an output: `dimension` is 1 or 2.
template <class Put>
void LevelArrayStatement(const Put& put, std::string_view stem, int dimension, int levels) {
  put("Dim ", stem, "LC", dimension, "(", levels, ")");
}

// The variable of a calculated field.
template <class Put>
void VariableStatement(const Put& put, bool isPublic, std::string_view name) {
  put(isPublic ? "Public " : "Dim ", name);
}

}  // namespace ostrand
