#include "programcheck/outline.h"

#include <algorithm>
#include <array>

#include "programcheck/statement.h"
#include "text/letters.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kKinds = "TVBPAC";
constexpr std::string_view kArrayEnd = "BLK";

// Constants of a block: the letter of its kind, one of these, and its number.
constexpr std::array<std::string_view, 12> kConstants = {
    "RNG", "TYPE", "REP", "SETL", "INT", "MULT", "OSET", "EXCIT", "GF", "CODE", "CONF", "OPT"};

// Names of a CAN item: its name and one of these.
constexpr std::array<std::string_view, 7> kItemConstants = {
    "", "DATATYPE", "STARTBIT", "NUMBITS", "NUMVALS", "MULT", "OSET"};

bool isKind(char letter) { return kKinds.find(letter) != std::string_view::npos; }

// The number at the start of a text. Blocks have one digit, which others may follow, items up to
// three.
int numberOf(std::string_view text, char kind) {
  std::size_t digits = 0;
  while (digits < text.size() && IsDigit(text[digits])) ++digits;
  if (kind != 'C') digits = std::min<std::size_t>(digits, 1);
  return static_cast<int>(Val(text.substr(0, digits)));
}

ProgramBlock blockOfArray(std::string_view upper) {
  const std::size_t end = upper.find(kArrayEnd);
  if (end == std::string_view::npos || end == 0 || !isKind(upper[end - 1])) return {};
  const std::string_view before = upper.substr(0, end - 1);
  const bool known =
      before.empty() || before == "M" || before == "O" || before == "G" || before == "LC";
  const char kind = upper[end - 1];
  const int number = known ? numberOf(upper.substr(end + kArrayEnd.size()), kind) : 0;
  return number == 0 ? ProgramBlock{} : ProgramBlock{kind, number};
}

ProgramBlock blockOfConstant(std::string_view upper) {
  if (upper.size() < 2 || !isKind(upper[0])) return {};
  for (const std::string_view constant : kConstants) {
    const std::string_view rest = upper.substr(1);
    if (!rest.starts_with(constant)) continue;
    const std::string_view digits = rest.substr(constant.size());
    const bool isNumber = !digits.empty() && std::all_of(digits.begin(), digits.end(),
                                                         [](char c) { return IsDigit(c); });
    if (isNumber) return {upper[0], static_cast<int>(Val(digits))};
  }
  return {};
}

// The text between the bars of a title; empty for any other line.
std::string_view titleIn(std::string_view line, char left, char right) {
  const std::size_t first = line.find_first_not_of(' ');
  if (first == std::string_view::npos || line[first] != '\'') return {};
  std::string_view rest = line.substr(first + 1);
  constexpr std::size_t kBar = 3;
  if (rest.size() < 2 * kBar || rest.find_first_not_of(left) < kBar) return {};
  rest.remove_prefix(std::min(rest.find_first_not_of(left), rest.size()));
  const std::size_t end = rest.find_last_not_of(right);
  if (end == std::string_view::npos || rest.size() - end <= kBar) return {};
  return Trim(rest.substr(0, end + 1));
}

}  // namespace

ProgramBlock BlockOfName(std::string_view upper) {
  const ProgramBlock ofArray = blockOfArray(upper);
  return ofArray.kind != 0 ? ofArray : blockOfConstant(upper);
}

ProgramOutline::ProgramOutline(std::string_view program, std::span<const NamedBlock> named) {
  Names names;
  for (const NamedBlock& item : named) {
    if (item.name.empty()) continue;
    const std::string upper = Upper(item.name);
    const std::size_t count = item.block.kind == 'C' ? kItemConstants.size() : 1;
    for (std::size_t at = 0; at < count; ++at) {
      names.emplace(upper + std::string(kItemConstants[at]), item.block);
    }
  }
  for (int number = 1; !program.empty(); ++number) {
    const std::string_view line = TakeLine(program);
    blocks_.emplace_back();
    takeTitle(line, number);
    takeStatement(line, number, names);
  }
}

void ProgramOutline::takeTitle(std::string_view line, int number) {
  const std::string_view main = titleIn(line, '\\', '/');
  if (!main.empty()) sections_.push_back({std::string(main), number, 0});
  const std::string_view minor = titleIn(line, '_', '_');
  if (!minor.empty()) sections_.push_back({std::string(minor), number, 1});
}

void ProgramOutline::takeStatement(std::string_view line, int number, Names& names) {
  const std::vector<Token> tokens = TokensOf(line);
  if (tokens.empty()) return;
  const bool isTable = tokens[0].Is("DATATABLE") && tokens.size() > 2;
  if (isTable) sections_.push_back({"Table " + std::string(tokens[2].text), number, 1});
  const bool isSub = tokens[0].Is("SUB") && tokens.size() > 1;
  if (isSub) sections_.push_back({"Sub " + std::string(tokens[1].text), number, 1});

  std::vector<ProgramBlock>& blocks = blocks_.back();
  for (const Token& token : tokens) {
    if (!token.IsName()) continue;
    ProgramBlock block = BlockOfName(token.upper);
    if (block.kind == 0) {
      const auto found = names.find(token.upper);
      if (found != names.end()) block = found->second;
    }
    const bool isNew = std::find(blocks.begin(), blocks.end(), block) == blocks.end();
    if (block.kind != 0 && isNew) blocks.push_back(block);
  }
  // "Alias TBlk1(2) = Oil": the alias names the block too.
  const bool isAlias = tokens[0].Is("ALIAS") && tokens.back().IsName() && !blocks.empty();
  if (isAlias) names.emplace(tokens.back().upper, blocks.front());
}

ProgramBlock ProgramOutline::BlockOfLine(int line) const {
  const auto at = static_cast<std::size_t>(line - 1);
  if (line < 1 || at >= blocks_.size() || blocks_[at].empty()) return {};
  return blocks_[at].front();
}

std::vector<int> ProgramOutline::LinesOfBlock(ProgramBlock block) const {
  std::vector<int> lines;
  for (std::size_t at = 0; at < blocks_.size(); ++at) {
    const bool named =
        std::find(blocks_[at].begin(), blocks_[at].end(), block) != blocks_[at].end();
    if (named) lines.push_back(static_cast<int>(at) + 1);
  }
  return lines;
}

}  // namespace ostrand
