// Splits a line of a program into statements, and a statement into tokens.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand {

struct Token {
  enum class Kind { kName, kNumber, kText, kSign };
  Kind kind;
  std::string_view text;  // a piece of the program
  std::string upper;      // of names and signs, in upper case

  [[nodiscard]] bool IsName() const { return kind == Kind::kName; }
  [[nodiscard]] bool Is(std::string_view word) const { return upper == word; }
};

using Tokens = std::span<const Token>;

// The tokens of a line up to its comment. A text in double quotes that is not closed extends to the
// end of the line.
std::vector<Token> TokensOf(std::string_view line);

// The index of the first token that is this word or sign; the count of tokens if there is none.
std::size_t FindToken(Tokens tokens, std::string_view word);

// The statements of a line, separated by colons.
std::vector<Tokens> StatementsOf(Tokens line);

}  // namespace ostrand
