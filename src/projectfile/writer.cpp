// The writer of the project file.
#include <array>
#include <cstring>
#include <type_traits>

#include "model/defaults.h"
#include "platform/moment_text.h"
#include "projectfile/genfile.h"
#include "projectfile/tables.h"
#include "text/copy.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

// The brackets of a key with their content; empty for a key without any.
class BracketText {
 public:
  BracketText() = default;

  template <class... Index>
  static BracketText Of(int first, Index... rest) {
    return separated(",", first, rest...);
  }
  // (2, 3): the rows of write conditions.
  static BracketText Spaced(int first, int second) { return separated(", ", first, second); }
  // (1 Start)
  static BracketText Named(int index, std::string_view name) {
    BracketText result;
    result.put("(");
    result.putNumber(index);
    result.put(" ");
    result.put(name);
    result.put(")");
    return result;
  }

  static constexpr std::size_t kCapacity = 24;  // four indices of at most three digits

  // Copies all of the capacity, in one step, and returns the end of the text.
  char* CopyTo(char* to) const {
    std::memcpy(to, text_.data(), kCapacity);
    return to + length_;
  }

 private:
  template <class... Index>
  static BracketText separated([[maybe_unused]] std::string_view separator, int first,
                               Index... rest) {
    BracketText result;
    result.put("(");
    result.putNumber(first);
    ((result.put(separator), result.putNumber(rest)), ...);
    result.put(")");
    return result;
  }
  void put(std::string_view text) {
    CopyText(text_.data() + length_, text);
    length_ += text.size();
  }
  void putNumber(int number) {
    const int count = WriteNumber(text_.data() + length_, std::int64_t{number});
    length_ += static_cast<std::size_t>(count);
  }

  std::array<char, kCapacity + kMaxNumberText> text_{};  // with the space to write one more number
  std::size_t length_ = 0;
};

// Collects the lines of the file.
class Lines {
 public:
  explicit Lines(std::size_t expected) { text_.resize(expected); }

  void Plain(std::string_view line) { end(CopyText(reserve(line.size() + kLineEnd.size()), line)); }

  // The lines of a table of keys.
  template <class Record, std::size_t kCount>
  void Keys(const Field<Record> (&fields)[kCount], Record& record, const BracketText& brackets = {},
            std::string_view prefix = {}) {
    for (const Field<Record>& field : fields) {
      field.member.Of(record).Visit([&](const auto& value) {
        line({prefix, field.key, brackets}, field.form, value);
      });
    }
  }

  [[nodiscard]] std::size_t Size() const { return used_; }
  [[nodiscard]] std::string_view From(std::size_t start) const {
    return std::string_view(text_).substr(start, used_ - start);
  }
  void CutTo(std::size_t size) { used_ = size; }
  std::string Take() {
    text_.resize(used_);
    return std::move(text_);
  }

 private:
  static constexpr std::string_view kLineEnd = "\r\n";

  // A line up to its "=".
  struct Head {
    std::string_view prefix;
    const KeyName& key;
    const BracketText& brackets;

    [[nodiscard]] std::size_t Capacity() const {
      return prefix.size() + KeyName::kCapacity + BracketText::kCapacity + 1;
    }
    char* CopyTo(char* at) const {
      if (!prefix.empty()) at = CopyText(at, prefix);
      at = brackets.CopyTo(key.CopyTo(at));
      *at++ = '=';
      return at;
    }
  };

  void line(const Head& head, Form form, const std::string& value) {
    if (form == Form::kTextIfAny && value.empty()) return;
    if (form == Form::kExcept && value == "0") return;
    put(head, form == Form::kTrimmed ? Trim(value) : std::string_view(value));
  }

  template <class Number>
  void line(const Head& head, Form form, Number value) {
    if (form == Form::kTruth) return put(head, value == 0 ? "0" : "-1");
    char* at = head.CopyTo(reserve(head.Capacity() + 1 + kMaxNumberText + kLineEnd.size()));
    if (!(value < 0) && (form == Form::kStr || form == Form::kLead)) *at++ = ' ';
    if constexpr (std::is_integral_v<Number>) {
      at += WriteNumber(at, std::int64_t{value});
    } else {
      at += WriteNumber(at, value);
    }
    end(at);
  }

  void put(const Head& head, std::string_view value) {
    char* const at = head.CopyTo(reserve(head.Capacity() + value.size() + kLineEnd.size()));
    end(CopyText(at, value));
  }
  // The place of the next `size` bytes at most.
  char* reserve(std::size_t size) {
    if (text_.size() - used_ < size) text_.resize(2 * text_.size() + size);
    return text_.data() + used_;
  }
  void end(char* at) {
    std::memcpy(at, kLineEnd.data(), kLineEnd.size());
    used_ = static_cast<std::size_t>(at - text_.data()) + kLineEnd.size();
  }

