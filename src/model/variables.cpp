#include "model/variables.h"

#include <algorithm>
#include <set>

#include "model/enums.h"
#include "model/names.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

struct KindName {
  i32 kind;
  std::string_view name;
};
constexpr std::array<KindName, 18> kKindNames = {{
    {kBatteryVariable, "Battery Volts"},
    {kStatusVariables, "Status Table Values"},
    {kTempVariables, "Temperature Blocks"},
    {kVoltVariables, "Voltage Blocks"},
    {kBridgeVariables, "Bridge Blocks"},
    {kPulseVariables, "Pulse Blocks"},
    {kHighVoltVariables, "High Voltage Blocks"},
    {kFilterVoltVariables, "Filter Voltage Blocks"},
    {kFilterVoltVariables2, "Filter Voltage Blocks"},
    {kFilterFftVariables, "Filter FFT Blocks"},
    {kIsolatedVariables, "Isolated Measurements"},
    {kTK40MVariables, "TK40M Blocks"},
    {kTK40RefVariables, "TK40M Reference"},
    {kCanVariables, "CANBUS Items"},
    {kPortVariables, "Digital Input Ports"},
    {kCaoVariables, "CAO Ports"},
    {kFlagVariables, "Flags"},
    {kCalcVariables, "Calculated Fields"},
}};

// Whether the program declares a byte read from these ports.
bool readsPorts(const PortSlot& slot) {
  if (slot.ReadMode == 0) return false;
  const auto isSelected = [](const auto& codes) {
    return std::any_of(codes.begin(), codes.end(), [](i16 code) { return code != 0; });
  };
  const auto& selections = slot.Output.OutputSelect;
  return slot.Ports[kPorts].Include != 0 ||
         std::any_of(selections.begin(), selections.end(), isSelected);
}

// Collects the variables of one kind.
class Collector {
 public:
  Collector(const ProjectStore& store, i32 kind, std::vector<PickVariable>& variables)
      : store_(store), kind_(kind), variables_(variables) {}

  void Collect() {
    const Configuration& config = store_.Config;
    switch (kind_) {
      case kPortVariables:
        return ports();
      case kFlagVariables:
        for (int f = 1; f <= kFlags; ++f) add(elementOf("Flag", f));
        return;
      case kCalcVariables:
        for (int c = 1; c <= store_.CalcFields.CalcFieldCount; ++c) {
          add(store_.CalcFields.Field[c].CalcField[1]);
        }
        return;
      case kBatteryVariable:
        if (config.MonitorPower[kMonitorBattery] != 0) add(std::string(kBattVolt));
        return;
      case kStatusVariables:
        for (int i = 1; i <= config.StatusMonCount; ++i) add(config.Status[i][1]);
        return;
      case kTempVariables:
        return blocks(ORVUS_DOBJ_BLK_TEMP, store_.TempBlock);
      case kVoltVariables:
        return blocks(ORVUS_DOBJ_BLK_VOLT, store_.VoltBlock);
      case kBridgeVariables:
        return blocks(ORVUS_DOBJ_BLK_BRIDGE, store_.BridgeBlock);
      case kPulseVariables:
        for (const PulseBlockGroup& slot : store_.PulseBlock) blocks(ORVUS_DOBJ_BLK_PULSE, slot);
        return;
      case kTK40MVariables:
        if (config.TK40MQty > 0) blocks(ORVUS_DOBJ_BLK_TK40M, store_.TK40MBlock);
        return;
      case kTK40RefVariables:
        return multiplexerReferences();
      case kCanVariables:
        return canItems();
      case kCaoVariables:
        return analogOutputs();
      default:
        return;
    }
  }

 private:
  static std::string elementOf(std::string_view array, int index) {
    return std::string(array).append("(").append(NumberText(index)).append(")");
  }

  void add(const std::string& name, std::string element = {}) {
    if (Trim(name).empty()) return;
    variables_.push_back({name, std::move(element), kind_});
  }

  // One value of an array of `count`.
  void addElement(const std::string& array, int count, int index, const std::string& alias = {}) {
    std::string element = elementOf(array, index);
    const std::string& own = count == 1 ? array : element;
    const std::string name = alias.empty() ? own : alias;
    add(name, std::move(element));
  }

  template <class Block>
  void repetitions(const std::string& array, const Block& block) {
    for (int r = 1; r <= block.Reps; ++r) {
      addElement(array, block.Reps, r, block.Alias[r].AliasName);
    }
  }

  template <class Group>
  void blocks(OrvusDataObjTypes type, const Group& group) {
    for (int b = 1; b <= group.BlockCount; ++b) repetitions(SourceName(type, b), group[b]);
  }

