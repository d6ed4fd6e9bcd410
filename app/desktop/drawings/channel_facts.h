// The use of the logger's channels and of the scan's time, as it is drawn.
#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "documents/wiring.h"
#include "model/scan_time.h"

namespace ostrand::desktop {

// Single-ended inputs that follow each other, both ends included.
struct InputRun {
  int first = 0;
  int last = 0;

  friend bool operator==(const InputRun&, const InputRun&) = default;
};

struct InputUser {
  WireKind kind;
  int number;  // of the block or multiplexer
  std::vector<InputRun> runs;
};

struct InputUse {
  std::vector<InputUser> users;  // by kind and number
  std::vector<InputRun> free;
  std::vector<InputRun> conflicts;
};
InputUse InputUseOf(const Wiring& wiring);

// "1 to 6, 9" for the runs; "none" without any.
std::string RunsText(const std::vector<InputRun>& runs);
// Inputs in the runs, and the whole differential channels among them.
struct InputCount {
  int singleEnded = 0;
  int differential = 0;
};
InputCount CountOf(const std::vector<InputRun>& runs);

// The terminals that a program can use besides the inputs: excitations, analog outputs, pulse
// inputs and control ports, in the order of their numbers.
struct TerminalGroup {
  std::string_view title;
  std::vector<const WireTerminal*> terminals;
};
std::vector<TerminalGroup> OtherTerminalsOf(const Wiring& wiring);

// The measurements of a scan, the longest first; those with an unknown time last.
std::vector<ScanShare> LongestFirst(const ProjectStore& store);

// How much of the interval a time takes: "12.5 %"; empty without an interval.
std::string PercentText(double micros, double interval);

}  // namespace ostrand::desktop
