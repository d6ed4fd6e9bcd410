#include "json_documents.h"

#include <algorithm>
#include <array>

#include "documents/wiring.h"
#include "model/output_table.h"
#include "model/units.h"
#include "platform/posix/terminal_forms.h"
#include "text/codepage.h"
#include "text/json.h"
#include "text/strings.h"

namespace ostrand::cli {
namespace {

using Layout = JsonWriter::Layout;

std::string utf8(std::string_view text) { return Utf8FromWindows1252(text); }

std::string withoutLineEnd(std::string text) {
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

JsonWriter& beginFile(JsonWriter& json, std::string_view file) {
  return json.BeginObject().Key("file").Text(platform::Utf8Text(file));
}

// Calls `visit(name, block number, block)` for every block of a project, "Voltage".
template <class Visit>
void visitBlocks(const ProjectStore& store, Visit visit) {
  const auto group = [&](std::string_view name, const auto& blocks) {
    using Group = std::remove_cvref_t<decltype(blocks)>;
    for (int n = 1; n <= std::min<int>(blocks.BlockCount, Group::kLast); ++n) {
      visit(name, n, blocks[n]);
    }
  };
  group("Thermocouple", store.TempBlock);
  group("Voltage", store.VoltBlock);
  group("Bridge", store.BridgeBlock);
  for (const PulseBlockGroup& slot : store.PulseBlock) group("Pulse", slot);
  group("TK40M", store.TK40MBlock);
}

void putBlock(JsonWriter& json, std::string_view kind, int number, const MeasBlock& block) {
  json.BeginObject(Layout::kOneLine).Key("kind").Text(kind).Key("block").Number(number);
  json.Key("sensors").Number(int{block.Reps});
  json.Key("units").Text(utf8(block.Units));
  json.Key("multiplier").Number(block.DefaultMult).Key("offset").Number(block.DefaultOffset);
  json.Key("time").Number(block.BlockTime).End();
}

void putTable(JsonWriter& json, ProjectStore& store, int t) {
  const i32 bytes = ORVUS_COMMON::BytesPerRecord(store, t, nullptr);
  const OutputTable& table = store.Tables[t];
  json.BeginObject(Layout::kOneLine).Key("table").Number(t);
  json.Key("name").Text(utf8(table.TableName)).Key("everyScan").Bool(table.SyncTable != 0);
  json.Key("interval").Number(table.OutInt);
  json.Key("unit").Text(UnitAbbreviation(table.OutIntUnits));
  json.Key("fields").Number(table.NumFields).Key("bytes").Number(bytes);
  json.Key("autoSize").Bool(table.AutoSize != 0).Key("records").Number(table.Buffer).End();
}

std::string_view kindName(WireKind kind) {
  constexpr std::array<std::string_view, 9> kNames = {
      "thermocouple", "voltage", "bridge",        "pulse", "multiplexed",
      "multiplexer",  "port",    "analog output", "CAN"};
  return kNames[static_cast<std::size_t>(kind)];
}

std::string_view functionName(WireFunction function) {
  constexpr std::array<std::string_view, 12> kNames = {
      "high", "low",    "single-ended", "pair",  "excitation", "pulse",
      "port", "output", "clock",        "reset", "ground",     "power"};
  return kNames[static_cast<std::size_t>(function)];
}

void putUse(JsonWriter& json, const WireUse& use) {
  json.BeginObject(Layout::kOneLine).Key("kind").Text(kindName(use.kind));
  json.Key("number").Number(use.number).Key("sensor").Number(use.rep);
  json.Key("function").Text(functionName(use.function)).Key("input").Text(use.input);
  json.Key("source").Text(utf8(use.source)).Key("alias").Text(utf8(use.alias)).End();
}

void putStrip(JsonWriter& json, const TerminalStrip& strip) {
  json.BeginObject().Key("strip").Text(strip.title).Key("terminals").BeginArray();
  for (const WireTerminal& terminal : strip.places) {
    if (terminal.name.empty()) continue;
    json.BeginObject().Key("terminal").Text(std::string(Trim(TerminalText(terminal))));
    if (terminal.differential > 0) {
      json.Key("differential").Number(terminal.differential);
      json.Key("singleEnded").Number(terminal.singleEnded);
    }
    json.Key("users").BeginArray();
    for (const WireUse& use : terminal.users) putUse(json, use);
    json.End().End();
  }
  json.End().End();
}

}  // namespace

std::string SummaryJson(std::string_view file, Ostrand& session) {
  ProjectStore& store = session.Store();
  JsonWriter json;
  beginFile(json, file).Key("program").Text(Upper(session.BaseName()));
  json.Key("version").Text(utf8(store.Gen.VersionLastSaved));
  json.Key("lastSaved").Text(utf8(store.Gen.PCTime));
  json.Key("scan").BeginObject(Layout::kOneLine);
  json.Key("interval").Number(store.Scan.ExecutionTime);
  json.Key("unit").Text(UnitAbbreviation(store.Scan.ExecTimeUnits));
  json.Key("burst").Bool(store.Scan.BurstMode != 0).End();
  json.Key("tables").BeginArray();
  for (int t = 1; t <= kTables; ++t) {
    if (store.Tables[t].TableOn != 0) putTable(json, store, t);
  }
  json.End().Key("blocks").BeginArray();
  visitBlocks(store, [&](std::string_view kind, int number, const MeasBlock& block) {
    putBlock(json, kind, number, block);
  });
  json.End().Key("batteryTime").Number(store.Config.BatteryTime);
  json.Key("panelTime").Number(store.Config.PanelTime);
  json.Key("shortestScan").Number(store.EstMeasTime).End();
  return withoutLineEnd(json.Take());
}

std::string WiringJson(std::string_view file, Ostrand& session, const StatementChannels& channels) {
  const Wiring wiring = WiringOf(session.Store(), channels);
  JsonWriter json;
  beginFile(json, file).Key("strips").BeginArray();
  for (const TerminalStrip& strip : wiring.panel) putStrip(json, strip);
  for (const TerminalStrip& strip : wiring.multiplexers) putStrip(json, strip);
  json.End().End();
  return withoutLineEnd(json.Take());
}

std::string TimesJson(std::string_view file, const ProjectStore& store) {
  JsonWriter json;
  beginFile(json, file).Key("battery").Number(store.Config.BatteryTime);
  json.Key("panel").Number(store.Config.PanelTime).Key("blocks").BeginArray();
  visitBlocks(store, [&](std::string_view kind, int number, const MeasBlock& block) {
    json.BeginObject(Layout::kOneLine).Key("kind").Text(kind).Key("block").Number(number);
    json.Key("time").Number(block.BlockTime).End();
  });
  json.End().End();
  return withoutLineEnd(json.Take());
}

std::string CanListJson(std::string_view file, const CanList& list) {
  JsonWriter json;
  beginFile(json, file);
  json.Key("identifierBits").Number(list.DataIDType == ORVUS_CAN_DATAID_29BIT ? 29 : 11);
  json.Key("items").BeginArray();
  for (const CanListItem& item : list.Items) {
    const cCanConfig& config = item.Config;
    const bool sends = config.MessageType() != ORVUS_CAN_MSGTYPE_RxOnly;
    json.BeginObject(Layout::kOneLine).Key("description").Text(utf8(config.Description));
    json.Key("identifier").Text(config.DataID()).Key("pgn").Text(config.PGNVal());
    json.Key("sends").Bool(sends).Key("type").Number(int{config.DataStyle});
    json.Key("startBit").Number(int{config.StartBit}).Key("bits").Number(int{config.NumBits});
    json.Key("multiplier").Number(item.Mult).Key("offset").Number(item.Offset);
    json.Key("units").Text(utf8(item.Units)).Key("alias").Text(utf8(item.Alias));
    if (sends) {
      json.Key("sentTo").Text(config.TxDataID()).Key("frame").Text(config.TxDataFrame);
      json.Key("match").Text(config.RxDataMatch).Key("timeout").Number(int{config.RxTimeout});
    }
    json.End();
  }
  return json.End().End().Take();
}

std::string JsonArray(const std::vector<std::string>& objects) {
  std::string text = "[";
  for (const std::string& object : objects) {
    if (&object != &objects.front()) text += ",\n";
    text += object;
  }
  return text + "]\n";
}

}  // namespace ostrand::cli
