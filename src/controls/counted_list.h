// The items of a choice or list.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

namespace ostrand {

// A list that counts its possible changes: whoever shows thousands of items compares them only
// after the count has changed. Each access that can change an item counts.
template <class T>
class CountedList {
 public:
  using Vector = std::vector<T>;

  CountedList() = default;
  CountedList& operator=(Vector items) {
    changed() = std::move(items);
    return *this;
  }
  CountedList& operator=(std::initializer_list<T> items) {
    changed() = items;
    return *this;
  }

  // Different from before after any change.
  [[nodiscard]] std::size_t Changes() const { return changes_; }
  [[nodiscard]] const Vector& All() const { return items_; }

  // As of a vector.
  // NOLINTBEGIN(readability-identifier-naming)
  [[nodiscard]] std::size_t size() const { return items_.size(); }
  [[nodiscard]] bool empty() const { return items_.empty(); }
  [[nodiscard]] auto begin() const { return items_.begin(); }
  [[nodiscard]] auto end() const { return items_.end(); }
  [[nodiscard]] auto begin() { return changed().begin(); }
  [[nodiscard]] auto end() { return changed().end(); }
  [[nodiscard]] const T& operator[](std::size_t at) const { return items_[at]; }
  [[nodiscard]] T& operator[](std::size_t at) { return changed()[at]; }
  void clear() { changed().clear(); }
  void reserve(std::size_t size) { items_.reserve(size); }
  void resize(std::size_t size) { changed().resize(size); }
  void push_back(T item) { changed().push_back(std::move(item)); }
  template <class Iterator>
  void assign(Iterator from, Iterator to) {
    changed().assign(from, to);
  }
  // NOLINTEND(readability-identifier-naming)

 private:
  Vector& changed() {
    ++changes_;
    return items_;
  }

  Vector items_;
  std::size_t changes_ = 0;
};

}  // namespace ostrand
