#include "by_hand.h"

#include <fmt/compile.h>
#include <fmt/format.h>

#include <array>
#include <iterator>
#include <string_view>

namespace ostrand::bench {
namespace {

// The texts of one kind of blocks in the program.
struct Kind {
  char letter;
  std::string_view title;
  std::string_view section;  // of the constants
  std::string_view tables;   // head of its outputs
  std::string_view scaling;  // how its multipliers and offsets are declared
};
constexpr Kind kTemp = {
    'T', "Temp",
    "'\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\ THERMOCOUPLE CONSTANTS ////////////////////",
    "   '____________________ Thermocouple Blocks ____________________", "Dim"};
constexpr Kind kVolt = {
    'V', "Volt",
    "'\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\ VOLTAGE CONSTANTS //////////////////////",
    "   '______________________ Voltage Blocks ______________________", "Public"};

constexpr std::array<std::string_view, 4> kUnits = {"uSecs", "mSecs", "Secs", "Mins"};
constexpr std::array<std::string_view, 4> kUnit = {"uSec", "mSec", "Sec", "Min"};

class Program {
 public:
  explicit Program(const ProjectStore& store) : store_(store) { text_.reserve(320000); }

  void Head(const platform::Moment& now) {
    put(FMT_COMPILE("\r\n'{:20}   Program name: .VKP\r\n"), "");
    put(FMT_COMPILE("'{:20}     Written by: {}\r\n"), "", store_.Gen.Operator);
    put(FMT_COMPILE("'{:20}    I.D. number: {}\r\n"), "", store_.Gen.IDNumber);
    put(FMT_COMPILE("'{:20}   Date written: {:02}-{:02}-{:04}\r\n"), "", now.month, now.day,
        now.year);
    put(FMT_COMPILE("'{:20}   Time written: {:02}:{:02}:{:02}\r\n"), "", now.hour, now.minute,
        now.second);
    put(FMT_COMPILE("'{:20} QUILLON Version: {}\r\n"), "", store_.Gen.VersionLastSaved);
    put(
        FMT_COMPILE("\r\n' This program was generated using Fernhollow Instruments's QUILLON\r\n"
                    "' Program Generator for the VK7300 Measurement & Control System.\r\n\r\n"));
  }

  void Timing() {
    const ScanSetup& scan = store_.Scan;
    put(
        FMT_COMPILE("'\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\ TIMING CONSTANTS "
                    "///////////////////////\r\n\r\n"));
    put(FMT_COMPILE("Const PERIOD = {:<50}'Scan interval number\r\n"), scan.ExecutionTime);
    put(FMT_COMPILE("Const P_UNITS = {:<49}'Scan interval units ({})\r\n\r\n"), scan.ExecTimeUnits,
        kUnits[at(scan.ExecTimeUnits)]);
    for (int t = 1; t <= kTables; ++t) {
      const OutputTable& table = store_.Tables[t];
      put(FMT_COMPILE("Const INTERVAL{} = {:<47}'Table {} interval number\r\n"), t, table.OutInt,
          t);
      put(FMT_COMPILE("Const UNITS{} = {:<50}'Table {} interval units ({})\r\n\r\n"), t,
          table.OutIntUnits, t, kUnits[at(table.OutIntUnits)]);
    }
  }

