// A fixed array that holds only what was written to it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <vector>

#include "text/fault.h"

namespace ostrand {

// Elements with the subscripts First to Last, both included, as in `Row`. An element never written
// takes no memory and reads as the row's blank, which at first holds zeros and empty texts. The
// first access that can write makes the element, and those before it, as copies of the blank. A
// made element stays at its address for the life of the row, whatever is assigned to the row. A
// subscript outside raises Fault 9, "Subscript out of range".
template <class T, int First, int Last>
class LateRow {
  static_assert(First <= Last);

 public:
  static constexpr int kFirst = First;
  static constexpr int kLast = Last;
  static constexpr int kCount = Last - First + 1;

  [[nodiscard]] static constexpr bool Holds(int subscript) {
    return subscript >= First && subscript <= Last;
  }

  LateRow() = default;
  ~LateRow();
  LateRow(const LateRow& other);
  LateRow& operator=(const LateRow& other);

  T& operator[](int subscript) {
    const std::size_t at = position(subscript);
    if (at >= made_.size()) make(at + 1);
    return made_[at];
  }
  const T& operator[](int subscript) const { return at(position(subscript)); }

  // The elements made so far, from First on. All others equal the blank.
  std::span<T> Made() { return made_; }
  [[nodiscard]] std::span<const T> Made() const { return made_; }

  // The elements of the first `count` subscripts, none for less than 1 and all for too many.
  std::span<T> Leading(int count) {
    const auto wanted = static_cast<std::size_t>(std::clamp(count, 0, kCount));
    if (wanted > made_.size()) make(wanted);
    return std::span<T>(made_).first(wanted);
  }

  // Elements from the subscript `from` on become `blank`, which must outlive the row.
  void Reset(const T& blank, int from = First);

  // In a row that can be written, this makes all elements.
  auto begin() { return Leading(kCount).begin(); }
  auto end() { return Leading(kCount).end(); }

  class ConstIterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = const T*;
    using reference = const T&;

    ConstIterator(const LateRow& row, std::size_t at) : row_(&row), at_(at) {}
    reference operator*() const { return row_->at(at_); }
    pointer operator->() const { return &row_->at(at_); }
    ConstIterator& operator++() {
      ++at_;
      return *this;
    }
    ConstIterator operator++(int) { return {*row_, at_++}; }
    friend bool operator==(const ConstIterator&, const ConstIterator&) = default;

   private:
    const LateRow* row_;
    std::size_t at_;
  };
  ConstIterator begin() const { return {*this, 0}; }
  ConstIterator end() const { return {*this, kCount}; }

  friend bool operator==(const LateRow& left, const LateRow& right) {
    const std::size_t made = std::max(left.made_.size(), right.made_.size());
    for (std::size_t at = 0; at < made; ++at) {
      if (!(left.at(at) == right.at(at))) return false;
    }
    return made == kCount || left.blank() == right.blank();
  }

 private:
  static constexpr std::size_t position(int subscript) {
    if (!Holds(subscript)) FailSubscript();
    return static_cast<std::size_t>(subscript - First);
  }
  static constexpr std::ptrdiff_t difference(std::size_t count) {
    return static_cast<std::ptrdiff_t>(count);
  }

  [[nodiscard]] const T& at(std::size_t position) const {
    return position < made_.size() ? made_[position] : blank();
  }
  [[nodiscard]] const T& blank() const;
  // Memory for all elements is reserved with the first one, so that none moves later. The system
  // provides it page by page as elements are made.
  void make(std::size_t count);

  std::vector<T> made_;
  const T* blank_ = nullptr;
};

// Outside of the class, so that an explicit instantiation serves all users of a row.

template <class T, int First, int Last>
LateRow<T, First, Last>::~LateRow() = default;

template <class T, int First, int Last>
LateRow<T, First, Last>::LateRow(const LateRow& other) {
  *this = other;
}

template <class T, int First, int Last>
const T& LateRow<T, First, Last>::blank() const {
  static const T kZero;
  return blank_ != nullptr ? *blank_ : kZero;
}

template <class T, int First, int Last>
LateRow<T, First, Last>& LateRow<T, First, Last>::operator=(const LateRow& other) {
  if (this == &other) return *this;
  const std::size_t shared = std::min(made_.size(), other.made_.size());
  std::copy_n(other.made_.begin(), shared, made_.begin());
  std::fill(made_.begin() + difference(shared), made_.end(), other.blank());
  if (other.made_.size() > shared) {
    made_.reserve(kCount);
    made_.insert(made_.end(), other.made_.begin() + difference(shared), other.made_.end());
  }
  blank_ = other.blank_;
  return *this;
}

template <class T, int First, int Last>
void LateRow<T, First, Last>::Reset(const T& blank, int from) {
  const auto kept = static_cast<std::size_t>(std::clamp(from, First, Last + 1) - First);
  if (kept > made_.size() && blank_ != &blank) make(kept);
  if (kept < made_.size()) std::fill(made_.begin() + difference(kept), made_.end(), blank);
  blank_ = &blank;
}

template <class T, int First, int Last>
void LateRow<T, First, Last>::make(std::size_t count) {
  made_.reserve(kCount);
  made_.resize(count, blank());
}

}  // namespace ostrand