  // Both groups of ports are read into one variable.
  void ports() {
    const auto& slots = store_.Ports.Slot;
    if (std::any_of(slots.begin(), slots.end(), readsPorts)) add(std::string(kReadPort));
  }

  void multiplexerReferences() {
    const int count = store_.Config.TK40MQty;
    const TK40MBlockGroup& group = store_.TK40MBlock;
    bool measured = false;
    for (int b = 1; b <= group.BlockCount; ++b) measured = measured || group[b].Reps > 0;
    if (!measured) return;
    for (int m = 1; m <= count; ++m) addElement(std::string(kTK40Ref), count, m);
  }

  void canItems() {
    if (store_.Config.CanBusQty <= 0 || store_.Can.Module[1].CanBusEnabled == 0) return;
    for (int i = 1; i <= store_.Can.CanCount; ++i) {
      const CanItemData& item = store_.Can.Item[i];
      if (item.Enabled != 0 && !item.Name.empty()) repetitions(item.Name, item);
    }
  }

  void analogOutputs() {
    for (const auto& slot : store_.ExciteOut.Slot) {
      for (int k = 1; k <= 2; ++k) {
        if (slot[k].Include != 0 && slot[k].DynamicStatic == 0) add("Excite" + NumberText(k));
      }
    }
  }

  const ProjectStore& store_;
  i32 kind_;
  std::vector<PickVariable>& variables_;
};

// A formula, prepared for a search for names.
struct Formula {
  std::string text;  // upper case
  // Set for a running average that fills a whole array: it may use any element of another array.
  bool takesArrays = false;
};

std::vector<Formula> formulasOf(const ProjectStore& store) {
  std::vector<Formula> formulas;
  for (int c = 1; c <= store.CalcFields.CalcFieldCount; ++c) {
    const auto& field = store.CalcFields.Field[c].CalcField;
    if (field[2].empty()) continue;
    Formula formula{Upper(field[2])};
    formula.takesArrays = formula.text.starts_with("AVGRUN") && field[1].ends_with("()");
    formulas.push_back(std::move(formula));
  }
  return formulas;
}

// The part of a name to search for in the formula: "TBlk1(" of "TBlk1(3)" if it takes arrays, else
// the whole name.
std::string_view partUsed(const Formula& formula, std::string_view name) {
  if (!formula.takesArrays || !name.ends_with(')') || !Holds(name, "(")) return name;
  return name.substr(0, name.find('(') + 1);
}

}  // namespace

std::string_view VariableKindName(i32 kind) {
  for (const KindName& entry : kKindNames) {
    if (entry.kind == kind) return entry.name;
  }
  return "??";
}

VarPickList::VarPickList(const ProjectStore& store, std::span<const i32> kinds) {
  for (const i32 kind : kinds) Collector(store, kind, variables_).Collect();
}

const std::vector<std::string>& VarPickList::spellings() const {
  if (!spellings_.empty()) return spellings_;
  for (const PickVariable& variable : variables_) {
    spellings_.push_back(Upper(Trim(variable.name)));
    if (!variable.element.empty() && variable.element != variable.name) {
      spellings_.push_back(Upper(variable.element));
    }
  }
  std::sort(spellings_.begin(), spellings_.end());
  return spellings_;
}

bool VarPickList::Holds(std::string_view name) const {
  return std::binary_search(spellings().begin(), spellings().end(), Upper(Trim(name)));
}

bool VarPickList::HoldsAnyWith(std::string_view head) const {
  const std::string wanted = Upper(head);
  const auto at = std::lower_bound(spellings().begin(), spellings().end(), wanted);
  return at != spellings().end() && at->starts_with(wanted);
}

CalcVarRefs CollectCalcVarRefs(const ProjectStore& store) {
  CalcVarRefs refs;
  const std::vector<Formula> formulas = formulasOf(store);
  if (formulas.empty()) return refs;
  std::set<std::string> taken;
  const auto take = [&](std::string_view name) {
    const std::string wanted = Upper(name);
    for (const Formula& formula : formulas) {
      const std::string_view part = partUsed(formula, wanted);
      if (Holds(formula.text, part) && taken.emplace(part).second) {
        refs.names.emplace_back(name.substr(0, part.size()));
      }
    }
  };
  const VarPickList list(store);
  for (const PickVariable& variable : list.Variables()) {
    take(Trim(variable.name));
    if (!variable.element.empty() && variable.element != variable.name) take(variable.element);
  }
  return refs;
}

bool ExpressionHolds(std::string_view expression, std::string_view name) {
  return Holds(Upper(expression), Upper(name));
}

}  // namespace ostrand
