// The output tables as objects while a table screen is open, and the storage they need.
#pragma once

#include <string>
#include <string_view>

#include "model/output_table.h"
#include "model/store.h"
#include "platform/forms.h"

namespace ostrand {

using TableObjects = Row<cOutputTable, 1, kTables>;

inline constexpr i16 kInternalMemory = 1;  // any table that is not on the card

// The table of the store, from 1, with the fields and bytes of its record. Everything that is not
// on the card is internal.
cOutputTable TableObject(const ProjectStore& store, int t);
TableObjects TableObjectsOf(const ProjectStore& store);

// Copies the table into the store, except the fields and bytes of its record, which are counted
// elsewhere.
void KeepTable(const cOutputTable& table, OutputTable& kept);

// A medium that stores tables.
struct Medium {
  std::string_view label;
  double space = 0;       // bytes for tables
  double burstBytes = 0;  // of it used by the burst buffer
};
Medium MediumOf(const ProjectStore& store, i16 location);

// Bytes of all records of a table.
double TableBytes(const cOutputTable& table);
// Bytes of all tables in use on one medium.
double BytesInLocation(const TableObjects& tables, i16 location);

// A duration split into days, hours and so on.
struct TimeParts {
  double days = 0;
  double hours = 0;
  double minutes = 0;
  double seconds = 0;  // with fraction

  static TimeParts Of(double micros);
  [[nodiscard]] double Seconds() const;
};

// Microseconds until the records of a table are full.
double MicrosToFill(const ProjectStore& store, const cOutputTable& table);

// Reports how long each table in use takes to fill.
void ShowTableTimes(platform::Forms& forms, const ProjectStore& store, const TableObjects& tables);

// Whether a table is on the card, in use or not.
bool IsCardInUse(const ProjectStore& store);
// Moves all tables to internal memory and removes their file marks; for a logger without a card.
void MoveTablesOffCard(ProjectStore& store);

}  // namespace ostrand
