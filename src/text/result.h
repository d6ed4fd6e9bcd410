// A value, or an error with a text that a user can read.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace ostrand {

// What went wrong, as text for the user; names the path or value.
struct Error {
  std::string text;
};

// For operations that return nothing on success.
struct Done {};

template <class T = Done>
class [[nodiscard]] Result {
 public:
  Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
  Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

  explicit operator bool() const { return state_.index() == 0; }
  T& Value() { return std::get<0>(state_); }
  const T& Value() const { return std::get<0>(state_); }
  [[nodiscard]] const std::string& ErrorText() const { return std::get<1>(state_).text; }

 private:
  std::variant<T, Error> state_;
};

}  // namespace ostrand
