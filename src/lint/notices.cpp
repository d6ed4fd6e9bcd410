// What no check before a save reports.
#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "documents/wire_uses.h"
#include "lint/findings.h"
#include "model/name_limits.h"
#include "model/names.h"
#include "model/variables.h"
#include "programcheck/outline.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"
#include "verify/project_keys.h"
#include "verify/timing_checks.h"

namespace ostrand {
namespace {

using namespace project_keys;

struct Place {
  std::string_view section;
  std::string key;
};

LintFinding notice(std::string_view code, std::string text, Place place = {}) {
  LintFinding finding;
  finding.code = code;
  finding.text = std::move(text);
  finding.section = place.section;
  finding.key = std::move(place.key);
  return finding;
}

// ---- Blocks -------------------------------------------------------------------------------------

struct BlockKind {
  OrvusDataObjTypes kind;
  char letter;  // of its names in the program
  std::string_view section;
  std::string_view words;
  std::string_view start;  // its key; empty for blocks without a start
};
constexpr BlockKind kTempKind = {ORVUS_DOBJ_BLK_TEMP, 'T', kTempBlocksSection, "Thermocouple block",
                                 kStartTempChan};
constexpr BlockKind kVoltKind = {ORVUS_DOBJ_BLK_VOLT, 'V', kVoltBlocksSection, "Voltage block",
                                 kStartVoltChan};
constexpr BlockKind kBridgeKind = {ORVUS_DOBJ_BLK_BRIDGE, 'B', kBridgeBlocksSection, "Bridge block",
                                   kStartBrdgChan};
constexpr BlockKind kPulseKind = {ORVUS_DOBJ_BLK_PULSE, 'P', kPulseBlocksSection, "Pulse block",
                                  ""};
constexpr BlockKind kMuxKind = {ORVUS_DOBJ_BLK_TK40M, 'A', kTK40MBlocksSection, "Multiplexer block",
                                ""};

// Calls `visit(kind, number, block)` for every block with repetitions.
template <class Visit>
void visitBlocks(const ProjectStore& store, Visit visit) {
  const auto group = [&](const BlockKind& kind, const auto& blocks) {
    using Group = std::remove_cvref_t<decltype(blocks)>;
    for (int n = 1; n <= std::min<int>(blocks.BlockCount, Group::kLast); ++n) {
      if (blocks[n].Reps > 0) visit(kind, n, blocks[n]);
    }
  };
  group(kTempKind, store.TempBlock);
  group(kVoltKind, store.VoltBlock);
  group(kBridgeKind, store.BridgeBlock);
  for (const PulseBlockGroup& slot : store.PulseBlock) group(kPulseKind, slot);
  if (store.Config.TK40MQty > 0) group(kMuxKind, store.TK40MBlock);
}

std::string nameOf(const BlockKind& kind, int n) {
  return std::string(kind.words).append(" ").append(NumberText(n));
}

template <class Block, class Visit>
void visitAliases(const Block& block, Visit visit) {
  const auto made = static_cast<int>(block.Alias.Made().size());  // others are empty
  for (int r = 1; r <= std::min<int>(block.Reps, made); ++r) visit(r, block.Alias[r]);
}

// ---- Terminals ----------------------------------------------------------------------------------

std::string terminalName(int wire) {
  constexpr std::pair<int, std::string_view> kKinds[] = {
      {kC1, "C"}, {kP1, "P"}, {kCAO1, "CAO"}, {kVX1, "VX"}};
  for (const auto& [first, name] : kKinds) {
    if (wire >= first) return std::string(name) + NumberText(wire - first + 1);
  }
  return {};
}

Place placeOf(const WireUse& use) {
  switch (use.kind) {
    case WireKind::kThermocouple:
      return {kTempBlocksSection, KeyOf(kStartTempChan, use.number)};
    case WireKind::kVoltage:
      return {kVoltBlocksSection, KeyOf(kStartVoltChan, use.number)};
    case WireKind::kBridge:
      return {kBridgeBlocksSection, KeyOf(kStartBrdgChan, use.number)};
    case WireKind::kPulse:
      return {kPulseBlocksSection, KeyOf(kRepsKey, use.number)};
    case WireKind::kMultiplexed:
    case WireKind::kMultiplexer:
      return {kConfigurationSection, std::string(kTK40MQty)};
    case WireKind::kPort:
      return {kPortSetupSection, KeyOf(kInclude, 0, use.number)};
    case WireKind::kAnalogOutput:
      return {kExciteControlSection, KeyOf(kInclude, use.number)};
    case WireKind::kCan:
      return {kConfigurationSection, std::string(kCanBusQty)};
  }
  return {};
}

// What shares a terminal, as it is named to the user: a block as a whole.
std::string sharerName(const WireUse& use) {
  switch (use.kind) {
    case WireKind::kThermocouple:
      return nameOf(kTempKind, use.number);
    case WireKind::kVoltage:
      return nameOf(kVoltKind, use.number);
    case WireKind::kBridge:
      return nameOf(kBridgeKind, use.number);
    case WireKind::kPulse:
      return nameOf(kPulseKind, use.number);
    case WireKind::kMultiplexer:
      if (use.number > 0) return "TK40M " + NumberText(use.number);
      return use.source;
    default:
      return use.source;
  }
}

// The terminals that the same things share, in one finding.
class Sharers {
 public:
  void Look(const WireUses& users, std::string_view group, const std::string& terminal) {
    if (users.size() < 2 || !IsConflict(users)) return;
    std::vector<std::string> names;
    for (auto use = users.rbegin(); use != users.rend(); ++use) {
      std::string name = sharerName(*use);
      if (std::find(names.begin(), names.end(), name) == names.end())
        names.push_back(std::move(name));
    }
    std::string all = names.front();
    for (std::size_t i = 1; i < names.size(); ++i) {
      all += i + 1 == names.size() ? " and " : ", ";
      all += names[i];
    }
    if (names.size() == 1) all = "Several sensors of " + all;
    auto same = std::find_if(shared_.begin(), shared_.end(), [&](const Shared& shared) {
      return shared.names == all && shared.group == group;
    });
    if (same == shared_.end()) {
      same = shared_.insert(shared_.end(), {all, group, {}, placeOf(users.front())});
    }
    same->terminals.push_back(terminal);
  }

