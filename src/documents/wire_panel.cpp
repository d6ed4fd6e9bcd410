#include "documents/wire_panel.h"

#include <array>

#include "documents/line_chars.h"
#include "text/mask.h"

namespace ostrand {
namespace {

// A line is a side, two halves with the bar between them, and a side. A half is a label, the mark
// of a terminal and the terminal's cell.
constexpr int kMarkWidth = 2;
constexpr int kCellWidth = 8;
constexpr int kHalfWidth = kLabelWidth + kMarkWidth + kCellWidth;
constexpr std::string_view kBar = " | ";
constexpr int kBarPlace = 1 + kHalfWidth + 1;  // index of the bar, from 0
static_assert(2 * kHalfWidth + 2 + static_cast<int>(kBar.size()) == kPanelWidth);

constexpr int kGroupsOfAConnector = 10;  // differential channels on each connector of page 1

// A terminal of the second page, or its empty place.
struct Terminal {
  std::string_view name;
  int wire = kNoWire;
};

struct PanelRow {
  Terminal left;
  Terminal right;
  bool ends = false;  // a group of terminals on the left
};

constexpr std::array<PanelRow, 23> kSecondPage = {{
    {{"VX1", kVX1}, {}},
    {{"VX2", kVX1 + 1}, {"C5", kC1 + 4}},
    {{"Gnd", kMuxAnalogGround}, {"C6", kC1 + 5}, true},
    {{"VX3", kVX1 + 2}, {"C7", kC1 + 6}},
    {{"VX4", kVX1 + 3}, {"C8", kC1 + 7}},
    {{"CAO1", kCAO1}, {">2.0V"}},
    {{"CAO2", kCAO1 + 1}, {}},
    {{"Gnd"}, {"<0.8V"}, true},
    {{"IX1"}, {}},
    {{"IX2"}, {"5V"}},
    {{"IX3"}, {}},
    {{"IX4"}, {"SDI-12"}},
    {{"IXR"}, {"12V", kMuxPower}},
    {{"Gnd"}, {"Gnd", kMuxPowerGround}, true},
    {{"P1", kP1}, {"QB-C1"}},
    {{"Gnd"}, {"QB-C2"}},
    {{"P2", kP1 + 1}, {"QB-C3"}},
    {{"Gnd"}, {}, true},
    {{"C1", kC1}, {"12V"}},
    {{"C2", kC1 + 1}, {}},
    {{"C3", kC1 + 2}, {}},
    {{"C4", kC1 + 3}, {"SW-12"}},
    {{"Gnd"}, {"Gnd"}},
}};

std::string padded(std::string_view text, int width) {
  std::string result(text);
  result.resize(static_cast<std::size_t>(width), ' ');
  return result;
}

std::string run(char c, int count) { return std::string(static_cast<std::size_t>(count), c); }

std::string half(std::string_view label, std::string_view mark, std::string_view cell) {
  return padded(label, kLabelWidth) + padded(mark, kMarkWidth) + padded(cell, kCellWidth);
}

// A half with a terminal: free, or wired as in the label.
std::string terminal(std::string_view cell, const std::string& label) {
  constexpr char kWired[] = {' ', kDot, '\0'};
  return half(label, label.empty() ? " O" : kWired, cell);
}

std::string place(const WireLabels& labels, const Terminal& at) {
  if (at.name.empty()) return half("", "", "");
  return terminal(" " + std::string(at.name), labels.Others[at.wire]);
}

class Drawing {
 public:
  explicit Drawing(const WireLabels& labels) : labels_(labels) {}

  std::string Lines() {
    head(6, "-1-", "-2-", " Diff SE");
    for (int d = 1; d <= kGroupsOfAConnector; ++d) differential(d, d + kGroupsOfAConnector);
    foot();
    constexpr std::string_view kPageBreak = " Page Break ";
    const int bars = kPanelWidth - static_cast<int>(kPageBreak.size());
    text_ += "\r\n" + run(kLine, bars / 2) + std::string(kPageBreak) + run(kLine, bars - bars / 2) +
             "\r\n\r\n";
    head(4, "-3-", "-4-", "");
    for (const PanelRow& panelRow : kSecondPage) {
      row(place(labels_, panelRow.left), place(labels_, panelRow.right));
      if (panelRow.ends) row(rule(4), half("", "", ""));
    }
    foot();
    return std::move(text_);
  }

 private:
  void row(std::string_view left, std::string_view right) {
    ((((text_ += kSide) += left) += kBar) += right) += kSide;
    text_ += "\r\n";
  }

  // The line that separates the terminals of two groups.
  static std::string rule(int width) { return half("", "", " " + run(kLine, width)); }

  void head(int width, std::string_view left, std::string_view right, std::string_view columns) {
    ((text_ += kTopLeft) += run(kLine, kPanelWidth - 2)) += kTopRight;
    text_ += "\r\n";
    const std::string connector =
        half("", "", kSolid + run(kSolidTop, width) + std::string(1, kSolid));
    row(connector, connector);
    row(half("Sensor", "", "  " + std::string(left)),
        half("Sensor", "", "  " + std::string(right)));
    row(half("Number", "", columns), half("Number", "", columns));
    halves(kSide, kCrossing, kSide);
  }

  void foot() { halves(kBottomLeft, kBottomTee, kBottomRight); }

  void halves(char left, char middle, char right) {
    const std::string line = run(kLine, kHalfWidth + 1);
    ((((text_ += left) += line) += middle) += line) += right;
    text_ += "\r\n";
  }

  // The high, low and ground terminals of a differential channel of each connector. The CAN module
  // has its ground in the last row.
  void differential(int left, int right) {
    const bool last = left == kGroupsOfAConnector;
    row(input(left, 2 * left - 1, 'H'), input(right, 2 * right - 1, 'H'));
    row(input(left, 2 * left, 'L'), input(right, 2 * right, 'L'));
    row(terminal(" Gnd", ""), terminal(" Gnd", last ? labels_.Others[kCanGround] : ""));
    if (!last) row(rule(6), rule(6));
  }

  std::string input(int channel, int single, char pin) {
    const std::string cell =
        " " + FormatNumber(channel, "00") + " " + FormatNumber(single, "00") + " " + pin;
    return terminal(cell, labels_.Analog[single]);
  }

  const WireLabels& labels_;
  std::string text_;
};

// Whether a line of the panel has places for labels.
bool hasLabels(std::string_view line) {
  return line.size() == kPanelWidth && line.front() == kSide && line[kBarPlace] == '|';
}

}  // namespace

std::string PanelLines(const WireLabels& labels) { return Drawing(labels).Lines(); }

std::vector<bool> DrawnBytes(std::string_view diagram) {
  std::vector<bool> drawn(diagram.size(), false);
  bool inPanel = false;
  for (std::size_t start = 0; start < diagram.size();) {
    const std::size_t end = std::min(diagram.find("\r\n", start), diagram.size());
    const std::string_view line = diagram.substr(start, end - start);
    inPanel = inPanel || (line.size() == kPanelWidth && line.front() == kTopLeft);
    if (inPanel) {
      const bool labels = hasLabels(line);
      for (std::size_t at = 0; at < line.size(); ++at) {
        const std::size_t inHalf = at > kBarPlace ? at - kBarPlace - 2 : at - 1;
        drawn[start + at] = !labels || inHalf >= kLabelWidth;
      }
    }
    start = end + 2;
  }
  return drawn;
}

}  // namespace ostrand
