// The blocks of a program and their nesting.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand {

enum class Block { kProgram, kSub, kTable, kScan, kFor, kIf, kDo };

class Blocks {
 public:
  using Report = std::function<void(int line, std::string text)>;
  explicit Blocks(Report report) : report_(std::move(report)) {}

  // `variable` is that of a For, as spelled in the program.
  void Open(Block block, int line, std::string_view variable = "");
  void Close(Block block, int line);
  // Next with a variable, which must be that of the For.
  void CloseFor(int line, std::string_view variable);
  // Else or ElseIf, given by `word`.
  void Branch(int line, std::string_view word, bool last);
  // The end of the text, in this line: every block must be closed, and a program seen.
  void End(int line);

 private:
  struct Opened {
    Block block;
    int line;
    std::string_view variable;
    bool elseSeen = false;
  };
  bool unwindTo(Block block, int line, std::string_view closer);

  Report report_;
  std::vector<Opened> open_;
  int programs_ = 0;
};

}  // namespace ostrand