  template <class Group>
  void Constants(const Kind& kind, const Group& group) {
    put(FMT_COMPILE("{}\r\n\r\n"), kind.section);
    const char k = kind.letter;
    for (int b = 1; b <= group.BlockCount; ++b) {
      const auto& block = group[b];
      put(FMT_COMPILE("'{0:_<25} {1} Block {2} {0:_<25}\r\n"), "", kind.title, b);
      put(FMT_COMPILE("Const {0}RNG{1} = {2:<51}'Block{1} measurement range ({3})\r\n"), k, b,
          block.RangeNo, block.Range);
      if constexpr (requires { block.TypeNo; }) {
        put(FMT_COMPILE("Const {0}TYPE{1} = {2:<50}'Block{1} thermocouple type (T)\r\n"), k, b,
            block.TypeNo);
      }
      put(FMT_COMPILE("Const {0}REP{1} = {2:<51}'Block{1} repetitions\r\n"), k, b, block.Reps);
      put(FMT_COMPILE("Const {0}SETL{1} = {2:<50}'Block{1} settling time (usecs)\r\n"), k, b,
          block.SettleTime);
      put(FMT_COMPILE("Const {0}INT{1} = {2:<51}'Block{1} integration time (usecs)\r\n"), k, b,
          block.Integration);
      put(FMT_COMPILE("Const {0}MULT{1} = {2:<50}'Block{1} default multiplier\r\n"), k, b,
          block.DefaultMult);
      put(FMT_COMPILE("Const {0}OSET{1} = {2:<50}'Block{1} default offset\r\n"), k, b,
          block.DefaultOffset);
      put(FMT_COMPILE("Dim {0}Blk{1}({0}REP{1}){2:49}'Block{1} dimensioned source\r\n"), k, b, "");
      line(FMT_COMPILE("{} M{}Blk{}({}REP{})"), kind.scaling, k, b, k, b);
      put(FMT_COMPILE("'Block{} dimensioned multiplier\r\n"), b);
      line(FMT_COMPILE("{} O{}Blk{}({}REP{})"), kind.scaling, k, b, k, b);
      put(FMT_COMPILE("'Block{} dimensioned offset\r\n"), b);
      put(FMT_COMPILE("Units {0}Blk{1} = {2:<51}'Block{1} default units ({2})\r\n"), k, b,
          block.Units);
    }
    put(FMT_COMPILE("\r\n"));
  }

  template <class Group>
  void Aliases(const Kind& kind, const Group& group) {
    for (int b = 1; b <= group.BlockCount; ++b) {
      for (int r = 1; r <= group[b].Reps; ++r) {
        const RepAlias& alias = group[b].Alias[r];
        line(FMT_COMPILE("Alias {}Blk{}({}) = {}"), kind.letter, b, r, alias.AliasName);
        put(FMT_COMPILE("'Assign alias name \"{}\" to {}Blk{}({})\r\n"), alias.AliasName,
            kind.letter, b, r);
        line(FMT_COMPILE("Units {} = {}"), alias.AliasName, alias.AliasUnits);
        put(FMT_COMPILE("'Assign units \"{}\" to {}\r\n"), alias.AliasUnits, alias.AliasName);
      }
    }
  }

  void Variables() {
    put(
        FMT_COMPILE("'\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\ ALIASES & OTHER VARIABLES "
                    "//////////////////\r\n\r\n"));
    Aliases(kTemp, store_.TempBlock);
    Aliases(kVolt, store_.VoltBlock);
    put(FMT_COMPILE("{:<65}'General Purpose Flags\r\n"), "Public Flag(8)");
    put(FMT_COMPILE("{:<65}'Declare I as a variable\r\n"), "Dim I");
    put(FMT_COMPILE("{:<65}'Declare Reference Temp variable\r\n\r\n"), "Dim TRef");
  }

  template <class Group>
  void Outputs(const Kind& kind, const Group& group, int t) {
    put(FMT_COMPILE("{}\r\n"), kind.tables);
    const char k = kind.letter;
    for (int b = 1; b <= group.BlockCount; ++b) {
      const auto& block = group[b];
      const auto& selected = block.Output.OutputSelect[t];
      const std::string_view resolution = block.DataResolution;
      if (selected[kSample] != 0) {
        line(FMT_COMPILE("   Sample ({}REP{},{}Blk{}(),{})"), k, b, k, b, resolution);
        put(FMT_COMPILE("'{} Reps,Source,Res\r\n"), block.Reps);
      }
      if (selected[kMaximum] != 0) {
        line(FMT_COMPILE("   Maximum({}REP{},{}Blk{}(),{},False,False)"), k, b, k, b, resolution);
        put(FMT_COMPILE("'{} Reps,Source,Res,Enabled,Time of Max\r\n"), block.Reps);
      }
      if (selected[kMinimum] != 0) {
        line(FMT_COMPILE("   Minimum({}REP{},{}Blk{}(),{},False,False)"), k, b, k, b, resolution);
        put(FMT_COMPILE("'{} Reps,Source,Res,Enabled,Time of Min\r\n"), block.Reps);
      }
      if (selected[kAverage] != 0) {
        line(FMT_COMPILE("   Average({}REP{},{}Blk{}(),{},False)"), k, b, k, b, resolution);
        put(FMT_COMPILE("'{} Reps,Source,Res,Enabled\r\n"), block.Reps);
      }
      if (selected[kStdDev] != 0) {
        line(FMT_COMPILE("   StdDev ({}REP{},{}Blk{}(),{},False)"), k, b, k, b, resolution);
        put(FMT_COMPILE("'{} Reps,Source,Res,Enabled\r\n"), block.Reps);
      }
    }
  }