  void Report(LintFindings& findings) const {
    for (const Shared& shared : shared_) {
      std::string text = shared.names + " share " + std::string(shared.group);
      text += shared.terminals.size() == 1 ? " " : "s ";
      for (std::size_t i = 0; i < shared.terminals.size(); ++i) {
        if (i > 0) text += ", ";
        text += shared.terminals[i];
      }
      findings.push_back(notice(kCodeSharedTerminal, text, shared.place));
    }
  }

 private:
  struct Shared {
    std::string names;
    std::string_view group;
    std::vector<std::string> terminals;
    Place place;  // of the last one
  };
  std::vector<Shared> shared_;
};

void addSharedTerminals(LintFindings& findings, const ProjectStore& store,
                        const StatementChannels& channels) {
  const PanelUses uses = PanelUsesOf(store, channels);
  Sharers sharers;
  for (int t = 1; t <= kPanelTerminals; ++t) {
    sharers.Look(uses.Analog[t], "analog input", NumberText(t));
  }
  for (int wire = kVX1; wire < kMuxAnalogGround; ++wire) {
    sharers.Look(uses.Others[wire], "terminal", terminalName(wire));
  }
  sharers.Report(findings);
}

void addIgnoredStarts(LintFindings& findings, const ProjectStore& store,
                      const StatementChannels& channels) {
  if (store.Config.AutoChan != 0) return;
  const auto look = [&](const BlockKind& kind, const auto& group,
                        const Row<int, 1, kBlocks>& used) {
    for (int n = 1; n <= std::min<int>(group.BlockCount, kBlocks); ++n) {
      const AnalogBlock& block = group[n];
      if (used[n] == 0 || used[n] == block.StartChan) continue;
      findings.push_back(
          notice(kCodeStartIgnored,
                 nameOf(kind, n) + " starts on channel " + NumberText(block.StartChan) +
                     ", but its program measures from channel " + NumberText(used[n]),
                 {kind.section, KeyOf(kind.start, n)}));
    }
  };
  look(kTempKind, store.TempBlock, channels.Temp);
  look(kVoltKind, store.VoltBlock, channels.Volt);
  look(kBridgeKind, store.BridgeBlock, channels.Bridge);
}

// ---- Texts too long -----------------------------------------------------------------------------

void addTooLong(LintFindings& findings, std::string_view what, std::string_view text, Place place) {
  std::string words(what);
  words.append(" \"").append(text).append("\" makes a statement longer than its line");
  findings.push_back(notice(kCodeTextTooLong, std::move(words), std::move(place)));
}

template <class Block>
void addTooLongOfBlock(LintFindings& findings, const BlockKind& kind, int n, const Block& block) {
  const std::string array = SourceName(kind.kind, n);
  if (!block.Units.empty() && !UnitsFit(array, block.Units)) {
    const std::string_view key = kind.kind == ORVUS_DOBJ_BLK_TK40M ? kLongUnits : kUnits;
    addTooLong(findings, "The unit", block.Units, {kind.section, KeyOf(key, n)});
  }
  visitAliases(block, [&](int r, const RepAlias& alias) {
    ValueName value{.array = array, .index = r, .only = block.Reps == 1};
    if (block.CalOnSite != 0) {
      value.mult = MultName(kind.kind, n);
      value.offset = OffsetName(kind.kind, n);
    }
    if (!ValueFits(value, alias.AliasName, "")) {
      addTooLong(findings, "The name", alias.AliasName, {kind.section, KeyOf(kAliasName, n, r)});
    } else if (const bool own = !SameText(alias.AliasUnits, block.Units);
               own && !ValueFits(value, alias.AliasName, alias.AliasUnits)) {
      addTooLong(findings, "The unit", alias.AliasUnits, {kind.section, KeyOf(kAliasUnits, n, r)});
    }
  });
}

void addTooLongTexts(LintFindings& findings, const ProjectStore& store) {
  visitBlocks(store, [&](const BlockKind& kind, int n, const auto& block) {
    addTooLongOfBlock(findings, kind, n, block);
  });
  if (store.Config.CanBusQty > 0) {
    for (int i = 1; i <= std::min<int>(store.Can.CanCount, kCanItems); ++i) {
      const CanItemData& item = store.Can.Item[i];
      if (!ItemFits(item, i)) {
        addTooLong(findings, "The name or a unit of the CAN item", item.Name,
                   {kCanItemsSection, KeyOf(kName, i)});
      }
    }
  }
  for (int c = 1; c <= std::min<int>(store.CalcFields.CalcFieldCount, kCalcFields); ++c) {
    const auto& field = store.CalcFields.Field[c].CalcField;
    if (!CalcFieldFits(field[1], field[3])) {
      addTooLong(findings, "The name or the unit of the calculated field", field[1],
                 {kCalcFieldsSection, KeyOf(kCalcField, c, 1)});
    }
  }
}

// ---- Variables ----------------------------------------------------------------------------------

// Conditions that the checks before a save leave out: variables to compare with, and all write
// conditions but the first of a table.
class LostVariables {
 public:
  LostVariables(LintFindings& findings, const ProjectStore& store)
      : findings_(findings), list_(store) {}