  std::string text_;  // longer than its used part, so that a line need not enlarge it
  std::size_t used_ = 0;
};

// Calls `use` with each table in use.
template <class Use>
void forTables(ProjectStore& store, Use use) {
  for (int t = 1; t <= kTables; ++t) {
    if (store.Tables[t].TableOn != 0) use(t);
  }
}

bool selected(const OutputSet& output, int table, int code) {
  return output.OutputSelect[table][code] != 0;
}

// The selections of a table, counted from 1 in the file; `bracketsOf` gives the key's brackets.
template <class BracketsOf>
void writeSelections(Lines& out, OutputSet& output, int table, int codes, BracketsOf bracketsOf) {
  for (int k = 1; k <= codes; ++k) {
    if (selected(output, table, k - 1)) {
      out.Keys(kSelectionKeys, output.OutputSelect[table][k - 1], bracketsOf(k));
    }
  }
}

template <const auto& Keys>
void writeLevels(Lines& out, Row<float, 0, kLevels - 1>& values, int count, int table, int item,
                 std::string_view prefix) {
  for (int i = 0; i < std::min(count, kLevels); ++i) {
    out.Keys(Keys, values[i], BracketText::Of(table, item, i), prefix);
  }
}

void writeOutput(Lines& out, OutputSet& output, int table, int item, std::string_view prefix) {
  const BracketText brackets = BracketText::Of(table, item);
  if (selected(output, table, kHistogram)) out.Keys(kHistogramKeys, output.Histo[table], brackets);
  if (selected(output, table, kRainFlow)) out.Keys(kRainHistoKeys, output.Histo[table], brackets);
  if (selected(output, table, kLevelCrossing)) {
    HistoSet& histo = output.Histo[table];
    out.Keys(kLevelKeys, histo, brackets, prefix);
    writeLevels<kLevelOneKeys>(out, histo.LevelVarOne, histo.LevNumLevels, table, item, prefix);
    out.Keys(kLevNumTestsKeys, histo, brackets, prefix);
    writeLevels<kLevelTwoKeys>(out, histo.LevelVarTwo, histo.LevNumTests, table, item, prefix);
    out.Keys(kNumDimsKeys, histo, brackets, prefix);
  }
  writeSelections(out, output, table, kOutputCodes,
                  [&](int k) { return BracketText::Of(table, item, k); });
}

template <class Family>
void writeOutputs(Lines& out, ProjectStore& store) {
  const int count = Family::Count(store);
  forTables(store, [&](int t) {
    for (int i = 1; i <= count; ++i) {
      writeOutput(out, Family::Item(store, i).Output, t, i, Family::kLevelPrefix);
    }
  });
}

template <class Family>
void writeAliases(Lines& out, ProjectStore& store) {
  const int count = Family::Count(store);
  for (int i = 1; i <= count; ++i) {
    auto& item = Family::Item(store, i);
    const int reps = CountOf(item.Reps, item.Alias);
    for (int r = 1; r <= reps; ++r) {
      RepAlias& alias = item.Alias[r];
      const BracketText brackets = BracketText::Of(i, r);
      out.Keys(kAliasKeys, alias, brackets);
      out.Keys(Family::kOffsetKeys, alias, brackets);
      out.Keys(kAliasExceptKeys, alias, brackets);
    }
  }
}

template <class Family>
void writeItems(Lines& out, ProjectStore& store) {
  const int count = Family::Count(store);
  for (int i = 1; i <= count; ++i) {
    out.Keys(Family::kItemKeys, Family::Item(store, i), BracketText::Of(i));
  }
}

template <class Family>
void writeFamily(Lines& out, ProjectStore& store) {
  out.Keys(Family::kGroupKeys, Family::Group(store));
  writeItems<Family>(out, store);
  writeOutputs<Family>(out, store);
  writeAliases<Family>(out, store);
}

template <const auto& Keys, class RowType>
void writeRow(Lines& out, RowType& row) {
  for (int i = RowType::kFirst; i <= RowType::kLast; ++i)
    out.Keys(Keys, row[i], BracketText::Of(i));
}

void writeGenVersion(Lines& out, ProjectStore& store, const platform::Moment& now) {
  General general = store.Gen;
  general.PCTime = ShortMomentText(now);
  out.Keys(kGenVersionKeys, general);
}

