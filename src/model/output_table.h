// An output table as the table screens edit it, and the size of its records.
#pragma once

#include <string>
#include <string_view>

#include "model/enums.h"
#include "model/store.h"

namespace ostrand {

// Subscripts of conditions: `state` 0 start, 1 stop; `number` 1 to 10. Any other raises Fault 9.
class cOutputTable {
 public:
  std::string Name;
  bool Enabled = false;
  i32 Interval = 0;
  i16 IntervalUnits = 0;  // OrvusTableTimeUnits
  i16 SyncToScan = 0;
  i32 NumRecs = 0;
  i16 AutoSize = 0;
  i16 FillStop = 0;
  i16 StoreEveryTS = 0;  // a timestamp goes into every record
  i16 MemLoc = 0;
  i16 FlagWrite = 0;
  i16 FlagMark = 0;
  i16 FlagFull = 0;
  i32 FieldBytes = 0;  // bytes of the fields of one record
  i32 NumFields = 0;   // fields of one record
  i16 TriggerNumber = 0;
  i16 TriggerStopNum = 0;
  i16 TriggerSingle = 0;
  i16 TriggerDisable = 0;
  i32 TriggerScansPre = 0;
  i32 TriggerScansPost = 0;
  std::string TriggerExpression;
  std::string TriggerStartExpress;
  std::string TriggerStopExpress;
  i16 WriteIfDisable = 0;
  i16 WriteIfNumber = 0;
  std::string WriteIfGrpExpress;
  i16 PamCard = 0;

  [[nodiscard]] cOutputTable Clone() const { return *this; }

  // Bytes of a stored record: the fields, and 12 of a timestamp and record number if it has them.
  [[nodiscard]] i32 RecordBytes() const;

  [[nodiscard]] const std::string& TriggerMeasVar(int state, int number) const {
    return trigger_[state][number].StartMeasVar;
  }
  void TriggerMeasVar(int state, int number, std::string_view text) {
    trigger_[state][number].StartMeasVar = text;
  }
  [[nodiscard]] i16 TriggerCompare(int state, int number) const {
    return trigger_[state][number].StartCompare;
  }
  void TriggerCompare(int state, int number, i16 code) {
    trigger_[state][number].StartCompare = code;
  }
  [[nodiscard]] i16 TriggerVarIdx(int state, int number) const {
    return trigger_[state][number].StartTrigVarIdx;
  }
  void TriggerVarIdx(int state, int number, i16 index) {
    trigger_[state][number].StartTrigVarIdx = index;
  }
  [[nodiscard]] float TriggerValue(int state, int number) const {
    return trigger_[state][number].StartTrigValue;
  }
  void TriggerValue(int state, int number, float value) {
    trigger_[state][number].StartTrigValue = value;
  }
  [[nodiscard]] const std::string& TriggerVarb(int state, int number) const {
    return trigger_[state][number].StartTrigVarb;
  }
  void TriggerVarb(int state, int number, std::string_view text) {
    trigger_[state][number].StartTrigVarb = text;
  }
  [[nodiscard]] const std::string& TriggerIndvExpress(int state, int number) const {
    return trigger_[state][number].StartTrigIndvExpress;
  }
  void TriggerIndvExpress(int state, int number, std::string_view text) {
    trigger_[state][number].StartTrigIndvExpress = text;
  }

  [[nodiscard]] const std::string& WriteIfMeasVar(int number) const {
    return write_[number].MeasureVar;
  }
  void WriteIfMeasVar(int number, std::string_view text) { write_[number].MeasureVar = text; }
  [[nodiscard]] i16 WriteIfCompare(int number) const { return write_[number].Compare; }
  void WriteIfCompare(int number, i16 code) { write_[number].Compare = code; }
  [[nodiscard]] i16 WriteIfVarIdx(int number) const { return write_[number].VarIdx; }
  void WriteIfVarIdx(int number, i16 index) { write_[number].VarIdx = index; }
  [[nodiscard]] float WriteIfValue(int number) const { return write_[number].Value; }
  void WriteIfValue(int number, float value) { write_[number].Value = value; }
  [[nodiscard]] const std::string& WriteIfVarb(int number) const { return write_[number].Varb; }
  void WriteIfVarb(int number, std::string_view text) { write_[number].Varb = text; }
  [[nodiscard]] const std::string& WriteIfExpression(int number) const {
    return write_[number].Expression;
  }
  void WriteIfExpression(int number, std::string_view text) { write_[number].Expression = text; }

 private:
  TriggerConditions trigger_;
  WriteConditions write_;
};

namespace ORVUS_COMMON {

// Fields of one value in a table by one processing instruction: none if it is not selected, the
// bins of a histogram, the product of the two sizes of a rainflow or a level crossing (none if the
// text has fewer than three parts), one for all others.
i32 OutputFieldCount(i16 selected, int code, std::string_view histogramCode,
                     std::string_view rainHistoCode, std::string_view levelCode);

// Bytes of a stored value: 2 for "FP2", 4 for "IEEE4", 0 for any other text.
i32 BytesPerValue(std::string_view resolution);

// Fields and bytes of a record of table `t`, from 1, without timestamp and record number.
struct RecordSize {
  i32 fields = 0;
  i32 bytes = 0;
};
RecordSize SizeOfRecord(const ProjectStore& store, int t);

// Counts fields and bytes of a record of table `t`, from 1, into `table`, or into the store if that
// is null. Returns the bytes without timestamp and record number.
i32 BytesPerRecord(ProjectStore& store, int t, cOutputTable* table);

// The interval of an edited table in microseconds: the scan period of a synchronous one, otherwise
// its interval (1 if it is 0) times the factor of its unit.
double TableIntervalMicros(const ProjectStore& store, const cOutputTable& table);

}  // namespace ORVUS_COMMON
}  // namespace ostrand