  void LookAt(const OutputTable& table, int t) {
    const std::string of = " of table " + NumberText(t);
    if (table.TrigTable > 0) {
      lookAtTrigger(table, t, 0, table.TrigTable, "start condition ", of);
      if (table.SingleTrigger == 0) {
        lookAtTrigger(table, t, 1, table.TrigTabStop, "stop condition ", of);
      }
    }
    const int writes = std::min<int>(table.WriteIf, kConditions);
    for (int i = 1; i <= writes; ++i) {
      const WriteCondition& condition = table.Write[i];
      const std::string user = "write condition " + NumberText(i) + of;
      if (i > 1) {
        look(condition.MeasureVar, user, WriteConditionKey(kMeasureVar, t, i, table.WriteIf));
      }
      look(condition.Varb, user, WriteConditionKey(kVarb, t, i, table.WriteIf));
    }
  }

 private:
  void lookAtTrigger(const OutputTable& table, int t, int side, int count, std::string_view what,
                     const std::string& of) {
    for (int i = 1; i <= std::min<int>(count, kConditions); ++i) {
      look(table.Trigger[side][i].StartTrigVarb, std::string(what) + NumberText(i) + of,
           TriggerKey(kTriggerVarb[side], t, i));
    }
  }

  void look(const std::string& name, const std::string& user, std::string key) {
    const bool isValue = SameText(name, "True") || SameText(name, "False");
    if (Trim(name).empty() || isValue || list_.Holds(name)) return;
    findings_.push_back(notice(kCodeLostVariable,
                               "The variable " + name + " of " + user + " is gone",
                               {kTableSetupSection, std::move(key)}));
  }