void writeConfiguration(Lines& out, ProjectStore& store) {
  Configuration& config = store.Config;
  out.Keys(kOperatorKeys, store.Gen);
  out.Keys(kQuantityKeys, config);
  writeRow<kMonitorPowerKeys>(out, config.MonitorPower);
  writeRow<kTcConfigOptsKeys>(out, config.TcConfigOpts);
  out.Keys(kConfigurationKeys, config);
  for (int i = 1; i <= CountOf(config.StatusMonCount, config.Status); ++i) {
    for (int c = 1; c <= 4; ++c) out.Keys(kStatusKeys, config.Status[i][c], BracketText::Of(i, c));
  }
}

void writeTriggers(Lines& out, OutputTable& table, int t, int state, int count) {
  auto& rows = table.Trigger[state];
  for (int i = 1; i <= CountOf(count, rows); ++i) {
    out.Keys(kTriggerKeys, rows[i], BracketText::Of(TriggerNumber(t, i)), kTriggerPrefix[state]);
  }
}

void writeTable(Lines& out, OutputTable& table, int t) {
  if (table.TrigTabStop < 0) table.TrigTabStop = table.TrigTable;
  if (table.WriteIf == -1) table.WriteIf = 1;
  const BracketText brackets = BracketText::Of(t);
  out.Keys(kTableOnKeys, table, brackets);
  out.Keys(kTableKeys, table, brackets);
  writeTriggers(out, table, t, 0, table.TrigTable);
  out.Keys(kTrigTabStopKeys, table, brackets);
  writeTriggers(out, table, t, 1, table.TrigTabStop);
  out.Keys(kEventStartKeys, table, BracketText::Named(t, kTriggerPrefix[0]));
  out.Keys(kEventStopKeys, table, BracketText::Named(t, kTriggerPrefix[1]));
  out.Keys(kEventKeys, table, brackets);
  out.Keys(kTableControlKeys, table, brackets);
  for (int i = 1; i <= CountOf(table.WriteIf, table.Write); ++i) {
    out.Keys(kWriteKeys, table.Write[i], table.WriteIf == 1 ? brackets : BracketText::Spaced(t, i));
  }
  out.Keys(kWriteGroupKeys, table, brackets);
}

void writeTables(Lines& out, ProjectStore& store) {
  out.Keys(kDisplayKeys, store.Tables);
  forTables(store, [&](int t) { writeTable(out, store.Tables[t], t); });
}

template <const auto& Keys>
void writeCode(Lines& out, OutputSet& output, int t, int code) {
  if (selected(output, t, code)) out.Keys(Keys, output.Histo[t], BracketText::Of(t));
}

// Battery and references: in each table the selections precede the codes, written by `writeCodes`.
template <class WriteCodes>
void writeReference(Lines& out, ProjectStore& store, ReferenceOutput& reference, int codes,
                    WriteCodes writeCodes) {
  out.Keys(kReferenceKeys, reference);
  forTables(store, [&](int t) {
    writeSelections(out, reference.Output, t, codes, [&](int k) { return BracketText::Of(t, k); });
    writeCodes(reference.Output, t);
  });
}

void writePowerOut(Lines& out, ProjectStore& store) {
  writeReference(out, store, store.PowerOut, kPowerOutCodes, [&](OutputSet& output, int t) {
    writeCode<kHistogramKeys>(out, output, t, kHistogram);
    writeCode<kRainHistoKeys>(out, output, t, kRainFlow);
  });
}

void writeTK40MRef(Lines& out, ProjectStore& store) {
  writeReference(out, store, store.TK40MRef, kReferenceCodes, [&](OutputSet& output, int t) {
    writeCode<kHistogramKeys>(out, output, t, kHistogram);
    writeCode<kRainCodeKeys>(out, output, t, kRainFlow);
  });
}

void writeTcRef(Lines& out, ProjectStore& store) {
  writeReference(out, store, store.TcRef, kReferenceCodes, [](OutputSet&, int) {});
}

void writePort(Lines& out, Port& port, int p) {
  if (p < kPorts) out.Keys(kPolarityKeys, port, BracketText::Of(0, p));
  for (int s = 0; s <= 1; ++s) out.Keys(kPortStateKeys, port.State[s], BracketText::Of(s, 0, p));
}

