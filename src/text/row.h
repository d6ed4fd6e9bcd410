// A fixed array with the subscripts of the project file.
#pragma once

#include <array>
#include <cstddef>

#include "text/fault.h"

namespace ostrand {

// Elements with the subscripts First to Last, both included. A subscript outside raises
// Fault 9, "Subscript out of range".
template <class T, int First, int Last>
class Row {
  static_assert(First <= Last);

 public:
  static constexpr int kFirst = First;
  static constexpr int kLast = Last;
  static constexpr int kCount = Last - First + 1;

  [[nodiscard]] static constexpr bool Holds(int subscript) {
    return subscript >= First && subscript <= Last;
  }

  constexpr T& operator[](int subscript) { return items_[position(subscript)]; }
  constexpr const T& operator[](int subscript) const { return items_[position(subscript)]; }

  constexpr void Fill(const T& value) { items_.fill(value); }

  constexpr auto begin() { return items_.begin(); }
  constexpr auto end() { return items_.end(); }
  constexpr auto begin() const { return items_.begin(); }
  constexpr auto end() const { return items_.end(); }

  friend constexpr bool operator==(const Row&, const Row&) = default;

 private:
  static constexpr std::size_t position(int subscript) {
    if (!Holds(subscript)) FailSubscript();
    return static_cast<std::size_t>(subscript - First);
  }

  std::array<T, static_cast<std::size_t>(kCount)> items_{};
};

}  // namespace ostrand
