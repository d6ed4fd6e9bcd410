#include "programcheck/system_names.h"

#include <algorithm>
#include <array>

#include "text/letters.h"
#include "text/strings.h"

namespace ostrand {
namespace {

struct SystemUse {
  std::string_view before;        // the name, in upper case, up to the number of its block
  std::string_view after;         // and after it
  std::string_view instructions;  // that use it, each between blanks
};
// Zeroing measures into separate arrays and averages them.
constexpr std::array kZeroing = {
    SystemUse{"VBLK", "ZERO", " VOLTSE VOLTDIFF AVERAGE "},
    SystemUse{"ABLK", "ZERO", " TK40M AVERAGE "},
    SystemUse{"BBLK", "ZEROMVMV_V", " BRFULL BRFULL6W BRHALF BRHALF3W BRHALF4W "},
    SystemUse{"BBLK", "ZEROUS", " STRAINCALC AVERAGE "},
};
// The stop of a table whose trigger has no stop conditions.
constexpr std::string_view kStop = "BSTOPTRIGGER";

// "N" in VBlkNZero, a single digit.
bool isNumbered(std::string_view name, const SystemUse& use) {
  return name.size() == use.before.size() + 1 + use.after.size() && name.starts_with(use.before) &&
         name.ends_with(use.after) && IsDigit(name[use.before.size()]);
}

}  // namespace

bool IsSystemUse(const Token& name, Tokens statement) {
  const std::string& instruction = statement.front().upper;
  if (name.Is(kStop)) return instruction == "DATAEVENT";
  return std::any_of(kZeroing.begin(), kZeroing.end(), [&](const SystemUse& use) {
    return isNumbered(name.upper, use) && Holds(use.instructions, " " + instruction + " ");
  });
}

bool IsScalingAlias(Tokens rest) {
  // MVBlk1 ( 2 ) = M$VBlk1 ( 2 )
  constexpr std::size_t kTokens = 9;
  if (rest.size() != kTokens) return false;
  const std::string& array = rest[0].upper;
  if (array.size() < 2 || (array[0] != 'M' && array[0] != 'O')) return false;
  const std::string name = array.substr(0, 1) + "$" + array.substr(1);
  const Tokens alias = rest.subspan(5);
  return rest[4].Is("=") && alias[0].Is(name) &&
         std::equal(alias.begin() + 1, alias.end(), rest.begin() + 1,
                    [](const Token& left, const Token& right) { return left.text == right.text; });
}

}  // namespace ostrand