  void Tables() {
    put(
        FMT_COMPILE("'\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\ OUTPUT SECTION "
                    "////////////////////////\r\n\r\n"));
    for (int t = 1; t <= kTables; ++t) {
      const OutputTable& table = store_.Tables[t];
      put(FMT_COMPILE("'{0:-<28} Table {1}{0:-<28}\r\n"), "", t);
      line(FMT_COMPILE("DataTable({},True,{})"), table.TableName, table.Buffer);
      put(FMT_COMPILE("'Trigger, {} records\r\n"), table.Buffer);
      line(FMT_COMPILE("   DataInterval(0,INTERVAL{},UNITS{},100)"), t, t);
      put(FMT_COMPILE("'{} {} interval, 100 lapses, {:.2f} Secs\r\n"), table.OutInt,
          kUnit[at(table.OutIntUnits)], table.Buffer * table.OutInt / 1000.0);
      Outputs(kTemp, store_.TempBlock, t);
      Outputs(kVolt, store_.VoltBlock, t);
      put(FMT_COMPILE("{:<65}'End of table {}\r\n\r\n"), "EndTable", table.TableName);
    }
  }

  template <class Group>
  void Scaling(const Kind& kind, const Group& group) {
    const char k = kind.letter;
    for (int b = 1; b <= group.BlockCount; ++b) {
      line(FMT_COMPILE("   For I = 1 To {}REP{}"), k, b);
      put(FMT_COMPILE("'Do the following to all of {}Blk{}\r\n"), k, b);
      line(FMT_COMPILE("      M{}Blk{}(I) = {}MULT{}"), k, b, k, b);
      put(FMT_COMPILE("'Assign default multiplier ({}) to M{}Blk{}\r\n"), group[b].DefaultMult, k,
          b);
      line(FMT_COMPILE("      O{}Blk{}(I) = {}OSET{}"), k, b, k, b);
      put(FMT_COMPILE("'Assign default offset ({}) to O{}Blk{}\r\n"), group[b].DefaultOffset, k, b);
      put(FMT_COMPILE("{:<65}'Repeat above until finished\r\n"), "   Next I");
    }
  }

  template <class Group>
  void Exceptions(const Kind& kind, const Group& group) {
    const char k = kind.letter;
    for (int b = 1; b <= group.BlockCount; ++b) {
      const auto& block = group[b];
      for (int r = 1; r <= block.Reps; ++r) {
        const RepAlias& alias = block.Alias[r];
        if ((number(alias.AliasExcept) & 2) == 0) continue;
        line(FMT_COMPILE("   M{}Blk{}({}) = {}"), k, b, r, alias.AliasMult);
        put(FMT_COMPILE("'Exception multiplier for {}Blk{}({}) alias \"{}\"\r\n"), k, b, r,
            alias.AliasName);
      }
      for (int r = 1; r <= block.Reps; ++r) {
        const RepAlias& alias = block.Alias[r];
        if ((number(alias.AliasExcept) & 4) == 0) continue;
        line(FMT_COMPILE("   O{}Blk{}({}) = {}"), k, b, r, alias.AliasOffset);
        put(FMT_COMPILE("'Exception offset for {}Blk{}({}) alias \"{}\"\r\n"), k, b, r,
            alias.AliasName);
      }
    }
  }

