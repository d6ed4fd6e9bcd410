#include "session/compile_reports.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>

#include "model/pulse_kinds.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::size_t kDateLength = 6;  // two digits each for month, day and year

// The first line that contains `mark`; removes it and everything before it from `rest`. Nothing at
// the end.
std::optional<std::string_view> lineWith(std::string_view& rest, std::string_view mark) {
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest);
    if (Holds(line, mark)) return line;
  }
  return std::nullopt;
}

// A date code as a number that increases with time; years from 80 on are in the previous century.
int dateOrder(int code) {
  const int year = code % 100;
  const int monthAndDay = code / 100;
  return (year + (year >= 80 ? 1900 : 2000)) * 10000 + monthAndDay;
}

constexpr int kFirstNewDate = 60607;

// ---- Times --------------------------------------------------------------------------------------

bool hasStatement(const MeasBlock& block) { return block.Reps > 0; }
bool hasStatement(const PulseBlockData& block) { return HasPulseStatement(block); }

// A sum that saturates at the maximum time.
void addTime(i32& sum, i32 time) {
  sum = RoundToInt32(static_cast<double>(sum) + time).value_or(std::numeric_limits<i32>::max());
}

// Follows the statements of one kind through the report: a new program line belongs to the next
// block with a statement.
template <class Group>
class BlockCursor {
 public:
  explicit BlockCursor(Group& group) : group_(group) {}

  // The block of the last statement; 0 before the first.
  [[nodiscard]] int Block() const { return block_; }

  // Adds the time of a statement in program line `line`. With `stays` a new line also belongs to
  // the present block.
  void Add(int line, i32 time, bool stays = false) {
    if (block_ == 0 || (line != line_ && !stays)) next();
    line_ = line;
    if (block_ <= group_.BlockCount) addTime(group_[block_].BlockTime, time);
  }

 private:
  void next() {
    do {
      ++block_;
    } while (block_ <= group_.BlockCount && !hasStatement(group_[block_]));
  }

  Group& group_;
  int block_ = 0;
  int line_ = 0;
};

template <class Group>
void clearTimes(Group& group) {
  for (int block = 1; block <= Group::kLast; ++block) group[block].BlockTime = 0;
}

enum class Timed { kBattery, kPanel, kTemp, kVolt, kBridge, kPulse, kTK40M };

struct TimedName {
  std::string_view name;
  Timed timed;
};

constexpr std::array<TimedName, 13> kTimedNames = {{
    {"BATTERY", Timed::kBattery},
    {"PANELTEMP", Timed::kPanel},
    {"TCDIFF", Timed::kTemp},
    {"TCSE", Timed::kTemp},
    {"VOLTSE", Timed::kVolt},
    {"VOLTDIFF", Timed::kVolt},
    {"BRFULL", Timed::kBridge},
    {"BRFULL6W", Timed::kBridge},
    {"BRHALF", Timed::kBridge},
    {"BRHALF3W", Timed::kBridge},
    {"BRHALF4W", Timed::kBridge},
    {"PULSECOUNT", Timed::kPulse},
    {"TK40M", Timed::kTK40M},
}};

std::optional<Timed> timedBy(std::string_view name) {
  const std::string upper = Upper(Trim(name));
  for (const TimedName& row : kTimedNames) {
    if (row.name == upper) return row.timed;
  }
  return std::nullopt;
}

class ScanTimes {
 public:
  ScanTimes(ProjectStore& store, const MuxLines& muxLines)
      : store_(store),
        muxLines_(muxLines),
        temp_(store.TempBlock),
        volt_(store.VoltBlock),
        bridge_(store.BridgeBlock),
        pulse_(store.PulseBlock[0]),
        mux_(store.TK40MBlock) {}

  [[nodiscard]] bool LineKnown() const { return line_ != 0; }

  void Take(std::string_view line) {
    if (!Holds(line, ":")) return;
    if (const auto number = ToInt32(After(Before(line, ":"), " ")); number) line_ = *number;
    const std::string_view statement = After(line, ":");
    if (!Holds(statement, "=")) return;
    const std::optional<Timed> timed = timedBy(Before(statement, "="));
    const std::optional<i32> time = RoundToInt32(Val(After(statement, "=")));
    if (timed && time) add(*timed, *time);
  }

 private:
  void add(Timed timed, i32 time) {
    switch (timed) {
      case Timed::kBattery:
        addTime(store_.Config.BatteryTime, time);
        break;
      case Timed::kPanel:
        addTime(store_.Config.PanelTime, time);
        break;
      case Timed::kTemp:
        temp_.Add(line_, time);
        break;
      case Timed::kVolt:
        volt_.Add(line_, time);
        break;
      case Timed::kBridge:
        bridge_.Add(line_, time);
        break;
      case Timed::kPulse:
        pulse_.Add(line_, time);
        break;
      case Timed::kTK40M:
        // A block on several multiplexers has a statement, and a line, for each.
        mux_.Add(line_, time, isLineOf(mux_.Block()));
        break;
    }
  }

