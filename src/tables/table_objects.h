// The output tables as objects while a table screen is open, and what they need of the media.
#pragma once

#include <string>
#include <string_view>

#include "model/output_table.h"
#include "model/store.h"
#include "platform/forms.h"

namespace ostrand {

using TableObjects = Row<cOutputTable, 1, kTables>;

inline constexpr i16 kInternalMemory = 1;  // where a table is that is not on the card

// The table of the store, from 1, with fields and bytes of its record. All that is not on the card
// is internal.
cOutputTable TableObject(const ProjectStore& store, int t);
TableObjects TableObjectsOf(const ProjectStore& store);

// What the store keeps of the table; fields and bytes of its record are counted by others.
void KeepTable(const cOutputTable& table, OutputTable& kept);

// Where tables are stored.
struct Medium {
  std::string_view label;
  double space = 0;       // bytes for tables
  double burstBytes = 0;  // taken from it by the burst buffer
};
Medium MediumOf(const ProjectStore& store, i16 location);

// Bytes of all records of a table.
double TableBytes(const cOutputTable& table);
// Bytes of all tables in use on one medium.
double BytesInLocation(const TableObjects& tables, i16 location);

// A stretch of time in the parts that people read.
struct TimeParts {
  double days = 0;
  double hours = 0;
  double minutes = 0;
  double seconds = 0;  // with their fraction

  static TimeParts Of(double micros);
  [[nodiscard]] double Seconds() const;
};

// Microseconds until the records of a table are full.
double MicrosToFill(const ProjectStore& store, const cOutputTable& table);

// Tells how long each table in use takes to fill.
void ShowTableTimes(platform::Forms& forms, const ProjectStore& store, const TableObjects& tables);

// A table is on the card, whether it is in use or not.
bool IsCardInUse(const ProjectStore& store);
// Without a card all tables go to internal memory, and have no file marks any more.
void MoveTablesOffCard(ProjectStore& store);

}  // namespace ostrand