  void Scan() {
    const ScanSetup& scan = store_.Scan;
    put(FMT_COMPILE("'{0:\\<28} PROGRAM {0:/<28}\r\n\r\n"), "");
    put(FMT_COMPILE("{:<65}'Program begins here\r\n   'MainSequence\r\n"), "BeginProg");
    Scaling(kTemp, store_.TempBlock);
    Scaling(kVolt, store_.VoltBlock);
    put(FMT_COMPILE("   {0:'<15} exception multipliers and offsets {0:'<14}\r\n"), "");
    Exceptions(kTemp, store_.TempBlock);
    Exceptions(kVolt, store_.VoltBlock);
    put(FMT_COMPILE("   {:'<64}\r\n"), "");
    line(FMT_COMPILE("   Scan(PERIOD,P_UNITS,{},0)"), scan.BufferScans);
    put(FMT_COMPILE("'Scan once every {} {}, non-burst\r\n\r\n"), scan.ExecutionTime,
        kUnits[at(scan.ExecTimeUnits)]);
    int channel = 1;
    put(FMT_COMPILE("      '{0:_<26} Temp Blocks {0:_<26}\r\n"), "");
    line(FMT_COMPILE("      PanelTemp(TRef,{})"), 200);
    put(FMT_COMPILE("'RefTemp,Integrate\r\n"));
    for (int b = 1; b <= store_.TempBlock.BlockCount; ++b) {
      put(FMT_COMPILE("      TCDiff(TBlk{0}(),TREP{0},TRNG{0},{1},TTYPE{0},TRef,True,TSETL{0},"
                      "TINT{0},MTBlk{0}(),OTBlk{0}())\r\n"),
          b, channel);
      channel += store_.TempBlock[b].Reps;
    }
    put(FMT_COMPILE("      '{0:_<26} Volt Blocks {0:_<26}\r\n"), "");
    for (int b = 1; b <= store_.VoltBlock.BlockCount; ++b) {
      put(FMT_COMPILE("      VoltDiff(VBlk{0}(),VREP{0},VRNG{0},{1},True,VSETL{0},VINT{0},"
                      "MVBlk{0}(),OVBlk{0}())\r\n"),
          b, channel);
      channel += store_.VoltBlock[b].Reps;
    }
    put(FMT_COMPILE("\r\n      '{0:_<22} Output Table Control {0:_<22}\r\n"), "");
    for (int t = 1; t <= kTables; ++t) {
      put(FMT_COMPILE("      CallTable {}\r\n"), store_.Tables[t].TableName);
    }
    put(FMT_COMPILE("{:<65}'Loop up for the next scan\r\n"), "   Next Scan");
    put(FMT_COMPILE("{:<65}'Program ends here\r\n\r\n'***** Program End *****\r\n"), "EndProg");
  }

  std::string Take() { return std::move(text_); }

 private:
  template <class Format, class... Values>
  void put(const Format& format, const Values&... values) {
    fmt::format_to(std::back_inserter(text_), format, values...);
  }
  // A statement up to the column of its comment.
  template <class Format, class... Values>
  void line(const Format& format, const Values&... values) {
    constexpr std::size_t kCommentColumn = 65;
    const std::size_t start = text_.size();
    put(format, values...);
    text_.append(kCommentColumn - (text_.size() - start), ' ');
  }
  static std::size_t at(int index) { return static_cast<std::size_t>(index); }
  static int number(std::string_view digit) { return digit[0] - '0'; }

  const ProjectStore& store_;
  std::string text_;
};

}  // namespace

std::string ProgramByHand(const ProjectStore& store, const platform::Moment& now) {
  Program program(store);
  program.Head(now);
  program.Timing();
  program.Constants(kTemp, store.TempBlock);
  program.Constants(kVolt, store.VoltBlock);
  program.Variables();
  program.Tables();
  program.Scan();
  return program.Take();
}

}  // namespace ostrand::bench