  [[nodiscard]] bool isLineOf(int block) const {
    if (block < 1 || block > kBlocks) return false;
    const std::vector<std::string_view> lines = Split(muxLines_[block], ' ');
    return std::find(lines.begin(), lines.end(), NumberText(line_)) != lines.end();
  }

  ProjectStore& store_;
  const MuxLines& muxLines_;
  BlockCursor<TempBlockGroup> temp_;
  BlockCursor<VoltBlockGroup> volt_;
  BlockCursor<BridgeBlockGroup> bridge_;
  BlockCursor<PulseBlockGroup> pulse_;
  BlockCursor<TK40MBlockGroup> mux_;
  int line_ = 0;  // program line of the report, 0 until one is known
};

void clearAllTimes(ProjectStore& store) {
  store.Config.BatteryTime = 0;
  store.Config.PanelTime = 0;
  clearTimes(store.TempBlock);
  clearTimes(store.VoltBlock);
  clearTimes(store.BridgeBlock);
  clearTimes(store.TK40MBlock);
  for (int slot = 0; slot <= 1; ++slot) clearTimes(store.PulseBlock[slot]);
}

}  // namespace

VersionReport ReadVersionReport(std::string_view report) {
  VersionReport result;
  std::string_view rest = report;
  if (const auto line = lineWith(rest, "DATE:")) {
    const std::string_view code = Trim(After(*line, "DATE:")).substr(0, kDateLength);
    const i32 date = ToInt32(code).value_or(0);
    result.newCompiler = dateOrder(date) >= dateOrder(kFirstNewDate);
  }
  rest = report;
  std::optional<std::string_view> line = lineWith(rest, "[Version]");
  if (line && !result.newCompiler) line = TakeLine(rest);
  if (!line) return result;
  result.version = Trim(Before(After(*line, "VERSION:"), "DATE:"));
  result.dateCode = Trim(line->substr(line->size() - std::min(line->size(), kDateLength)));
  return result;
}

CompileVerdict ReadCompileVerdict(std::string_view report, bool newCompiler) {
  constexpr std::string_view kMark = "Compiled OK";
  constexpr std::string_view kGood = "Test compiled OK.";
  std::string_view rest = report;
  if (newCompiler) {
    if (const auto line = lineWith(rest, kMark)) {
      return {true, std::string(kGood).append("\r\n").append(*line)};
    }
    return {false, std::string(report)};
  }
  CompileVerdict verdict;
  for (auto line = lineWith(rest, "[Compile Results]"); line;) {
    if (Holds(*line, kMark)) return {true, std::string(kGood)};
    verdict.message.append(*line).append("\r\n");
    line = rest.empty() ? std::nullopt : std::optional(TakeLine(rest));
  }
  return verdict;
}

std::string ReportText(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 16);
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const char letter = bytes[at];
    if (letter != '\r' && letter != '\n') {
      text += letter;
      continue;
    }
    text += "\r\n";
    if (letter == '\r' && bytes.substr(at + 1).starts_with('\n')) ++at;
  }
  return text;
}

std::string ShownInBox(std::string_view text) {
  constexpr std::size_t kPart = std::size_t{32} << 10;
  if (text.size() <= 2 * kPart) return std::string(text);
  // Whole lines, unless one is longer than its part.
  std::string_view head = text.substr(0, kPart);
  if (const std::size_t end = head.rfind('\n'); end != std::string_view::npos) {
    head = head.substr(0, end + 1);
  }
  std::string_view tail = text.substr(text.size() - kPart);
  if (const std::size_t end = tail.find('\n'); end + 1 < tail.size()) tail = tail.substr(end + 1);
  const std::string_view between =
      text.substr(head.size(), text.size() - head.size() - tail.size());
  const auto lines = std::count(between.begin(), between.end(), '\n');
  std::string shown(head);
  if (!shown.ends_with('\n')) shown += "\r\n";
  return shown.append("\r\n(")
      .append(NumberText(static_cast<std::int64_t>(lines)))
      .append(" lines, ")
      .append(NumberText(static_cast<std::int64_t>(between.size())))
      .append(" bytes not shown)\r\n\r\n")
      .append(tail);
}

void StoreMeasuredTimes(ProjectStore& store, std::string_view report, const MuxLines& muxLines) {
  clearAllTimes(store);
  std::string_view rest = report;
  std::optional<std::string_view> scan = lineWith(rest, "Scan:");
  while (scan && Holds(*scan, "(Subroutine)")) scan = lineWith(rest, "Scan:");
  if (!scan) return;
  ScanTimes times(store, muxLines);
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest);
    if (Holds(line, "Scan:") && times.LineKnown()) return;
    times.Take(line);
  }
}

}  // namespace ostrand
