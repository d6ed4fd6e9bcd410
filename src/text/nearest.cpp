#include "text/nearest.h"

#include <algorithm>

#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::size_t kMaxSuggestions = 3;
constexpr std::size_t kMinPart = 3;   // letters that can identify the whole name
constexpr std::size_t kMaxName = 64;  // a longer name is compared by its beginning

// The number of typing errors between two texts: a letter too many, missing, wrong, or exchanged
// with its neighbour.
std::size_t typingErrors(std::string_view left, std::string_view right) {
  const std::size_t width = right.size() + 1;
  std::vector<std::size_t> errors((left.size() + 1) * width);
  const auto at = [&](std::size_t row, std::size_t column) -> std::size_t& {
    return errors[row * width + column];
  };
  for (std::size_t row = 0; row <= left.size(); ++row) at(row, 0) = row;
  for (std::size_t column = 0; column <= right.size(); ++column) at(0, column) = column;
  for (std::size_t row = 1; row <= left.size(); ++row) {
    for (std::size_t column = 1; column <= right.size(); ++column) {
      const bool same = left[row - 1] == right[column - 1];
      std::size_t fewest = std::min(at(row - 1, column), at(row, column - 1)) + 1;
      fewest = std::min(fewest, at(row - 1, column - 1) + (same ? 0 : 1));
      if (row > 1 && column > 1 && left[row - 1] == right[column - 2] &&
          left[row - 2] == right[column - 1]) {
        fewest = std::min(fewest, at(row - 2, column - 2) + 1);
      }
      at(row, column) = fewest;
    }
  }
  return errors.back();
}

}  // namespace

std::vector<std::string_view> NearestNames(std::string_view name,
                                           std::span<const std::string_view> candidates) {
  const std::string wanted = Upper(Trim(name)).substr(0, kMaxName);
  std::vector<std::string_view> nearest;
  std::vector<std::string_view> containing;
  std::size_t fewest = (wanted.size() + 2) / 3;
  for (const std::string_view candidate : candidates) {
    const std::string other = Upper(Trim(candidate)).substr(0, kMaxName);
    if (wanted.size() >= kMinPart && Holds(other, wanted)) containing.push_back(candidate);
    const std::size_t errors = typingErrors(wanted, other);
    if (errors > fewest || errors >= std::max(wanted.size(), other.size())) continue;
    if (errors < fewest) nearest.clear();
    fewest = errors;
    nearest.push_back(candidate);
  }
  std::vector<std::string_view>& found = nearest.empty() ? containing : nearest;
  if (found.size() > kMaxSuggestions) found.resize(kMaxSuggestions);
  return found;
}

std::string DidYouMean(std::string_view name, std::span<const std::string_view> candidates) {
  const std::vector<std::string_view> names = NearestNames(name, candidates);
  std::string text;
  for (std::size_t at = 0; at < names.size(); ++at) {
    text += at == 0 ? "; did you mean " : at + 1 == names.size() ? " or " : ", ";
    text += names[at];
  }
  return text.empty() ? text : text + "?";
}

}  // namespace ostrand
