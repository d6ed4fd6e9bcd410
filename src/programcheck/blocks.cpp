#include "programcheck/blocks.h"

#include <algorithm>

#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

struct BlockWords {
  std::string_view opener;
  std::string_view closer;
  bool outermost;  // not inside another block
};
constexpr BlockWords kBlockWords[] = {
    {"BeginProg", "EndProg", true}, {"Sub", "End Sub", true}, {"DataTable", "EndTable", true},
    {"Scan", "Next Scan", false},   {"For", "Next", false},   {"If", "End If", false},
    {"Do", "Loop", false},
};

const BlockWords& wordsOf(Block block) { return kBlockWords[static_cast<std::size_t>(block)]; }

std::string place(std::string_view word, int line) {
  return std::string(word) + " of line " + NumberText(line);
}

}  // namespace

void Blocks::Open(Block block, int line, std::string_view variable) {
  const BlockWords& words = wordsOf(block);
  if (words.outermost && !open_.empty()) {
    const Opened& around = open_.back();
    report_(line, std::string(words.opener) + " is inside the " +
                      place(wordsOf(around.block).opener, around.line));
  }
  if (block == Block::kProgram && ++programs_ > 1) report_(line, "there is a second BeginProg");
  open_.push_back({block, line, variable});
}

// Closes the blocks opened inside the innermost block of that kind. False if there is no such
// block.
bool Blocks::unwindTo(Block block, int line, std::string_view closer) {
  const auto isBlock = [block](const Opened& opened) { return opened.block == block; };
  if (std::none_of(open_.begin(), open_.end(), isBlock)) {
    report_(line, std::string(closer) + " without " + std::string(wordsOf(block).opener));
    return false;
  }
  while (!isBlock(open_.back())) {
    report_(line, std::string(closer) + " while the " +
                      place(wordsOf(open_.back().block).opener, open_.back().line) +
                      " is still open");
    open_.pop_back();
  }
  return true;
}

void Blocks::Close(Block block, int line) {
  if (unwindTo(block, line, wordsOf(block).closer)) open_.pop_back();
}

void Blocks::CloseFor(int line, std::string_view variable) {
  if (!unwindTo(Block::kFor, line, "Next")) return;
  const Opened& opened = open_.back();
  if (!variable.empty() && !SameText(variable, opened.variable)) {
    report_(line, "Next " + std::string(variable) + " closes the " +
                      place("For " + std::string(opened.variable), opened.line));
  }
  open_.pop_back();
}

void Blocks::Branch(int line, std::string_view word, bool last) {
  if (!unwindTo(Block::kIf, line, word)) return;
  if (open_.back().elseSeen) report_(line, std::string(word) + " after Else");
  if (last) open_.back().elseSeen = true;
}

void Blocks::End(int line) {
  for (const Opened& opened : open_) {
    report_(opened.line, std::string(wordsOf(opened.block).opener) + " is never closed with " +
                             std::string(wordsOf(opened.block).closer));
  }
  if (programs_ == 0) report_(line, "there is no BeginProg");
}

}  // namespace ostrand
