#include "generator/program_lines.h"

#include "text/fault.h"
#include "text/number.h"

namespace ostrand {
namespace {

template <class Number>
void appendNumber(std::string& text, Number number) {
  const std::size_t size = text.size();
  text.resize(size + kNumberTextRoom);
  const int length = WriteNumber(text.data() + size, number);
  text.resize(size + static_cast<std::size_t>(length));
}

void append(std::string& text, Pieces pieces) {
  for (const Piece& piece : pieces) piece.AppendTo(text);
}

// Blanks between a statement of this length and its comment.
int padOf(int length, Pad pad) {
  const int room = kCommentColumn - length;
  switch (pad) {
    case Pad::kStrict:
      return room;
    case Pad::kGuarded:
      return room <= 0 ? 1 : room;
    case Pad::kOver:
      return room < 0 ? 1 : room;
    case Pad::kTouching:
      return room < 0 ? 0 : room;
  }
  return room;
}

}  // namespace

void Piece::AppendTo(std::string& text) const {
  switch (kind_) {
    case Kind::kText:
      text.append(text_);
      break;
    case Kind::kFill:
      if (fill_.count < 0) throw InvalidProcedureCall();
      text.append(static_cast<std::size_t>(fill_.count), fill_.character);
      break;
    case Kind::kWhole:
      appendNumber(text, whole_);
      break;
    case Kind::kSingle:
      appendNumber(text, single_);
      break;
    case Kind::kDouble:
      appendNumber(text, double_);
      break;
  }
}

std::string Joined(Pieces pieces) {
  std::string text;
  append(text, pieces);
  return text;
}

void ProgramLines::Clear() {
  bytes_.clear();
  ends_.clear();
}

// Where the next line begins; what a line that failed has left behind is dropped.
std::size_t ProgramLines::beginLine() {
  const std::size_t start = ends_.empty() ? 0 : ends_.back();
  bytes_.resize(start);
  return start;
}

void ProgramLines::Add(Pieces line) {
  beginLine();
  append(bytes_, line);
  store();
}

void ProgramLines::Add(Pieces statement, Pieces comment, Pad pad) {
  const std::size_t start = beginLine();
  append(bytes_, statement);
  const int blanks = padOf(static_cast<int>(bytes_.size() - start), pad);
  if (blanks < 0) throw InvalidProcedureCall();
  bytes_.append(static_cast<std::size_t>(blanks), ' ');
  append(bytes_, comment);
  store();
}

void ProgramLines::store() {
  if (LineCount() == kRoom) throw SubscriptOutOfRange();
  ends_.push_back(static_cast<std::uint32_t>(bytes_.size()));
}

std::string_view ProgramLines::Unstored() const {
  return std::string_view(bytes_).substr(ends_.empty() ? 0 : ends_.back());
}

std::string_view ProgramLines::operator[](int position) const {
  if (position < 1 || position > LineCount()) throw SubscriptOutOfRange();
  const auto at = static_cast<std::size_t>(position);
  const std::size_t start = position == 1 ? 0 : ends_[at - 2];
  return std::string_view(bytes_).substr(start, ends_[at - 1] - start);
}

}  // namespace ostrand
