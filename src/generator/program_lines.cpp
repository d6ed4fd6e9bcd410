#include "generator/program_lines.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "text/copy.h"
#include "text/fault.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kFirstSize = 64 * 1024;  // enough for a common program

std::size_t maxSizeOf(Pieces pieces) {
  std::size_t size = 0;
  for (const Piece& piece : pieces) size += piece.MaxSize();
  return size;
}

// Blanks between a statement of this length and its comment.
int padOf(int length, Pad pad) {
  const int blanks = kCommentColumn - length;
  switch (pad) {
    case Pad::kStrict:
      return blanks;
    case Pad::kGuarded:
      return blanks <= 0 ? 1 : blanks;
    case Pad::kOver:
      return blanks < 0 ? 1 : blanks;
    case Pad::kTouching:
      return blanks < 0 ? 0 : blanks;
  }
  return blanks;
}

}  // namespace

std::size_t Piece::MaxSize() const {
  if (kind_ == Kind::kText) return text_.size();
  if (kind_ != Kind::kFill) return kMaxNumberText;
  return static_cast<std::size_t>(std::max(fill_.count, 0));
}

char* Piece::WriteTo(char* to) const {
  switch (kind_) {
    case Kind::kText:
      return CopyText(to, text_);
    case Kind::kFill:
      if (fill_.count < 0) throw InvalidProcedureCall();
      std::memset(to, fill_.character, static_cast<std::size_t>(fill_.count));
      return to + fill_.count;
    case Kind::kWhole:
      return to + WriteNumber(to, whole_);
    case Kind::kSingle:
      return to + WriteNumber(to, single_);
    case Kind::kDouble:
      return to + WriteNumber(to, double_);
  }
  return to;
}

std::string Joined(Pieces pieces) {
  std::string text(maxSizeOf(pieces), '\0');
  char* end = text.data();
  for (const Piece& piece : pieces) end = piece.WriteTo(end);
  text.resize(static_cast<std::size_t>(end - text.data()));
  return text;
}

void ProgramLines::Clear() {
  ends_.clear();
  used_ = 0;
}

std::size_t ProgramLines::startOf(int position) const {
  return position == 1 ? 0 : ends_[static_cast<std::size_t>(position) - 2];
}

// Begins a line of at most `maxSize` bytes without its line end, and drops the part of one that
// failed.
void ProgramLines::beginLine(std::size_t maxSize) {
  maxSize += kLineEnd.size();
  used_ = startOf(LineCount() + 1);
  if (size_ - used_ >= maxSize) return;
  const std::size_t larger = std::max(kFirstSize, 2 * size_ + maxSize);
  auto bytes = std::make_unique_for_overwrite<char[]>(larger);
  CopyText(bytes.get(), {bytes_.get(), used_});
  bytes_ = std::move(bytes);
  size_ = larger;
}

void ProgramLines::append(const Piece& piece) {
  used_ = static_cast<std::size_t>(piece.WriteTo(bytes_.get() + used_) - bytes_.get());
}

void ProgramLines::append(Pieces pieces) {
  for (const Piece& piece : pieces) append(piece);
}

void ProgramLines::Add(Pieces line) {
  beginLine(maxSizeOf(line));
  append(line);
  store();
}

void ProgramLines::Add(Pieces statement, Pieces comment, Pad pad) {
  beginLine(maxSizeOf(statement) + kCommentColumn + maxSizeOf(comment));
  const std::size_t start = used_;
  append(statement);
  append(Fill{' ', padOf(static_cast<int>(used_ - start), pad)});
  append(comment);
  store();
}

void ProgramLines::store() {
  if (LineCount() == kMaxLines) throw SubscriptOutOfRange();
  append(kLineEnd);
  ends_.push_back(static_cast<std::uint32_t>(used_));
}

std::string_view ProgramLines::Unstored() const {
  const std::size_t start = startOf(LineCount() + 1);
  return {bytes_.get() + start, used_ - start};
}

std::string_view ProgramLines::operator[](int position) const {
  if (position < 1 || position > LineCount()) throw SubscriptOutOfRange();
  std::string_view line = Between(position, position + 1);
  line.remove_suffix(kLineEnd.size());
  return line;
}

std::string_view ProgramLines::Between(int first, int last) const {
  const std::size_t start = startOf(first);
  return {bytes_.get() + start, startOf(last) - start};
}

}  // namespace ostrand
