#include "documents/wire_panel.h"

#include <array>

#include "documents/line_chars.h"

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

// Appends a text, padded or cut to `width`.
void putPadded(std::string& line, std::string_view text, int width) {
  const std::size_t end = line.size() + static_cast<std::size_t>(width);
  line += text;
  line.resize(end, ' ');
}

std::string run(char c, int count) { return std::string(static_cast<std::size_t>(count), c); }

std::string half(std::string_view label, std::string_view mark, std::string_view cell) {
  std::string line;
  line.reserve(kHalfWidth);
  putPadded(line, label, kLabelWidth);
  putPadded(line, mark, kMarkWidth);
  putPadded(line, cell, kCellWidth);
  return line;
}

// A half with a terminal, free or wired as in its label, or with an empty place.
std::string halfOf(const WireTerminal& place) {
  if (place.name.empty()) return half("", "", "");
  constexpr char kWired[] = {' ', kDot, '\0'};
  const bool isFree = place.users.empty();
  return half(isFree ? std::string_view() : place.users.front().label, isFree ? " O" : kWired,
              " " + TerminalText(place));
}

class Drawing {
 public:
  explicit Drawing(const Wiring& wiring) : panel_(wiring.panel) {}

  std::string Lines() {
    page(panel_[0], panel_[1], 6, " Diff SE");
    constexpr std::string_view kPageBreak = " Page Break ";
    const int bars = kPanelWidth - static_cast<int>(kPageBreak.size());
    text_ += "\r\n" + run(kLine, bars / 2) + std::string(kPageBreak) + run(kLine, bars - bars / 2) +
             "\r\n\r\n";
    page(panel_[2], panel_[3], 4, "");
    return std::move(text_);
  }

 private:
  // Two connectors beside each other; `width` is that of their rules.
  void page(const TerminalStrip& left, const TerminalStrip& right, int width,
            std::string_view columns) {
    head(width, left.title, right.title, columns);
    const std::string line = half("", "", " " + run(kLine, width));
    const std::string blank = half("", "", "");
    for (std::size_t at = 0; at < left.places.size(); ++at) {
      const WireTerminal& one = left.places[at];
      const WireTerminal& other = right.places[at];
      row(halfOf(one), halfOf(other));
      if (one.endsGroup) row(line, other.endsGroup ? line : blank);
    }
    halves(kBottomLeft, kBottomTee, kBottomRight);
  }

  void row(std::string_view left, std::string_view right) {
    ((((text_ += kSide) += left) += kBar) += right) += kSide;
    text_ += "\r\n";
  }

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

  void halves(char left, char middle, char right) {
    const std::string line = run(kLine, kHalfWidth + 1);
    ((((text_ += left) += line) += middle) += line) += right;
    text_ += "\r\n";
  }

  const std::array<TerminalStrip, 4>& panel_;
  std::string text_;
};

// Whether a line of the panel has places for labels.
bool hasLabels(std::string_view line) {
  return line.size() == kPanelWidth && line.front() == kSide && line[kBarPlace] == '|';
}

}  // namespace

std::string PanelLines(const Wiring& wiring) { return Drawing(wiring).Lines(); }

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