void writePortSlot(Lines& out, ProjectStore& store, PortSlot& slot) {
  const bool reads = slot.ReadMode != 0;
  out.Keys(kPortSlotKeys, slot, BracketText::Of(0));
  for (int p = 1; p <= kPorts; ++p) {
    if (slot.Ports[p].Include == 0) continue;
    out.Keys(kPortKeys, slot.Ports[p], BracketText::Of(0, p));
    if (!reads) writePort(out, slot.Ports[p], p);
  }
  if (slot.ByteMode != 0 && slot.Ports[kPorts].Include != 0 && !reads) {
    for (int c = 0; c <= 2; ++c) {
      out.Keys(kBinaryMaskKeys, slot.BinaryMask[c], BracketText::Of(c, 0, 1));
    }
  }
  if (!reads) return;
  forTables(store, [&](int t) {
    out.Keys(kHistogramKeys, slot.Output.Histo[t], BracketText::Of(0, t, 1));
    writeSelections(out, slot.Output, t, kOutputCodes,
                    [&](int k) { return BracketText::Of(0, t, 1, k); });
  });
}

// Whether the second slot would give the same lines as an untouched slot.
bool secondPortSlotUntouched(Lines& out, ProjectStore& store) {
  PortSlot& slot = store.Ports.Slot[1];
  const std::size_t start = out.Size();
  writePortSlot(out, store, slot);
  const std::string own(out.From(start));
  out.CutTo(start);
  PortSlot kept = std::move(slot);
  ORVUS_COMMON::SetPortDefaults(store, 1);
  writePortSlot(out, store, slot);
  const bool same = out.From(start) == own;
  out.CutTo(start);
  slot = std::move(kept);
  return same;
}

// Both slots have the same keys, and a reader puts all lines into the first. So an untouched second
// slot repeats the lines of the first; otherwise it would overwrite the user's choices there.
void writePorts(Lines& out, ProjectStore& store) {
  out.Keys(kCodeTypeKeys, store.Ports);
  const int second = secondPortSlotUntouched(out, store) ? 0 : 1;
  writePortSlot(out, store, store.Ports.Slot[0]);
  writePortSlot(out, store, store.Ports.Slot[second]);
}

void writeFlags(Lines& out, ProjectStore& store) {
  for (int f = 1; f <= kFlags; ++f) {
    FlagControl& control = store.Flags[f];
    if (control.FlagInclude == 0) continue;
    const BracketText brackets = BracketText::Of(f);
    out.Keys(kFlagKeys, control, brackets);
    for (int s = 1; s <= 2; ++s) {
      out.Keys(kFlagStateKeys, control.State[s], brackets, kFlagStatePrefix[s - 1]);
    }
  }
}

void writeExcite(Lines& out, ProjectStore& store) {
  out.Keys(kExciteKeys, store.ExciteOut);
  for (auto& slot : store.ExciteOut.Slot) {
    for (int c = 1; c <= 2; ++c) {
      if (slot[c].Include != 0) out.Keys(kExciteChannelKeys, slot[c], BracketText::Of(c));
    }
  }
}

template <int Slot>
void writePulseSlot(Lines& out, ProjectStore& store) {
  if (PulseFamily<Slot>::Group(store).BlockCount != 0) writeFamily<PulseFamily<Slot>>(out, store);
}

void writeCan(Lines& out, ProjectStore& store) {
  CanModuleData& module = store.Can.Module[kSavedCanModule];
  out.Keys(kCanModuleKeys, module);
  out.Keys(kCanGroupKeys, store.Can);
  out.Keys(kCanEnabledKeys, module);
  writeItems<CanFamily>(out, store);
  writeOutputs<CanFamily>(out, store);
  writeAliases<CanFamily>(out, store);
}

void writeCalcFields(Lines& out, ProjectStore& store) {
  CalcFieldGroup& group = store.CalcFields;
  out.Keys(kCalcGroupKeys, group);
  for (int f = 1; f <= CalcFamily::Count(store); ++f) {
    out.Keys(kCalcFieldKeys, group.Field[f], BracketText::Of(f));
    for (int c = 1; c <= 4; ++c) {
      out.Keys(kCalcColumnKeys, group.Field[f].CalcField[c], BracketText::Of(f, c));
    }
  }
  writeOutputs<CalcFamily>(out, store);
}

bool isWritten(const ProjectStore& store, Section section) {
  switch (section) {
    case Section::kTK40MBlocks:
      return store.TK40MBlock.BlockCount != 0;
    case Section::kTempBlocks:
      return store.TempBlock.BlockCount != 0;
    case Section::kVoltBlocks:
      return store.VoltBlock.BlockCount != 0;
    case Section::kBridgeBlocks:
      return store.BridgeBlock.BlockCount != 0;
    case Section::kCanItems:
      return store.Config.CanBusQty > 0 && store.Can.CanCount > 0;
    default:
      return true;
  }
}