  LintFindings& findings_;
  const VarPickList list_;
};

void addLostVariables(LintFindings& findings, const ProjectStore& store) {
  LostVariables lost(findings, store);
  for (int t = 1; t <= kTables; ++t) lost.LookAt(store.Tables[t], t);
}

// ---- The program --------------------------------------------------------------------------------

// Where the names of a project are set, by the name in upper case.
using NamePlaces = std::map<std::string, Place>;

NamePlaces namePlacesOf(const ProjectStore& store) {
  NamePlaces places;
  // Of equal names the last one is the second declaration.
  const auto add = [&](const std::string& name, Place place) {
    if (!name.empty()) places[Upper(name)] = std::move(place);
  };
  for (int t = 1; t <= kTables; ++t) {
    if (store.Tables[t].TableOn != 0) {
      add(store.Tables[t].TableName, {kTableSetupSection, KeyOf(kTableName, t)});
    }
  }
  visitBlocks(store, [&](const BlockKind& kind, int n, const auto& block) {
    visitAliases(block, [&](int r, const RepAlias& alias) {
      add(alias.AliasName, {kind.section, KeyOf(kAliasName, n, r)});
    });
  });
  for (int i = 1; i <= std::min<int>(store.Can.CanCount, kCanItems); ++i) {
    const CanItemData& item = store.Can.Item[i];
    add(item.Name, {kCanItemsSection, KeyOf(kName, i)});
    visitAliases(item, [&](int r, const RepAlias& alias) {
      add(alias.AliasName, {kCanItemsSection, KeyOf(kAliasName, i, r)});
    });
  }
  for (int c = 1; c <= std::min<int>(store.CalcFields.CalcFieldCount, kCalcFields); ++c) {
    add(store.CalcFields.Field[c].CalcField[1], {kCalcFieldsSection, KeyOf(kCalcField, c, 1)});
  }
  return places;
}

bool isZeroed(const ProjectStore& store, const ProgramBlock& block) {
  const int n = block.number;
  switch (block.kind) {
    case 'V':
      return store.VoltBlock[n].ZeroFlag > 0;
    case 'B':
      return store.BridgeBlock[n].ZeroFlag > 0;
    case 'A':
      return store.TK40MBlock[n].ZeroFlag > 0;
    default:
      return false;
  }
}

// Where the block of a line is set: its zero flag, for whose calibration it may lack what it needs,
// or else its size.
Place placeOfBlock(const ProjectStore& store, const ProgramBlock& block) {
  if (block.kind == 'C') return {kCanItemsSection, KeyOf(kName, block.number)};
  for (const BlockKind& kind : {kTempKind, kVoltKind, kBridgeKind, kPulseKind, kMuxKind}) {
    if (kind.letter != block.kind || block.number > kBlocks) continue;
    return {kind.section, KeyOf(isZeroed(store, block) ? kZeroFlag : kRepsKey, block.number)};
  }
  return {};
}

// The names that one line does not declare, in one finding.
bool joined(LintFinding& into, const LintFinding& finding) {
  constexpr std::string_view kOne = " is not declared";
  constexpr std::string_view kMany = " are not declared";
  if (into.line != finding.line || into.code != kCodeUndeclared || into.code != finding.code) {
    return false;
  }
  std::string_view names = into.text;
  if (!finding.text.ends_with(kOne) || !(names.ends_with(kOne) || names.ends_with(kMany))) {
    return false;
  }
  names.remove_suffix(names.ends_with(kOne) ? kOne.size() : kMany.size());
  into.text = std::string(names) + ", " + finding.key + std::string(kMany);
  return true;
}

void addProgramFindings(LintFindings& findings, const ProjectStore& store,
                        const ProgramPreview& program) {
  // A section that is cut lacks declarations and ends of blocks, which no longer says anything.
  if (!program.faults.empty()) return;
  LintFindings found;
  for (LintFinding& finding : ProgramFindings(program.text)) {
    if (found.empty() || !joined(found.back(), finding)) found.push_back(std::move(finding));
  }
  if (found.empty()) return;
  const NamePlaces places = namePlacesOf(store);
  const ProgramOutline outline(program.text, {});
  for (LintFinding& finding : found) {
    finding.severity = Severity::kNotice;
    finding.programLine = std::exchange(finding.line, 0);
    finding.text = "Line " + NumberText(finding.programLine) + " of the program: " + finding.text;
    const auto named = places.find(Upper(finding.key));
    const Place place = named != places.end()
                            ? named->second
                            : placeOfBlock(store, outline.BlockOfLine(finding.programLine));
    finding.section = place.section;
    finding.key = place.key;
    findings.push_back(std::move(finding));
  }
}

// ---- Times --------------------------------------------------------------------------------------

void addBlockTimes(LintFindings& findings, const ProjectStore& store) {
  if (MeasTimeFindings(store).empty()) return;
  std::vector<std::pair<i32, LintFinding>> times;
  visitBlocks(store, [&](const BlockKind& kind, int n, const auto& block) {
    if (block.BlockTime <= 0) return;
    times.emplace_back(block.BlockTime,
                       notice(kCodeBlockTime,
                              nameOf(kind, n) + " takes " + MicrosText(block.BlockTime) + " of " +
                                  MicrosText(store.EstMeasTime),
                              {kind.section, KeyOf(kBlockTime, n)}));
  });
  std::stable_sort(times.begin(), times.end(),
                   [](const auto& left, const auto& right) { return left.first > right.first; });
  for (auto& [time, finding] : times) findings.push_back(std::move(finding));
}

void addLinesNotRead(LintFindings& findings, const ORVUS_GENFILE::ReadReport& report) {
  if (report.noSection) {
    LintFinding finding =
        notice(kCodeLineNotRead, "The file has no section of a project; all is as in a new one");
    finding.severity = Severity::kWarning;
    finding.line = 1;
    findings.push_back(std::move(finding));
  }
  for (const ORVUS_GENFILE::SkippedLine& line : report.first) {
    LintFinding finding = notice(kCodeLineNotRead, SkippedLineText(line));
    finding.line = line.number;
    findings.push_back(std::move(finding));
  }
  const int more = report.skipped - static_cast<int>(report.first.size());
  if (more > 0) {
    findings.push_back(notice(kCodeLineNotRead, NumberText(more) + " more lines were not read"));
  }
}

}  // namespace

LintFindings Notices(const ProjectStore& store, const ProgramPreview& program,
                     const ORVUS_GENFILE::ReadReport& skipped) {
  LintFindings findings;
  addSharedTerminals(findings, store, program.channels);
  addIgnoredStarts(findings, store, program.channels);
  addTooLongTexts(findings, store);
  for (const std::string& fault : program.faults) {
    findings.push_back(notice(kCodeSectionFailed, fault));
  }
  addLostVariables(findings, store);
  addBlockTimes(findings, store);
  addLinesNotRead(findings, skipped);
  addProgramFindings(findings, store, program);
  return findings;
}

}  // namespace ostrand
