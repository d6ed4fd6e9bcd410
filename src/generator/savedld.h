// The generator of the logger's program (module SAVEDLD).
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "generator/program_run.h"
#include "platform/clock.h"
#include "platform/filesystem.h"
#include "platform/forms.h"

namespace ostrand {

// Turns a project into the text of its program. One object serves a session: the type of the last
// measured block and the statement positions of multiplexer blocks outlive a run.
class SAVEDLD {
 public:
  SAVEDLD(ProjectStore& store, platform::FileSystem& files, platform::Clock& clock,
          platform::Forms& forms);

  // The host's name; "Harrier", in any case, switches some lines.
  void HostApp(std::string name) { run_.HostApp = std::move(name); }
  // The project's name in the head of the program.
  void BaseName(std::string name) { baseName_ = std::move(name); }

  // Generates the program and writes it to `base` + ".VKP"; the caller syncs the folder. False when
  // the file could not be written; the error has been reported then.
  bool SaveTheDld(std::string_view base);

  // The same run without a file: the bytes of the program.
  std::string ProgramText();

  // Lines of the last run.
  [[nodiscard]] const ProgramLines& Lines() const { return run_.lines; }
  // The sections of the last run that failed, each with its block or item and the line: "SAVEDLD.
  // PubVars failed in Volt Block 2, at: Alias ...". Empty for a complete program.
  [[nodiscard]] const std::vector<std::string>& Faults() const { return faults_; }
  // Where the statements of the last run measure.
  [[nodiscard]] const StatementChannels& Channels() const { return run_.channels; }
  // Line positions of the statements of a multiplexer block, each followed by a blank; those of
  // further runs are appended.
  [[nodiscard]] const Row<std::string, 1, kBlocks>& TK40MLines() const { return run_.TK40MLines; }
  void ClearTK40MLines() { run_.TK40MLines.Fill(""); }

 private:
  // Runs a section; a failure in it is reported under `routine` and noted, and the run goes on: the
  // file keeps every line stored before.
  void section(std::string_view routine, void (SAVEDLD::*body)());

  // The sections, in the order of the program. Each is in a source together with its helpers, reads
  // the store (and repairs the few values that are its to repair) and appends lines.
  void Header();               // savedld.cpp
  void Constants();            // constants.cpp
  void CanDeclarations();      // can_bus.cpp
  void CalcVarConstants();     // calc_field_constants.cpp
  void PubVars();              // pub_vars.cpp
  void OutputTables();         // output_tables.cpp
  void Subroutines();          // subroutines.cpp
  void TriggerCallSub(int t);  // triggers.cpp
  void MainProgram();          // main_program.cpp
  void Exceptions();           // exception_scaling.cpp
  void ExciteControl();        // excite_control.cpp
  void ZeroFlagLogic();        // field_calibration.cpp
  void Temperature();          // temperature.cpp
  void Voltage();              // voltage.cpp
  void Bridges();              // bridges.cpp
  void Pulses();               // pulses.cpp
  void TK40Ms();               // tk40ms.cpp
  void CanBus();               // can_bus.cpp
  void FieldCalCalls();        // field_calibration.cpp
  void MainProgram2();         // scan_end.cpp
  void TableCallLines(int t);  // triggers.cpp
  void LowPriority();          // low_priority.cpp

  // Group expressions of table `t` with their numbers replaced by conditions; `s` is 0 for the
  // start, 1 for the stop trigger.
  [[nodiscard]] std::string ExpandTriggerGroup(int s, int t) const;
  [[nodiscard]] std::string ExpandWriteIfGroup(int t) const;

  platform::FileSystem& files_;
  platform::Clock& clock_;
  platform::Forms& forms_;
  std::string baseName_;
  ProgramRun run_;
  std::vector<std::string> faults_;
};

}  // namespace ostrand