void writeSection(Lines& out, ProjectStore& store, const platform::Moment& now, Section section) {
  switch (section) {
    case Section::kGenVersion:
      return writeGenVersion(out, store, now);
    case Section::kConfiguration:
      return writeConfiguration(out, store);
    case Section::kScanSetup:
      return out.Keys(kScanKeys, store.Scan);
    case Section::kTableSetup:
      return writeTables(out, store);
    case Section::kPowerOut:
      return writePowerOut(out, store);
    case Section::kTK40MRef:
      return writeTK40MRef(out, store);
    case Section::kTK40MBlocks:
      return writeFamily<TK40MFamily>(out, store);
    case Section::kTcRef:
      return writeTcRef(out, store);
    case Section::kTempBlocks:
      return writeFamily<TempFamily>(out, store);
    case Section::kVoltBlocks:
      return writeFamily<VoltFamily>(out, store);
    case Section::kBridgeBlocks:
      return writeFamily<BridgeFamily>(out, store);
    case Section::kPulseBlocks:
      writePulseSlot<0>(out, store);
      return writePulseSlot<1>(out, store);
    case Section::kPortSetup:
      return writePorts(out, store);
    case Section::kFlagControl:
      return writeFlags(out, store);
    case Section::kExciteControl:
      return writeExcite(out, store);
    case Section::kCanItems:
      return writeCan(out, store);
    case Section::kSpeedCalc:
      out.Keys(kSpeedCalcKeys, store.SpeedCalc);
      return writeRow<kGearRatioKeys>(out, store.SpeedCalc.GearRatio);
    case Section::kMultOffCalc:
      return out.Keys(kLineCalcKeys, store.MultOffCalc);
    case Section::kMVPerVoltCalc:
      return out.Keys(kMVPerVoltCalcKeys, store.MVPerVoltCalc);
    case Section::kPotCalc:
      return out.Keys(kLineCalcKeys, store.PotCalc);
    case Section::kRsCalc:
      return out.Keys(kRsCalcKeys, store.RsCalc);
    case Section::kRpmCalc:
      return out.Keys(kRpmCalcKeys, store.RpmCalc);
    case Section::kMoreSpeedCalc:
      return out.Keys(kMoreSpeedCalcKeys, store.MoreSpeedCalc);
    case Section::kFlowCalc:
      return out.Keys(kFlowCalcKeys, store.FlowCalc);
    case Section::kCalcFields:
      return writeCalcFields(out, store);
  }
}

// Likely number of bytes; a guess that only saves enlarging the text.
std::size_t expectedSize(const OutputSet& output, int table) {
  constexpr std::size_t kSelection = 20;
  constexpr std::size_t kHistogramOrLevels = 1000;
  std::size_t size = 0;
  for (int code = 0; code < kOutputCodes; ++code) {
    if (selected(output, table, code)) {
      size += code < kHistogram ? kSelection : kHistogramOrLevels;
    }
  }
  return size;
}

template <class Family>
std::size_t expectedSize(ProjectStore& store) {
  constexpr std::size_t kItem = 512;
  constexpr std::size_t kRepetition = 96;
  std::size_t size = 0;
  for (int i = 1; i <= Family::Count(store); ++i) {
    auto& item = Family::Item(store, i);
    size += kItem;
    if constexpr (requires { item.Reps; }) {
      size += static_cast<std::size_t>(std::clamp<int>(item.Reps, 0, kReps)) * kRepetition;
    }
    forTables(store, [&](int table) { size += expectedSize(item.Output, table); });
  }
  return size;
}

std::size_t expectedSize(ProjectStore& store) {
  constexpr std::size_t kOther = 6 * std::size_t{1024};
  return kOther + expectedSize<TK40MFamily>(store) + expectedSize<TempFamily>(store) +
         expectedSize<VoltFamily>(store) + expectedSize<BridgeFamily>(store) +
         expectedSize<PulseFamily<0>>(store) + expectedSize<CanFamily>(store) +
         expectedSize<CalcFamily>(store);
}

}  // namespace

std::string ProjectFileText(ProjectStore& store, const platform::Moment& now) {
  Lines out(expectedSize(store));
  for (const SectionName& row : kSections) {
    const bool written = isWritten(store, row.section);
    if ((written || row.blankStays) && out.Size() > 0) out.Plain("");
    if (!written) continue;
    out.Plain(row.header);
    writeSection(out, store, now, row.section);
  }
  return out.Take();
}

}  // namespace ostrand::ORVUS_GENFILE
