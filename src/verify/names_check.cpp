#include "verify/names_check.h"

#include <array>
#include <map>
#include <string>
#include <vector>

#include "model/enums.h"
#include "model/names.h"
#include "platform/box.h"
#include "platform/guarded.h"
#include "text/strings.h"
#include "verify/finding_boxes.h"
#include "verify/project_keys.h"

namespace ostrand {
namespace {

constexpr std::string_view kDuplicateTitle = "DUPLICATION FOUND";
constexpr std::string_view kKeywordTitle = "ILLEGAL KEYWORD USAGE";

// The reserved key words. Thermocouple type N is not among them.
constexpr std::string_view kKeywords[] = {"Abs",
                                          "Alias",
                                          "TK40M",
                                          "And",
                                          "Atn",
                                          "Average",
                                          "AvgRun",
                                          "AvgSpa",
                                          "Battery",
                                          "BeginBurstTrigger",
                                          "BeginProg",
                                          "BiasComp",
                                          "BrFull",
                                          "BrFull6W",
                                          "BrHalf",
                                          "BrHalf3W",
                                          "BrHalf4W",
                                          "Calibrate",
                                          "Call",
                                          "CallTable",
                                          "Case",
                                          "Const",
                                          "Cos",
                                          "Covariance",
                                          "SVX3",
                                          "Data",
                                          "DataEvent",
                                          "DataInterval",
                                          "DataTable",
                                          "Delay",
                                          "Dim",
                                          "Do",
                                          "HDU7",
                                          "Else",
                                          "ElseIf",
                                          "EndBurstTrigger",
                                          "End",
                                          "EndProg",
                                          "EndSub",
                                          "EndTable",
                                          "Excite",
                                          "Exit",
                                          "Exp",
                                          "FFT",
                                          "FieldNames",
                                          "FileManage",
                                          "FillStop",
                                          "Fix",
                                          "FlashOut",
                                          "For",
                                          "Frac",
                                          "Histogram",
                                          "Histogram4D",
                                          "If",
                                          "Int",
                                          "Log",
                                          "Loop",
                                          "Maximum",
                                          "MaxSpa",
                                          "Minimum",
                                          "MinSpa",
                                          "Mod",
                                          "ModuleTemp",
                                          "Move",
                                          "Next",
                                          "Or",
                                          "PamOut",
                                          "PortSet",
                                          "PowerOff",
                                          "PRT",
                                          "Public",
                                          "PulseCount",
                                          "PulseCountReset",
                                          "Randomize",
                                          "Read",
                                          "ReadIO",
                                          "RealTime",
                                          "ResetTable",
                                          "Restore",
                                          "RMSSpa",
                                          "Rnd",
                                          "Sample",
                                          "Scan",
                                          "QBSpeed",
                                          "QBTrigger",
                                          "Select",
                                          "Sgn",
                                          "Sin",
                                          "SlowSequence",
                                          "Sqr",
                                          "StationName",
                                          "StdDev",
                                          "StdDevSpa",
                                          "Step",
                                          "StrainCalc",
                                          "Tan",
                                          "TCDiff",
                                          "TCSE",
                                          "Then",
                                          "Timer",
                                          "TimerIO",
                                          "To",
                                          "Totalize",
                                          "Units",
                                          "Until",
                                          "VoltDiff",
                                          "VoltSE",
                                          "WaitDigTrig",
                                          "Wend",
                                          "While",
                                          "WorstCase",
                                          "WriteIO",
                                          "Xor",
                                          "True",
                                          "False",
                                          "uSec",
                                          "mSec",
                                          "Sec",
                                          "Min",
                                          "Hr",
                                          "Day",
                                          "CardA",
                                          "CardB",
                                          "IEEE4",
                                          "FP2",
                                          "Long",
                                          "mV5000",
                                          "mV1000",
                                          "mV200",
                                          "mV200C",
                                          "mV50",
                                          "mV50C",
                                          "V50",
                                          "V10",
                                          "V2",
                                          "mV500",
                                          "TypeT",
                                          "TypeE",
                                          "TypeK",
                                          "TypeJ",
                                          "TypeB",
                                          "TypeR",
                                          "TypeS"};

struct NameRow {
  std::string name;  // upper case
  std::string description;
  std::string_view section;
  std::string key;
};
using NameRows = std::vector<NameRow>;

void add(NameRows& rows, std::string_view name, std::string description, std::string_view section,
         std::string key) {
  if (name.empty()) return;
  rows.push_back({Upper(name), std::move(description), section, std::move(key)});
}

template <class Group>
void addAliases(NameRows& rows, const Group& group, OrvusDataObjTypes kind,
                std::string_view section) {
  for (int b = 1; b <= group.BlockCount; ++b) {
    const std::string source = SourceName(kind, b);
    for (int r = 1; r <= group[b].Reps; ++r) {
      add(rows, group[b].Alias[r].AliasName, project_keys::KeyOf(source, r) + " alias name",
          section, project_keys::KeyOf(project_keys::kAliasName, b, r));
    }
  }
}

NameRows namesOf(const ProjectStore& store, std::string_view newName) {
  using namespace project_keys;
  NameRows rows;
  for (int t = 1; t <= kTables; ++t) {
    add(rows, store.Tables[t].TableName, "Table" + NumberText(t) + "  name", kTableSetupSection,
        KeyOf(kTableName, t));
  }
  add(rows, newName, "New Field", {}, {});
  addAliases(rows, store.TempBlock, ORVUS_DOBJ_BLK_TEMP, kTempBlocksSection);
  addAliases(rows, store.VoltBlock, ORVUS_DOBJ_BLK_VOLT, kVoltBlocksSection);
  addAliases(rows, store.BridgeBlock, ORVUS_DOBJ_BLK_BRIDGE, kBridgeBlocksSection);
  for (const PulseBlockGroup& slot : store.PulseBlock) {
    addAliases(rows, slot, ORVUS_DOBJ_BLK_PULSE, kPulseBlocksSection);
  }
  for (int c = 1; c <= store.CalcFields.CalcFieldCount; ++c) {
    add(rows, store.CalcFields.Field[c].CalcField[1], "CalcField " + NumberText(c),
        kCalcFieldsSection, KeyOf(kCalcField, c, 1));
  }
  return rows;
}

// For each row the next one with the same name, 0 for none.
std::vector<std::size_t> nextOfSameName(const NameRows& rows) {
  std::vector<std::size_t> next(rows.size(), 0);
  std::map<std::string_view, std::size_t> nearest;
  for (std::size_t i = rows.size(); i-- > 0;) {
    const auto [place, isNew] = nearest.try_emplace(rows[i].name, i);
    if (isNew) continue;
    next[i] = place->second;
    place->second = i;
  }
  return next;
}

std::string quoted(const std::string& name) { return '"' + name + '"'; }

// A box of mistakes that should not be saved.
void showStop(const CheckContext& context, std::string_view head, const Findings& findings) {
  platform::MessageBox box;
  box.title = findings.front().title;
  box.text = JoinLines({head, "", TextsOf(findings), "", "THIS MUST BE CORRECTED BEFORE SAVING."});
  box.icon = platform::Icon::kStop;
  context.forms.ShowBox(box);
}

}  // namespace

Findings DuplicateNames(const ProjectStore& store, std::string_view newName) {
  const NameRows rows = namesOf(store, newName);
  const std::vector<std::size_t> next = nextOfSameName(rows);
  Findings findings;
  int unlisted = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = next[i]; j != 0; j = next[j]) {
      if (findings.size() == kMaxDuplicatesReported) {
        ++unlisted;
        continue;
      }
      findings.push_back({kDuplicateTitle,
                          quoted(rows[i].name) + " is used as [ " + rows[i].description +
                              " ] and [ " + rows[j].description + " ].",
                          rows[j].section, rows[j].key, true});
    }
  }
  if (unlisted > 0) {
    findings.push_back(
        {kDuplicateTitle, "... and " + NumberText(unlisted) + " more.", {}, {}, true});
  }
  return findings;
}

Findings KeywordNames(const ProjectStore& store, std::string_view newName) {
  Findings findings;
  for (const NameRow& row : namesOf(store, newName)) {
    for (const std::string_view keyword : kKeywords) {
      if (!SameText(row.name, keyword)) continue;
      findings.push_back({kKeywordTitle, quoted(row.name) + " is used as " + row.description + ".",
                          row.section, row.key, true});
    }
  }
  return findings;
}

namespace ORVUS_COMMON {

void CheckNames(const CheckContext& context, bool& bad, std::string_view newName) {
  bad = false;
  Guarded(context.forms, "ORVUS_COMMON.CheckNames", [&] {
    const Findings duplicates = DuplicateNames(context.store, newName);
    if (!duplicates.empty()) {
      bad = true;
      showStop(context, "The following duplicate names were found:", duplicates);
    }
    const Findings keywords = KeywordNames(context.store, newName);
    if (!keywords.empty()) {
      bad = true;
      showStop(context, "The following key words were used:", keywords);
    }
  });
}

}  // namespace ORVUS_COMMON
}  // namespace ostrand
