// Grouping lines from arbitrary bytes, for libFuzzer: a fault has a title and a position in the
// line; a line without a fault is stored so that storing it again changes nothing and the program
// joins the same rows.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "conditions/grouping.h"
#include "model/store.h"
#include "text/number.h"

namespace {

constexpr std::string_view kPlace = " at character number ";

void require(bool holds) {
  if (!holds) std::abort();
}

// The line without what the program ignores.
std::string bare(std::string_view line) {
  std::string text;
  for (char letter : line) {
    if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    if (letter == ' ') continue;
    const bool leading =
        !text.empty() && text.back() == '0' && letter >= '0' && letter <= '9' &&
        (text.size() < 2 || text[text.size() - 2] < '0' || text[text.size() - 2] > '9');
    if (leading) text.pop_back();
    text += letter;
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ostrand;
  if (size == 0) return 0;
  const int rows = data[0] % (kConditions + 1);
  const std::string_view line(reinterpret_cast<const char*>(data) + 1, size - 1);
  const auto fault = FindGroupingFault(line, rows);
  if (fault) {
    require(!fault->title.empty() && !fault->text.empty());
    const std::size_t at = fault->text.find(kPlace);
    if (at == std::string::npos) return 0;
    const auto place = ToInt32(fault->text.substr(at + kPlace.size()));
    require(place && *place >= 1 && static_cast<std::size_t>(*place) <= line.size() + 1);
    return 0;
  }
  if (rows == 0) return 0;
  const std::string stored = StoredGrouping(line, rows);
  require(!FindGroupingFault(stored, rows));
  require(StoredGrouping(stored, rows) == stored);
  const bool isBlank = line.find_first_not_of(' ') == std::string_view::npos;
  require(bare(stored) == bare(isBlank ? DefaultGrouping(rows) : std::string(line)));
  std::vector<std::string> names;
  for (int row = 1; row <= rows; ++row) names.emplace_back("r");
  const std::string text = ExpandGrouping(stored, names, RowForm::kBare);
  require(text.find_first_of("0123456789") == std::string::npos);
  return 0;
}
