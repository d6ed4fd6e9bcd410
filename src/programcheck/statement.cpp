#include "programcheck/statement.h"

#include <algorithm>

#include "text/letters.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// Letters of the code page beyond ASCII are part of names too.
bool startsName(char c) { return IsLetter(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80; }

bool continuesName(char c) { return startsName(c) || IsDigit(c) || c == '$'; }

template <class Test>
std::size_t lengthOf(std::string_view text, std::size_t from, Test test) {
  std::size_t end = from;
  while (end < text.size() && test(text[end])) ++end;
  return end;
}

// 12, 0.5, 1E+07.
std::size_t decimalLength(std::string_view text) {
  std::size_t end = lengthOf(text, 0, IsDigit);
  if (end < text.size() && text[end] == '.') end = lengthOf(text, end + 1, IsDigit);
  if (end < text.size() && (text[end] == 'E' || text[end] == 'e')) {
    std::size_t digits = end + 1;
    if (digits < text.size() && (text[digits] == '+' || text[digits] == '-')) ++digits;
    if (digits < text.size() && IsDigit(text[digits])) end = lengthOf(text, digits, IsDigit);
  }
  return end;
}

Token nextToken(std::string_view text) {
  const char first = text[0];
  const char second = text.size() > 1 ? text[1] : ' ';
  if (startsName(first)) {
    const std::string_view name = text.substr(0, lengthOf(text, 0, continuesName));
    return {Token::Kind::kName, name, Upper(name)};
  }
  if (IsDigit(first) || (first == '.' && IsDigit(second))) {
    return {Token::Kind::kNumber, text.substr(0, decimalLength(text)), ""};
  }
  if (first == '&' && startsName(second)) {  // &H1F, &B101
    return {Token::Kind::kNumber, text.substr(0, lengthOf(text, 1, continuesName)), ""};
  }
  if (first == '"') {
    const std::size_t end = text.find('"', 1);
    return {Token::Kind::kText,
            text.substr(0, end == std::string_view::npos ? text.size() : end + 1), ""};
  }
  return {Token::Kind::kSign, text.substr(0, 1), std::string(1, first)};
}

}  // namespace

std::vector<Token> TokensOf(std::string_view line) {
  std::vector<Token> tokens;
  while (!line.empty() && line[0] != '\'') {
    if (line[0] == ' ') {
      line.remove_prefix(1);
      continue;
    }
    tokens.push_back(nextToken(line));
    line.remove_prefix(tokens.back().text.size());
  }
  return tokens;
}

std::size_t FindToken(Tokens tokens, std::string_view word) {
  const auto at = std::find_if(tokens.begin(), tokens.end(),
                               [&](const Token& token) { return token.Is(word); });
  return static_cast<std::size_t>(at - tokens.begin());
}

std::vector<Tokens> StatementsOf(Tokens line) {
  std::vector<Tokens> statements;
  while (!line.empty()) {
    const std::size_t end = FindToken(line, ":");
    if (end > 0) statements.push_back(line.first(end));
    line = line.subspan(std::min(line.size(), end + 1));
  }
  return statements;
}

}  // namespace ostrand
