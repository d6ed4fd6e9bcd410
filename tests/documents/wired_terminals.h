// Reads a wiring diagram by the columns of its panel.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ostrand::testing {

// One terminal in half of a row of the panel.
struct WiredTerminal {
  std::string label;  // of 26 columns
  std::string mark;
  std::string cell;  // without its blanks
};

inline std::vector<std::string> DiagramLines(std::string_view diagram) {
  std::vector<std::string> lines;
  while (!diagram.empty()) {
    const std::size_t end = diagram.find("\r\n");
    lines.emplace_back(diagram.substr(0, end));
    diagram.remove_prefix(end == std::string_view::npos ? diagram.size() : end + 2);
  }
  return lines;
}

inline std::string WithoutBlanks(std::string text) {
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

// The terminals of the panel, row by row from left to right.
inline std::vector<WiredTerminal> TerminalsIn(std::string_view diagram) {
  std::vector<WiredTerminal> found;
  for (const std::string& line : DiagramLines(diagram)) {
    if (line.size() != 77 || line[0] != '\xB3' || line[38] != '|') continue;
    for (const std::size_t start : {1U, 40U}) {
      const std::string mark = line.substr(start + 26, 2);
      if (mark == "  ") continue;
      found.push_back({line.substr(start, 26), mark, WithoutBlanks(line.substr(start + 28, 8))});
    }
  }
  return found;
}

// The wired terminals as "cell:label", one a line, labels without trailing blanks.
inline std::string WiredIn(std::string_view diagram) {
  std::string text;
  for (const WiredTerminal& terminal : TerminalsIn(diagram)) {
    if (terminal.mark != " \xFE") continue;
    std::string label = terminal.label;
    while (!label.empty() && label.back() == ' ') label.pop_back();
    text += terminal.cell + ":" + label + "\n";
  }
  return text;
}

}  // namespace ostrand::testing
