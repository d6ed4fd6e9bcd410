// The line buffer of a generator run, and the pieces that its lines are made of.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/name_statements.h"

namespace ostrand {

// `count` copies of one character.
struct Fill {
  char character;
  int count;
};

// A piece of a line: a text, a number in its general text, a single character or a fill. Refers to
// its text, so it must not outlive the call that it is made for.
class Piece {
 public:
  Piece(const char* text) : Piece(std::string_view(text)) {}
  Piece(std::string_view text) : kind_(Kind::kText), text_(text) {}
  Piece(const std::string& text) : Piece(std::string_view(text)) {}
  Piece(char character) : Piece(Fill{character, 1}) {}
  Piece(Fill fill) : kind_(Kind::kFill), fill_(fill) {}
  Piece(int number) : kind_(Kind::kWhole), whole_(number) {}
  Piece(float number) : kind_(Kind::kSingle), single_(number) {}
  Piece(double number) : kind_(Kind::kDouble), double_(number) {}

  // An upper bound of the bytes that WriteTo writes.
  [[nodiscard]] std::size_t MaxSize() const;
  // Writes the piece and returns where it ends. A fill of a negative count raises Fault 5.
  char* WriteTo(char* to) const;

 private:
  enum class Kind { kText, kFill, kWhole, kSingle, kDouble };
  Kind kind_;
  union {
    std::string_view text_;
    Fill fill_;
    std::int64_t whole_;
    float single_;
    double double_;
  };
};

using Pieces = std::initializer_list<Piece>;

// The pieces as one text.
std::string Joined(Pieces pieces);

// What separates a statement from its comment.
enum class Pad {
  kStrict,    // blanks up to column 65; a longer statement is a failure
  kGuarded,   // blanks up to column 65; one blank from a length of 65 on
  kOver,      // blanks up to column 65; one blank from a length of 66 on
  kTouching,  // blanks up to column 65; nothing from a length of 65 on
};

// `ProgramLines` and `LineCount`: up to 3000 lines, counted from 1. A line that cannot be stored
// leaves the buffer as it was: Fault 9 for the 3001st, Fault 5 for a statement too long for the
// comment column.
class ProgramLines {
 public:
  static constexpr int kMaxLines = 3000;

  void Clear();
  void Add(Pieces line);
  void Add(Pieces statement, Pieces comment, Pad pad);

  [[nodiscard]] int LineCount() const { return static_cast<int>(ends_.size()); }
  // The part of a line that was made before it failed, until the next line begins; else empty.
  [[nodiscard]] std::string_view Unstored() const;
  // The line at a position from 1 to LineCount. Fault 9 outside.
  [[nodiscard]] std::string_view operator[](int position) const;
  // The lines from `first` up to the one before `last`, each with its line end; both positions from
  // 1 to LineCount + 1.
  [[nodiscard]] std::string_view Between(int first, int last) const;

 private:
  [[nodiscard]] std::size_t startOf(int position) const;
  void beginLine(std::size_t maxSize);
  void append(Pieces pieces);
  void append(const Piece& piece);
  void store();

  // All lines with their line ends. The memory is not initialised and is kept from run to run.
  std::unique_ptr<char[]> bytes_;
  std::size_t size_ = 0;             // allocated
  std::size_t used_ = 0;             // by the lines and by one that is not stored yet
  std::vector<std::uint32_t> ends_;  // offset after the line end of each line
};

}  // namespace ostrand
